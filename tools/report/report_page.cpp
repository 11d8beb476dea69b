// Columns of numbers and names.
#include "tools/report/report_page.h"

#include <charconv>
#include <cmath>
#include <string_view>

#include "archive/event_calls.h"
#include "archive/instant.h"
#include "archive/log_lines.h"
#include "archive/recordings.h"
#include "archive/shared_file.h"
#include "archive/utf8.h"
#include "base/number_text.h"
#include "panel/version.h"
#include "tools/report/report_files.h"

namespace corvane::tools {

namespace {

// Text inside a script element: nothing in it may end the element or begin another one.
std::string PageString(std::string_view utf8) {
  std::string text;
  for (const char c : JsonString(utf8)) {
    switch (c) {
      case '<':
        text += "\\u003c";
        break;
      case '>':
        text += "\\u003e";
        break;
      case '&':
        text += "\\u0026";
        break;
      case '\x7F':
        text += "\\u007f";
        break;
      default:
        text += c;
    }
  }
  return text;
}

// One list of numbers, written piece by piece.
class Column {
 public:
  Column(Output& out, std::string_view name) : out_(out) {
    text_ = "\"" + std::string(name) + "\":[";
  }
  ~Column() { out_.Write(text_ + "],\n"); }
  Column(const Column&) = delete;
  Column& operator=(const Column&) = delete;

  void Add(std::int64_t number) {
    std::array<char, 24> digits{};
    const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    AddText({digits.data(), static_cast<std::size_t>(end - digits.data())});
  }
  void AddText(std::string_view text) {
    constexpr std::size_t kPiece = 1U << 16U;
    if (any_) text_ += ',';
    any_ = true;
    text_ += text;
    if (text_.size() < kPiece) return;
    out_.Write(text_);
    text_.clear();
  }

