// Plans from seeds, and as text.
#include "simulation/plan.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <random>
#include <stdexcept>
#include <utility>

#include "base/number_text.h"
#include "base/text.h"

namespace corvane::sim {

namespace {

// Choices out of numbers of 32 bits that are the same with every standard library.
class Dice {
 public:
  explicit Dice(std::function<std::uint32_t()> next) : next_(std::move(next)) {}
  int Pick(int low, int high) {
    const auto range = static_cast<std::uint64_t>(high - low + 1);
    return low + static_cast<int>((next_() * range) >> 32);
  }
  bool OneIn(int n) { return Pick(1, n) == 1; }
  template <std::size_t N>
  const char* Any(const std::array<const char*, N>& choice) {
    return choice[static_cast<std::size_t>(Pick(0, static_cast<int>(N) - 1))];
  }
  [[nodiscard]] unsigned Seed() { return static_cast<unsigned>(Pick(1, 1'000'000)); }

 private:
  std::function<std::uint32_t()> next_;
};

constexpr std::array kSdrTroubles = {"hang 300",
                                     "hang 2500",
                                     "hang 9000",
                                     "window network-info close",
                                     "window network-info hide",
                                     "window network-info minimise",
                                     "window network-info open",
                                     "clear-box",
                                     "cut",
                                     "cut reset",
                                     "reply split 30 count=3",
                                     "reply delay 150 count=5",
                                     "reply delay 900 count=2",
                                     "reply join count=2",
                                     "greeting garble",
                                     "network 262 42 101",
                                     "network 262 42 102",
                                     "listen off",
                                     "press \"Network\"",
                                     "history keep",
                                     "history empty"};

constexpr std::array kFileTroubles = {"files fail \\tetra_ 70",       "files fail \\tetra_ 61",
                                      "files fail corvane_simple 75", "files fail .wav 70",
                                      "files fail tetra_cc.log 70",   "files fail 2026 76"};

constexpr std::array kSoundTroubles = {"sound fail open 322", "sound fail record 262",
                                       "sound fail stop 262", "sound fail save 286"};

std::string Number(int value) {
  return std::to_string(value);
}

// Call IDs do not come again within a run.
std::string AnyCall(Dice& dice, int id) {
  std::string call = "sdr call id=" + Number(id) + " group=" + Number(9000 + dice.Pick(1, 6)) +
                     " party=" + Number(5000 + dice.Pick(10, 40)) +
                     " carrier=" + Number(2604 + dice.Pick(1, 8)) +
                     " slot=" + Number(dice.OneIn(40) ? dice.Pick(0, 9) : dice.Pick(1, 4)) +
                     " for=" + Number(dice.Pick(1, 15));
  if (dice.OneIn(20)) call += " service=Individual";
  if (dice.OneIn(20)) call += " encrypted";
  if (dice.OneIn(15)) call += " status=Not_granted";
  if (dice.OneIn(15)) call += " status=Request_queued";
  if (dice.OneIn(10)) call += " missed";
  if (dice.OneIn(10)) call += " repeat=2";
  return call;
}

std::string AnyTrouble(Dice& dice) {
  switch (dice.Pick(0, 9)) {
    case 0:
      return std::string(dice.Any(kFileTroubles)) + " " + Number(dice.Pick(1, 60'000));
    case 1:
      return dice.OneIn(2)
                 ? "files full " + Number(dice.Pick(1, 60'000))
                 : "files scan " + Number(dice.Pick(10, 400)) + " " + Number(dice.Pick(1, 120'000));
    case 2:
      switch (dice.Pick(0, 2)) {
        case 0:
          return "sound slow record " + Number(dice.Pick(100, 12'000)) + " " +
                 Number(dice.Pick(1, 60'000));
        case 1:
          return "sound unplug " + Number(dice.Pick(1, 60'000));
        default:
          return std::string(dice.Any(kSoundTroubles)) + " " + Number(dice.Pick(1, 60'000));
      }
    case 3:
      return dice.OneIn(4) ? "clock " + Number(dice.OneIn(2) ? 3600 : -3600)
                           : "clock " + Number(dice.Pick(-90, 90));
    default:
      return std::string("sdr ") + dice.Any(kSdrTroubles);
  }
}

std::string AnyAction(Dice& dice) {
  const std::string seed = Number(static_cast<int>(dice.Seed()));
  const std::string action = (dice.OneIn(3) ? "editor " : "user ") + seed;
  return dice.OneIn(6) ? "wait " + action : action;
}

const Lasting& AnyLasting(Dice& dice) {
  return kLasting[static_cast<std::size_t>(dice.Pick(0, static_cast<int>(kLasting.size()) - 1))];
}

std::string_view TakeWord(std::string_view& text) {
  text = text.substr(std::min(text.find_first_not_of(' '), text.size()));
  const std::string_view word = text.substr(0, text.find(' '));
  text.remove_prefix(word.size());
  return word;
}

}  // namespace

Plan MakePlan(unsigned seed, int minutes) {
  Dice dice(
      [engine = std::mt19937(seed)]() mutable { return static_cast<std::uint32_t>(engine()); });
  Plan plan;
  plan.seed = seed;
  plan.minutes = minutes;
  const std::int64_t end = std::int64_t{minutes} * 60'000;
  // Some runs are calm, so that what is only seen without disturbance is seen there.
  const int pause_ms = dice.OneIn(3) ? 240'000 : 8'000;
  int id = 0;
  for (std::int64_t ms = 500; ms < end; ms += dice.Pick(300, 7'000)) {
    plan.steps.push_back({ms, AnyCall(dice, ++id)});
  }
  for (std::int64_t ms = 0; ms < end; ms += dice.Pick(200, 2'000)) {
    if (dice.OneIn(2)) plan.steps.push_back({ms, "sdr line \"D_Status sign " + Number(id) + "\""});
  }
  for (std::int64_t ms = 0; ms < end; ms += dice.Pick(50, pause_ms)) {
    if (dice.OneIn(12)) {
      const Lasting& lasting = AnyLasting(dice);
      plan.steps.push_back({ms, std::string("sdr ") + lasting.fault});
      plan.steps.push_back({ms + dice.Pick(100, 60'000), std::string("sdr ") + lasting.cure});
    } else {
      plan.steps.push_back({ms, dice.OneIn(4) ? AnyTrouble(dice) : AnyAction(dice)});
    }
  }
  std::ranges::stable_sort(plan.steps, {}, &Step::ms);
  return plan;
}

Plan PlanFromBytes(std::string_view bytes) {
  // A number is two bytes, so that what follows a step keeps its meaning when the step changes.
  Dice dice([&bytes] {
    std::uint32_t number = 0;
    for (int shift = 24; shift >= 16; shift -= 8) {
      if (bytes.empty()) break;
      number |= std::uint32_t{static_cast<unsigned char>(bytes.front())} << shift;
      bytes.remove_prefix(1);
    }
    return number;
  });
  Plan plan;
  plan.minutes = 1;
  plan.seed = static_cast<unsigned>(dice.Pick(1, 30));
  std::int64_t ms = 0;
  for (int id = 1; !bytes.empty() && plan.steps.size() < kMostStepsFromBytes; ++id) {
    ms += dice.Pick(0, 3) == 0 ? dice.Pick(0, 15'000) : dice.Pick(0, 1500);
    switch (dice.Pick(0, 5)) {
      case 0:
        plan.steps.push_back({ms, AnyTrouble(dice)});
        break;
      case 1:
        plan.steps.push_back({ms, std::string("sdr ") + AnyLasting(dice).fault});
        break;
      case 2:
        plan.steps.push_back({ms, std::string("sdr ") + AnyLasting(dice).cure});
        break;
      case 3:
        plan.steps.push_back({ms, AnyAction(dice)});
        break;
      default:
        plan.steps.push_back({ms, AnyCall(dice, id)});
    }
  }
  while (std::int64_t{plan.minutes} * 60'000 < ms) ++plan.minutes;
  return plan;
}

std::string ToText(const Plan& plan) {
  std::string text =
      "seed " + std::to_string(plan.seed) + "\nminutes " + std::to_string(plan.minutes) + "\n";
  for (const Step& step : plan.steps) {
    char time[32];
    std::snprintf(time, sizeof time, "%lld.%03lld ", static_cast<long long>(step.ms / 1000),
                  static_cast<long long>(step.ms % 1000));
    text += time + step.what + "\n";
  }
  return text;
}

Plan PlanFromText(std::string_view text) {
  Plan plan;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    std::string_view rest = line;
    const std::string_view first = TakeWord(rest);
    if (first.empty() || first.front() == '#') continue;
    const std::string what{rest.substr(std::min<std::size_t>(rest.size(), 1))};
    if (first == "seed" || first == "minutes") {
      const auto number = ParseDecimal<int>(what);
      if (!number || *number < 1) throw std::invalid_argument(std::string(line));
      if (first == "seed") plan.seed = static_cast<unsigned>(*number);
      if (first == "minutes") plan.minutes = *number;
      continue;
    }
    const std::size_t point = first.find('.');
    const auto seconds = ParseDecimal<int>(first.substr(0, point));
    const auto ms = point == std::string_view::npos ? std::optional<int>{}
                                                    : ParseDecimal<int>(first.substr(point + 1));
    if (!seconds || !ms || first.size() - point != 4 || what.empty()) {
      throw std::invalid_argument(std::string(line));
    }
    plan.steps.push_back({std::int64_t{*seconds} * 1000 + *ms, what});
  }
  return plan;
}

std::string KindOf(const std::string& what) {
  std::string_view rest = what;
  std::string kind;
  for (int words = 0; words < 4; ++words) {
    const std::string_view word = TakeWord(rest);
    if (word.empty() || word.find_first_of("0123456789=\"") != std::string_view::npos) break;
    kind += (kind.empty() ? "" : " ") + std::string(word);
  }
  return kind;
}

}  // namespace corvane::sim
