// Starting hooks and seeing how they end.
#include "tools/share/hooks.h"

#include "base/number_text.h"

namespace corvane::tools {

namespace {
constexpr int kHookLookMs = 20;
}  // namespace

std::optional<std::vector<std::string>> SplitCommand(std::string_view command) {
  std::vector<std::string> words;
  bool quoted = false;
  bool in_word = false;
  for (const char c : command) {
    if (c == '"') {
      quoted = !quoted;
      if (!in_word) words.emplace_back();
      in_word = true;
    } else if (!quoted && (c == ' ' || c == '\t')) {
      in_word = false;
    } else {
      if (!in_word) words.emplace_back();
      in_word = true;
      words.back() += c;
    }
  }
  if (quoted || words.empty() || words.front().empty()) return std::nullopt;
  return words;
}

std::vector<std::string> HookWords(const std::vector<std::string>& words, const std::string& wav,
                                   const std::string& json) {
  std::vector<std::string> filled;
  bool placed = false;
  for (const std::string& word : words) {
    const bool place = !filled.empty() && (word == "WAV" || word == "JSON");
    filled.push_back(place ? (word == "WAV" ? wav : json) : word);
    placed = placed || place;
  }
  if (!placed) {
    filled.push_back(wav);
    filled.push_back(json);
  }
  return filled;
}

void Hooks::Start(const std::string& wav, const std::string& json) {
  if (words_.empty()) return;
  Look();
  while (running_.size() >= kMostAtOnce) {
    WaitMs(kHookLookMs);
    Look();
  }
  auto program = StartedProgram::Start(HookWords(words_, wav, json));
  if (program == nullptr) {
    Fail(words_.front() + " could not be started for " + json);
  } else {
    running_.push_back({std::move(program), json});
  }
}

void Hooks::Look() {
  std::erase_if(running_, [this](const Running& one) {
    const auto code = one.program->Code();
    if (code && *code != 0) {
      Fail(words_.front() + " ended with " + Decimal(*code) + " for " + one.json);
    }
    return code.has_value();
  });
}

void Hooks::Fail(const std::string& line) {
  ever_failed_ = true;
  failed_.push_back(line);
}

std::vector<std::string> Hooks::Failed() {
  Look();
  return std::exchange(failed_, {});
}

void Hooks::WaitForAll() {
  for (Look(); !running_.empty(); Look()) WaitMs(kHookLookMs);
}

}  // namespace corvane::tools
