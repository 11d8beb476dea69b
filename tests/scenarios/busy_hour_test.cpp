// An hour of a busy network with all logs on: each file, line by line, as an independent model
// works it out and as it was reviewed (busy_hour/).
//
// CORVANE_WRITE_TRACES=1 writes the reviewed files anew; look at the difference before committing
// it.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "base/text.h"
#include "scenarios/busy_model.h"
#include "scenarios/busy_traffic.h"
#include "scenarios/world.h"

namespace corvane::sim {
namespace {

const std::filesystem::path kGolden = "tests/scenarios/busy_hour";
// A call times out within these after its half minute: the watchdog's and the poll cycle's periods.
constexpr std::int64_t kTimeoutLateS = 1;

struct BusyCase {
  const char* name;
  busy::TrafficOptions traffic;
  DateTime begin;
};

std::string GoldenText(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// Every file of the days, by its name below "Daily", recordings left out.
std::map<std::string, std::string> DayFiles(World& world) {
  std::map<std::string, std::string> files;
  const std::string daily = std::string(World::kProgramFolder) + "\\Daily";
  for (std::string name : world.files.List(daily)) {
    if (name.starts_with(daily)) name = name.substr(daily.size() + 1);
    if (const auto content = world.files.Content(daily + "\\" + name)) files[name] = *content;
  }
  return files;
}

int SecondOf(const std::string& stamped) {
  return std::stoi(stamped.substr(11, 2)) * 3600 + std::stoi(stamped.substr(14, 2)) * 60 +
         std::stoi(stamped.substr(17, 2));
}

// The time of a time-out depends on where in their periods two timers are; all else is exact.
bool SameLine(const std::string& written, const std::string& expected) {
  if (written == expected) return true;
  if (!Contains(expected, "Call timeout occured") || written.size() != expected.size())
    return false;
  const int late = SecondOf(written) - SecondOf(expected);
  return written.substr(19) == expected.substr(19) && late >= 0 && late <= kTimeoutLateS;
}

void ExpectSameLines(const std::string& name, const std::string& written,
                     const std::string& expected) {
  const std::vector<std::string> lines = FileLines(written);
  const std::vector<std::string> wanted = FileLines(expected);
  EXPECT_EQ(lines.size(), wanted.size()) << name;
  for (std::size_t index = 0; index < std::min(lines.size(), wanted.size()); ++index) {
    ASSERT_TRUE(SameLine(lines[index], wanted[index]))
        << name << ", line " << index + 1 << "\n  " << lines[index] << "\n  instead of\n  "
        << wanted[index];
  }
}

class BusyHour : public ::testing::TestWithParam<BusyCase> {
 protected:
  // Runs the program through the traffic and closes it.
  void RunProgram() {
    ASSERT_TRUE(world_.Load());
    world_.user().TextEdited(world_.form().txtTimeout, "30");
    world_.user().LostFocus(world_.form().txtTimeout);
    world_.Start();
    ASSERT_TRUE(world_.RunUntil([this] { return bool{world_.view().scanner.ScanPrimed}; }, 10000));
    world_.clock.Set(GetParam().begin);
    before_ = world_.form().lstCallLog.items();
    world_.user().Click(world_.form().chkCreateEventLog);
    world_.user().Click(world_.form().chkCreateCcVcLog);
    const std::int64_t begin = world_.loop.TickMs();
    for (const busy::Event& event : events_) {
      world_.Run(begin + event.ms - world_.loop.TickMs());
      if (event.line.empty()) {
        world_.user().Click(world_.form().chkCreateCallActivityCvsFile);
      } else {
        world_.Do("line \"" + event.line + "\"");
      }
    }
    world_.Run(busy::kQuietEndMs);
    world_.user().CloseRequested();
    ASSERT_TRUE(world_.closed);
  }

  void CompareWithReviewed(const std::map<std::string, std::string>& files) {
    const std::filesystem::path folder = kGolden / GetParam().name;
    if (std::getenv("CORVANE_WRITE_TRACES") != nullptr) {
      std::filesystem::remove_all(folder);
      for (const auto& [name, content] : files) {
        const std::filesystem::path file = folder / ReplaceAll(name, "\\", "/");
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
      }
      FAIL() << "files written, not compared: " << folder;
    }
    std::size_t reviewed = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
      reviewed += entry.is_regular_file() ? 1U : 0U;
    }
    EXPECT_EQ(reviewed, files.size());
    for (const auto& [name, content] : files) {
      EXPECT_EQ(FileLines(content), FileLines(GoldenText(folder / ReplaceAll(name, "\\", "/"))))
          << name;
    }
  }

  World world_{[] {
    WorldOptions options;
    options.files = {{"\\TETRA_GSSI.txt", busy::kGroupList},
                     {"\\TETRA_SSI.txt", busy::kSubscriberList}};
    return options;
  }()};
  std::vector<busy::Event> events_ = busy::MakeTraffic(GetParam().traffic);
  std::vector<std::string> before_;
};

TEST_P(BusyHour, EveryLogHoldsWhatItMust) {
  RunProgram();
  ASSERT_FALSE(HasFatalFailure());
  const DateTime& begin = GetParam().begin;
  busy::Model model(begin.hour * 3600 + begin.minute * 60 + begin.second, before_);
  for (const busy::Event& event : events_) model.Take(event);
  model.End(events_.back().ms + busy::kQuietEndMs);

  const std::map<std::string, std::string> files = DayFiles(world_);
  std::map<std::string, std::string> expected = model.files();
  for (const auto& [name, content] : files) {
    EXPECT_TRUE(expected.contains(name)) << name << " is too many";
  }
  for (const auto& [name, content] : expected) {
    ASSERT_TRUE(files.contains(name)) << name << " is missing";
    ExpectSameLines(name, files.at(name), content);
    EXPECT_EQ(files.at(name).size(), content.size()) << name;
  }

  // The traffic is worth the name.
  const busy::Model::Seen& seen = model.seen();
  EXPECT_GE(seen.repeats, 40);
  EXPECT_GE(seen.not_granted, 10);
  if (GetParam().traffic.log_mode) {
    EXPECT_GE(seen.counted, 100);
    EXPECT_GE(seen.wraps, 2);
    EXPECT_GE(seen.not_counted, 10);
    EXPECT_GE(seen.log_clears, 1);
  } else {
    EXPECT_GE(seen.followed, 40);
    EXPECT_GE(seen.skipped_by_lockout, 5);
    EXPECT_GE(seen.timed_out, 3);
    EXPECT_GE(seen.ended_by_log_mode, 1);
    EXPECT_GE(seen.counted, 20);
  }
  CompareWithReviewed(files);
}

// Both pass midnight.
INSTANTIATE_TEST_SUITE_P(
    Runs, BusyHour,
    ::testing::Values(BusyCase{"log_mode", busy::LogModeHour(), {2026, 11, 15, 23, 25, 0}},
                      BusyCase{"following", busy::FollowingHour(), {2026, 11, 15, 23, 34, 0}}),
    [](const auto& run) { return std::string(run.param.name); });

constexpr std::int64_t kPollMs = 60;
constexpr std::int64_t kPollsBeforeClear = 101'000;

// Once as many polls of LOG mode are over, the next end of a call or "D_Connect" empties the box.
TEST(BusyDay, TheBoxIsClearedWhereNoCallIsSplit) {
  World world;
  world.BringUp();
  world.user().Click(world.form().chkCreateCallActivityCvsFile);
  const std::int64_t begin = world.loop.TickMs();
  std::vector<std::int64_t> cleared_ms;
  std::vector<std::int64_t> due_ms;
  std::int64_t due = begin + kPollsBeforeClear * kPollMs;
  int expected_calls = 0;
  int clears = 0;
  for (int minute = 0; minute < 210; ++minute) {
    const std::string id = std::to_string(minute + 1);
    world.Do("line \"SSI:9001 D_Setup Transmission Granted Call ID:" + id +
             " Basic_service:Point_to_multipoint Party_SSI:5010 TimeSlot:2 Carrier:2610 \"");
    ++expected_calls;
    world.Run(20'000);
    world.Do("line \"SSI:9001 D_Info Call ID:" + id + " Reference:1 \"");
    world.Run(20'000);
    const int before = world.CountStatusLog(" - 'Network Info' editbox has been cleared");
    EXPECT_EQ(before, clears) << "cleared at something else than the end of a call";
    world.Do("line \"SSI:9001 D_Release Call ID:" + id + " Disconnect_cause:User_requested \"");
    const std::int64_t released = world.loop.TickMs();
    world.Run(20'000);
    if (world.CountStatusLog(" - 'Network Info' editbox has been cleared") == clears) continue;
    ++clears;
    cleared_ms.push_back(released);
    due_ms.push_back(due);
    due = released + kPollsBeforeClear * kPollMs;
  }
  ASSERT_EQ(clears, 2);
  for (std::size_t index = 0; index < cleared_ms.size(); ++index) {
    // At the first end of a call after that, and there is one every minute.
    EXPECT_GE(cleared_ms[index], due_ms[index] - 1000);
    EXPECT_LE(cleared_ms[index], due_ms[index] + 61'000);
  }
  const std::vector<std::string> daily =
      FileLines(world.FileText("\\Daily\\20261115\\DailyCallActivity_15-11-2026.csv"));
  EXPECT_EQ(daily.size(), static_cast<std::size_t>(expected_calls)) << "a call was lost";
}

}  // namespace
}  // namespace corvane::sim
