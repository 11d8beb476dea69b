// Bringing the files of a day together. The event log tells of calls; the other files add to them,
// or tell of calls in its place.
#include "archive/day_reader.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <system_error>
#include <unordered_map>
#include <utility>

#include "archive/cc_setups.h"
#include "archive/event_feed.h"
#include "archive/instant.h"
#include "archive/log_lines.h"
#include "archive/recordings.h"
#include "base/number_text.h"
#include "base/text.h"

namespace corvane::tools {

namespace {

// A recording begins when SDR# is tuned: not before the call's entry, and soon after it.
constexpr std::int64_t kRecordingEarlyS = 1;
constexpr std::int64_t kRecordingLateS = 30;
// The same call in two logs.
constexpr std::int64_t kSameCallS = 3;

std::uint64_t SizeOf(const std::filesystem::path& path) {
  std::error_code error;
  if (path.empty()) return 0;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  return error ? 0 : size;
}

// Calls by number and group, to be found by their time.
class CallIndex {
 public:
  void Add(const std::vector<CallRecord>& calls, std::size_t from) {
    for (std::size_t at = from; at < calls.size(); ++at) {
      if (!calls[at].start) continue;
      places_[Key(calls[at].call_id.value_or(0), calls[at].gssi.value_or(0))].push_back(at);
    }
  }
  // The call that `wanted` takes and whose start is nearest to `second`, within the limits.
  template <typename Wanted>
  [[nodiscard]] std::optional<std::size_t> Find(const std::vector<CallRecord>& calls,
                                                std::int16_t call_id, std::int32_t gssi,
                                                std::int64_t from, std::int64_t to,
                                                std::int64_t second, Wanted wanted) const {
    const auto found = places_.find(Key(call_id, gssi));
    if (found == places_.end()) return std::nullopt;
    const std::vector<std::size_t>& places = found->second;
    std::optional<std::size_t> best;
    const auto distance = [&](std::size_t at) { return std::abs(*calls[at].start - second); };
    const auto first = std::lower_bound(
        places.begin(), places.end(), from,
        [&](std::size_t at, std::int64_t value) { return *calls[at].start < value; });
    for (auto place = first; place != places.end() && *calls[*place].start <= to; ++place) {
      if (wanted(calls[*place]) && (!best || distance(*place) < distance(*best))) best = *place;
    }
    return best;
  }

 private:
  static std::uint64_t Key(std::int16_t call_id, std::int32_t gssi) {
    return static_cast<std::uint64_t>(static_cast<std::uint16_t>(call_id)) << 32U |
           static_cast<std::uint32_t>(gssi);
  }
  std::unordered_map<std::uint64_t, std::vector<std::size_t>> places_;
};

class Reading {
 public:
  explicit Reading(const DayRequest& request) : request_(request) {}

  DayResult Run() {
    ReadEventLogs();
    index_.Add(result_.calls, 0);
    ReadDailyCalls();
    ReadCcLogs();
    ReadRecordings();
    NameAll();
    std::stable_sort(result_.calls.begin(), result_.calls.end(),
                     [](const CallRecord& a, const CallRecord& b) {
                       if (a.start && b.start) return *a.start < *b.start;
                       return a.start.has_value() && !b.start;
                     });
    NoticeMissing();
    return std::move(result_);
  }

 private:
  void Notice(const DayFolder& day, const std::string& text) {
    result_.notices.push_back(day.name + ": " + text);
  }
  void Progress(std::uint64_t in_file) const {
    if (request_.on_progress) request_.on_progress(done_ + in_file);
  }

  void ReadEventLogs() {
    EventCalls calls;
    for (std::size_t day = 0; day < request_.days.size(); ++day) {
      const DayFolder& folder = request_.days[day];
      if (folder.event_log.empty()) continue;
      LogLines once;
      LogLines lines;
      if (!once.Open(folder.event_log) || !lines.Open(folder.event_log)) {
        Notice(folder, "TETRA_event.log cannot be read");
        continue;
      }
      const std::uint64_t unclear = calls.extent().not_understood;
      calls.BeginDay(day, OrderOfDates(once, folder.date));
      for (std::string_view line; lines.Next(line);) {
        calls.TakeLine(line);
        if (lines.number() % 1024 == 0) Progress(lines.bytes_read());
      }
      done_ += lines.bytes_in_all();
      if (lines.failed()) Notice(folder, "TETRA_event.log cannot be read to its end");
      if (calls.extent().not_understood > unclear) {
        Notice(folder, Decimal(calls.extent().not_understood - unclear) +
                           " lines of TETRA_event.log have no time that can be read");
      }
    }
    result_.gaps = calls.gaps();
    result_.calls = calls.TakeCalls();
  }

