// A hash of the folder, because names of system objects must not hold "\".
#include "base/instance_name_win.h"

#include <windows.h>

#include <cstdint>

namespace corvane {

std::string InstanceObject(const std::string& program_folder, const char* what) {
  std::uint64_t hash = 14695981039346656037ULL;
  std::string folder = program_folder;
  CharLowerBuffA(folder.data(), static_cast<DWORD>(folder.size()));
  for (const char c : folder) {
    hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
  }
  return "Local\\Corvane-" + std::to_string(hash) + "-" + what;
}

}  // namespace corvane
