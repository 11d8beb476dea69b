// How the store's files are read: a replacement that was broken off between the old file and the
// new one is completed, and a list that was saved as UTF-8 is taken as one.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "base/files.h"
#include "panel/form1.h"

namespace corvane {

// Answers whether the content is all of a file, so that it may stand for it.
using IsWhole = std::function<bool(std::string_view content)>;

struct SavedContent {
  bool there = false;  // without it there is neither content nor error
  FileError error = kFileOk;
  std::string content;
};

// Reads a file that ReplaceContent writes. Some file systems lose one whose replacement was cut
// short, by a power failure above all: it is missing or empty then, and the new content lies beside
// it as "<path>.new". What lies there and `is_whole` takes is put in the place of the file first,
// with a status line. An empty `is_whole` takes nothing.
[[nodiscard]] SavedContent ReadSaved(Files& files, Form1& form, const std::string& path,
                                     const IsWhole& is_whole);

// Lines that all have an end: as far as a text can tell, nothing is cut off.
[[nodiscard]] bool EndsWithItsLastLine(std::string_view content);

// The content of the list at `path`, converted to the code page if it begins with the byte order
// mark of UTF-8; a status line tells the user then.
[[nodiscard]] std::string ListText(Files& files, Form1& form, const std::string& path,
                                   std::string content);

}  // namespace corvane
