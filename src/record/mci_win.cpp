// Command strings to winmm, which runs them on a thread of ours.
#include "record/mci_win.h"

#include <windows.h>

#include <mmsystem.h>
#include <tlhelp32.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace corvane {

namespace {

constexpr unsigned kLargestReply = 64 * 1024;
constexpr unsigned kErrorTextLength = 1024;

// A foreign fault: under Wine "stop" comes back while the thread that recorded still works with the
// device, and a "close" that follows takes it away from under that thread: sooner or later the
// program ends there. So that thread's end is waited for.
constexpr DWORD kThreadEndLimitMs = 2000;
constexpr LONG kQueryStartAddress = 9;

using QueryThread = LONG(WINAPI*)(HANDLE, LONG, void*, ULONG, ULONG*);

bool RunsIn(HANDLE thread, HMODULE module, QueryThread query) {
  void* start = nullptr;
  HMODULE owner = nullptr;
  return query(thread, kQueryStartAddress, &start, sizeof start, nullptr) >= 0 &&
         GetModuleHandleExA(
             GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
             static_cast<LPCSTR>(start), &owner) != 0 &&
         owner == module;
}

// Waits for each thread of this program that began in `module`.
void AwaitThreadsOf(HMODULE module, QueryThread query) {
  const HANDLE threads = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  if (threads == INVALID_HANDLE_VALUE) return;
  THREADENTRY32 entry{};
  entry.dwSize = sizeof entry;
  for (BOOL more = Thread32First(threads, &entry); more; more = Thread32Next(threads, &entry)) {
    if (entry.th32OwnerProcessID != GetCurrentProcessId()) continue;
    const HANDLE thread =
        OpenThread(SYNCHRONIZE | THREAD_QUERY_INFORMATION, FALSE, entry.th32ThreadID);
    if (thread == nullptr) continue;
    if (RunsIn(thread, module, query)) WaitForSingleObject(thread, kThreadEndLimitMs);
    CloseHandle(thread);
  }
  CloseHandle(threads);
}

bool UnderWine() {
  const HMODULE ntdll = GetModuleHandleA("ntdll.dll");
  return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

// Another foreign fault: under Wine "record" succeeds whether or not a device can be opened, and
// the recording then ends by itself, unheard of. So "record" is refused where there is no device at
// all, and "stop" where nothing was being recorded any more.
bool HasEnded(const std::string& alias) {
  std::array<char, 32> mode{};
  const std::string question = "status " + alias + " mode";
  return mciSendStringA(question.c_str(), mode.data(), static_cast<UINT>(mode.size()), nullptr) ==
             0 &&
         std::strcmp(mode.data(), "stopped") == 0;
}

// Up to the zero byte, or all of it.
std::string Text(const char* buffer, std::size_t size) {
  return std::string(buffer, strnlen(buffer, size));
}

}  // namespace

// Takes one command after the other. Who gives them and the thread that carries them out own the
// command and its reply in turns, which the two events hand over.
class MciWin::Clerk {
 public:
  Clerk()
      : asked_(CreateEventA(nullptr, FALSE, FALSE, nullptr)),
        answered_(CreateEventA(nullptr, FALSE, FALSE, nullptr)),
        thread_(CreateThread(nullptr, 0, Run, this, 0, nullptr)) {}
  ~Clerk() {
    if (thread_ != nullptr) {
      ended_ = true;
      SetEvent(asked_);
      WaitForSingleObject(thread_, INFINITE);
      CloseHandle(thread_);
    }
    CloseHandle(asked_);
    CloseHandle(answered_);
  }
  Clerk(const Clerk&) = delete;
  Clerk& operator=(const Clerk&) = delete;

  Reply Do(const std::string& command, unsigned reply_length) {
    if (thread_ == nullptr || Stuck()) return {MCIERR_DEVICE_NOT_READY, {}};
    command_ = command;
    reply_length_ = reply_length;
    SetEvent(asked_);
    const DWORD limit_ms = command.starts_with("save ") ? kSaveLimitMs : kAnswerLimitMs;
    if (WaitForSingleObject(answered_, limit_ms) == WAIT_OBJECT_0) return std::move(reply_);
    unanswered_ = true;
    return {MCIERR_DEVICE_NOT_READY, {}};
  }

  // True while a command is still under way that was given up.
  [[nodiscard]] bool Stuck() {
    if (unanswered_ && WaitForSingleObject(answered_, 0) == WAIT_OBJECT_0) unanswered_ = false;
    return unanswered_;
  }

 private:
  static DWORD WINAPI Run(void* clerk) {
    auto& self = *static_cast<Clerk*>(clerk);
    while (WaitForSingleObject(self.asked_, INFINITE) == WAIT_OBJECT_0 && !self.ended_) {
      self.reply_ = self.CarryOut();
      SetEvent(self.answered_);
    }
    return 0;
  }

  Reply CarryOut();
  void KeepWaveDriver();
  void AwaitRecordingThread() const;

  HANDLE asked_;
  HANDLE answered_;
  bool ended_ = false;
  bool unanswered_ = false;
  std::string command_;
  unsigned reply_length_ = 0;
  Reply reply_;
  HMODULE wave_driver_ = nullptr;
  HANDLE thread_;  // begins when all else is there
};

Mci::Reply MciWin::Clerk::CarryOut() {
  const bool stop = command_.starts_with("stop ");
  const bool record = command_.starts_with("record ");
  if (command_.starts_with("open ") || record) KeepWaveDriver();
  const bool ended_before =
      stop && UnderWine() && HasEnded(command_.substr(command_.find(' ') + 1));
  Reply reply;
  const unsigned length = std::min(reply_length_, kLargestReply);
  std::vector<char> buffer(length, '\0');
  reply.error =
      mciSendStringA(command_.c_str(), length == 0 ? nullptr : buffer.data(), length, nullptr);
  if (reply.error == 0) reply.text = Text(buffer.data(), buffer.size());
  if (stop) AwaitRecordingThread();
  if (reply.error == 0 && ended_before) reply.error = MCIERR_WAVE_INPUTSINUSE;
  if (reply.error == 0 && record && waveInGetNumDevs() == 0) {
    reply.error = MCIERR_WAVE_INPUTSUNSUITABLE;
  }
  return reply;
}

// Where the driver is unloaded at "close", its recording thread may still be running in it.
void MciWin::Clerk::KeepWaveDriver() {
  if (wave_driver_ != nullptr) return;
  wave_driver_ = LoadLibraryExA("mciwave.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
}

void MciWin::Clerk::AwaitRecordingThread() const {
  if (wave_driver_ == nullptr || !UnderWine()) return;
  const auto query = reinterpret_cast<QueryThread>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleA("ntdll.dll"), "NtQueryInformationThread")));
  if (query != nullptr) AwaitThreadsOf(wave_driver_, query);
}

MciWin::MciWin() = default;

MciWin::~MciWin() {
  // Its thread still uses it, and goes with the program.
  if (clerk_ != nullptr && clerk_->Stuck()) (void)clerk_.release();
}

Mci::Reply MciWin::Send(const std::string& command, unsigned reply_length) {
  if (clerk_ == nullptr) clerk_ = std::make_unique<Clerk>();
  return clerk_->Do(command, reply_length);
}

std::string MciWin::ErrorText(unsigned error) {
  std::array<char, kErrorTextLength> buffer{};
  if (mciGetErrorStringA(error, buffer.data(), kErrorTextLength) == 0) return {};
  return Text(buffer.data(), buffer.size());
}

}  // namespace corvane
