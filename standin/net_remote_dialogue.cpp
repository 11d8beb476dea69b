// Reads one flat object of the command notation, checks it in the order command, method, value,
// source, and carries it out on the receiver.
#include "standin/net_remote_dialogue.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/number_text.h"
#include "base/text.h"

namespace corvane::standin {

namespace {

constexpr std::int64_t kMinFrequencyHz = 1;
constexpr std::int64_t kMaxFrequencyHz = 999999999999;
constexpr std::int64_t kMinFilterHz = 10;
constexpr std::int64_t kMaxFilterHz = 250000;
constexpr std::int64_t kMaxSquelch = 100;

// --- The notation: one flat object of texts, numbers and truth values. Anything nested is refused,
// so there is no depth to limit.

enum class JsonKind { kString, kNumber, kTruth, kNull };

struct JsonValue {
  JsonKind kind = JsonKind::kNull;
  std::string text;  // of a string without quotes and escapes; else as it stands
};

struct JsonObject {
  std::vector<std::pair<std::string, JsonValue>> members;
  // The first member of that name, whatever its case; nullptr when there is none.
  [[nodiscard]] const JsonValue* Find(std::string_view name) const {
    for (const auto& [key, value] : members) {
      if (SameWord(key, name)) return &value;
    }
    return nullptr;
  }
};

// Moves a view forward; every step fails softly.
class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  [[nodiscard]] bool AtEnd() {
    SkipBlanks();
    return rest_.empty();
  }

  bool Take(char wanted) {
    SkipBlanks();
    if (rest_.empty() || rest_.front() != wanted) return false;
    rest_.remove_prefix(1);
    return true;
  }

  bool TakeString(std::string& text) {
    if (!Take('"')) return false;
    while (!rest_.empty()) {
      const char c = Next();
      if (c == '"') return true;
      if (static_cast<unsigned char>(c) < 32) return false;
      if (c != '\\') {
        text += c;
      } else if (!TakeEscape(text)) {
        return false;
      }
    }
    return false;
  }

  bool TakeValue(JsonValue& value) {
    SkipBlanks();
    if (rest_.starts_with('"')) {
      value.kind = JsonKind::kString;
      return TakeString(value.text);
    }
    const std::size_t end = std::min(rest_.find_first_of(" \t\r\n,}"), rest_.size());
    value.text = rest_.substr(0, end);
    rest_.remove_prefix(end);
    if (value.text == "true" || value.text == "false") {
      value.kind = JsonKind::kTruth;
    } else if (value.text == "null") {
      value.kind = JsonKind::kNull;
    } else {
      value.kind = JsonKind::kNumber;
      return IsNumber(value.text);
    }
    return true;
  }

 private:
  void SkipBlanks() {
    const std::size_t first = std::min(rest_.find_first_not_of(" \t\r\n"), rest_.size());
    rest_.remove_prefix(first);
  }

  char Next() {
    const char c = rest_.front();
    rest_.remove_prefix(1);
    return c;
  }

  bool TakeEscape(std::string& text) {
    constexpr std::string_view kEscapes = "\"\\/bfnrt";
    constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
    if (rest_.empty()) return false;
    const char c = Next();
    const std::size_t known = kEscapes.find(c);
    if (known != std::string_view::npos) {
      text += kMeanings[known];
      return true;
    }
    if (c != 'u' || rest_.size() < 4) return false;
    unsigned code = 0;
    for (int i = 0; i < 4; ++i) {
      const std::size_t digit =
          std::string_view("0123456789abcdef")
              .find(static_cast<char>(rest_.front() >= 'A' && rest_.front() <= 'F'
                                          ? rest_.front() + 32
                                          : rest_.front()));
      if (digit == std::string_view::npos) return false;
      code = code * 16 + static_cast<unsigned>(digit);
      rest_.remove_prefix(1);
    }
    text += code < 128 ? static_cast<char>(code) : '?';
    return true;
  }

  static bool IsNumber(std::string_view text) {
    if (text.starts_with('-')) text.remove_prefix(1);
    const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
    if (text.empty() || !is_digit(text.front()) || !is_digit(text.back())) return false;
    return std::all_of(text.begin(), text.end(), [&](char c) {
      return is_digit(c) || c == '.' || c == 'e' || c == 'E' || c == '+' || c == '-';
    });
  }

