// Commands, word by word: what each does, and what is wrong with one. What several do together is
// in model_test.cpp.
#include "standin/commands.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "standin/model.h"

namespace corvane::standin {
namespace {

std::string Fault(std::string_view text) {
  std::vector<Word> words;
  std::string fault = SplitWords(text, words);
  Command command;
  return fault.empty() ? ReadCommand(words, command) : fault;
}

class CommandsTest : public ::testing::Test {
 protected:
  void Do(std::string_view command) { EXPECT_EQ(model_.Do(command), "") << command; }
  [[nodiscard]] const Window& Find(WindowId id) { return *model_.tree().Find(id); }

  Model model_{Options{}};
};

TEST_F(CommandsTest, StartsACallWithAllThatCanBeSaidOfIt) {
  Do("call id=1207 group=9001 party=5010 carrier=2610 slot=2 status=Request_queued "
     "service=Individual encrypted for=1:30 repeat=0.5 missed");
  const Call* call = model_.air().Find(1207);
  ASSERT_NE(call, nullptr);
  EXPECT_EQ(call->group, 9001);
  EXPECT_EQ(call->party, 5010);
  EXPECT_EQ(call->carrier, 2610);
  EXPECT_EQ(call->slot, 2);
  EXPECT_EQ(call->status, "Request_queued");
  EXPECT_EQ(call->service, "Individual");
  EXPECT_TRUE(call->encrypted);
  model_.Advance(499);
  EXPECT_EQ(model_.log().Count("air"), 1u);
  model_.Advance(1000);
  EXPECT_EQ(model_.log().Count("air"), 3u);
  model_.Advance(89999);
  EXPECT_NE(model_.air().Find(1207), nullptr);
  const std::size_t lines = model_.log().Count("air");
  model_.Advance(91000);
  EXPECT_EQ(model_.air().Find(1207), nullptr);
  EXPECT_EQ(model_.log().Count("air"), lines);  // missed; and no more setups of what is over
}

TEST_F(CommandsTest, RepeatsNoSetupOfALaterCallWithTheSameId) {
  Do("call id=7 group=1 party=2 carrier=2610 slot=1 repeat=1");
  Do("release id=7");
  Do("call id=7 group=1 party=2 carrier=2610 slot=1 for=5");
  model_.Advance(3000);
  EXPECT_EQ(model_.log().Count("air"), 3u);
}

TEST_F(CommandsTest, SetsTrafficUp) {
  Do("traffic calls-per-hour=3600 groups=9001-9003,9010 parties=5010-5012 carriers=2610,2611 "
     "length=3-9 first-id=70");
  std::set<std::int32_t> groups;
  std::set<std::int32_t> parties;
  std::set<int> carriers;
  std::int64_t shortest_ms = 100000;
  std::int64_t longest_ms = 0;
  std::map<std::uint64_t, std::int64_t> begun;
  for (std::int64_t ms = 0; ms <= 600000; ms += 100) {
    model_.Advance(ms);
    std::set<std::uint64_t> on;
    for (const auto& [id, call] : model_.air().calls()) {
      EXPECT_GE(id, 70);
      groups.insert(call.group);
      parties.insert(call.party);
      carriers.insert(call.carrier);
      on.insert(call.serial);
      begun.emplace(call.serial, ms);
    }
    for (auto it = begun.begin(); it != begun.end();) {
      if (on.contains(it->first)) {
        ++it;
        continue;
      }
      shortest_ms = std::min(shortest_ms, ms - it->second);
      longest_ms = std::max(longest_ms, ms - it->second);
      it = begun.erase(it);
    }
  }
  EXPECT_EQ(groups, (std::set<std::int32_t>{9001, 9002, 9003, 9010}));
  EXPECT_EQ(parties, (std::set<std::int32_t>{5010, 5011, 5012}));
  EXPECT_EQ(carriers, (std::set<int>{2610, 2611}));
  EXPECT_GE(shortest_ms, 2900);
  EXPECT_LT(shortest_ms, 4500);
  EXPECT_LE(longest_ms, 9100);
  EXPECT_GT(longest_ms, 7500);
}

TEST_F(CommandsTest, SetsTheSortsOfTrafficInPercent) {
  const struct {
    const char* word;
    const char* line;  // what only that sort brings
  } sorts[] = {{"encrypted", "PDU encrypted"},
               {"individual", "Basic_service:Individual"},
               {"queued", "Request_queued"},
               {"not-granted", "Not_granted"},
               {"disconnected", "D_Disconnect"}};
  for (const auto& [word, line] : sorts) {
    const auto count = [line = line](const std::string& words) {
      Model model(Options{});
      EXPECT_EQ(model.Do("traffic calls-per-hour=3600 length=1-2" + words), "");
      model.Advance(60000);
      const std::vector<std::string> air = model.log().Details("air");
      return std::count_if(air.begin(), air.end(), [&](const std::string& text) {
        return text.find(line) != std::string::npos;
      });
    };
    EXPECT_EQ(count(""), 0) << word;
    EXPECT_GT(count(" " + std::string(word) + "=100"), 30) << word;
  }
}

TEST_F(CommandsTest, SendsNoReleaseOfMissedTraffic) {
  Do("traffic calls-per-hour=3600 length=1-2 missed=100");
  model_.Advance(60000);
  const std::vector<std::string> air = model_.log().Details("air");
  EXPECT_GT(air.size(), 30u);
  for (const std::string& line : air) EXPECT_EQ(line.find("D_Release"), std::string::npos) << line;
  Do("traffic off");
  model_.Advance(70000);
  EXPECT_TRUE(model_.air().calls().empty());
  const std::size_t lines = model_.log().Count("air");
  model_.Advance(200000);
  EXPECT_EQ(model_.log().Count("air"), lines);
}

TEST_F(CommandsTest, SendsLinesWhereTheyAreHeard) {
  std::vector<Pdu> heard;
  model_.air().SetEvents({[&](const Pdu& pdu) { heard.push_back(pdu); }, [] {}});
  Do("line \"x y\" on=carrier carrier=2610 count=3");
  Do("partial \"z\" on=control");
  ASSERT_EQ(heard.size(), 4u);
  EXPECT_EQ(heard[2].line, "x y");
  EXPECT_EQ(heard[2].carrier, 2610);
  EXPECT_FALSE(heard[2].on_control);
  EXPECT_TRUE(heard[2].ended);
  EXPECT_EQ(heard[3].carrier, std::nullopt);
  EXPECT_TRUE(heard[3].on_control);
  EXPECT_FALSE(heard[3].ended);
}

TEST_F(CommandsTest, SpoilsRepliesAndGreetings) {
  const auto exchange = [this] {
    model_.log().Clear();
    const ClientId client = model_.server().Accepted();
    model_.Advance(model_.now_ms() + 1);
    model_.server().Received(client, "x");
    model_.Advance(model_.now_ms() + 100);
    model_.server().Cut(false);
    return model_.log().Details("reply");
  };
  Do("listen on");
  const std::vector<std::string> usual = exchange();
  ASSERT_EQ(usual.size(), 2u);
  Do("greeting text \"a\\r\\n\" count=all");
  Do("reply split 30 count=2");
  for (int i = 0; i < 2; ++i) {
    const std::vector<std::string> spoilt = exchange();
    ASSERT_EQ(spoilt.size(), 3u);
    EXPECT_TRUE(spoilt[0].ends_with(" a\r\n")) << spoilt[0];
    EXPECT_EQ(spoilt[1].find('\n'), std::string::npos);
    const LogEntry& second =
        *std::find_if(model_.log().entries().rbegin(), model_.log().entries().rend(),
                      [](const LogEntry& entry) { return entry.kind == "reply"; });
    EXPECT_EQ(model_.now_ms() - second.ms, 70);
  }
  Do("greeting normal");
  const std::vector<std::string> healed = exchange();
  ASSERT_EQ(healed.size(), 2u);
  EXPECT_EQ(healed[0].substr(healed[0].find(' ')), usual[0].substr(usual[0].find(' ')));
}

TEST_F(CommandsTest, CutsInGoodOrderOrNot) {
  for (const char* command : {"cut", "cut reset"}) {
    (void)model_.server().Accepted();
    Do(command);
    EXPECT_EQ(model_.server().client_count(), 0u) << command;
  }
}

TEST_F(CommandsTest, SetsBoxesAndSettings) {
  Do("check demodulator on");
  Do("check demodulator on");
  Do("check auto off");
  EXPECT_TRUE(model_.receiver().state().demodulator_on);
  EXPECT_FALSE(model_.receiver().state().auto_on);
  Do("paint auto other");
  EXPECT_EQ(Find(model_.ids().automatic).paint, Paint::kOther);
  EXPECT_EQ(Find(model_.ids().demodulator).paint, Paint::kNormal);
  Do("paint auto normal");
  EXPECT_EQ(Find(model_.ids().automatic).paint, Paint::kNormal);
  const auto seen = [this](WindowId id) {
    const Box box = model_.tree().ScreenBox(id);
    return model_.tree().PixelAt(box.left + 7, box.top + 7);
  };
  Do("cover demodulator unchecked");
  Do("cover auto checked");
  EXPECT_EQ(seen(model_.ids().demodulator), kUncheckedColour);
  EXPECT_EQ(seen(model_.ids().automatic), kCheckedColour);
  Do("cover none");
  EXPECT_EQ(seen(model_.ids().demodulator), kCheckedColour);
  EXPECT_EQ(seen(model_.ids().automatic), kUncheckedColour);
  Do("source error");
  EXPECT_EQ(model_.Do("set Frequency 5"), "The source is not tunable");
  Do("source ok");
  Do("set Frequency 5");
  Do("panel net-remote collapse");
  EXPECT_FALSE(model_.tree().IsVisible(model_.ids().network));
  EXPECT_TRUE(model_.tree().IsVisible(model_.ids().demodulator));
  Do("signalling both");
  EXPECT_TRUE(model_.air().signalling_on_control);
  Do("signalling voice");
  EXPECT_FALSE(model_.air().signalling_on_control);
}

TEST_F(CommandsTest, KeepsOrForgetsWhatABoxShowed) {
  Do("window network-info open");
  Do("line one");
  for (const char* command : {"history keep", "history empty"}) {
    Do(command);
    Do("window network-info close");
    Do("window network-info open");
    EXPECT_EQ(Find(model_.ids().info_box).lines.text().empty(),
              std::string_view(command) == "history empty")
        << command;
  }
}

TEST_F(CommandsTest, NeedsSdrForWhatOnlySdrCanDo) {
  Do("die");
  for (const char* command :
       {"hang 5", "die", "play", "stop", "listen on", "check auto on", "paint auto other",
        "cover auto checked", "panel tetra expand", "window network-info open"}) {
    EXPECT_EQ(model_.Do(command), "SDR# does not run now") << command;
  }
  for (const char* command : {"window main hide", "window network-info close", "move main 1 2",
                              "move network-info 1 2", "clear-box"}) {
    EXPECT_EQ(model_.Do(command), "there is no such window now") << command;
  }
  EXPECT_EQ(model_.Do("duplicate"), "there is no line yet");
}

TEST(ReadCommandTest, SaysWhatIsWrong) {
  const struct {
    const char* text;
    const char* fault;
  } cases[] = {
      {"fly", "unknown command \"fly\""},
      {"id=5", "a command is missing"},
      {"pause", "id= is missing"},
      {"pause id=x", "id is a number from 0 to 65535, not \"x\""},
      {"pause id=99999", "id is a number from 0 to 65535, not \"99999\""},
      {"pause id=1 id=2", "\"id=\" does not belong here"},
      {"pause id=1 now", "\"now\" does not belong here"},
      {"call id=1 group=2 party=3 carrier=4", "slot= is missing"},
      {"call id=1 group=2 party=3 carrier=4 slot=1 status=Maybe",
       "status= is one of Granted, Request_queued, Not_granted"},
      {"call id=1 group=2 party=3 carrier=4 slot=1 for=soon",
       "for= is a time like 2.5 or 1:30, not \"soon\""},
      {"call id=1 group=2 party=3 carrier=4 slot=1 repeat=0", "repeat= is 0.01 or more"},
      {"hang", "ms is missing"},
      {"hang 0", "ms is a number from 1 to 3600000, not \"0\""},
      {"listen maybe", "the state is one of on, off, not \"maybe\""},
      {"reply explode",
       "the fault is one of normal, split, join, delay, garble, drop, text, not "
       "\"explode\""},
      {"reply drop count=many", "count is a number from 1 to 100000, not \"many\""},
      {"window main close", "the main window is neither closed nor opened: use die and revive"},
      {"traffic calls-per-hour=5 groups=9-1",
       "groups= holds a range that is backwards or too long"},
      {"traffic calls-per-hour=5 groups=1-1000000",
       "groups= holds a range that is backwards or too long"},
      {"traffic calls-per-hour=5 missed=101", "missed is a number from 0 to 100, not \"101\""},
      {"line \"x\" on=moon", "on= is one of any, control, carrier"},
      {"line \"x\" on=carrier", "carrier= is missing"},
      {"network 262 42", "the LA is missing"},
  };
  for (const auto& [text, fault] : cases) EXPECT_EQ(Fault(text), fault) << text;
}

TEST_F(CommandsTest, SaysHowTheSystemAndOtherProgramsTreatSdr) {
  Do("elevated on");
  EXPECT_TRUE(model_.elevated());
  Do("elevated off");
  EXPECT_FALSE(model_.elevated());
  Do("front kept");
  EXPECT_TRUE(model_.front_kept());
  Do("refusal 2000");
  EXPECT_EQ(model_.refusal_ms(), 2000);
  Do("stranger hang 500");
  const WindowId stranger = model_.tree().top_level().front();
  EXPECT_EQ(Find(stranger).kind, Kind::kStranger);
  EXPECT_EQ(model_.stranger_hung_until_ms(stranger), 500);
  Do("stranger none");
  EXPECT_EQ(model_.tree().Find(stranger), nullptr);
  Do("window network-info open");
  const int box = Find(model_.ids().info_box).box.width;
  Do("width 400");
  EXPECT_EQ(Find(model_.ids().info_window).box.width, 400);
  EXPECT_EQ(Find(model_.ids().info_box).box.width, box - 240);
  EXPECT_NE(Fault("elevated perhaps"), "");
  EXPECT_NE(Fault("stranger hang"), "");
  EXPECT_NE(Fault("width 5"), "");
}

}  // namespace
}  // namespace corvane::standin
