// Whether the system is Wine, whose own ways a few places have to make up for.
#pragma once

#include <windows.h>

namespace corvane::standin {

[[nodiscard]] inline bool IsWine() {
  const HMODULE ntdll = GetModuleHandleA("ntdll.dll");
  return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

}  // namespace corvane::standin
