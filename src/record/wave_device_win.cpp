// The three faults of another maker that this copes with are told where they are met.
#include "record/wave_device_win.h"

#include <windows.h>

#include <mmsystem.h>
#include <tlhelp32.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <functional>
#include <vector>

namespace corvane {

namespace {

constexpr unsigned kLargestReply = 64 * 1024;

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

bool UnderWine() {
  const HMODULE ntdll = GetModuleHandleA("ntdll.dll");
  return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

// Another foreign fault: under Wine "record" succeeds whether or not the device can be opened, and
// a recording may end by itself, unheard of. So "record" is refused where nothing is recorded right
// after it, and "stop" where nothing was recorded any more.
bool HasEnded(const std::string& alias) {
  std::array<char, 32> mode{};
  const std::string question = "status " + alias + " mode";
  return mciSendStringA(question.c_str(), mode.data(), static_cast<UINT>(mode.size()), nullptr) ==
             0 &&
         std::strcmp(mode.data(), "stopped") == 0;
}

// And a third one: under Wine "save" succeeds when the disk is full, with a file that is cut off.
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

// Between the quotation marks.
std::string PathIn(const std::string& command) {
  const std::size_t begin = command.find('"') + 1;
  return command.substr(begin, command.rfind('"') - begin);
}

std::string LastWord(const std::string& command) {
  return command.substr(command.rfind(' ') + 1);
}

std::string SecondWord(const std::string& command) {
  const std::size_t begin = command.find(' ') + 1;
  return command.substr(begin, command.find(' ', begin) - begin);
}

}  // namespace

WaveDevice::~WaveDevice() {
  if (open_alias_.empty()) return;
  Send("stop " + open_alias_, 0);
  Send("close " + open_alias_, 0);
}

Mci::Reply WaveDevice::Send(const std::string& command, unsigned reply_length) {
  const bool record = command.starts_with("record ");
  const bool stop = command.starts_with("stop ");
  const bool wine = UnderWine();
  if (record || command.starts_with("open ")) KeepDriver();
  if (record && wine) earlier_threads_ = DriverThreads();
  const bool ended_before = stop && begun_ && wine && HasEnded(SecondWord(command));
  Mci::Reply reply;
  const unsigned length = std::min(reply_length, kLargestReply);
  std::vector<char> buffer(length, '\0');
  reply.error =
      mciSendStringA(command.c_str(), length == 0 ? nullptr : buffer.data(), length, nullptr);
  if (reply.error == 0) reply.text.assign(buffer.data(), strnlen(buffer.data(), buffer.size()));
  if (stop && wine) AwaitRecordingThread();
  if (reply.error == 0 && record && wine && HasEnded(SecondWord(command))) {
    reply.error = waveInGetNumDevs() == 0 ? MCIERR_WAVE_INPUTSUNSUITABLE : MCIERR_WAVE_INPUTSINUSE;
  }
  if (reply.error == 0 && ended_before) reply.error = MCIERR_WAVE_INPUTSINUSE;
  if (reply.error == 0 && wine && command.starts_with("save ") && IsCutOff(PathIn(command))) {
    reply.error = MCIERR_FILE_WRITE;
  }
  if (record) begun_ = reply.error == 0;
  if (reply.error == 0 && command.starts_with("open ")) open_alias_ = LastWord(command);
  if (reply.error == 0 && command.starts_with("close ")) open_alias_.clear();
  return reply;
}

// Where the driver is unloaded at "close", its recording thread may still be running in it.
void WaveDevice::KeepDriver() {
  if (driver_ != nullptr) return;
  driver_ = LoadLibraryExA("mciwave.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
}

std::set<unsigned long> WaveDevice::DriverThreads() const {
  std::set<unsigned long> found;
  if (driver_ == nullptr) return found;
  ForThreadsOf(static_cast<HMODULE>(driver_), [&](DWORD id, HANDLE) { found.insert(id); });
  return found;
}

// A thread that was there before this recording belongs to a device that was given up.
void WaveDevice::AwaitRecordingThread() const {
  if (driver_ == nullptr) return;
  ForThreadsOf(static_cast<HMODULE>(driver_), [this](DWORD id, HANDLE thread) {
    if (!earlier_threads_.contains(id)) WaitForSingleObject(thread, kThreadEndLimitMs);
  });
}

}  // namespace corvane
