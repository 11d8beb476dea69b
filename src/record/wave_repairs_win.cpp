// What follows or precedes a command so that its answer is true and the driver stays whole.
#include "record/wave_repairs_win.h"

#include <mmsystem.h>
#include <tlhelp32.h>

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "base/number_text.h"

namespace corvane {

namespace {

using Verb = MciCommand::Verb;

constexpr DWORD kThreadEndLimit_ms = 2000;
// The last Wine whose "stop" leaves the buffers to the recording thread. With later ones "stop"
// hands out both, and is done with that in less than kHold_ms.
constexpr int kLastPatientWine = 8;
constexpr DWORD kHold_ms = 200;
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

// The threads of this program that began in `module`, by id.
std::set<DWORD> ThreadsOf(HMODULE module) {
  std::set<DWORD> found;
  const auto query = reinterpret_cast<QueryThread>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleA("ntdll.dll"), "NtQueryInformationThread")));
  const HANDLE threads = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  if (threads == INVALID_HANDLE_VALUE) return found;
  THREADENTRY32 entry{};
  entry.dwSize = sizeof entry;
  BOOL more = query != nullptr ? Thread32First(threads, &entry) : FALSE;
  for (; more; more = Thread32Next(threads, &entry)) {
    if (entry.th32OwnerProcessID != GetCurrentProcessId()) continue;
    const HANDLE thread = OpenThread(THREAD_QUERY_INFORMATION, FALSE, entry.th32ThreadID);
    if (thread == nullptr) continue;
    if (RunsIn(thread, module, query)) found.insert(entry.th32ThreadID);
    CloseHandle(thread);
  }
  CloseHandle(threads);
  return found;
}

// Holds threads from its making on for kHold_ms, whatever becomes of the thread that made it.
//
// A held thread may own a lock of the system. So the one that lets it go runs before, and between
// the two nothing is done that could wait for such a lock.
class Hold {
 public:
  explicit Hold(const std::vector<HANDLE>& threads) : threads_(threads) {
    if (threads_.empty() || ready_ == nullptr || begun_ == nullptr) return;
    releaser_ = CreateThread(nullptr, 0, Release, this, 0, nullptr);
    if (releaser_ == nullptr) return;
    WaitForSingleObject(ready_, INFINITE);
    for (const HANDLE thread : threads_) SuspendThread(thread);
    SetEvent(begun_);
  }
  ~Hold() {
    if (releaser_ != nullptr) {
      WaitForSingleObject(releaser_, INFINITE);
      CloseHandle(releaser_);
    }
    CloseHandle(ready_);
    CloseHandle(begun_);
  }
  Hold(const Hold&) = delete;
  Hold& operator=(const Hold&) = delete;

 private:
  static DWORD WINAPI Release(void* argument) {
    const Hold& hold = *static_cast<const Hold*>(argument);
    SetEvent(hold.ready_);
    WaitForSingleObject(hold.begun_, INFINITE);
    Sleep(kHold_ms);
    for (const HANDLE thread : hold.threads_) ResumeThread(thread);
    return 0;
  }

  const std::vector<HANDLE>& threads_;
  const HANDLE ready_ = CreateEventA(nullptr, FALSE, FALSE, nullptr);
  const HANDLE begun_ = CreateEventA(nullptr, FALSE, FALSE, nullptr);
  HANDLE releaser_ = nullptr;
};

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

int RepairedWaveDevice::WineVersion() {
  const HMODULE ntdll = GetModuleHandleA("ntdll.dll");
  if (ntdll == nullptr) return 0;
  const auto version = reinterpret_cast<const char*(CDECL*)()>(
      reinterpret_cast<void*>(GetProcAddress(ntdll, "wine_get_version")));
  if (version == nullptr) return 0;
  const std::string_view text = version();  // "10.0", "9.0-rc1"
  return ParseDecimal<int>(text.substr(0, text.find('.'))).value_or(1);
}

RepairedWaveDevice::RepairedWaveDevice(std::string alias, int wine)
    : device_(std::move(alias)), wine_(wine) {}

RepairedWaveDevice::~RepairedWaveDevice() {
  if (open_) Send(MciCommand::Stop(), 0);
  ForgetRecordingThreads();
}

Mci::Reply RepairedWaveDevice::Send(const MciCommand& command, unsigned reply_length) {
  if (command.verb == Verb::kOpen) KeepDriver();
  if (command.verb == Verb::kRecord) return Record(command, reply_length);
  if (command.verb == Verb::kStop) return Stop(command, reply_length);
  if (wine_ != 0 && command.verb == Verb::kSave) return Save(command, reply_length);
  Mci::Reply reply = device_.Send(command, reply_length);
  if (reply.error != 0) return reply;
  if (command.verb == Verb::kOpen) open_ = true;
  if (command.verb == Verb::kClose || command.verb == Verb::kCloseAll) open_ = false;
  return reply;
}

Mci::Reply RepairedWaveDevice::Record(const MciCommand& command, unsigned reply_length) {
  ForgetRecordingThreads();
  Mci::Reply reply = device_.Send(command, reply_length);
  const std::set<DWORD> threads = wine_ != 0 ? DriverThreads() : std::set<DWORD>();
  for (const DWORD id : threads) {
    if (earlier_threads_.contains(id)) continue;
    const HANDLE thread = OpenThread(SYNCHRONIZE | THREAD_SUSPEND_RESUME, FALSE, id);
    if (thread != nullptr) recording_threads_.push_back(thread);
  }
  if (reply.error == 0 && IsStopped()) {
    reply.error = waveInGetNumDevs() == 0 ? MCIERR_WAVE_INPUTSUNSUITABLE : MCIERR_WAVE_INPUTSINUSE;
  }
  begun_ = reply.error == 0;
  return reply;
}

Mci::Reply RepairedWaveDevice::Stop(const MciCommand& command, unsigned reply_length) {
  const bool ended_before = begun_ && IsStopped();
  Mci::Reply reply;
  {
    // "stop" hands the two buffers out one by one. The first one wakes the recording thread, and
    // that frees both: instead of the second one, 32 KB of what lies there then are recorded.
    static const std::vector<HANDLE> kNone;
    const Hold hold(wine_ > kLastPatientWine ? recording_threads_ : kNone);
    reply = device_.Send(command, reply_length);
  }
  for (const HANDLE thread : recording_threads_) WaitForSingleObject(thread, kThreadEndLimit_ms);
  ForgetRecordingThreads();
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
  if (wine_ != 0) earlier_threads_ = DriverThreads();
}

bool RepairedWaveDevice::IsStopped() {
  return device_.Mode() == MCI_MODE_STOP;
}

std::set<DWORD> RepairedWaveDevice::DriverThreads() const {
  return driver_ == nullptr ? std::set<DWORD>() : ThreadsOf(driver_);
}

void RepairedWaveDevice::ForgetRecordingThreads() {
  for (const HANDLE thread : recording_threads_) CloseHandle(thread);
  recording_threads_.clear();
}

}  // namespace corvane
