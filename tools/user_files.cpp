// Reading lists and settings.
#include "tools/user_files.h"

#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include "base/number_text.h"
#include "base/text.h"
#include "store/saved_lists.h"
#include "store/settings.h"
#include "tools/replay_ports.h"

namespace corvane::tools {

namespace {

constexpr std::size_t kLargestFile = 256U << 20U;

FileError ReadFile(const std::filesystem::path& path, std::string& content) {
  content.clear();
  std::error_code error;
  if (!std::filesystem::exists(path, error)) return kFileNotFound;
  if (std::filesystem::is_directory(path, error)) return kPathAccess;
  std::ifstream stream(path, std::ios::binary);
  if (!stream) return kPermissionDenied;
  std::string piece(1U << 16U, '\0');
  do {
    stream.read(piece.data(), static_cast<std::streamsize>(piece.size()));
    content.append(piece, 0, static_cast<std::size_t>(stream.gcount()));
  } while (stream && content.size() <= kLargestFile);
  return stream.bad() || content.size() > kLargestFile ? kPathAccess : kFileOk;
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

class NotedPrompts : public Prompts {
 public:
  void ShowBox(const std::string& text, const std::string&, BoxIcon) override {
    if (said.empty()) said = ReplaceAll(ReplaceAll(text, "\r", ""), "\n", " ");
  }
  void EndProgram() override {}

  std::string said;
};

std::string Meaning(ErrorNumber error) {
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

// The file's name as it is spelt in the folder; "" when there is none. Lists may come from a system
// that does not tell small letters from capitals.
std::filesystem::path FindFile(const std::string& folder, const char* name) {
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    if (SameWord(entry.path().filename().string(), name)) return entry.path();
  }
  return {};
}

}  // namespace

std::string LoadGroups(const std::string& folder, GssiTable& table, bool& found) {
  std::error_code error;
  if (!std::filesystem::is_directory(folder, error)) return folder + ": there is no such folder";
  const std::filesystem::path path = FindFile(folder, "TETRA_GSSI.txt");
  found = !path.empty();
  if (!found) return "";
  OneFile files(path);
  NoWindow window;
  Form1 form(window);
  GroupList list(files, form, table, "");
  const ErrorNumber failure = list.Load();
  return failure == kNoError ? "" : path.string() + ": " + Meaning(failure);
}

std::string LoadSettings(const std::string& path, ReplayStart& start) {
  std::string content;
  if (const FileError error = ReadFile(path, content)) return path + ": " + Meaning(error);
  OneFile files(path);
  NotedPrompts prompts;
  ReplayLoop loop;
  ReplayClock now(loop);
  ProgramFlags flags;
  NoWindow window;
  Form1 form(window);
  StartErrors errors(files, prompts, "");
  SettingsFile settings(files, prompts, now, flags, form, start.presets, errors, "");
  if (settings.ReadSettings() != Load::kOk) return path + ": no settings of this version";
  start.zero_offset = form.optOffsets[0].value;
  start.log_mode = form.chkCreateCallActivityCvsFile.checked();
  return "";
}

}  // namespace corvane::tools