  std::string_view rest_;
};

// False when the text is anything but exactly one object, with blanks and line ends around it.
bool ParseJsonObject(std::string_view text, JsonObject& object) {
  Reader reader(text);
  if (!reader.Take('{')) return false;
  if (reader.Take('}')) return reader.AtEnd();
  do {
    std::string key;
    JsonValue value;
    if (!reader.TakeString(key) || !reader.Take(':') || !reader.TakeValue(value)) return false;
    object.members.emplace_back(std::move(key), std::move(value));
  } while (reader.Take(','));
  return reader.Take('}') && reader.AtEnd();
}

// --- The dialogue

struct Trouble {
  std::string type;  // "" when there is none
  std::string message;
};

enum class ValueKind { kNumber, kTruth, kDetector };

// One setting: how Get reads and Set writes it.
struct Method {
  std::string_view name;
  ValueKind kind;
  bool settable;
  bool needs_source;
  std::int64_t low;
  std::int64_t high;
};

constexpr std::array kMethods = {
    Method{"AudioGain", ValueKind::kNumber, true, false, kMinAudioGain, kMaxAudioGain},
    Method{"AudioIsMuted", ValueKind::kTruth, true, false, 0, 0},
    Method{"CenterFrequency", ValueKind::kNumber, true, true, kMinFrequencyHz, kMaxFrequencyHz},
    Method{"DetectorType", ValueKind::kDetector, true, false, 0, 0},
    Method{"FilterBandwidth", ValueKind::kNumber, true, false, kMinFilterHz, kMaxFilterHz},
    Method{"Frequency", ValueKind::kNumber, true, true, kMinFrequencyHz, kMaxFrequencyHz},
    Method{"IsPlaying", ValueKind::kTruth, false, false, 0, 0},
    Method{"IsSquelchOpen", ValueKind::kTruth, false, false, 0, 0},
    Method{"SourceIsTunable", ValueKind::kTruth, false, false, 0, 0},
    Method{"SquelchEnabled", ValueKind::kTruth, true, false, 0, 0},
    Method{"SquelchThreshold", ValueKind::kNumber, true, false, 0, kMaxSquelch},
};

std::string Joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text;
}

std::string ErrorReply(const Trouble& trouble) {
  return R"({"Result":"Error","Type":")" + trouble.type + R"(","Message":")" + trouble.message +
         "\"}\r\n";
}

std::string OkReply() {
  return "{\"Result\":\"OK\"}\r\n";
}

Trouble CheckNumber(const Method& method, const JsonValue& value, std::int64_t& number) {
  const std::optional<std::int64_t> parsed = ParseDecimal<std::int64_t>(value.text);
  if (value.kind != JsonKind::kNumber || (!parsed && !IsDecimal(value.text))) {
    return {"Value error", "Expected a whole number"};
  }
  const bool negative = value.text.starts_with('-');
  if (parsed ? *parsed > method.high : !negative) {
    return {"Value error", "Greater than " + Decimal(method.high)};
  }
  if (!parsed || *parsed < method.low) {
    return {"Value error", "Less than " + Decimal(method.low)};
  }
  number = *parsed;
  return {};
}

Trouble CheckTruth(const JsonValue& value, bool& truth) {
  if (value.kind != JsonKind::kTruth) return {"Value error", "Expected true or false"};
  truth = value.text == "true";
  return {};
}

Trouble CheckDetector(const JsonValue& value, std::string& detector) {
  for (const std::string& name : DetectorNames()) {
    if (value.kind == JsonKind::kString && SameWord(name, value.text)) detector = name;
  }
  if (detector.empty()) return {"Value error", "Expected one of " + Joined(DetectorNames())};
  return {};
}

void WriteNumber(ReceiverState& state, std::string_view name, std::int64_t number) {
  if (name == "AudioGain") state.audio_gain = static_cast<int>(number);
  if (name == "CenterFrequency") {
    state.center_frequency_hz = number;
    state.frequency_hz = number;
  }
  if (name == "FilterBandwidth") state.filter_bandwidth_hz = static_cast<int>(number);
  if (name == "Frequency") state.frequency_hz = number;
  if (name == "SquelchThreshold") state.squelch_threshold = static_cast<int>(number);
}

