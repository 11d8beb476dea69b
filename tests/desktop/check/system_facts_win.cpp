// Asked of the system itself; what an older one does not have is left out.
#include "desktop/check/system_facts.h"

#include <windows.h>

#include <mmsystem.h>

#include <cstdio>

namespace corvane::desktop {

namespace {

using Lines = std::vector<std::string>;

template <typename Function>
Function FunctionOf(const char* library, const char* name) {
  const HMODULE module = LoadLibraryA(library);
  if (module == nullptr) return nullptr;
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

std::string Narrow(const wchar_t* text) {
  char narrow[256]{};
  WideCharToMultiByte(CP_UTF8, 0, text, -1, narrow, sizeof narrow - 1, nullptr, nullptr);
  return narrow;
}

std::string RegistryText(const wchar_t* name) {
  constexpr const wchar_t* kKey = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
  wchar_t text[128]{};
  DWORD size = sizeof text - sizeof(wchar_t);
  const LSTATUS found = RegGetValueW(HKEY_LOCAL_MACHINE, kKey, name,
                                     RRF_RT_REG_SZ | RRF_SUBKEY_WOW6464KEY, nullptr, text, &size);
  return found == ERROR_SUCCESS ? Narrow(text) : "";
}

std::string RegistryNumber(const wchar_t* name) {
  constexpr const wchar_t* kKey = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
  DWORD number = 0;
  DWORD size = sizeof number;
  const LSTATUS found =
      RegGetValueW(HKEY_LOCAL_MACHINE, kKey, name, RRF_RT_REG_DWORD | RRF_SUBKEY_WOW6464KEY,
                   nullptr, &number, &size);
  return found == ERROR_SUCCESS ? std::to_string(number) : "?";
}

void AddSystem(Lines& lines) {
  lines.push_back("system            " + RegistryText(L"ProductName") + " " +
                  RegistryText(L"DisplayVersion") + ", build " + RegistryText(L"CurrentBuild") +
                  "." + RegistryNumber(L"UBR"));
  using WineVersion = const char* (*)();
  const auto wine_version = FunctionOf<WineVersion>("ntdll.dll", "wine_get_version");
  if (wine_version != nullptr) lines.push_back(std::string("Wine              ") + wine_version());
  SYSTEM_INFO system{};
  GetNativeSystemInfo(&system);
  lines.push_back("processors        " + std::to_string(system.dwNumberOfProcessors));
}

std::string LocaleText(LCTYPE type) {
  wchar_t text[80]{};
  GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, type, text, 80);
  return Narrow(text);
}

void AddRegion(Lines& lines) {
  lines.push_back("region            " + LocaleText(LOCALE_SNAME) + ", code page " +
                  std::to_string(GetACP()));
  lines.push_back("dates and times   " + LocaleText(LOCALE_SSHORTDATE) + "  " +
                  LocaleText(LOCALE_STIMEFORMAT));
}

BOOL CALLBACK AddScreen(HMONITOR screen, HDC, LPRECT place, LPARAM lines) {
  using DpiForMonitor = HRESULT(WINAPI*)(HMONITOR, int, UINT*, UINT*);
  const auto dpi_for = FunctionOf<DpiForMonitor>("shcore.dll", "GetDpiForMonitor");
  UINT across = 0;
  UINT down = 0;
  std::string scale = "?";
  if (dpi_for != nullptr && dpi_for(screen, 0, &across, &down) == S_OK) {
    scale = std::to_string(across * 100 / USER_DEFAULT_SCREEN_DPI);
  }
  reinterpret_cast<Lines*>(lines)->push_back(
      "screen            " + std::to_string(place->right - place->left) + " x " +
      std::to_string(place->bottom - place->top) + " at " + std::to_string(place->left) + "," +
      std::to_string(place->top) + ", " + scale + " %");
  return TRUE;
}

void AddScreens(Lines& lines) {
  // Or the system tells every program 100 %.
  using BeAware = BOOL(WINAPI*)(void*);
  const auto be_aware = FunctionOf<BeAware>("user32.dll", "SetProcessDpiAwarenessContext");
  if (be_aware != nullptr) be_aware(reinterpret_cast<void*>(-4));
  EnumDisplayMonitors(nullptr, nullptr, &AddScreen, reinterpret_cast<LPARAM>(&lines));
}

// The median of what the clock moves by, and of what a sleep of 1 ms takes.
void AddClock(Lines& lines) {
  constexpr int kSteps = 8;
  ULONGLONG before = GetTickCount64();
  while (GetTickCount64() == before) {
  }
  before = GetTickCount64();
  for (int step = 0; step < kSteps; ++step) {
    const ULONGLONG at = GetTickCount64();
    while (GetTickCount64() == at) {
    }
  }
  const double step_ms = static_cast<double>(GetTickCount64() - before) / kSteps;
  LARGE_INTEGER frequency{};
  LARGE_INTEGER begin{};
  LARGE_INTEGER end{};
  QueryPerformanceFrequency(&frequency);
  QueryPerformanceCounter(&begin);
  for (int sleep = 0; sleep < kSteps; ++sleep) Sleep(1);
  QueryPerformanceCounter(&end);
  const double sleep_ms = 1000.0 * static_cast<double>(end.QuadPart - begin.QuadPart) /
                          static_cast<double>(frequency.QuadPart) / kSteps;
  char text[96];
  std::snprintf(text, sizeof text, "clock             steps of %.1f ms; Sleep(1) takes %.1f ms",
                step_ms, sleep_ms);
  lines.push_back(text);
}

void AddDevices(Lines& lines) {
  const UINT count = waveInGetNumDevs();
  if (count == 0) lines.push_back("recording device  none");
  for (UINT device = 0; device < count; ++device) {
    WAVEINCAPSW known{};
    if (waveInGetDevCapsW(device, &known, sizeof known) == MMSYSERR_NOERROR) {
      lines.push_back("recording device  " + Narrow(known.szPname));
    }
  }
}

void AddRights(Lines& lines) {
  HANDLE token = nullptr;
  TOKEN_ELEVATION elevation{};
  DWORD size = 0;
  if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token) == FALSE) return;
  const bool told =
      GetTokenInformation(token, TokenElevation, &elevation, sizeof elevation, &size) != FALSE;
  CloseHandle(token);
  if (!told) return;
  lines.push_back(std::string("rights            ") +
                  (elevation.TokenIsElevated != 0 ? "administrator" : "a user's"));
}

}  // namespace

std::vector<std::string> SystemFacts() {
  Lines lines;
  AddSystem(lines);
  AddRegion(lines);
  AddScreens(lines);
  AddClock(lines);
  AddDevices(lines);
  AddRights(lines);
  return lines;
}

}  // namespace corvane::desktop
