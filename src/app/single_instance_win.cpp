// A named mutex for the claim, a few bytes of named shared memory for the window.
#include "app/single_instance_win.h"

#include <windows.h>

#include <cstdint>

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

struct SingleInstance::Impl {
  HANDLE mutex = nullptr;
  HANDLE memory = nullptr;
  volatile std::uint64_t* window = nullptr;
  bool first = false;
};

SingleInstance::SingleInstance(const std::string& program_folder)
    : impl_(std::make_unique<Impl>()) {
  impl_->mutex = CreateMutexA(nullptr, FALSE, ObjectName(program_folder, "claim").c_str());
  // A system that refuses the mutex must not keep the user from starting.
  impl_->first = impl_->mutex == nullptr || GetLastError() != ERROR_ALREADY_EXISTS;
  impl_->memory =
      CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(std::uint64_t),
                         ObjectName(program_folder, "window").c_str());
  if (impl_->memory != nullptr) {
    impl_->window = static_cast<volatile std::uint64_t*>(
        MapViewOfFile(impl_->memory, FILE_MAP_WRITE, 0, 0, sizeof(std::uint64_t)));
  }
}

SingleInstance::~SingleInstance() {
  if (impl_->window != nullptr) UnmapViewOfFile(const_cast<std::uint64_t*>(impl_->window));
  if (impl_->memory != nullptr) CloseHandle(impl_->memory);
  if (impl_->mutex != nullptr) CloseHandle(impl_->mutex);
}

bool SingleInstance::is_first() const {
  return impl_->first;
}

void SingleInstance::PublishWindow(void* window) {
  if (impl_->window != nullptr) *impl_->window = reinterpret_cast<std::uint64_t>(window);
}

void SingleInstance::BringFirstToFront() {
  if (impl_->window == nullptr) return;
  for (DWORD waited = 0; *impl_->window == 0 && waited < kWindowWaitMs; waited += kPollMs) {
    Sleep(kPollMs);
  }
  HWND window = reinterpret_cast<HWND>(static_cast<std::uintptr_t>(*impl_->window));
  if (window == nullptr || !IsWindow(window)) return;
  if (IsIconic(window)) ShowWindowAsync(window, SW_RESTORE);
  SetForegroundWindow(window);
}

}  // namespace corvane
