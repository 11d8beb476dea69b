// A named mutex for the claim, a few bytes of named shared memory for the window.
#include "app/single_instance_win.h"

#include "base/instance_name_win.h"

namespace corvane {

namespace {

constexpr DWORD kPollMs = 50;

}  // namespace

std::string SingleInstance::ClaimName(const std::string& program_folder) {
  return InstanceObject(program_folder, kInstanceClaim);
}

SingleInstance::SingleInstance(const std::string& program_folder)
    : mutex_(CreateMutexA(nullptr, FALSE, ClaimName(program_folder).c_str())) {
  // A program with more rights than this one owns a mutex that may not be opened. Any other refusal
  // must not keep the user from starting.
  const DWORD error = GetLastError();
  first_ = mutex_ != nullptr ? error != ERROR_ALREADY_EXISTS : error != ERROR_ACCESS_DENIED;
  memory_ = CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof *window_,
                               InstanceObject(program_folder, "window").c_str());
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