  // Counted calls, where the event log does not tell of them.
  void ReadDailyCalls() {
    const std::size_t known = result_.calls.size();
    for (std::size_t day = 0; day < request_.days.size(); ++day) {
      const DayFolder& folder = request_.days[day];
      LogLines lines;
      if (folder.daily_calls.empty() || !lines.Open(folder.daily_calls)) continue;
      for (std::string_view line; lines.Next(line);) TakeDailyCall(day, line);
    }
    std::stable_sort(result_.calls.begin() + static_cast<std::ptrdiff_t>(known),
                     result_.calls.end(),
                     [](const CallRecord& a, const CallRecord& b) { return *a.start < *b.start; });
    index_.Add(result_.calls, known);
  }

  void TakeDailyCall(std::size_t day, std::string_view line) {
    const std::vector<std::string> fields = Split(line, ';');
    if (fields.size() != 4 || fields[3] != "D-Setup Transmission Granted") return;
    const DateTime& date = *request_.days[day].date;
    const auto time = ParseIsoDate(IsoDate(date).substr(0, 11) + fields[0]);
    const auto gssi = ParseDecimal<std::int32_t>(fields[1]);
    const auto call_id = ParseDecimal<std::int16_t>(fields[2]);
    if (!time || !gssi || !call_id) return;
    const std::int64_t second = SecondsOf(*time);
    const auto any = [](const CallRecord&) { return true; };
    if (index_.Find(result_.calls, *call_id, *gssi, second - kSameCallS, second + kSameCallS,
                    second, any)) {
      return;
    }
    CallRecord& call = result_.calls.emplace_back();
    call.day = day;
    call.start = second;
    call.gssi = gssi;
    call.call_id = call_id;
  }

  void ReadCcLogs() {
    for (std::size_t day = 0; day < request_.days.size(); ++day) {
      const DayFolder& folder = request_.days[day];
      if (folder.cc_log.empty()) continue;
      ReplayStart start = request_.start;
      const auto [mcc, mnc] = NetworkOf(day);
      start.mcc = mcc;
      start.mnc = mnc;
      if (request_.lists != nullptr) start.groups = &request_.lists->groups;
      CcSetups setups;
      setups.on_setup = [&](const SetupRecord& setup) {
        TakeSetup(setup);
        if (request_.on_setup) request_.on_setup(day, setup);
      };
      setups.on_progress = [this](std::uint64_t bytes) { Progress(bytes); };
      setups.Read(folder, start);
      done_ += SizeOf(folder.cc_log);
      result_.contradictions += setups.contradictions;
      if (setups.failed) Notice(folder, "TETRA_cc.log cannot be read to its end");
    }
  }

  // Carrier, slot and caller of a call that another log tells of.
  void TakeSetup(const SetupRecord& setup) {
    if (setup.time_from == LogStep::TimeFrom::kPace || !setup.call_id || !setup.gssi) return;
    const std::int64_t second = setup.ms / 1000;
    const bool sure = setup.time_from == LogStep::TimeFrom::kEvent;
    const std::int64_t reach = sure ? 0 : kSameCallS;
    const auto found = index_.Find(
        result_.calls, *setup.call_id, *setup.gssi, second - reach, second + reach, second,
        [&](const CallRecord& call) { return !call.carrier || call.carrier == setup.carrier; });
    if (!found) return;
    CallRecord& call = result_.calls[*found];
    if (!call.carrier) call.carrier = setup.carrier;
    if (!call.slot) call.slot = setup.slot;
    if (call.talkers.empty() && setup.party) call.talkers.push_back({*setup.party, "", 0});
  }

  void ReadRecordings() {
    std::vector<CallRecord> alone;
    for (std::size_t day = 0; day < request_.days.size(); ++day) {
      const DayFolder& folder = request_.days[day];
      bool under_way = false;
      std::size_t renamed = 0;
      std::size_t without_sound = 0;
      for (const FoundRecording& found : FindRecordings(folder.path, under_way)) {
        if (!found.name || found.name->renamed) ++renamed;
        if (found.seconds <= 0) ++without_sound;
        if (!Attach(day, found)) alone.push_back(OfRecording(day, found));
      }
      if (renamed > 0) Notice(folder, Decimal(renamed) + " recordings were renamed");
      if (without_sound > 0) {
        Notice(folder, Decimal(without_sound) + " recordings hold no sound that can be read");
      }
      if (under_way) {
        Notice(folder, "newTmp.wav is a recording under way, or one that got no name");
      }
    }
    std::move(alone.begin(), alone.end(), std::back_inserter(result_.calls));
  }

  [[nodiscard]] std::optional<std::int64_t> BeginOf(std::size_t day,
                                                    const FoundRecording& found) const {
    const std::optional<DateTime>& date = request_.days[day].date;
    if (!found.name || !date) return std::nullopt;
    return BeginOfRecording(*date, found.name->second_of_day, found.seconds);
  }

