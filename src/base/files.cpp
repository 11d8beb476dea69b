// Replacing a file in one step.
#include "base/files.h"

namespace corvane {

FileError ReplaceContent(Files& files, const std::string& path, std::string_view content) {
  const std::string temporary = path + ".new";
  FileError error = files.WriteAll(temporary, content);
  if (error == kFileOk) error = files.MoveOver(temporary, path);
  if (error != kFileOk && files.Exists(temporary)) {
    // A leftover is harmless: the next save writes over it.
    static_cast<void>(files.Delete(temporary));
  }
  return error;
}

}  // namespace corvane
