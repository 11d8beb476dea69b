// Where the program's file lies, and the box of a folder that it cannot work in.
#pragma once

#include <string>

#include "app/program_folder.h"

namespace corvane {

// The folder that holds the executable.
[[nodiscard]] std::wstring FolderOfProgram();

// Both forms of the path of a folder that exists.
[[nodiscard]] FolderForms FormsOf(const std::wstring& folder);

// Says which folder and why. Returns when it was answered.
void ShowFolderProblem(const std::wstring& folder, const std::string& problem);

}  // namespace corvane
