// The folder that the program works in: which form of its path is used everywhere, and why some
// folders cannot be worked in at all. Files, and the recorder above all, take paths in the code
// page, not too long and without "+".
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "base/files.h"

namespace corvane {

// The system's recorder takes names of up to 127 characters; the longest that it is given here is
// that of the folder with "\Daily\20261115\Record\newTmp.wav" behind it.
inline constexpr std::size_t kLongestProgramFolder = 94;

// The path as the user sees it and the system's short form of it; nullopt for a form that there is
// not, or that the code page does not hold.
struct FolderForms {
  std::optional<std::string> plain;
  std::optional<std::string> short_form;
};

struct ProgramFolder {
  std::string path;     // without "\" at its end
  std::string problem;  // "" when the program can work there; else a sentence for the user
};

// The plain form where it can be used, else the short one.
[[nodiscard]] ProgramFolder ChooseFolder(const FolderForms& forms);

// "" when a file can be written in the folder, or when it is the disk that has no room; else a
// sentence for the user. Leaves nothing behind.
[[nodiscard]] std::string WritingProblem(Files& files, const std::string& folder);

}  // namespace corvane
