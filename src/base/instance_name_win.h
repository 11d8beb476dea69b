// The names of the system's objects that stand for a running program, by its folder.
#pragma once

#include <string>

namespace corvane {

// Of the object that `what` is for. Paths are the same whatever the case of their letters.
[[nodiscard]] std::string InstanceObject(const std::string& program_folder, const char* what);

// The object that is there as long as a program runs from the folder.
inline constexpr const char* kInstanceClaim = "claim";

}  // namespace corvane
