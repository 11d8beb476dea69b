// Objects of the system by process.
#include "desktop/harness/system_objects_win.h"

#include <winternl.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace corvane::desktop {

namespace {

template <typename Function>
Function FromNtdll(const char* name) {
  const auto address = GetProcAddress(GetModuleHandleA("ntdll"), name);
  return reinterpret_cast<Function>(reinterpret_cast<void*>(address));
}

bool UnderWine() {
  return GetProcAddress(GetModuleHandleA("ntdll"), "wine_get_version") != nullptr;
}

unsigned HandlesOf(DWORD process_id) {
  static const auto query =
      FromNtdll<decltype(&NtQuerySystemInformation)>("NtQuerySystemInformation");
  std::vector<std::byte> answer(std::size_t{256} * 1024);
  ULONG needed = 0;
  while (query(SystemProcessInformation, answer.data(), static_cast<ULONG>(answer.size()),
               &needed) < 0) {
    if (needed <= answer.size()) return 0;
    answer.resize(std::size_t{needed} + 4096);
  }
  for (std::size_t at = 0;;) {
    const auto* entry = reinterpret_cast<const SYSTEM_PROCESS_INFORMATION*>(answer.data() + at);
    if (reinterpret_cast<std::uintptr_t>(entry->UniqueProcessId) == process_id) {
      return entry->HandleCount;
    }
    if (entry->NextEntryOffset == 0) return 0;
    at += entry->NextEntryOffset;
  }
}

// One entry of the table of GDI objects that each process sees.
struct GdiEntry {
  std::uint64_t object;
  std::uint32_t owner;
  std::uint16_t unique;
  std::uint8_t type;  // 0: free
  std::uint8_t flags;
  std::uint64_t user_pointer;
};
constexpr std::size_t kGdiEntries = 65'536;
// Where a process of 64 bits keeps the table's address, behind that of its PEB.
constexpr std::uintptr_t kGdiTableInPeb = 0xF8;

unsigned GdiObjectsOf(HANDLE process) {
  static const auto query =
      FromNtdll<decltype(&NtQueryInformationProcess)>("NtQueryInformationProcess");
  PROCESS_BASIC_INFORMATION basic{};
  if (query(process, ProcessBasicInformation, &basic, sizeof basic, nullptr) < 0) return 0;
  const auto* place = reinterpret_cast<const std::byte*>(basic.PebBaseAddress) + kGdiTableInPeb;
  const void* table = nullptr;
  if (ReadProcessMemory(process, place, &table, sizeof table, nullptr) == FALSE) return 0;
  std::vector<GdiEntry> entries(kGdiEntries);
  if (ReadProcessMemory(process, table, entries.data(), entries.size() * sizeof(GdiEntry),
                        nullptr) == FALSE) {
    return 0;
  }
  return static_cast<unsigned>(
      std::ranges::count_if(entries, [](const GdiEntry& entry) { return entry.type != 0; }));
}

struct WindowCount {
  DWORD process_id = 0;
  unsigned windows = 0;
};

BOOL CALLBACK CountWindow(HWND, LPARAM count) {
  ++reinterpret_cast<WindowCount*>(count)->windows;
  return TRUE;
}

unsigned WindowsOf(DWORD process_id) {
  const auto count_top = [](HWND window, LPARAM count) -> BOOL {
    auto& all = *reinterpret_cast<WindowCount*>(count);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner != all.process_id) return TRUE;
    CountWindow(window, count);
    EnumChildWindows(window, CountWindow, count);
    return TRUE;
  };
  WindowCount all{process_id};
  EnumWindows(count_top, reinterpret_cast<LPARAM>(&all));
  return all.windows;
}

}  // namespace

SystemObjects ObjectsOf(HANDLE process) {
  if (UnderWine()) {
    const DWORD id = GetProcessId(process);
    return {HandlesOf(id), GdiObjectsOf(process), WindowsOf(id)};
  }
  DWORD handles = 0;
  if (GetProcessHandleCount(process, &handles) == FALSE) handles = 0;
  return {handles, GetGuiResources(process, GR_GDIOBJECTS),
          GetGuiResources(process, GR_USEROBJECTS)};
}

}  // namespace corvane::desktop
