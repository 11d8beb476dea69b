// Scenario files: what they mean, and which line is at fault.
#include "standin/scenario.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "standin/model.h"

namespace corvane::standin {
namespace {

std::string Fault(std::string_view content) {
  Scenario scenario;
  return ParseScenario(content, scenario);
}

TEST(ScenarioTest, ReadsSettingsAndCommandsInOrderOfTime) {
  Scenario scenario;
  ASSERT_EQ(ParseScenario("# a comment\r\n"
                          "name \"Two calls\"\r\n"
                          "base 400000000\ncontrol 3600\noffset -6250\nseed 9\n"
                          "network 262 42 101   # where we are\n"
                          "\n"
                          "at 10 pause id=7\n"
                          "at 2.5 call id=7 group=1 party=2 carrier=3 slot=4\n"
                          "at +1.25 speak id=7 party=3\n"
                          "at 1:00:00 end",
                          scenario),
            "");
  EXPECT_EQ(scenario.name, "Two calls");
  EXPECT_EQ(scenario.base_hz, 400000000);
  EXPECT_EQ(scenario.control_carrier, 3600);
  EXPECT_EQ(scenario.offset_hz, -6250);
  EXPECT_EQ(scenario.seed, 9u);
  ASSERT_EQ(scenario.commands.size(), 5u);
  EXPECT_EQ(scenario.commands[0].ms, 0);
  EXPECT_EQ(scenario.commands[1].ms, 2500);
  EXPECT_EQ(scenario.commands[2].ms, 3750);
  EXPECT_EQ(scenario.commands[3].ms, 10000);
  EXPECT_EQ(scenario.commands[4].ms, 3600000);
  EXPECT_EQ(scenario.commands[1].line, 10);
}

TEST(ScenarioTest, NamesTheLineAtFault) {
  EXPECT_EQ(Fault("\n\nfly"), "line 3: unknown command \"fly\"");
  EXPECT_EQ(Fault("at"), "line 1: a time is missing behind \"at\"");
  EXPECT_EQ(Fault("at 5"), "line 1: a command is missing behind the time");
  EXPECT_EQ(Fault("at noon end"), "line 1: \"noon\" is no time like 2.5, 1:30, 1:02:03 or +2");
  EXPECT_EQ(Fault("name x\nbase -1"),
            "line 2: the base is a number from 0 to 2000000000, not \"-1\"");
  EXPECT_EQ(Fault("seed 1 2"), "line 1: \"2\" does not belong here");
  EXPECT_EQ(Fault("at 1000:00:01 end"),
            "line 1: \"1000:00:01\" is no time like 2.5, 1:30, 1:02:03 or +2");
  EXPECT_EQ(Fault("at 900:00:00 end\nat +900:00:00 end"),
            "line 2: that is later than a thousand hours");
}

TEST(ScenarioTest, RefusesFilesBeyondAllMeasure) {
  EXPECT_EQ(Fault(std::string(kMaxScenarioBytes + 1, '#')), "the file is longer than 4 MB");
  EXPECT_EQ(Fault(std::string(kMaxScenarioLines + 1, '\n')), "the file has more than 50000 lines");
}

TEST(ScenarioTest, ReadsTimes) {
  const struct {
    const char* text;
    std::int64_t ms;
  } good[] = {{"0", 0},        {"2.5", 2500},        {"0.001", 1},     {"90", 90000},
              {"1:30", 90000}, {"1:02:03", 3723000}, {"0:00.25", 250}, {"600:00:00", 2160000000}};
  for (const auto& [text, expected] : good) {
    std::int64_t ms = -1;
    EXPECT_TRUE(ParseTime(text, ms)) << text;
    EXPECT_EQ(ms, expected) << text;
  }
  for (const char* text : {"", ".", "1.", ".5", "1.0000", "-1", "1:60", "1:2:3:4", "1:60:00",
                           "1:-1", "x", "4294967296", "1 2", "1e3"}) {
    std::int64_t ms = -1;
    EXPECT_FALSE(ParseTime(text, ms)) << text;
  }
}

TEST(ScenarioTest, AcceptsTheSamples) {
  std::vector<std::filesystem::path> files = {"tests/desktop/demo.scenario"};
  for (const auto& entry : std::filesystem::directory_iterator("standin/scenarios")) {
    files.push_back(entry.path());
  }
  for (const std::filesystem::path& path : files) {
    std::ifstream file(path, std::ios::binary);
    ASSERT_TRUE(file.is_open()) << path;
    std::ostringstream content;
    content << file.rdbuf();
    EXPECT_EQ(Fault(content.str()), "") << path;
  }
  EXPECT_GE(files.size(), 4u);
}

// A scenario is somebody's file: whatever is in it, the stand-in answers with a fault or plays it.
TEST(ScenarioTest, SurvivesDamagedScenarios) {
  constexpr unsigned kSeed = 15112026;
  std::mt19937 random(kSeed);
  const std::string whole =
      "name \"x\"\nnetwork 262 42 101\nat 1 call id=7 group=1 party=2 carrier=2604 slot=2 for=2\n"
      "at 1.5 speak id=7 party=3\nat 2 line \"a\\x41\" count=3\nat 2 hang 50\nat 3 die\n"
      "at 4 revive\nat 5 traffic calls-per-hour=36000 length=1-2\nat 5 noise per-hour=36000\n"
      "at 6 window network-info open\nat 6 window network-info close\nat 6 reply split 5\n"
      "at 7 burst count=9 id=9 group=1 party=2 carrier=3 slot=4\nat 8 press \"Net Info\"\n";
  int accepted = 0;
  for (int i = 0; i < 400; ++i) {
    std::string damaged = whole;
    for (auto edits = random() % 4; edits > 0 && !damaged.empty(); --edits) {
      const std::size_t at = random() % damaged.size();
      if (random() % 2 == 0) {
        damaged.erase(at, random() % 12);
      } else {
        damaged.insert(at, 1, static_cast<char>(random() % 256));
      }
    }
    Scenario scenario;
    const std::string fault = ParseScenario(damaged, scenario);
    if (!fault.empty()) {
      EXPECT_TRUE(fault.starts_with("line ")) << fault << " seed " << kSeed << " round " << i;
      continue;
    }
    ++accepted;
    Model model(Options{}, scenario);
    model.Advance(10000);
    EXPECT_EQ(model.now_ms(), 10000);
  }
  EXPECT_GT(accepted, 50);
  EXPECT_LT(accepted, 400);
}

}  // namespace
}  // namespace corvane::standin
