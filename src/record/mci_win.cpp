// Command strings to winmm.
#include "record/mci_win.h"

#include <windows.h>

#include <mmsystem.h>
#include <tlhelp32.h>

#include <algorithm>
#include <array>
#include <cstring>
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

Mci::Reply MciWin::Send(const std::string& command, unsigned reply_length) {
  const bool stop = command.starts_with("stop ");
  if (command.starts_with("open ") || command.starts_with("record ")) KeepWaveDriver();
  const bool ended_before = stop && UnderWine() && HasEnded(command.substr(command.find(' ') + 1));
  Reply reply;
  const unsigned length = std::min(reply_length, kLargestReply);
  std::vector<char> buffer(length, '\0');
  reply.error =
      mciSendStringA(command.c_str(), length == 0 ? nullptr : buffer.data(), length, nullptr);
  if (reply.error == 0) reply.text = Text(buffer.data(), buffer.size());
  if (stop) AwaitRecordingThread();
  if (reply.error == 0 && ended_before) reply.error = MCIERR_WAVE_INPUTSINUSE;
  if (reply.error == 0 && command.starts_with("record ") && waveInGetNumDevs() == 0) {
    reply.error = MCIERR_WAVE_INPUTSUNSUITABLE;
  }
  return reply;
}

std::string MciWin::ErrorText(unsigned error) {
  std::array<char, kErrorTextLength> buffer{};
  if (mciGetErrorStringA(error, buffer.data(), kErrorTextLength) == 0) return {};
  return Text(buffer.data(), buffer.size());
}

// Where the driver is unloaded at "close", its recording thread may still be running in it.
void MciWin::KeepWaveDriver() {
  if (wave_driver_ != nullptr) return;
  wave_driver_ = LoadLibraryExA("mciwave.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
}

void MciWin::AwaitRecordingThread() const {
  if (wave_driver_ == nullptr || !UnderWine()) return;
  const auto query = reinterpret_cast<QueryThread>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleA("ntdll.dll"), "NtQueryInformationThread")));
  if (query != nullptr) AwaitThreadsOf(static_cast<HMODULE>(wave_driver_), query);
}

}  // namespace corvane
