// Calls on their way to other programs: when they are complete, that each goes once, and what is
// started for them.
#include <gmock/gmock.h>

#include <filesystem>

#include "archive/instant.h"
#include "tools/share/hooks.h"
#include "tools/share/sidecar.h"
#include "unit/tools/share_fixture.h"

namespace corvane::tools {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST_F(ShareTest, ACallIsCompleteWhenItsEndIsLogged) {
  LiveDay day = Live();
  EXPECT_THAT(LookAt(day, "14:23:04"), IsEmpty()) << "without any folder";
  Log("14:23:00", "MCC:262  MNC:42  LA:101");
  Log("14:23:05", "Call ID: 7 - On carrier: 2610 - Group: 9001 [Fire]");
  Log("14:23:05", "Call ID: 7 - Calling SSI: 5010 [Control]");
  Put("20261115/Record/newTmp.wav", "RIFF");
  EXPECT_THAT(LookAt(day, "14:23:08"), IsEmpty());
  Record(kWav);
  EXPECT_THAT(LookAt(day, "14:23:10"), IsEmpty()) << "its end may still come";
  Log("14:23:10", "Call ID: 7 - VC D-Released");
  const std::vector<SharedCall> calls = LookAt(day, "14:23:11");
  ASSERT_EQ(calls.size(), 1U);
  EXPECT_EQ(calls[0].name, kWav);
  EXPECT_EQ(calls[0].call.end, EndOfCall::kReleased);
  EXPECT_EQ(calls[0].call.carrier, 2610);
  EXPECT_EQ(calls[0].call.mcc, 262);
  ASSERT_EQ(calls[0].call.talkers.size(), 1U);
  EXPECT_EQ(calls[0].call.talkers[0].label, "Control");
  EXPECT_EQ(calls[0].begin, SecondsOf(*ParseIsoDate("2026-11-15 14:23:06")));
  EXPECT_THAT(LookAt(day, "14:23:12"), IsEmpty()) << "once";
}

TEST_F(ShareTest, ACallWithoutALoggedEndGoesAfterTwoSeconds) {
  LiveDay day = Live();
  Record(kWav);
  Record("142306_8_9001_call_forced_end.wav");
  Put("20261115/Record/142307_9_9001.wav", "no sound");
  Put("20261115/Record/notes.wav", Sound());
  const std::vector<SharedCall> first = LookAt(day, "14:23:10");
  ASSERT_EQ(first.size(), 1U) << "the name tells the end";
  EXPECT_EQ(first[0].call.end, EndOfCall::kForced);
  EXPECT_THAT(LookAt(day, "14:23:11"), IsEmpty());
  const std::vector<SharedCall> second = LookAt(day, "14:23:12");
  ASSERT_EQ(second.size(), 1U);
  EXPECT_EQ(second[0].call.gssi, 9001);
  EXPECT_EQ(second[0].call.call_id, 7);
  EXPECT_EQ(second[0].call.end, EndOfCall::kUnknown);
  EXPECT_THAT(notices_, ElementsAre("20261115/142307_9_9001.wav holds no sound"));
}

TEST_F(ShareTest, ACallIsSharedOnceWhereverARunEnded) {
  const SharedCall call = Call();
  const std::string sidecar = Path("out/20261115/142306_7_9001.json");
  {
    Outbox outbox(Path("out"));
    ASSERT_EQ(outbox.Open(), "");
    EXPECT_FALSE(outbox.HasDay("20261115"));
    EXPECT_EQ(outbox.Share(call, "{}"), "");
    EXPECT_TRUE(outbox.HasDay("20261115"));
    EXPECT_EQ(Content("out/20261115/142306_7_9001.json"), "{}");
    EXPECT_EQ(std::filesystem::hard_link_count(call.file), 2U) << "no room is taken";
    EXPECT_EQ(Content("out/shared.txt"),
              "begun 20261115/142306_7_9001.wav\ndone 20261115/142306_7_9001.wav\n");
  }
  const auto has_shared = [&](const std::string& notes) {
    Put("out/shared.txt", notes);
    Outbox outbox(Path("out"));
    EXPECT_EQ(outbox.Open(), "");
    return outbox.HasShared("20261115", kWav);
  };
  std::filesystem::remove(sidecar);
  EXPECT_TRUE(has_shared("begun 20261115/142306_7_9001.wav\ndone 20261115/142306_7_9001.wav\n"));
  EXPECT_TRUE(has_shared("begun 20261115/142306_7_9001.wav\n")) << "the reader took it";
  Put("out/20261115/142306_7_9001.json.part", "{}");
  EXPECT_FALSE(has_shared("begun 20261115/142306_7_9001.wav\n")) << "it has not got its name";
  EXPECT_FALSE(has_shared("begun 20261115/14"));
  EXPECT_EQ(Content("out/shared.txt"), "begun 20261115/14\n") << "the next note has its own line";
}

TEST_F(ShareTest, AnOutboxThatCannotBeWrittenIsTold) {
  const SharedCall call = Call();
  Put("file", "");
  EXPECT_THAT(Outbox(Path("file")).Open(), HasSubstr("cannot be made"));
  Outbox outbox(Path("out"));
  ASSERT_EQ(outbox.Open(), "");
  std::filesystem::create_directories(Path("out/20261115/142306_7_9001.json.part"));
  EXPECT_THAT(outbox.Share(call, "{}"), HasSubstr("cannot be written"));
  EXPECT_FALSE(outbox.HasShared("20261115", kWav));
}

TEST_F(ShareTest, UnknownFactsAreZeroOrNullAndBothListsAreThere) {
  SharedCall shared = Call();
  shared.call.gssi = 9001;
  const std::string json = SidecarJson(shared, {});
  EXPECT_THAT(json, HasSubstr("\"talkgroup_tag\": \"-\""));
  EXPECT_THAT(json, HasSubstr("\"short_name\": \"-\""));
  EXPECT_THAT(json, HasSubstr("\"freqList\": [\n"));
  EXPECT_THAT(json, HasSubstr("\"srcList\": [],\n"));
  EXPECT_THAT(json, HasSubstr("\"system\": 0,\n  \"corvane\": {\"mcc\": null, \"mnc\": null, "
                              "\"la\": null, \"call_id\": null, \"carrier\": null, "
                              "\"slot\": null, \"end_reason\": \"unknown\"}\n}\n"));
  EXPECT_THAT(SidecarJson(shared, {0, 865262500, 7}), HasSubstr("\"system\": 7,"));
  EXPECT_THAT(SidecarJson(shared, {0, 865262500, 7}), HasSubstr("{\n  \"freq\": 865262500,\n"));
}

TEST_F(ShareTest, ACommandIsSplitAtBlanksAndMarksAlone) {
  using Words = std::vector<std::string>;
  EXPECT_EQ(SplitCommand("up \"C:\\My Tools\\x\" WAV  JSON"),
            (Words{"up", "C:\\My Tools\\x", "WAV", "JSON"}));
  EXPECT_EQ(SplitCommand("a\"b c\"d $x;`y` '' \"\""), (Words{"ab cd", "$x;`y`", "''", ""}));
  EXPECT_FALSE(SplitCommand(""));
  EXPECT_FALSE(SplitCommand("a \"b"));
  EXPECT_EQ(HookWords({"up", "JSON", "-f", "WAV", "WAVE"}, "w", "j"),
            (Words{"up", "j", "-f", "w", "WAVE"}));
  EXPECT_EQ(HookWords({"WAV"}, "w", "j"), (Words{"WAV", "w", "j"}));
}

TEST_F(ShareTest, AHookGetsTwoPathsWhateverTheNamesAre) {
  Put("c/TETRA_GSSI.txt", "9001;262;42;$(touch x) \"| rm y;0;True\r\n");
  Put("c/Daily/20261115/Record/142306_7_9001.wav", Sound());
  const std::string script = Put("hook", "#!/bin/sh\nprintf '%s|' \"$#\" \"$@\" >>\"$0.out\"\n");
  std::filesystem::permissions(script, std::filesystem::perms::owner_all);
  const Run run = Tools({"share", Path("c/Daily/20261115"), "--outbox", Path("out"), "--exec",
                         "\"" + script + "\" WAV JSON"});
  EXPECT_EQ(run.code, ExitCode::kDone) << run.err;
  EXPECT_EQ(run.out, Path("out/20261115/142306_7_9001.json") + "\n");
  EXPECT_EQ(Content("hook.out"), "2|" + Path("out/20261115/142306_7_9001.wav") + "|" +
                                     Path("out/20261115/142306_7_9001.json") + "|");
  EXPECT_THAT(Content("out/20261115/142306_7_9001.json"),
              HasSubstr("\"talkgroup_tag\": \"$(touch x) \\\"| rm y\""));
}

TEST_F(ShareTest, FailuresAreTold) {
  Put("c/Daily/20261115/Record/142306_7_9001.wav", Sound());
  const std::string day = Path("c/Daily/20261115");
  const Run failing = Tools({"share", day, "--outbox", Path("out"), "--exec", "/bin/false"});
  EXPECT_EQ(failing.code, ExitCode::kFailed);
  EXPECT_THAT(failing.err, HasSubstr("/bin/false ended with 1 for "));
  EXPECT_EQ(Tools({"share", day, "--outbox", Path("out")}).code, ExitCode::kDone);
  const Run missing = Tools({"share", day, "--outbox", Path("other"), "--exec", Path("none")});
  EXPECT_EQ(missing.code, ExitCode::kFailed);
  EXPECT_THAT(missing.err, HasSubstr("could not be started"));
  Put("file", "");
  const Arguments wrong[] = {{"share"},
                             {"share", day, day},
                             {"share", day, "--follow"},
                             {"share", day, "--exec", "\""},
                             {"share", day, "--system", "x"},
                             {"share", day, "--outbox", Path("file")},
                             {"share", Path("none"), "--outbox", Path("out")},
                             {"share", "--follow", "--folder", Path("none")}};
  for (const Arguments& arguments : wrong) {
    const Run run = Tools(arguments);
    EXPECT_EQ(run.code, ExitCode::kFailed) << arguments.back();
    EXPECT_EQ(run.out, "") << arguments.back();
    EXPECT_THAT(run.err, HasSubstr("corvane-tools share: ")) << arguments.back();
  }
}

}  // namespace
}  // namespace corvane::tools
