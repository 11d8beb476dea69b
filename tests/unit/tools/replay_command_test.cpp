// corvane-tools as it is called: what it prints, and how it ends.
#include <gmock/gmock.h>

#include <array>

#include "base/text.h"
#include "core/setup_decision.h"
#include "store/settings.h"
#include "unit/tools/tools_fixture.h"

namespace corvane::tools {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

const char* const kReplayGroups =
    "9001;262;42;K\xF6ln;0;True\r\n"
    "9004;262;42;Not \"for\" me;0;False\r\n";

class ReplayCommandTest : public ToolsTest {
 protected:
  // What became of each setup, "line outcome".
  std::vector<std::string> Outcomes(const std::string& log, Arguments options = {}) {
    options.insert(options.begin(), {"replay", Put("log", log), "-F", "csv"});
    const Run run = Tools(options);
    EXPECT_EQ(run.code, ExitCode::kDone) << run.err;
    std::vector<std::string> outcomes;
    for (const std::string& line : Lines(run.out)) {
      const std::vector<std::string> fields = Split(line, ',');
      if (fields[0] != "line") outcomes.push_back(fields[0] + " " + fields[2]);
    }
    return outcomes;
  }
  std::string Lists() {
    Put("lists/TETRA_GSSI.txt", kReplayGroups);
    return Path("lists");
  }
};

TEST_F(ReplayCommandTest, OneJsonObjectForEachSetup) {
  const std::string log =
      Put("log", "noise\r\n" + Setup(9001, 7) + Setup(9004, 8) + Event("D_Release", 9001, 7) +
                     Setup(9004, 9) + "SSI:1 D_Setup Basic_service:x Call ID:40000 \r\n");
  const Run run = Tools({"replay", log, "--lists", Lists(), "-F", "json"});
  EXPECT_EQ(run.code, ExitCode::kDone);
  EXPECT_THAT(
      Lines(run.out),
      ElementsAre(
          R"({"line":2,"time":null,"outcome":"followed","call_id":7,"gssi":9001,"party":5010,)"
          R"("carrier":2610,"slot":2,"detail":"865262500 Hz; [K)"
          "\xC3\xB6"
          R"(ln]"})",
          R"({"line":3,"time":null,"outcome":"in_call","call_id":8,"gssi":9004,"party":5010,)"
          R"("carrier":2610,"slot":2,"detail":"following Call ID 7; [Not \"for\" me]"})",
          R"({"line":5,"time":null,"outcome":"locked_out","call_id":9,"gssi":9004,"party":5010,)"
          R"("carrier":2610,"slot":2,"detail":"[Not \"for\" me]"})",
          R"({"line":6,"time":null,"outcome":"malformed","call_id":null,"gssi":1,"party":null,)"
          R"("carrier":null,"slot":null,"detail":"Call ID"})"));
  EXPECT_THAT(run.err, HasSubstr("followed          1\n"));
  EXPECT_THAT(run.err, HasSubstr("released 1"));
}

TEST_F(ReplayCommandTest, TextTellsTheWayBack) {
  const std::string log = Put("log", Setup(9001, 7) + Event("D_Disconnect", 9001, 7));
  const Run run = Tools({"replay", log});
  ASSERT_EQ(Lines(run.out).size(), 2U);
  EXPECT_THAT(Lines(run.out)[0], HasSubstr("1  followed "));
  EXPECT_THAT(Lines(run.out)[1], HasSubstr("2    back"));
  EXPECT_THAT(Lines(run.out)[1], HasSubstr("disconnected; carrier 2604, 865112500 Hz"));
}

