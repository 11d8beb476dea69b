// A named mutex for the claim, a few bytes of named shared memory for the window.
#include "app/single_instance_win.h"

namespace corvane {

namespace {

constexpr DWORD kPollMs = 50;

// Paths are the same whatever the case of their letters; a hash, because names of system objects
// must not hold "\".
std::string ObjectName(const std::string& program_folder, const char* what) {
  std::uint64_t hash = 14695981039346656037ULL;
  std::string folder = program_folder;
  CharLowerBuffA(folder.data(), static_cast<DWORD>(folder.size()));
  for (const char c : folder) {
    hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
  }
  return "Local\\Corvane-" + std::to_string(hash) + "-" + what;
}

}  // namespace

std::string SingleInstance::ClaimName(const std::string& program_folder) {
  return ObjectName(program_folder, "claim");
}

SingleInstance::SingleInstance(const std::string& program_folder)
    : mutex_(CreateMutexA(nullptr, FALSE, ClaimName(program_folder).c_str())) {
  // A program with more rights than this one owns a mutex that may not be opened. Any other refusal
  // must not keep the user from starting.
  const DWORD error = GetLastError();
  first_ = mutex_ != nullptr ? error != ERROR_ALREADY_EXISTS : error != ERROR_ACCESS_DENIED;
  memory_ = CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof *window_,
                               ObjectName(program_folder, "window").c_str());
  if (memory_ != nullptr) {
    window_ = static_cast<volatile std::uint64_t*>(
        MapViewOfFile(memory_, FILE_MAP_WRITE, 0, 0, sizeof *window_));
  }
}

SingleInstance::~SingleInstance() {
  if (window_ != nullptr) UnmapViewOfFile(const_cast<std::uint64_t*>(window_));
  if (memory_ != nullptr) CloseHandle(memory_);
  if (mutex_ != nullptr) CloseHandle(mutex_);
}

void SingleInstance::PublishWindow(HWND window) {
  if (window_ != nullptr) *window_ = reinterpret_cast<std::uint64_t>(window);
}

void SingleInstance::BringFirstToFront() {
  if (window_ == nullptr) return;
  for (DWORD waited = 0; *window_ == 0 && waited < kWindowWaitMs; waited += kPollMs) {
    Sleep(kPollMs);
  }
  HWND window = reinterpret_cast<HWND>(static_cast<std::uintptr_t>(*window_));
  if (window == nullptr || !IsWindow(window)) return;
  if (IsIconic(window)) ShowWindowAsync(window, SW_RESTORE);
  SetForegroundWindow(window);
}

}  // namespace corvane
