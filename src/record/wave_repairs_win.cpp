// What follows or precedes a command so that its answer is true and the driver stays whole.
#include "record/wave_repairs_win.h"

#include <mmsystem.h>
#include <tlhelp32.h>

#include <array>
#include <cstdint>
#include <functional>
#include <utility>

namespace corvane {

namespace {

using Verb = MciCommand::Verb;

constexpr DWORD kThreadEndLimit_ms = 2000;
constexpr unsigned kModeReplyLength = 32;
constexpr LONG kQueryStartAddress = 9;

using QueryThread = LONG(WINAPI*)(HANDLE, LONG, void*, ULONG, ULONG*);

bool UnderWine() {
  const HMODULE ntdll = GetModuleHandleA("ntdll.dll");
  return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

bool RunsIn(HANDLE thread, HMODULE module, QueryThread query) {
  void* start = nullptr;
  HMODULE owner = nullptr;
  return query(thread, kQueryStartAddress, &start, sizeof start, nullptr) >= 0 &&
         GetModuleHandleExA(
             GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
             static_cast<LPCSTR>(start), &owner) != 0 &&
         owner == module;
}

// Calls `visit` with each thread of this program that began in `module`.
void ForThreadsOf(HMODULE module, const std::function<void(DWORD, HANDLE)>& visit) {
  const auto query = reinterpret_cast<QueryThread>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleA("ntdll.dll"), "NtQueryInformationThread")));
  const HANDLE threads = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  if (threads == INVALID_HANDLE_VALUE) return;
  THREADENTRY32 entry{};
  entry.dwSize = sizeof entry;
  BOOL more = query != nullptr ? Thread32First(threads, &entry) : FALSE;
  for (; more; more = Thread32Next(threads, &entry)) {
    if (entry.th32OwnerProcessID != GetCurrentProcessId()) continue;
    const HANDLE thread =
        OpenThread(SYNCHRONIZE | THREAD_QUERY_INFORMATION, FALSE, entry.th32ThreadID);
    if (thread == nullptr) continue;
    if (RunsIn(thread, module, query)) visit(entry.th32ThreadID, thread);
    CloseHandle(thread);
  }
  CloseHandle(threads);
}

bool IsCutOff(const std::string& path) {
  const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                  nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return true;
  struct {
    std::array<char, 4> sign;
    std::uint32_t size;  // of what follows
  } head{};
  DWORD read = 0;
  LARGE_INTEGER size{};
  const bool whole = ReadFile(file, &head, sizeof head, &read, nullptr) && read == sizeof head &&
                     GetFileSizeEx(file, &size) &&
                     size.QuadPart >= static_cast<LONGLONG>(sizeof head) + head.size;
  CloseHandle(file);
  return !whole;
}

}  // namespace

RepairedWaveDevice::RepairedWaveDevice(std::string alias)
    : device_(std::move(alias)), under_wine_(UnderWine()) {}

RepairedWaveDevice::~RepairedWaveDevice() {
  if (open_) Send(MciCommand::Stop(), 0);
}

Mci::Reply RepairedWaveDevice::Send(const MciCommand& command, unsigned reply_length) {
  if (command.verb == Verb::kOpen) KeepDriver();
  if (under_wine_ && command.verb == Verb::kRecord) return Record(command, reply_length);
  if (under_wine_ && command.verb == Verb::kStop) return Stop(command, reply_length);
  if (under_wine_ && command.verb == Verb::kSave) return Save(command, reply_length);
  Mci::Reply reply = device_.Send(command, reply_length);
  if (reply.error != 0) return reply;
  if (command.verb == Verb::kOpen) open_ = true;
  if (command.verb == Verb::kClose || command.verb == Verb::kCloseAll) open_ = false;
  return reply;
}

Mci::Reply RepairedWaveDevice::Record(const MciCommand& command, unsigned reply_length) {
  earlier_threads_ = DriverThreads();
  Mci::Reply reply = device_.Send(command, reply_length);
  if (reply.error == 0 && IsStopped()) {
    reply.error = waveInGetNumDevs() == 0 ? MCIERR_WAVE_INPUTSUNSUITABLE : MCIERR_WAVE_INPUTSINUSE;
  }
  begun_ = reply.error == 0;
  return reply;
}

Mci::Reply RepairedWaveDevice::Stop(const MciCommand& command, unsigned reply_length) {
  const bool ended_before = begun_ && IsStopped();
  Mci::Reply reply = device_.Send(command, reply_length);
  AwaitRecordingThread();
  if (reply.error == 0 && ended_before) reply.error = MCIERR_WAVE_INPUTSINUSE;
  return reply;
}

Mci::Reply RepairedWaveDevice::Save(const MciCommand& command, unsigned reply_length) {
  Mci::Reply reply = device_.Send(command, reply_length);
  if (reply.error == 0 && IsCutOff(command.path)) reply.error = MCIERR_FILE_WRITE;
  return reply;
}

// Never given back: the program may end while the driver's thread still runs.
void RepairedWaveDevice::KeepDriver() {
  if (driver_ != nullptr) return;
  driver_ = LoadLibraryExA("mciwave.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
}

bool RepairedWaveDevice::IsStopped() {
  const Mci::Reply mode = device_.Send(MciCommand::Status("mode"), kModeReplyLength);
  return mode.error == 0 && mode.text == "stopped";
}

std::set<DWORD> RepairedWaveDevice::DriverThreads() const {
  std::set<DWORD> found;
  if (driver_ == nullptr) return found;
  ForThreadsOf(driver_, [&](DWORD id, HANDLE) { found.insert(id); });
  return found;
}

// A thread that was there before this recording belongs to a device that was given up.
void RepairedWaveDevice::AwaitRecordingThread() const {
  if (driver_ == nullptr) return;
  ForThreadsOf(driver_, [this](DWORD id, HANDLE thread) {
    if (!earlier_threads_.contains(id)) WaitForSingleObject(thread, kThreadEndLimit_ms);
  });
}

}  // namespace corvane
