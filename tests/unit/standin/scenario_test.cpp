// Scenario files: what they mean, and which line is at fault.
#include "standin/scenario.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <sstream>

#include "standin/model.h"

namespace corvane::standin {
namespace {

std::string FaultOf(std::string_view content) {
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
  EXPECT_EQ(FaultOf("\n\nfly"), "line 3: unknown command \"fly\"");
  EXPECT_EQ(FaultOf("at"), "line 1: a time is missing behind \"at\"");
  EXPECT_EQ(FaultOf("at 5"), "line 1: a command is missing behind the time");
  EXPECT_EQ(FaultOf("at noon end"), "line 1: \"noon\" is no time like 2.5, 1:30, 1:02:03 or +2");
  EXPECT_EQ(FaultOf("name x\nbase -1"),
            "line 2: the base is a number from 0 to 2000000000, not \"-1\"");
  EXPECT_EQ(FaultOf("seed 1 2"), "line 1: \"2\" does not belong here");
  EXPECT_EQ(FaultOf("at 1000:00:01 end"),
            "line 1: \"1000:00:01\" is no time like 2.5, 1:30, 1:02:03 or +2");
  EXPECT_EQ(FaultOf("at 900:00:00 end\nat +900:00:00 end"),
            "line 2: that is later than a thousand hours");
}

TEST(ScenarioTest, RefusesFilesBeyondAllMeasure) {
  EXPECT_EQ(FaultOf(std::string(kMaxScenarioBytes + 1, '#')), "the file is longer than 4 MB");
  EXPECT_EQ(FaultOf(std::string(kMaxScenarioLines + 1, '\n')),
            "the file has more than 50000 lines");
}

Scenario Sample(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << path;
  std::ostringstream content;
  content << file.rdbuf();
  Scenario scenario;
  EXPECT_EQ(ParseScenario(content.str(), scenario), "") << path;
  return scenario;
}

// The calls that a log tells of, each counted once however often its setup was sent.
std::set<std::string> CallIds(Model& model) {
  std::set<std::string> ids;
  for (const std::string& line : model.log().Details("air")) {
    const std::size_t at = line.find("Call ID:");
    if (line.find("D_Setup") != std::string::npos) ids.insert(line.substr(at, line.find(' ', at)));
  }
  return ids;
}

TEST(ScenarioTest, PlaysTheSamplesWithoutAFault) {
  std::vector<std::filesystem::path> files = {"demo/demo.scenario"};
  for (const auto& entry : std::filesystem::directory_iterator("standin/scenarios")) {
    files.push_back(entry.path());
  }
  EXPECT_GE(files.size(), 4u);
  for (const std::filesystem::path& path : files) {
    Model model(Options{}, Sample(path));
    for (std::int64_t ms = 0; ms < 3600000; ms += 1000) {
      model.Advance(ms);
      model.windows().OpenInfo();  // as the program that practises on it does
    }
    EXPECT_EQ(model.log().Details("error"), std::vector<std::string>{}) << path;
  }
}

TEST(ScenarioTest, PlaysAsManyCallsAsTheDemonstrationsSay) {
  Model tour(Options{}, Sample("standin/scenarios/demo.txt"));
  tour.Advance(3600000);
  EXPECT_TRUE(tour.finished());
  EXPECT_EQ(CallIds(tour).size(), 5u);
  Model demo(Options{}, Sample("demo/demo.scenario"));
  demo.Advance(44999);  // then traffic begins
  EXPECT_EQ(CallIds(demo).size(), 4u);
  EXPECT_TRUE(demo.air().calls().empty());
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
