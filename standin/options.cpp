// The command line. Every fault names the option.
#include "standin/options.h"

#include <functional>
#include <optional>
#include <string_view>

#include "base/number_text.h"
#include "base/text.h"

namespace corvane::standin {

namespace {

constexpr int kMaxSpeed = 1000;
constexpr int kMaxScale = 200;
constexpr int kMaxPosition = 32000;
constexpr std::size_t kMaxTail = 22;  // with it the longest class name has 49 characters

struct Flag {
  std::string_view name;
  std::string_view help;
  std::function<void(Options&)> apply;
};

struct Valued {
  std::string_view name;
  std::string_view argument;
  std::string_view help;
  std::function<std::string(Options&, const std::string&)> apply;  // "" or what is expected
};

const std::vector<Flag>& Flags() {
  static const std::vector<Flag> flags = {
      {"--network-on", "the Net Remote server listens from the start",
       [](Options& o) { o.network_on = true; }},
      {"--network-off", "it does not (this is so without the option)",
       [](Options& o) { o.network_on = false; }},
      {"--network-plain", "\"Network\" is a button that only switches on",
       [](Options& o) { o.network_plain = true; }},
      {"--labels-after-start", "MCC, MNC and LA are empty until it plays",
       [](Options& o) { o.labels_after_start = true; }},
      {"--playing", "it plays from the start", [](Options& o) { o.playing = true; }},
      {"--demodulator-on", "\"Demodulator\" is checked at the start",
       [](Options& o) { o.demodulator_checked = true; }},
      {"--auto-off", "\"Auto\" is not checked at the start",
       [](Options& o) { o.auto_checked = false; }},
      {"--info-open", "the Network Info window is open at the start",
       [](Options& o) { o.info_open = true; }},
      {"--info-owned", "the Network Info window belongs to the main window",
       [](Options& o) { o.info_owned = true; }},
      {"--info-toggles", "\"Net Info\" hides the window when it is to be seen",
       [](Options& o) { o.info_toggles = true; }},
      {"--info-wraps", "the Network Info box wraps long lines",
       [](Options& o) { o.info_wrap = Wrap::kWords; }},
      {"--elevated", "it runs with administrator rights (only in native tests)",
       [](Options& o) { o.elevated = true; }},
      {"--tetra-collapsed", "the TETRA Demodulator panel is collapsed at the start",
       [](Options& o) { o.tetra_expanded = false; }},
      {"--exit-when-done", "ends at the scenario's end",
       [](Options& o) { o.exit_when_done = true; }},
  };
  return flags;
}

std::string ApplyTail(Options& options, const std::string& value) {
  if (value.empty() || value.size() > kMaxTail) return "1 to 22 characters";
  for (const char c : value) {
    const bool fine = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                      c == '_' || c == '.';
    if (!fine) return "letters, digits, _ and .";
  }
  options.class_tail = value;
  return {};
}

std::string ApplyPosition(Options& options, const std::string& value) {
  const std::vector<std::string> parts = Split(value, ',');
  if (parts.size() != 2) return "x,y in pixels";
  const auto x = ParseDecimal<int>(parts[0]);
  const auto y = ParseDecimal<int>(parts[1]);
  if (!x || !y || *x < -kMaxPosition || *x > kMaxPosition || *y < -kMaxPosition ||
      *y > kMaxPosition) {
    return "x,y in pixels";
  }
  options.left = *x;
  options.top = *y;
  return {};
}

const std::vector<Valued>& ValuedOptions() {
  static const std::vector<Valued> valued = {
      {"--scenario", "FILE", "what is on the air, and what goes wrong when",
       [](Options& o, const std::string& v) {
         o.scenario_file = v;
         return std::string(v.empty() ? "a file name" : "");
       }},
      {"--log", "FILE", "writes down all that happens, one event per line",
       [](Options& o, const std::string& v) {
         o.log_file = v;
         return std::string(v.empty() ? "a file name" : "");
       }},
      {"--seed", "N", "other random calls than the scenario's",
       [](Options& o, const std::string& v) {
         const auto seed = ParseDecimal<std::uint64_t>(v);
         if (!seed || *seed == 0) return std::string("a number above 0");
         o.seed = *seed;
         return std::string();
       }},
      {"--speed", "N", "so many times faster, 1 to 1000",
       [](Options& o, const std::string& v) {
         const auto speed = ParseDecimal<int>(v);
         if (!speed || *speed < 1 || *speed > kMaxSpeed) return std::string("1 to 1000");
         o.speed = *speed;
         return std::string();
       }},
      {"--scale", "N", "draws its check boxes as on a screen of N percent, 100 to 200",
       [](Options& o, const std::string& v) {
         const auto scale = ParseDecimal<int>(v);
         if (!scale || *scale < 100 || *scale > kMaxScale) return std::string("100 to 200");
         o.scale = *scale;
         return std::string();
       }},
      {"--class-tail", "TEXT", "what the windows' class names end in", ApplyTail},
      {"--port", "TEXT", "what stands in the port box at the start",
       [](Options& o, const std::string& v) {
         o.port = v;
         return std::string();
       }},
      {"--position", "X,Y", "of the main window on the screen", ApplyPosition},
  };
  return valued;
}

}  // namespace

std::string ParseOptions(const std::vector<std::string>& arguments, Options& options) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& name = arguments[i];
    bool known = false;
    for (const Flag& flag : Flags()) {
      if (flag.name != name) continue;
      flag.apply(options);
      known = true;
    }
    for (const Valued& valued : ValuedOptions()) {
      if (valued.name != name) continue;
      if (i + 1 == arguments.size()) return name + ": a value is missing";
      const std::string expected = valued.apply(options, arguments[++i]);
      if (!expected.empty()) {
        return name + ": \"" + arguments[i] + "\" is not " + expected;
      }
      known = true;
    }
    if (!known) return "unknown option \"" + name + "\"";
  }
  return {};
}

std::string OptionsHelp() {
  std::string help = "SdrStandin.exe [options]\r\n\r\n";
  for (const Valued& valued : ValuedOptions()) {
    help += std::string(valued.name) + " " + std::string(valued.argument) + ": " +
            std::string(valued.help) + "\r\n";
  }
  for (const Flag& flag : Flags()) {
    help += std::string(flag.name) + ": " + std::string(flag.help) + "\r\n";
  }
  return help + "--help: shows this\r\n";
}

}  // namespace corvane::standin
