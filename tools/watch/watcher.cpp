// One look after the other.
#include "tools/watch/watcher.h"

#include <fstream>
#include <system_error>

#include "archive/instant.h"
#include "archive/log_lines.h"
#include "archive/path_text.h"
#include "archive/shared_file.h"
#include "base/number_text.h"

namespace corvane::tools {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestList = 1U << 28U;
constexpr std::uint64_t kMegabyte = 1'000'000;
// So much more than the limit is there again before the next notice.
constexpr std::uint64_t kRoomSlack = 100 * kMegabyte;

}  // namespace

void Watcher::BeginDay(std::int64_t now) {
  DateTime day = TimeAt(now);
  day.hour = day.minute = day.second = 0;
  if (day_ == day) return;
  const bool first = !day_;
  day_ = day;
  day_folder_ = folder_ / "Daily" / FolderDate(day);
  cc_log_ = {};
  event_log_ = {};
  ordered_ = false;
  std::error_code error;
  const std::uintmax_t size = fs::file_size(day_folder_ / "TETRA_cc.log", error);
  // When these lines were written nobody knows.
  if (first && !error) cc_log_.SkipTo(size);
}

void Watcher::ReadEvents() {
  if (!ordered_) {
    LogLines lines;
    if (!lines.Open(day_folder_ / "TETRA_event.log")) return;
    calls_.BeginDay(0, OrderOfDates(lines, day_));
    ordered_ = true;
  }
  for (const std::string& line : event_log_.NewLines(day_folder_ / "TETRA_event.log")) {
    calls_.TakeLine(line);
    // Only the last one matters here.
    if (!calls_.going_on() && calls_.calls().size() > 1) (void)calls_.TakeCalls();
  }
}

Watcher::Seen Watcher::Look(std::int64_t now, std::optional<std::uint64_t> room) {
  Seen seen;
  BeginDay(now);
  seen.lines = cc_log_.NewLines(day_folder_ / "TETRA_cc.log");
  ReadEvents();
  LookForSilence(now, !seen.lines.empty(), seen);
  LookForRoom(room, seen);
  if (!limits_.copies.empty()) KeepCopies(seen);
  return seen;
}

void Watcher::LookForSilence(std::int64_t now, bool lines, Seen& seen) {
  // While a call is followed the control channel is not heard.
  if (lines || calls_.going_on() || !last_line_ || now < *last_line_) last_line_ = now;
  const std::int64_t silent = now - *last_line_;
  if (limits_.deaf_s > 0 && silent >= limits_.deaf_s && !deaf_) {
    deaf_ = true;
    seen.notices.push_back("deaf: nothing was received for " + Decimal(silent) + " s");
  } else if (deaf_ && silent == 0) {
    deaf_ = false;
    seen.notices.emplace_back("something is received again");
  }
}

void Watcher::LookForRoom(std::optional<std::uint64_t> room, Seen& seen) {
  const std::uint64_t limit = limits_.room_mb * kMegabyte;
  if (!room || limit == 0) return;
  if (*room < limit && !short_of_room_) {
    short_of_room_ = true;
    seen.notices.push_back("the disk runs low: " + Decimal(*room / kMegabyte) + " MB are left");
  } else if (*room >= limit + kRoomSlack) {
    short_of_room_ = false;
  }
}

void Watcher::KeepCopies(Seen& seen) {
  for (const std::string stem : {"TETRA_GSSI", "TETRA_SSI"}) {
    const fs::path list = folder_ / (stem + ".txt");
    const fs::path copy = PathOfNarrow(limits_.copies) / (stem + "_" + FolderDate(*day_) + ".txt");
    std::error_code error;
    if (fs::exists(copy, error) || !fs::exists(list, error)) continue;
    fs::path part = copy;
    part += ".part";
    fs::create_directories(PathOfNarrow(limits_.copies), error);
    std::string content;
    std::ofstream stream;
    const bool read = ReadShared(list, kLargestList, content);
    if (read) {
      stream.open(part, std::ios::binary | std::ios::trunc);
      stream << content;
      stream.close();
      fs::rename(part, copy, error);
    }
    if (read && !stream.fail() && !error) {
      copies_failed_ = false;
    } else if (!copies_failed_) {
      copies_failed_ = true;
      seen.notices.push_back("no copy of " + stem + ".txt could be kept");
    }
  }
}

}  // namespace corvane::tools
