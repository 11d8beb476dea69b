// How each kind of line is told.
#include "demo/demo_account.h"

#include <string_view>

#include "base/number_text.h"
#include "base/text.h"

namespace corvane::desktop {

namespace {

// What follows `marker` up to `end` or the end of the line; "" without the marker.
std::string After(const std::string& line, std::string_view marker, std::string_view end = {}) {
  const std::size_t at = line.find(marker);
  if (at == std::string::npos) return {};
  const std::size_t begin = at + marker.size();
  const std::size_t stop = end.empty() ? std::string::npos : line.find(end, begin);
  return std::string(
      Trim(std::string_view(line).substr(begin, stop == std::string::npos ? stop : stop - begin)));
}

// "365112500" as "365.1125 MHz".
std::string Megahertz(const std::string& hertz) {
  const auto value = ParseDecimal<std::int64_t>(hertz);
  if (!value) return hertz + " Hz";
  return Decimal(*value / 1'000'000) + "." + ZeroPadded(*value % 1'000'000 / 100, 4) + " MHz";
}

// When the line that set up the latest call before `index` was whole; nullopt when there is none.
std::optional<std::int64_t> SetupBefore(const std::vector<LogLine>& log, std::size_t index) {
  while (index-- > 0) {
    if (log[index].kind == "pdu" && Contains(log[index].detail, "D_Setup")) return log[index].ms;
  }
  return std::nullopt;
}

}  // namespace

void DemoAccount::Look(const std::vector<std::string>& calls, const std::vector<LogLine>& log) {
  // The call log is emptied when it is full; what is left of it then is new.
  if (calls.size() < call_lines_) call_lines_ = 0;
  for (; call_lines_ < calls.size(); ++call_lines_) TellCallLine(calls[call_lines_]);
  for (; standin_lines_ < log.size(); ++standin_lines_) TellStandinLine(log, standin_lines_);
}

void DemoAccount::TellCallLine(const std::string& line) {
  if (line.starts_with("MCC:")) {
    tell_("network seen: " + line);
  } else if (Contains(line, " - On carrier: ")) {
    ++calls_begun_;
    voice_told_ = false;
    tell_("call " + After(line, "Call ID: ", " - ") + " set up on group " + After(line, "Group: ") +
          ", carrier " + After(line, "On carrier: ", " - "));
  } else if (Contains(line, " - Calling SSI: ")) {
    tell_("    " + After(line, "Calling SSI: ") + " speaks");
  } else if (Contains(line, "VC D-TX-Granted SSI: ")) {
    tell_("    now " + After(line, "SSI: ") + " speaks");
  } else if (Contains(line, "VC D-TX-Ceased SSI: ")) {
    tell_("    " + After(line, "SSI: ") + " stops speaking");
  } else if (Contains(line, "VC D-Released") || Contains(line, "VC D-Disconnect")) {
    ++calls_ended_;
    tell_("    call " + After(line, "Call ID: ", " - ") + " released by the network");
  } else if (Contains(line, "Call timeout occured")) {
    ++calls_ended_;
    tell_("    call " + After(line, "Call ID: ") + " has fallen silent and is given up");
  } else if (Contains(line, "Skipping Call, lockout found")) {
    tell_("call on group " + After(line, "GSSI: ") + " skipped: the group is locked out");
  }
}

void DemoAccount::TellStandinLine(const std::vector<LogLine>& log, std::size_t index) {
  const LogLine& line = log[index];
  if (line.kind == "command" && Contains(line.detail, "\"Frequency\"")) {
    TellTuning(After(line.detail, "\"Value\": ", "}"), line.ms, SetupBefore(log, index));
  } else if (line.kind == "tone" && line.detail.starts_with("group=") && !voice_told_) {
    voice_told_ = true;
    tell_("    voice of group " + After(line.detail, "group=", " ") + " is heard");
  }
}

// The first frequency of all is the control channel's.
void DemoAccount::TellTuning(const std::string& hertz, std::int64_t ms,
                             std::optional<std::int64_t> setup_ms) {
  if (control_channel_.empty()) {
    control_channel_ = hertz;
    tell_("parked on the control channel, " + Megahertz(hertz));
  } else if (hertz == control_channel_) {
    tell_("    back on the control channel, " + Megahertz(hertz));
  } else if (setup_ms) {
    tell_("    tuned to " + Megahertz(hertz) + ", " + Decimal(ms - *setup_ms) +
          " ms after the setup was decoded");
  }
}

}  // namespace corvane::desktop