TEST_F(ReplayCommandTest, EveryOutcomeThatALogCanHave) {
  std::string setup = Setup(9001, 1);
  EXPECT_THAT(Outcomes(ReplaceAll(setup, "Point_to_multipoint", "Individual")),
              ElementsAre("1 individual"));
  EXPECT_THAT(Outcomes(ReplaceAll(setup, "Transmission Granted", "Transmission Not_granted")),
              ElementsAre("1 not_granted"));
  EXPECT_THAT(Outcomes(ReplaceAll(setup, "Carrier", "PDU encrypted Carrier")),
              ElementsAre("1 encrypted"));
  EXPECT_THAT(Outcomes(Setup(9001, 1, 5)), ElementsAre("1 bad_timeslot"));
  EXPECT_THAT(Outcomes(Setup(9001, 1, 1, 99999)), ElementsAre("1 bad_frequency"));
  EXPECT_THAT(Outcomes(setup, {"--hold", "9002"}), ElementsAre("1 held_elsewhere"));
  EXPECT_THAT(Outcomes(Setup(9001, 7) + "x\n" + Setup(9001, 6) + Setup(9001, 8), {"--log-mode"}),
              ElementsAre("1 counted", "3 counted_before", "4 counted"));
}

TEST_F(ReplayCommandTest, DoubledLinesChangeNothing) {
  std::string plain;
  std::string doubled;
  for (int call = 1; call < 60; ++call) {
    for (const std::string& line :
         {Setup(9001 + call % 3, call), Setup(9002, call + 100), Event("D_TX_Ceased", 9001, call),
          call % 4 == 0 ? std::string("noise ") + std::to_string(call) + "\r\n"
                        : Event("D_Release", 9001 + call % 3, call)}) {
      plain += line;
      doubled += line + line;
    }
  }
  const auto bare = [](std::vector<std::string> outcomes) {
    for (std::string& outcome : outcomes) outcome.erase(0, outcome.find(' '));
    return outcomes;
  };
  for (const char* rate : {"0.5", "5", "16"}) {
    const Arguments options = {"--rate", rate, "--timeout", "3"};
    EXPECT_EQ(bare(Outcomes(plain, options)), bare(Outcomes(doubled, options))) << rate;
  }
}

TEST_F(ReplayCommandTest, SilenceEndsACallAfterTheTimeoutAtTheRate) {
  std::string log = Setup(9001, 1);
  for (int i = 0; i < 9; ++i) log += "noise " + std::to_string(i) + "\n";
  log += Setup(9002, 2);
  EXPECT_THAT(Outcomes(log, {"--rate", "1", "--timeout", "11"}),
              ElementsAre("1 followed", "11 in_call"));
  EXPECT_THAT(Outcomes(log, {"--rate", "1", "--timeout", "9"}),
              ElementsAre("1 followed", "11 followed"));
  EXPECT_THAT(Outcomes(log, {"--rate", "2"}), ElementsAre("1 followed", "11 followed"));
  EXPECT_THAT(Outcomes(log), ElementsAre("1 followed", "11 in_call"));
  const std::string granted = "SSI:9001 D_TX_Granted Call ID:1 Party_SSI:5011";
  EXPECT_THAT(Outcomes(ReplaceAll(log, "noise 5", granted), {"--rate", "1", "--timeout", "9"}),
              ElementsAre("1 followed", "11 in_call"));
}

TEST_F(ReplayCommandTest, LinesFasterThanThePollsWait) {
  std::string log = Setup(9001, 1);
  for (int i = 0; i < 90; ++i) log += "noise " + std::to_string(i) + "\n";
  log += Setup(9002, 2);
  EXPECT_THAT(Outcomes(log, {"--rate", "1000"}), ElementsAre("1 followed", "92 followed"));
}

TEST_F(ReplayCommandTest, SettingsDecideOnTimeoutOffsetAndLogMode) {
  SettingsRecord record;
  record.Timeout = 2;
  record.OffsetIndex = 0;
  const std::string file = Put("corvane_simple.dat", EncodeSettings(record));
  const Run run = Tools({"replay", Put("log", Setup(9001, 1) + "a\nb\nc\nd\n" + Setup(9002, 2)),
                         "--settings", file, "--rate", "2", "-F", "csv", "-q"});
  EXPECT_THAT(Lines(run.out),
              ElementsAre("line,time,outcome,call_id,gssi,party,carrier,slot,detail",
                          "1,,followed,1,9001,5010,2610,2,865250000 Hz",
                          "6,,followed,2,9002,5010,2610,2,865250000 Hz"));
  EXPECT_EQ(run.err, "");
  record.CreateCallActivityCsvFile = 1;
  Put("corvane_simple.dat", EncodeSettings(record));
  EXPECT_THAT(Outcomes(Setup(9001, 1), {"--settings", file}), ElementsAre("1 counted"));
}

