// Reading of the store's files.
#include "store/list_file.h"

#include "panel/logs.h"

namespace corvane {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

std::string NameOf(const std::string& path) {
  return path.substr(path.rfind('\\') + 1);
}

bool CompleteReplacement(Files& files, Form1& form, const std::string& path,
                         const IsWhole& is_whole) {
  const std::string replacement = path + ".new";
  std::string content;
  if (!is_whole || !files.Exists(replacement) || files.ReadAll(replacement, content) != kFileOk ||
      content.empty() || !is_whole(content) || files.MoveOver(replacement, path) != kFileOk) {
    return false;
  }
  AddStatusLine(form, "Restored " + NameOf(path) + " - its last save was cut short");
  return true;
}

}  // namespace

SavedContent ReadSaved(Files& files, Form1& form, const std::string& path,
                       const IsWhole& is_whole) {
  SavedContent saved;
  saved.there = files.Exists(path) || CompleteReplacement(files, form, path, is_whole);
  if (!saved.there) return saved;
  saved.error = files.ReadAll(path, saved.content);
  if (saved.error == kFileOk && saved.content.empty() &&
      CompleteReplacement(files, form, path, is_whole)) {
    saved.error = files.ReadAll(path, saved.content);
  }
  return saved;
}

bool EndsWithItsLastLine(std::string_view content) {
  return content.ends_with("\r\n") && content.find('\0') == std::string_view::npos;
}

std::string ListText(Files& files, Form1& form, const std::string& path, std::string content) {
  if (!content.starts_with(kUtf8Mark)) return content;
  AddStatusLine(form, NameOf(path) + " is saved as UTF-8: save it as ANSI");
  return files.FromUtf8(std::string_view(content).substr(kUtf8Mark.size()));
}

}  // namespace corvane
