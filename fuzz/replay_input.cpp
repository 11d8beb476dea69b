// A log that somebody sent, and the event log with it. The first byte chooses how it is replayed;
// what stands before the first zero byte is the log, what stands behind it the events. Each setup
// ends as one outcome, and what ends was followed.
#include <sys/mman.h>
#include <unistd.h>

#include <optional>

#include "archive/replay.h"
#include "fuzz/fuzzing.h"

namespace corvane::tools {
namespace {

using fuzzing::Require;

// A file that lies nowhere.
class PassingFile {
 public:
  explicit PassingFile(std::string_view content) : handle_(memfd_create("input", 0)) {
    const auto written = write(handle_, content.data(), content.size());
    Require(written == static_cast<ssize_t>(content.size()), "the input can be handed over");
  }
  ~PassingFile() { close(handle_); }
  PassingFile(const PassingFile&) = delete;
  PassingFile& operator=(const PassingFile&) = delete;
  [[nodiscard]] std::string path() const { return "/proc/self/fd/" + std::to_string(handle_); }

 private:
  int handle_;
};

class Checks : public ReplaySink {
 public:
  void Setup(const SetupRecord& record) override {
    Require(record.number > last_line_, "one outcome for a setup");
    last_line_ = record.number;
    if (record.outcome != SetupOutcome::kFollowed) return;
    Require(!following_, "one call at a time");
    Require(record.call_id && record.gssi && record.carrier && record.slot, "a call has its data");
    Require(*record.slot >= 1 && *record.slot <= 4, "a timeslot that exists");
    following_ = record.call_id;
  }
  void End(const EndRecord& record) override {
    Require(following_ == record.call_id, "what ends was followed");
    following_.reset();
  }
  [[nodiscard]] bool following() const { return following_.has_value(); }

 private:
  std::uint64_t last_line_ = 0;
  std::optional<std::int16_t> following_;
};

void Run(const std::string& input) {
  if (input.empty()) return;
  const auto choice = static_cast<unsigned char>(input[0]);
  const std::size_t zero = std::min(input.find('\0', 1), input.size());
  const PassingFile log(std::string_view(input).substr(1, zero - 1));
  const PassingFile event_log(std::string_view(input).substr(std::min(zero + 1, input.size())));

  GssiTable groups;
  GssiRecord locked;
  locked.Gssi = 9002;
  locked.Mcc = 262;
  locked.Mnc = 42;
  groups.Append(locked);
  ReplayStart start;
  start.groups = &groups;
  start.mcc = 262;
  start.mnc = 42;
  start.log_mode = (choice & 1) != 0;
  if ((choice & 2) != 0) start.held = 9001;

  LogLines lines;
  Require(lines.Open(log.path()), "the log opens");
  TimedLines timed(lines, (choice & 4) != 0 ? 1000 : 60);
  EventFeed events;
  if ((choice & 8) != 0) {
    Require(events.Open(event_log.path()), "the events open");
    timed.SetEvents(events);
  }
  Checks checks;
  Replay replay(start, checks);
  timed.SetDecision([&](std::string_view line) { return replay.OutcomeWhenFree(line); });
  LogStep step;
  std::uint64_t last = 0;
  while (timed.Next(step)) {
    if (step.what == LogStep::What::kLine) {
      Require(step.number > last, "lines keep their order");
      last = step.number;
    }
    replay.Take(step);
    Require(replay.following() == checks.following(), "what is followed was told");
  }
  Require(!lines.failed() && !events.failed(), "all was read");
}

}  // namespace
}  // namespace corvane::tools

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  corvane::tools::Run(corvane::fuzzing::Text(data, size));
  return 0;
}
