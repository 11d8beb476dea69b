// The first ten minutes of the busy hour in the real program, played as fast as it reads them: the
// files it writes hold the same lines as the reviewed ones, the times of day apart.
//
// A poll takes one line, so ten minutes of traffic take well under one. Only a call that times
// out costs its real time.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "base/text.h"
#include "desktop/call_test.h"
#include "scenarios/busy_model.h"
#include "scenarios/busy_traffic.h"

namespace corvane::desktop {
namespace {

using enum ControlId;
using Lines = std::vector<std::string>;

constexpr std::int64_t kPlayedMs = 10 * 60'000;
// As long as there is, because there is no voice: far longer than the lines about one call take to
// be read, also where much else is going on.
constexpr int kTimeout_s = 30;
constexpr int kReadLimit_ms = 180'000;
constexpr std::string_view kLastLine = "System_info the ten minutes are over";

// The lines without what tells the time in front of them.
Lines WithoutTimes(const Lines& lines, std::string_view separator) {
  Lines stripped;
  for (const std::string& line : lines) {
    const std::size_t at = line.find(separator);
    stripped.push_back(at == std::string::npos ? line : line.substr(at));
  }
  return stripped;
}

// What comes after the lines that the test itself needed to begin.
Lines AfterSigns(const Lines& lines) {
  const auto last = std::find_if(lines.rbegin(), lines.rend(), [](const std::string& line) {
    return Contains(line, "D_Status sign ");
  });
  return {last.base(), lines.end()};
}

Lines Before(Lines lines, std::string_view part) {
  lines.erase(std::find_if(lines.begin(), lines.end(),
                           [&](const std::string& line) { return Contains(line, part); }),
              lines.end());
  return lines;
}

Lines AfterLogModeBegan(Lines lines) {
  const auto begin = std::find_if(lines.begin(), lines.end(), [](const std::string& line) {
    return Contains(line, "LOG mode active");
  });
  if (begin != lines.end()) lines.erase(lines.begin(), begin + 1);
  return lines;
}

// Where two files part, which GoogleTest does not show of long ones.
std::string Parting(const Lines& written, const Lines& wanted) {
  const auto [here, there] = std::ranges::mismatch(written, wanted);
  const auto rest = [](auto at, auto end) {
    std::string text;
    for (int shown = 0; shown < 6 && at != end; ++shown, ++at) text += "\n    " + *at;
    return text;
  };
  return "from line " + std::to_string(here - written.begin() + 1) +
         " on, written:" + rest(here, written.end()) + "\n  wanted:" + rest(there, wanted.end());
}

void ExpectSame(const Lines& written, const Lines& wanted) {
  EXPECT_TRUE(written == wanted) << Parting(written, wanted);
}

class BusyMinutes : public CallTest {
 protected:
  void Play(const busy::TrafficOptions& options, std::int64_t begin_s) {
    log_mode_ = options.log_mode;
    busy::Model model(begin_s, {});
    Folder().Write("TETRA_GSSI.txt", busy::kGroupList);
    Folder().Write("TETRA_SSI.txt", busy::kSubscriberList);
    Settings settings;
    settings.timeout_s = kTimeout_s;
    settings.create_cc_vc_log = true;
    settings.create_event_log = true;
    settings.log_mode = options.log_mode;
    Begin(settings);
    std::int64_t last_ms = 0;
    for (const busy::Event& event : busy::MakeTraffic(options)) {
      if (event.ms >= kPlayedMs) break;
      AwaitTimeOutBefore(event, model);
      last_ms = event.ms;
      model.Take(event);
      if (!event.line.empty()) Line(event.line);
    }
    model.End(last_ms);
    expected_ = model.files();
    Line(kLastLine);
    Await(
        "the last line to be read", [this] { return Contains(Log("TETRA_cc.log"), kLastLine); },
        kReadLimit_ms);
    // Whatever that step had to write is there once a further line was read.
    AwaitLinesRead();
    Close(Corvane().Window());
    ASSERT_EQ(Corvane().TheProcess().WaitForExit(kGenerousLimit_ms), 0u);
  }

  [[nodiscard]] std::string Log(std::string_view ending) {
    const auto files = Folder().Find(ending);
    return files.size() == 1 ? ReadWholeFile(files.front()) : "";
  }
  [[nodiscard]] const std::string& Expected(const std::string& name) {
    return expected_["20261115\\" + name];
  }
  // That the model's files are the reviewed ones is a test of its own on the virtual clock.
  void ExpectSameFiles() {
    ExpectSame(Before(AfterSigns(FileLines(Log("TETRA_cc.log"))), kLastLine),
               FileLines(Expected("TETRA_cc.log")));
    Lines events = AfterSigns(FileLines(Log("TETRA_event.log")));
    Lines wanted = FileLines(Expected("TETRA_event.log"));
    if (log_mode_) wanted = AfterLogModeBegan(wanted);
    ExpectSame(WithoutTimes(Before(events, "D_Status read up to here"), " - "),
               WithoutTimes(wanted, " - "));
  }

 private:
  // Where half a minute of silence would end a call before the event, it must end here as well.
  void AwaitTimeOutBefore(const busy::Event& event, const busy::Model& model) {
    busy::Model future = model;
    future.End(event.ms);
    const int timed_out = future.seen().timed_out;
    if (timed_out == model.seen().timed_out) return;
    Await(
        "the time-out",
        [&] {
          return CountContaining(FileLines(Log("TETRA_event.log")), "Call timeout occured") >=
                 timed_out;
        },
        kReadLimit_ms);
  }

  bool log_mode_ = false;
  std::map<std::string, std::string> expected_;
};

TEST_F(BusyMinutes, InLogMode) {
  Play(busy::LogModeHour(), busy::kLogModeBegin_s);
  ExpectSameFiles();
  const std::string daily = "DailyCallActivity_15-11-2026.csv";
  const auto files = Folder().Find(".csv");
  ASSERT_EQ(files.size(), 2u);
  for (const auto& file : files) {
    const bool lines = file.filename().string().starts_with("Daily");
    const Lines wanted = FileLines(Expected(lines ? daily : "Call_Activity_15-11-2026.csv"));
    EXPECT_GE(wanted.size(), lines ? 40u : 5u);
    EXPECT_EQ(WithoutTimes(FileLines(ReadWholeFile(file)), lines ? ";" : "?"),
              WithoutTimes(wanted, lines ? ";" : "?"));
  }
}

TEST_F(BusyMinutes, FollowingCalls) {
  Play(busy::FollowingHour(), busy::kFollowingBegin_s);
  ExpectSameFiles();
  EXPECT_GE(CountContaining(FileLines(Log("TETRA_event.log")), "VC D-Released"), 5);
  EXPECT_GE(CountContaining(FileLines(Log("TETRA_event.log")), "Call timeout occured"), 1);
}

}  // namespace
}  // namespace corvane::desktop