 private:
  Output& out_;
  std::string text_;
  bool any_ = false;
};

template <typename Number>
std::int64_t OrMinus(const std::optional<Number>& number) {
  return number ? static_cast<std::int64_t>(*number) : -1;
}

std::int64_t Tenths(const std::optional<double>& seconds) {
  return seconds ? std::llround(*seconds * 10) : -1;
}

// What the user has written beside a recording.
std::string TranscriptOf(const std::filesystem::path& recording) {
  constexpr std::size_t kLongest = std::size_t{64} * 1024;
  std::filesystem::path beside = recording;
  std::string text;
  if (!ReadShared(beside.replace_extension(".txt"), kLongest, text)) return "";
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (text.starts_with(kMark)) text.erase(0, kMark.size());
  if (text.size() == kLongest) {
    while (!text.empty() && !IsUtf8(text) && text.size() > kLongest - 4) text.pop_back();
  }
  return IsUtf8(text) ? text : Utf8(text);
}

}  // namespace

EarlierDaysHeard ReadEarlierDays(const std::vector<DayFolder>& days, std::size_t most) {
  EarlierDaysHeard heard;
  for (const std::filesystem::path& path : EarlierDays(days.front())) {
    if (heard.days == most) break;
    const auto day = OpenDayFolder(path);
    LogLines once;
    LogLines lines;
    if (!day || day->event_log.empty() || !once.Open(day->event_log) ||
        !lines.Open(day->event_log)) {
      continue;
    }
    ++heard.days;
    const DateOrder order = OrderOfDates(once, day->date);
    for (std::string_view line; lines.Next(line);) {
      const auto entry = ParseEvent(line, order);
      if (!entry) continue;
      if (entry->kind == EventEntry::Kind::kSetup) heard.groups.insert(entry->gssi);
      if (entry->ssi != 0) heard.radios.insert(entry->ssi);
    }
  }
  return heard;
}

void ReportPage::Take(const SetupRecord& setup) {
  ++outcomes_[static_cast<std::size_t>(setup.outcome)];
  const bool heard =
      setup.outcome == SetupOutcome::kFollowed || setup.outcome == SetupOutcome::kCounted;
  if (heard) return;
  Missed& missed = missed_.emplace_back();
  const bool timed = setup.time_from != LogStep::TimeFrom::kPace;
  missed.second = timed ? setup.ms / 1000 : -1;
  missed.sure = setup.time_from == LogStep::TimeFrom::kEvent ? 2 : timed ? 1 : 0;
  missed.outcome = setup.outcome;
  if (setup.gssi) missed.gssi = GroupOf(*setup.gssi, Utf8(setup.label));
  if (setup.party) missed.party = RadioOf(*setup.party, "");
  missed.call_id = setup.call_id.value_or(-1);
  missed.carrier = setup.carrier.value_or(-1);
  missed.slot = setup.slot.value_or(-1);
  const auto size = static_cast<std::int32_t>(details_.size());
  missed.detail = details_.try_emplace(Utf8(setup.detail), size).first->second;
}

std::int32_t ReportPage::GroupOf(std::int32_t gssi, const std::string& label) {
  const auto [place, is_new] =
      group_places_.try_emplace(gssi, static_cast<std::int32_t>(groups_.size()));
  if (is_new) groups_.push_back({gssi, ""});
  Name& name = groups_[static_cast<std::size_t>(place->second)];
  if (name.label.empty()) name.label = label;
  return place->second;
}

std::int32_t ReportPage::RadioOf(std::int32_t ssi, const std::string& label) {
  const auto [place, is_new] =
      radio_places_.try_emplace(ssi, static_cast<std::int32_t>(radios_.size()));
  if (is_new) radios_.push_back({ssi, ""});
  Name& name = radios_[static_cast<std::size_t>(place->second)];
  if (name.label.empty()) name.label = label;
  return place->second;
}

void ReportPage::WriteDays(Output& out) const {
  Column column(out, "days");
  for (const DayFolder& day : *days) {
    // Where the page finds the recordings: beside itself, or else by the whole path.
    std::error_code error;
    const auto near = std::filesystem::proximate(
        day.path, folder.empty() ? std::filesystem::current_path(error) : folder, error);
    const std::u8string place = (error ? day.path : near).generic_u8string();
    column.AddText("{\"name\":" + PageString(day.name) +
                   ",\"start\":" + Decimal(day.date ? SecondsOf(*day.date) : -1) +
                   ",\"logged\":" + (day.event_log.empty() ? "false" : "true") +
                   ",\"absolute\":" + (error || near.is_absolute() ? "true" : "false") +
                   ",\"place\":" + PageString(std::string(place.begin(), place.end())) + "}");
  }
}

// Times are what has passed since the call before; -1 stands for what is not known.
void ReportPage::WriteCalls(Output& out) {
  const std::vector<CallRecord>& calls = result->calls;
  {
    Column start(out, "start");
    std::int64_t before = 0;
    for (const CallRecord& call : calls) {
      if (!call.start) break;  // those behind have none either
      start.Add(*call.start - before);
      before = *call.start;
    }
  }
  const auto column = [&](const char* name, auto value) {
    Column numbers(out, name);
    for (const CallRecord& call : calls) numbers.Add(value(call));
  };
  column("length", [](const CallRecord& call) { return Tenths(call.length_s); });
  column("group", [this](const CallRecord& call) -> std::int64_t {
    return call.gssi ? GroupOf(*call.gssi, call.label) : -1;
  });
  column("callId", [](const CallRecord& call) { return OrMinus(call.call_id); });
  column("carrier", [](const CallRecord& call) { return OrMinus(call.carrier); });
  column("slot", [](const CallRecord& call) { return OrMinus(call.slot); });
  column("day", [](const CallRecord& call) { return static_cast<std::int64_t>(call.day); });
  column("mcc", [](const CallRecord& call) { return OrMinus(call.mcc); });
  column("mnc", [](const CallRecord& call) { return OrMinus(call.mnc); });
  std::string ends = "\"ends\":\"";
  std::string followed = "\"followed\":\"";
  for (const CallRecord& call : calls) {
    ends += static_cast<char>('0' + static_cast<int>(call.end));
    followed += call.followed ? '1' : '0';
  }
  out.Write(ends + "\",\n" + followed + "\",\n");
}

void ReportPage::WriteTalkers(Output& out) {
  {
    Column counts(out, "talkerCount");
    for (const CallRecord& call : result->calls) {
      counts.Add(static_cast<std::int64_t>(call.talkers.size()));
    }
  }
  {
    Column who(out, "talker");
    for (const CallRecord& call : result->calls) {
      for (const Talker& talker : call.talkers) who.Add(RadioOf(talker.ssi, talker.label));
    }
  }
  Column when(out, "talkerAt");
  for (const CallRecord& call : result->calls) {
    for (const Talker& talker : call.talkers) when.Add(talker.pos_s);
  }
}

void ReportPage::WriteRecordings(Output& out) const {
  const std::vector<CallRecord>& calls = result->calls;
  const auto each = [&](const char* name, auto add) {
    Column column(out, name);
    for (std::size_t at = 0; at < calls.size(); ++at) {
      if (calls[at].recording) add(column, at, *calls[at].recording);
    }
  };
  each("recordingOf", [](Column& column, std::size_t at, const RecordingFile&) {
    column.Add(static_cast<std::int64_t>(at));
  });
  each("file", [](Column& column, std::size_t, const RecordingFile& recording) {
    column.AddText(PageString(recording.relative));
  });
  each("seconds", [](Column& column, std::size_t, const RecordingFile& recording) {
    column.Add(Tenths(recording.seconds));
  });
  each("transcript", [](Column& column, std::size_t at, const RecordingFile& recording) {
    const std::string text = TranscriptOf(recording.file);
    if (!text.empty()) column.AddText("[" + Decimal(at) + "," + PageString(text) + "]");
  });
  const auto look = [&](std::size_t at) { return at < sound.size() ? sound[at] : std::nullopt; };
  each("peaks", [&](Column& column, std::size_t at, const RecordingFile&) {
    const auto waveform = look(at);
    column.AddText(waveform ? PageString(waveform->peaks) : "\"\"");
  });
  each("silent", [&](Column& column, std::size_t at, const RecordingFile&) {
    const auto waveform = look(at);
    column.Add(waveform && waveform->silent ? 1 : 0);
  });
  each("quiet", [&](Column& column, std::size_t at, const RecordingFile&) {
    std::string text = "[";
    if (const auto waveform = look(at)) {
      for (const std::uint32_t tenth : waveform->quiet) {
        if (text.size() > 1) text += ',';
        text += Decimal(tenth);
      }
    }
    column.AddText(text + "]");
  });
}

void ReportPage::WriteMissed(Output& out) {
  {
    Column outcomes(out, "outcomes");
    for (int index = 0; index < kSetupOutcomes; ++index) {
      outcomes.AddText("[\"" + std::string(NameOf(static_cast<SetupOutcome>(index))) + "\"," +
                       Decimal(outcomes_[static_cast<std::size_t>(index)]) + "]");
    }
  }
  const auto column = [&](const char* name, auto member) {
    Column numbers(out, name);
    for (const Missed& missed : missed_) numbers.Add(static_cast<std::int64_t>(missed.*member));
  };
  column("missedAt", &Missed::second);
  column("missedSure", &Missed::sure);
  column("missedWhy", &Missed::outcome);
  column("missedGroup", &Missed::gssi);
  column("missedRadio", &Missed::party);
  column("missedId", &Missed::call_id);
  column("missedCarrier", &Missed::carrier);
  column("missedSlot", &Missed::slot);
  column("missedDetail", &Missed::detail);
  std::vector<std::string_view> details(details_.size());
  for (const auto& [text, place] : details_) details[static_cast<std::size_t>(place)] = text;
  Column texts(out, "details");
  for (const std::string_view text : details) texts.AddText(PageString(text));
}

void ReportPage::WriteNames(Output& out) const {
  const auto names = [&](const char* title, const std::vector<Name>& all,
                         const std::set<std::int32_t>& before) {
    Column column(out, title);
    for (const Name& name : all) {
      column.AddText("[" + Decimal(name.number) + "," + PageString(name.label) + "," +
                     (known.days > 0 && !before.contains(name.number) ? "1]" : "0]"));
    }
  };
  names("groups", groups_, known.groups);
  names("radios", radios_, known.radios);
}

void ReportPage::Write(Output& out) {
  out.Write(kReportHead);
  out.Write("<style>\n");
  out.Write(kReportStyle);
  out.Write("</style>\n</head>\n");
  out.Write(kReportBody);
  out.Write("<script type=\"application/json\" id=\"data\">{\n");
  WriteDays(out);
  WriteCalls(out);
  WriteTalkers(out);
  WriteRecordings(out);
  WriteMissed(out);
  WriteNames(out);
  {
    Column gaps(out, "gaps");
    for (const EventCalls::Gap& gap : result->gaps) {
      gaps.AddText("[" + Decimal(gap.from) + "," + Decimal(gap.to) + "]");
    }
  }
  {
    Column notices(out, "notices");
    for (const std::string& notice : result->notices) {
      notices.AddText(PageString(IsUtf8(notice) ? notice : Utf8(notice)));
    }
  }
  out.Write("\"earlier\":" + Decimal(known.days) + ",\n\"waveforms\":" +
            (sound.empty() ? "false" : "true") + ",\n\"version\":\"" CORVANE_VERSION "\"\n}");
  out.Write("</script>\n<script type=\"text/plain\" id=\"licence\">\n");
  out.Write(kReportLicence);
  out.Write("</script>\n<script>\n");
  out.Write(kReportLibrary);
  out.Write("</script>\n<script>\n\"use strict\";\n(() => {\n");
  out.Write(kReportScript);
  out.Write("})();\n</script>\n</body>\n</html>\n");
}

}  // namespace corvane::tools