Trouble SetValue(Receiver& receiver, const Method& method, const JsonValue& value) {
  std::int64_t number = 0;
  bool truth = false;
  std::string detector;
  Trouble trouble;
  if (method.kind == ValueKind::kNumber) trouble = CheckNumber(method, value, number);
  if (method.kind == ValueKind::kTruth) trouble = CheckTruth(value, truth);
  if (method.kind == ValueKind::kDetector) trouble = CheckDetector(value, detector);
  if (!trouble.type.empty()) return trouble;
  if (method.needs_source && !receiver.state().source_works) {
    return {"Source error", "The source is not tunable"};
  }
  receiver.Change([&](ReceiverState& state) {
    if (method.kind == ValueKind::kNumber) WriteNumber(state, method.name, number);
    if (method.name == "AudioIsMuted") state.muted_by_hand = truth;
    if (method.name == "SquelchEnabled") state.squelch_enabled = truth;
    if (method.kind == ValueKind::kDetector) state.detector = detector;
  });
  return {};
}

// The value as it stands in a reply.
std::string ValueText(const Receiver& receiver, std::string_view name) {
  const ReceiverState& state = receiver.state();
  const auto truth = [](bool value) { return std::string(value ? "true" : "false"); };
  if (name == "AudioGain") return Decimal(state.audio_gain);
  if (name == "AudioIsMuted") return truth(receiver.AudioIsMuted());
  if (name == "CenterFrequency") return Decimal(state.center_frequency_hz);
  if (name == "DetectorType") return "\"" + state.detector + "\"";
  if (name == "FilterBandwidth") return Decimal(state.filter_bandwidth_hz);
  if (name == "Frequency") return Decimal(state.frequency_hz);
  if (name == "IsPlaying") return truth(state.playing);
  if (name == "IsSquelchOpen") return truth(receiver.IsSquelchOpen());
  if (name == "SourceIsTunable") return truth(state.source_works);
  if (name == "SquelchEnabled") return truth(state.squelch_enabled);
  return Decimal(state.squelch_threshold);
}

std::string AnswerExe(Receiver& receiver, std::string_view method) {
  const bool start = SameWord(method, "Start");
  if (!start && !SameWord(method, "Stop")) {
    return ErrorReply({"Method error", "Expected one of Start, Stop"});
  }
  if (start && !receiver.state().source_works) {
    return ErrorReply({"Source error", "The source cannot be started"});
  }
  receiver.Change([&](ReceiverState& state) { state.playing = start; });
  return OkReply();
}

const Method* FindMethod(std::string_view name) {
  const auto found = std::find_if(kMethods.begin(), kMethods.end(),
                                  [&](const Method& m) { return SameWord(m.name, name); });
  return found == kMethods.end() ? nullptr : &*found;
}

}  // namespace

std::string AnswerCommand(Receiver& receiver, std::string_view text) {
  JsonObject object;
  if (!ParseJsonObject(text, object)) {
    return ErrorReply({"Syntax error", "Expected one command"});
  }
  const JsonValue* command = object.Find("Command");
  if (command == nullptr) return ErrorReply({"Command error", "Expected a command"});
  const bool get = SameWord(command->text, "Get");
  const bool set = SameWord(command->text, "Set");
  if (!get && !set && !SameWord(command->text, "Exe")) {
    return ErrorReply({"Command error", "Expected one of Get, Set, Exe"});
  }
  const JsonValue* name = object.Find("Method");
  if (name == nullptr) return ErrorReply({"Method error", "Expected a method"});
  if (!get && !set) return AnswerExe(receiver, name->text);
  const Method* method = FindMethod(name->text);
  if (method == nullptr) return ErrorReply({"Method error", "Unknown method"});
  if (get) {
    return R"({"Result":"OK","Method":")" + std::string(method->name) + R"(","Value":)" +
           ValueText(receiver, method->name) + "}\r\n";
  }
  if (!method->settable) return ErrorReply({"Method error", "Cannot be set"});
  const JsonValue* value = object.Find("Value");
  if (value == nullptr) return ErrorReply({"Value error", "Expected a value"});
  const Trouble trouble = SetValue(receiver, *method, *value);
  return trouble.type.empty() ? OkReply() : ErrorReply(trouble);
}

std::string SetByHand(Receiver& receiver, std::string_view method, std::string_view value) {
  const Method* found = FindMethod(method);
  if (found == nullptr || !found->settable) return "there is no setting " + std::string(method);
  JsonValue given{JsonKind::kNumber, std::string(value)};
  if (found->kind == ValueKind::kTruth && (value == "true" || value == "false")) {
    given.kind = JsonKind::kTruth;
  }
  if (found->kind == ValueKind::kDetector) given.kind = JsonKind::kString;
  return SetValue(receiver, *found, given).message;
}

}  // namespace corvane::standin
