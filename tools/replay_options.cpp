// The options of a replay, and its page of help.
#include "tools/replay_options.h"

#include <array>
#include <charconv>
#include <string_view>

#include "base/number_text.h"

namespace corvane::tools {

const char* const kReplayHelp =
    R"(usage: corvane-tools replay FILE [OPTION]...

Tells what Corvane does with the calls of a log, and why: which calls it follows, which not, and
when it goes back to the control channel. FILE is a TETRA_cc.log, or any text with lines of the
Network Info window; "-" is the standard input. Lines that stand twice, as in TETRA_cc.log, count
once.

what is followed
  --lists DIR          the folder with the list of groups, TETRA_GSSI.txt
  --network MCC/MNC    the network of the log; default: the only one in the list
  --settings FILE      the settings, corvane_simple.dat; default: those of a first start
  --timeout SECONDS    the silence that ends a call, 1 to 3600; default: from the settings
  --hold GSSI          this group is held
  --log-mode           LOG mode is on

when it happened
  --events FILE        the TETRA_event.log of the same time: gives lines their times, tells when
                       LOG mode was switched, when calls were dropped by hand and when they timed
                       out. Times between those of the events are interpolated and marked.
  --rate LINES_PER_S   how fast lines follow each other where no time is known; default: one per
                       poll of 60 ms, which is also the fastest

what is shown
  -F text|json|csv     the form of the results; default: text
  -o FILE              write the results to FILE instead of the standard output
  --group GSSI         setups of this group alone; may be given several times
  --reason OUTCOME     setups with this outcome alone; may be given several times
  --expect FILE        compare the results with FILE, the results of an earlier run
  -q                   no summary and no progress bar
  --help               this page

outcomes
  followed             SDR# is tuned to the call
  in_call              another call was followed, whatever the priorities
  dropped_by_hand      the user dropped a call of this group less than 16 s ago
  held_elsewhere       another group is held
  locked_out           the list of groups says so
  individual           not a group's call
  not_granted          the network did not grant it
  encrypted            the line is marked as encrypted
  bad_timeslot         none of 1 to 4
  malformed            a field is missing or no number; the detail names it
  bad_frequency        the carrier has no frequency that can be tuned to
  counted              LOG mode: counted, not followed
  counted_before       LOG mode: its Call ID was counted already
  abandoned            given up while SDR# was being tuned

With -F json each setup line is one object on a line of its own, with the keys line, time, outcome,
call_id, gssi, party, carrier, slot and detail; what is not known is null. The results are UTF-8.
The summary goes to the error output.

exit status: 0 done, 1 the results differ from those of --expect, 2 failed: wrong usage, a file
that cannot be read, or results that cannot be written.
)";

namespace {

constexpr double kFastestRate = 1e6;
constexpr double kSlowestRate = 1e-3;
constexpr double kMsPerSecond = 1000;

bool ReadFormat(std::string_view text, Format& format) {
  constexpr std::array<std::string_view, 3> kNames = {"text", "json", "csv"};
  for (std::size_t index = 0; index < kNames.size(); ++index) {
    if (text != kNames[index]) continue;
    format = static_cast<Format>(index);
    return true;
  }
  return false;
}

bool ReadGroup(std::string_view text, std::int32_t& gssi) {
  const auto number = ParseDecimal<std::int32_t>(text);
  if (!number || *number < 0) return false;
  gssi = *number;
  return true;
}

bool ReadReason(std::string_view text, std::set<SetupOutcome>& reasons) {
  for (int index = 0; index < kSetupOutcomes; ++index) {
    const auto outcome = static_cast<SetupOutcome>(index);
    if (text != NameOf(outcome)) continue;
    reasons.insert(outcome);
    return true;
  }
  return false;
}

bool ReadRate(std::string_view text, double& pace_ms) {
  double rate = 0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, rate, std::chars_format::fixed);
  if (result.ec != std::errc{} || result.ptr != end) return false;
  if (!(rate >= kSlowestRate && rate <= kFastestRate)) return false;
  pace_ms = kMsPerSecond / rate;
  return true;
}

bool ReadTimeout(std::string_view text, std::optional<std::int16_t>& seconds) {
  seconds = ParseDecimal<std::int16_t>(text);
  return seconds && *seconds >= 1 && *seconds <= ReplayOptions::kLongestTimeoutS;
}

// One option that takes a value. False: no such value.
bool ReadValue(std::string_view name, const std::string& value, ReplayOptions& options) {
  std::int32_t gssi = 0;
  if (name == "-F") return ReadFormat(value, options.format);
  if (name == "--network") return ReadNetwork(value, options.network);
  if (name == "--reason") return ReadReason(value, options.reasons);
  if (name == "--rate") return ReadRate(value, options.pace_ms);
  if (name == "--timeout") return ReadTimeout(value, options.timeout_s);
  if (name == "--hold" || name == "--group") {
    if (!ReadGroup(value, gssi)) return false;
    if (name == "--hold") {
      options.held = gssi;
    } else {
      options.groups.insert(gssi);
    }
    return true;
  }
  std::string& file = name == "-o"           ? options.output
                      : name == "--lists"    ? options.lists
                      : name == "--settings" ? options.settings
                      : name == "--events"   ? options.events
                                             : options.expect;
  file = value;
  return !value.empty();
}

constexpr std::array<std::string_view, 12> kWithValue = {
    "-F",      "--network", "--reason", "--rate",     "--timeout", "--hold",
    "--group", "-o",        "--lists",  "--settings", "--events",  "--expect"};

bool TakesValue(std::string_view name) {
  for (const std::string_view known : kWithValue) {
    if (name == known) return true;
  }
  return false;
}

}  // namespace

bool ReadNetwork(std::string_view text, std::optional<NetworkCode>& network) {
  const std::size_t slash = text.find('/');
  if (slash == std::string_view::npos) return false;
  const auto mcc = ParseDecimal<std::int16_t>(text.substr(0, slash));
  const auto mnc = ParseDecimal<std::int16_t>(text.substr(slash + 1));
  if (!mcc || !mnc || *mcc < 0 || *mnc < 0) return false;
  network = {*mcc, *mnc};
  return true;
}

std::string ParseReplayOptions(const Arguments& arguments, ReplayOptions& options) {
  bool only_files = false;
  for (std::size_t index = 0; index < arguments.size(); ++index) {
    const std::string& argument = arguments[index];
    if (only_files || argument == "-" || !argument.starts_with('-')) {
      if (argument.empty()) return "the name of the log is empty";
      if (!options.input.empty()) return "there is more than one log: " + argument;
      options.input = argument;
    } else if (argument == "--") {
      only_files = true;
    } else if (argument == "--log-mode") {
      options.log_mode = true;
    } else if (argument == "-q") {
      options.quiet = true;
    } else {
      const std::size_t equals = argument.starts_with("--") ? argument.find('=') : argument.npos;
      const std::string name = argument.substr(0, equals);
      if (!TakesValue(name)) return "there is no option " + name;
      if (equals == argument.npos && ++index == arguments.size()) return name + " needs a value";
      const std::string value =
          equals == argument.npos ? arguments[index] : argument.substr(equals + 1);
      if (!ReadValue(name, value, options)) return name + " cannot be \"" + value + "\"";
    }
  }
  return options.input.empty() ? "which log?" : "";
}

}  // namespace corvane::tools
