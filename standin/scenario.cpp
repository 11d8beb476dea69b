// Reads a scenario file line by line; each fault carries its line's number.
#include "standin/scenario.h"

#include <algorithm>

#include "base/number_text.h"
#include "base/text.h"
#include "standin/air.h"
#include "standin/word_reader.h"

namespace corvane::standin {

namespace {

constexpr std::int64_t kMaxHz = 2000000000;

// The settings that stand before everything else; false when the line is none.
bool ReadSetting(const std::vector<Word>& words, Scenario& scenario, std::string& fault) {
  const std::string& name = words.front().value;
  if (!words.front().name.empty() || words.front().quoted) return false;
  WordReader reader(words);
  (void)reader.Next("the setting");
  if (name == "name") {
    scenario.name = reader.Next("the name");
  } else if (name == "base") {
    scenario.base_hz = static_cast<std::int32_t>(reader.NextNumber("the base", 0, kMaxHz));
  } else if (name == "offset") {
    scenario.offset_hz = static_cast<std::int32_t>(
        reader.NextNumber("the offset", -kCarrierSpacingHz, kCarrierSpacingHz));
  } else if (name == "control") {
    scenario.control_carrier = static_cast<int>(reader.NextNumber("the carrier", 0, 99999));
  } else if (name == "seed") {
    scenario.seed =
        static_cast<std::uint64_t>(reader.NextNumber("the seed", 1, std::int64_t{1} << 62));
  } else {
    return false;
  }
  fault = reader.Finish();
  return true;
}

// Takes "at TIME" off the front; the time of a line without it is 0.
std::string TakeTime(std::vector<Word>& words, std::int64_t previous_ms, std::int64_t& ms) {
  ms = 0;
  if (!words.front().name.empty() || words.front().value != "at") return {};
  if (words.size() < 2) return "a time is missing behind \"at\"";
  std::string_view text = words[1].value;
  const bool relative = text.starts_with('+');
  if (relative) text.remove_prefix(1);
  if (!ParseTime(text, ms)) {
    return "\"" + words[1].value + "\" is no time like 2.5, 1:30, 1:02:03 or +2";
  }
  if (relative) ms += previous_ms;
  if (ms > kMaxTimeMs) return "that is later than a thousand hours";
  words.erase(words.begin(), words.begin() + 2);
  return words.empty() ? "a command is missing behind the time" : "";
}

std::string ReadLineInto(std::string_view text, int line, std::int64_t& previous_ms,
                         Scenario& scenario) {
  std::vector<Word> words;
  std::string fault = SplitWords(text, words);
  if (!fault.empty() || words.empty()) return fault;
  if (ReadSetting(words, scenario, fault)) return fault;
  TimedCommand timed;
  timed.line = line;
  const bool has_time = words.front().name.empty() && words.front().value == "at";
  fault = TakeTime(words, previous_ms, timed.ms);
  if (!fault.empty()) return fault;
  fault = ReadCommand(words, timed.command);
  if (!fault.empty()) return fault;
  if (has_time) previous_ms = timed.ms;
  scenario.commands.push_back(std::move(timed));
  return {};
}

}  // namespace

std::string ParseScenario(std::string_view content, Scenario& scenario) {
  if (content.size() > kMaxScenarioBytes) return "the file is longer than 4 MB";
  const std::vector<std::string> lines = FileLines(content);
  if (lines.size() > kMaxScenarioLines) return "the file has more than 50000 lines";
  std::int64_t previous_ms = 0;
  int number = 0;
  for (const std::string& line : lines) {
    ++number;
    const std::string fault = ReadLineInto(line, number, previous_ms, scenario);
    if (!fault.empty()) return "line " + Decimal(number) + ": " + fault;
  }
  std::stable_sort(scenario.commands.begin(), scenario.commands.end(),
                   [](const TimedCommand& a, const TimedCommand& b) { return a.ms < b.ms; });
  return {};
}

}  // namespace corvane::standin