TEST_F(ReplayCommandTest, EventsGiveTimesAndWhatTheUserDid) {
  const std::string log =
      Put("log", Setup(9001, 1) + "noise\n" + Setup(9002, 2) + Setup(9001, 3) + Setup(9003, 4) +
                     Event("D_Release", 9003, 4) + Setup(9001, 5));
  const std::string events =
      Put("events",
          "15/11/2026 14:00:00 - Call ID: 1 - On carrier: 2610 - Group: 9001 \r\n"
          "15/11/2026 14:00:02 - Manual D-Release occured and UI reset\r\n\r\n"
          "15/11/2026 14:00:08 - Call ID: 4 - On carrier: 2610 - Group: 9003 \r\n"
          "15/11/2026 14:00:10 - Call ID: 4 - VC D-Released\r\n\r\n"
          "15/11/2026 14:00:11 - LOG mode active - No calls will be heard\r\n"
          "15/11/2026 14:00:20 - Call ID: 5 - On carrier: 2610 - Group: 9001 \r\n");
  const Run run = Tools({"replay", log, "--events", events, "-F", "csv"});
  EXPECT_THAT(
      Lines(run.out),
      // Call 2 would have been followed after the reset, and then the event log would say so.
      ElementsAre("line,time,outcome,call_id,gssi,party,carrier,slot,detail",
                  "1,2026-11-15T14:00:00,followed,1,9001,5010,2610,2,865262500 Hz",
                  "3,2026-11-15T14:00:04,in_call,2,9002,5010,2610,2,following Call ID 1; time "
                  "interpolated",
                  "4,2026-11-15T14:00:06,dropped_by_hand,3,9001,5010,2610,2,time interpolated",
                  "5,2026-11-15T14:00:08,followed,4,9003,5010,2610,2,865262500 Hz",
                  "7,2026-11-15T14:00:20,counted,5,9001,5010,2610,2,"));
  EXPECT_THAT(run.err, HasSubstr("shows otherwise: 0"));
}

TEST_F(ReplayCommandTest, AGroupThatWasDroppedIsLeftAlone) {
  const std::string log =
      Put("log", Setup(9001, 1) + Setup(9001, 2) + "n\n" + Event("D_Wait", 1, 1) + Setup(9001, 3));
  const std::string events =
      Put("events",
          "15/11/2026 14:00:00 - Call ID: 1 - On carrier: 2610 - Group: 9001 \r\n"
          "15/11/2026 14:00:01 - Manual D-Release occured and UI reset\r\n"
          "15/11/2026 14:00:09 - SSI:1 D_Wait Call ID:1 \r\n"
          "15/11/2026 14:00:30 - Call ID: 3 - On carrier: 2610 - Group: 9001 \r\n");
  const Run run = Tools({"replay", log, "--events", events, "-F", "csv", "-q"});
  ASSERT_EQ(Lines(run.out).size(), 4U);
  EXPECT_THAT(Lines(run.out)[2], HasSubstr("14:00:03,dropped_by_hand,"));
  EXPECT_THAT(Lines(run.out)[3], HasSubstr("14:00:30,followed,"));
}

TEST_F(ReplayCommandTest, TheNetworkIsTheOnlyOneOfTheList) {
  Put("two/TETRA_GSSI.txt", "9001;262;42;a;0;False\r\n9001;262;43;b;0;True\r\n");
  const std::string log = Put("log", Setup(9001, 1));
  const Run none = Tools({"replay", log, "--lists", Path("two")});
  EXPECT_EQ(none.code, ExitCode::kFailed);
  EXPECT_THAT(none.err, HasSubstr("262/42 262/43"));
  EXPECT_THAT(Tools({"replay", log, "--lists", Path("two"), "--network", "262/42"}).out,
              HasSubstr("locked_out"));
  EXPECT_THAT(Tools({"replay", log, "--lists=" + Path("two"), "--network=262/43"}).out,
              HasSubstr("followed"));
}

