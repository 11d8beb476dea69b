// Reading lists and settings.
#include "archive/user_files.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "archive/path_text.h"
#include "archive/replay_ports.h"
#include "archive/shared_file.h"
#include "archive/utf8.h"
#include "base/number_text.h"
#include "base/text.h"
#include "store/saved_lists.h"
#include "store/settings.h"

namespace corvane::tools {

namespace {

constexpr std::size_t kLargestFile = 256U << 20U;

FileError ReadFile(const std::filesystem::path& path, std::string& content) {
  content.clear();
  std::error_code error;
  if (!std::filesystem::exists(path, error)) return kFileNotFound;
  if (std::filesystem::is_directory(path, error)) return kPathAccess;
  if (!ReadShared(path, kLargestFile + 1, content)) return kPermissionDenied;
  return content.size() > kLargestFile ? kPathAccess : kFileOk;
}

// One file under whatever name it is asked for.
class OneFile : public NoFiles {
 public:
  explicit OneFile(std::filesystem::path path) : path_(std::move(path)) {}
  [[nodiscard]] FileError ReadAll(const std::string&, std::string& content) override {
    return ReadFile(path_, content);
  }

 private:
  std::filesystem::path path_;
};

// Takes every text for a date of its own settings.
class AnyDates : public WallClock {
 public:
  [[nodiscard]] DateTime Now() const override { return {2000, 1, 1}; }
  [[nodiscard]] std::string GeneralDate(const DateTime&) const override { return text_; }
  [[nodiscard]] std::optional<DateTime> ParseGeneralDate(std::string_view text) const override {
    text_ = text;
    return Now();
  }

 private:
  mutable std::string text_;
};

class NotedPrompts : public Prompts {
 public:
  void ShowBox(const std::string& text, const std::string&, BoxIcon) override {
    if (said.empty()) said = ReplaceAll(ReplaceAll(text, "\r", ""), "\n", " ");
  }
  void EndProgram() override {}

  std::string said;
};

// The file's name as it is spelt in the folder; "" when there is none. Lists may come from a system
// that does not tell small letters from capitals.
std::filesystem::path FindFile(const std::string& folder, const char* name) {
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(PathOfNarrow(folder), error)) {
    if (SameWord(NarrowName(entry.path().filename()), name)) return entry.path();
  }
  return {};
}

}  // namespace

std::string MeaningOf(ErrorNumber error) {
  switch (error) {
    case kOverflow:
      return "a number does not fit its field";
    case kTooFewFields:
      return "a line has too few fields";
    case kTypeMismatch:
      return "a field is not of the form it should have";
    case kFileNotFound:
      return "it is not there";
    default:
      return "it cannot be read [" + Decimal(error) + "]";
  }
}

std::string LoadGroups(const std::string& folder, GssiTable& table, bool& found) {
  std::error_code error;
  if (!std::filesystem::is_directory(PathOfNarrow(folder), error))
    return folder + ": there is no such folder";
  const std::filesystem::path path = FindFile(folder, "TETRA_GSSI.txt");
  found = !path.empty();
  if (!found) return "";
  OneFile files(path);
  NoWindow window;
  Form1 form(window);
  GroupList list(files, form, table, "");
  const ErrorNumber failure = list.Load();
  return failure == kNoError ? "" : NarrowName(path) + ": " + MeaningOf(failure);
}

std::string LoadSubscribers(const std::string& folder, SsiTable& table, bool& found) {
  const std::filesystem::path path = FindFile(folder, "TETRA_SSI.txt");
  found = !path.empty();
  if (!found) return "";
  OneFile files(path);
  NoWindow window;
  Form1 form(window);
  AnyDates clock;
  SubscriberList list(files, clock, form, table, "");
  const ErrorNumber failure = list.Load();
  return failure == kNoError ? "" : NarrowName(path) + ": " + MeaningOf(failure);
}

std::string UserLists::GroupLabel(std::int32_t mcc, std::int32_t mnc, std::int32_t gssi) const {
  const auto found = groups.Find(mcc, mnc, gssi);
  return found ? Utf8(groups[*found].Label.trimmed()) : std::string();
}

std::string UserLists::SubscriberLabel(std::int32_t mcc, std::int32_t mnc, std::int32_t gssi,
                                       std::int32_t ssi) const {
  const auto found = subscribers.Find(mcc, mnc, gssi, ssi);
  return found ? Utf8(subscribers[*found].Label.trimmed()) : std::string();
}

std::string LoadSettings(const std::string& name, ReplayStart& start) {
  const std::filesystem::path path = PathOfNarrow(name);
  std::string content;
  if (const FileError error = ReadFile(path, content)) return name + ": " + MeaningOf(error);
  OneFile files(path);
  NotedPrompts prompts;
  ReplayLoop loop;
  ReplayClock now(loop);
  ProgramFlags flags;
  NoWindow window;
  Form1 form(window);
  StartErrors errors(files, prompts, "");
  SettingsFile settings(files, prompts, now, flags, form, start.presets, errors, "");
  if (settings.ReadSettings() != Load::kOk) return name + ": no settings of this version";
  start.zero_offset = form.optOffsets[0].value;
  start.log_mode = form.chkCreateCallActivityCvsFile.checked();
  return "";
}

}  // namespace corvane::tools