  [[nodiscard]] RecordingFile FileOf(std::size_t day, const FoundRecording& found) const {
    return {found.file, RelativePath(found.file, request_.days[day].path), found.bytes,
            found.seconds};
  }

  bool Attach(std::size_t day, const FoundRecording& found) {
    const auto begin = BeginOf(day, found);
    if (!begin) return false;
    const auto free = [](const CallRecord& call) { return call.followed && !call.recording; };
    const auto find = [&](std::int64_t second) {
      return index_.Find(result_.calls, found.name->call_id, found.name->gssi,
                         second - kRecordingLateS, second + kRecordingEarlyS, second, free);
    };
    auto at = find(*begin);
    // One that was short may have passed midnight all the same.
    if (!at && *begin >= SecondsOf(*request_.days[day].date)) at = find(*begin - kSecondsPerDay);
    if (!at) return false;
    CallRecord& call = result_.calls[*at];
    call.recording = FileOf(call.day, found);
    Complete(call, found);
    return true;
  }

  static void Complete(CallRecord& call, const FoundRecording& found) {
    if (!call.length_s && found.seconds > 0) call.length_s = found.seconds;
    const bool forced = found.name && found.name->forced;
    if (call.end == EndOfCall::kUnknown && forced) call.end = EndOfCall::kForced;
  }

  // What a recording tells by itself.
  [[nodiscard]] CallRecord OfRecording(std::size_t day, const FoundRecording& found) const {
    CallRecord call;
    call.followed = true;
    call.day = day;
    call.start = BeginOf(day, found);
    if (found.name) {
      call.gssi = found.name->gssi;
      call.call_id = found.name->call_id;
    }
    call.recording = FileOf(day, found);
    Complete(call, found);
    return call;
  }

  // The network that a day's event log names; failing that, the one that the list knows.
  [[nodiscard]] std::pair<std::int32_t, std::int32_t> NetworkOf(std::size_t day) const {
    std::optional<std::pair<std::int32_t, std::int32_t>> before;
    for (const CallRecord& call : result_.calls) {
      if (!call.mcc || !call.mnc) continue;
      if (call.day > day && before) break;
      before = {*call.mcc, *call.mnc};
      if (call.day >= day) break;
    }
    if (before) return *before;
    return OnlyNetwork().value_or(std::pair{request_.start.mcc, request_.start.mnc});
  }

  [[nodiscard]] std::optional<std::pair<std::int32_t, std::int32_t>> OnlyNetwork() const {
    std::set<std::pair<std::int32_t, std::int32_t>> known;
    if (request_.lists == nullptr) return std::nullopt;
    for (const GssiRecord& group : request_.lists->groups) known.insert({group.Mcc, group.Mnc});
    if (known.size() != 1) return std::nullopt;
    return *known.begin();
  }

  // The user's names of today stand over those that the log was written with.
  void NameAll() {
    if (request_.lists == nullptr) return;
    const UserLists& lists = *request_.lists;
    const auto only = OnlyNetwork().value_or(std::pair{-1, -1});
    for (CallRecord& call : result_.calls) {
      if (!call.gssi) continue;
      const std::int32_t mcc = call.mcc.value_or(only.first);
      const std::int32_t mnc = call.mnc.value_or(only.second);
      std::string label = lists.GroupLabel(mcc, mnc, *call.gssi);
      if (!label.empty()) call.label = std::move(label);
      for (Talker& talker : call.talkers) {
        label = lists.SubscriberLabel(mcc, mnc, *call.gssi, talker.ssi);
        if (!label.empty()) talker.label = std::move(label);
      }
    }
  }

  void NoticeMissing() {
    for (const DayFolder& folder : request_.days) {
      if (!folder.date) {
        Notice(folder, "the name is no date: recordings alone do not tell when calls were");
      }
      if (folder.event_log.empty()) {
        Notice(folder,
               "there is no TETRA_event.log: calls are known by their recordings and counts "
               "alone");
      }
      if (folder.cc_log.empty()) {
        Notice(folder,
               "there is no TETRA_cc.log: timeslots, and calls that were missed, are not "
               "known");
      }
    }
  }

  const DayRequest& request_;
  DayResult result_;
  CallIndex index_;
  std::uint64_t done_ = 0;
};

}  // namespace

std::uint64_t DayRequest::log_bytes() const {
  std::uint64_t bytes = 0;
  for (const DayFolder& day : days) bytes += SizeOf(day.event_log) + SizeOf(day.cc_log);
  return bytes;
}

DayResult ReadDays(const DayRequest& request) {
  return Reading(request).Run();
}

}  // namespace corvane::tools