TEST_F(ReplayCommandTest, OnlyWhatIsAskedForIsShown) {
  const std::string log = Setup(9001, 1) + Setup(9002, 2) + Setup(9003, 3) + Setup(9002, 4);
  EXPECT_THAT(Outcomes(log, {"--group", "9002"}), ElementsAre("2 in_call", "4 in_call"));
  EXPECT_THAT(Outcomes(log, {"--group", "9001", "--group", "9003", "--reason", "in_call"}),
              ElementsAre("3 in_call"));
  const Run run = Tools({"replay", Put("log", log), "--reason", "followed", "-F", "json"});
  EXPECT_EQ(Lines(run.out).size(), 1U);
  EXPECT_THAT(run.err, HasSubstr("4 setups, 1 of them shown"));
  EXPECT_THAT(run.err, HasSubstr("in_call           3\n")) << "the summary is of all";
}

TEST_F(ReplayCommandTest, ComparesWithAnEarlierRun) {
  const std::string log = Put("log", Setup(9001, 1) + Setup(9002, 2));
  const std::string before = Path("before");
  EXPECT_EQ(Tools({"replay", log, "-o", before}).code, ExitCode::kDone);
  const Run same = Tools({"replay", log, "--expect", before});
  EXPECT_EQ(same.code, ExitCode::kDone);
  EXPECT_EQ(same.out, Content("before"));
  Put("log", Setup(9001, 1) + Setup(9002, 3));
  const Run other = Tools({"replay", log, "--expect", before, "-q"});
  EXPECT_EQ(other.code, ExitCode::kDiffers);
  EXPECT_THAT(other.err, HasSubstr("line 2 differs"));
  Put("log", Setup(9001, 1));
  EXPECT_EQ(Tools({"replay", log, "--expect", before}).code, ExitCode::kDiffers) << "too short";
  Put("log", Setup(9001, 1) + Setup(9002, 2) + Setup(9002, 4));
  EXPECT_EQ(Tools({"replay", log, "--expect", before}).code, ExitCode::kDiffers) << "too long";
}

TEST_F(ReplayCommandTest, WrongUsageIsTold) {
  const std::string log = Put("log", Setup(9001, 1));
  const Arguments wrong[] = {{},
                             {"nothing"},
                             {"replay"},
                             {"replay", log, log},
                             {"replay", log, "--nothing"},
                             {"replay", log, "-F"},
                             {"replay", log, "-F", "xml"},
                             {"replay", log, "--network", "262"},
                             {"replay", log, "--hold", "x"},
                             {"replay", log, "--group", "-1"},
                             {"replay", log, "--reason", "because"},
                             {"replay", log, "--rate", "0"},
                             {"replay", log, "--rate", "nan"},
                             {"replay", log, "--timeout", "0"},
                             {"replay", log, "-o", ""}};
  for (const Arguments& arguments : wrong) {
    const Run run = Tools(arguments);
    EXPECT_EQ(run.code, ExitCode::kFailed) << (arguments.empty() ? "" : arguments.back());
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err, "");
  }
}

TEST_F(ReplayCommandTest, FilesThatCannotBeUsedAreTold) {
  const std::string log = Put("log", Setup(9001, 1));
  Put("bad/TETRA_GSSI.txt", "9001;262\r\n");
  const Arguments wrong[] = {{"replay", Path("none")},
                             {"replay", Path("")},
                             {"replay", log, "--lists", Path("none")},
                             {"replay", log, "--lists", Path("bad")},
                             {"replay", log, "--settings", Path("none")},
                             {"replay", log, "--settings", Put("empty", "")},
                             {"replay", log, "--settings", Put("other", std::string(39, '\x7F'))},
                             {"replay", log, "--events", Path("none")},
                             {"replay", log, "--expect", Path("none")},
                             {"replay", log, "-o", Path("none/out")},
                             {"replay", log, "-o", log}};
  for (const Arguments& arguments : wrong) {
    const Run run = Tools(arguments);
    EXPECT_EQ(run.code, ExitCode::kFailed) << arguments.back();
    EXPECT_EQ(run.out, "") << arguments.back();
    EXPECT_THAT(run.err, HasSubstr("corvane-tools replay: ")) << arguments.back();
  }
  EXPECT_EQ(Content("log"), Setup(9001, 1)) << "the log is still there";
}

// Takes a few bytes and no more.
class FullOutput : public Output {
 private:
  bool Put(std::string_view text) override {
    taken_ += text.size();
    return taken_ < 200;
  }
  bool PutAll() override { return taken_ < 200; }
  std::size_t taken_ = 0;
};

TEST_F(ReplayCommandTest, ALostOutputIsAFailure) {
  const std::string log = Put("log", Setup(9001, 1) + Setup(9002, 2) + Setup(9003, 3));
  StringOutput whole;
  for (const Arguments& arguments : {Arguments{"replay", log}, Arguments{"replay", "--help"}}) {
    FullOutput full;
    Console console{full, whole};
    EXPECT_EQ(RunTools(arguments, console), ExitCode::kFailed) << arguments.back();
    EXPECT_THAT(whole.text(), HasSubstr("could not be written")) << arguments.back();
  }
  FullOutput full;
  Console console{whole, full};
  EXPECT_EQ(RunTools({"replay", log}, console), ExitCode::kFailed) << "a lost summary";
  EXPECT_EQ(Tools({"replay", log, "-o", "/dev/full"}).code, ExitCode::kFailed);
}

TEST_F(ReplayCommandTest, ABarOnTheTerminalAlone) {
  const std::string log = Put("log", Setup(9001, 1));
  for (const bool terminal : {false, true}) {
    StringOutput out;
    StringOutput err;
    Console console{out, err, false, terminal};
    EXPECT_EQ(RunTools({"replay", log}, console), ExitCode::kDone);
    EXPECT_EQ(Contains(err.text(), "100 %"), terminal);
  }
  StringOutput out;
  StringOutput err;
  Console console{out, err, false, true};
  EXPECT_EQ(RunTools({"replay", log, "-q"}, console), ExitCode::kDone);
  EXPECT_EQ(err.text(), "");
}

TEST_F(ReplayCommandTest, HelpNamesEveryOptionAndOutcome) {
  const Run help = Tools({"replay", "--help"});
  EXPECT_EQ(help.code, ExitCode::kDone);
  EXPECT_EQ(Tools({"help", "replay"}).out, help.out);
  for (int index = 0; index < kSetupOutcomes; ++index) {
    EXPECT_THAT(help.out, HasSubstr(NameOf(static_cast<SetupOutcome>(index))));
  }
  for (const char* option :
       {"-F ", "-o ", "--lists", "--settings", "--events", "--network", "--hold", "--log-mode",
        "--group", "--reason", "--rate", "--expect", "--timeout", "-q"}) {
    EXPECT_THAT(help.out, HasSubstr(option));
  }
  EXPECT_THAT(Tools({"--help"}).out, HasSubstr("replay"));
  EXPECT_THAT(Tools({"--version"}).out, HasSubstr("corvane-tools "));
}

// The same files are compared with what the Windows program prints.
TEST_F(ReplayCommandTest, AReviewedHourInEveryForm) {
  const std::string day = "tests/scenarios/busy_hour/following/20261115/";
  for (const char* format : {"text", "json", "csv"}) {
    const Run run = Tools({"replay", day + "TETRA_cc.log", "--events", day + "TETRA_event.log",
                           "--lists", "tests/golden/replay", "-F", format, "--expect",
                           std::string("tests/golden/replay/following.") + format});
    EXPECT_EQ(run.code, ExitCode::kDone) << run.err;
    EXPECT_GT(Lines(run.out).size(), 200U);
    EXPECT_THAT(run.err, HasSubstr("event log shows otherwise: 0\n"));
  }
}

TEST_F(ReplayCommandTest, RubbishIsReadToItsEnd) {
  std::string rubbish = Setup(9001, 1);
  std::uint32_t state = 12345;
  for (int i = 0; i < 300'000; ++i) {
    state = state * 1664525U + 1013904223U;
    rubbish += static_cast<char>(state >> 24U);
  }
  rubbish += "\n" + Setup(9002, 2);
  rubbish.pop_back();
  const std::vector<std::string> outcomes = Outcomes(rubbish);
  ASSERT_EQ(outcomes.size(), 2U);
  EXPECT_THAT(outcomes.back(), HasSubstr("followed"));
}

}  // namespace
}  // namespace corvane::tools
