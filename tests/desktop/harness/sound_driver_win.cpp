// The value "Audio" under Software\Wine\Drivers; empty: no driver.
#include "desktop/harness/sound_driver.h"

#include <windows.h>

#include <array>

namespace corvane::desktop {

namespace {

constexpr char kKey[] = "Software\\Wine\\Drivers";
constexpr char kValue[] = "Audio";

bool UnderWine() {
  const HMODULE ntdll = GetModuleHandleA("ntdll.dll");
  return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

bool Choose(const std::string& driver) {
  return RegSetKeyValueA(HKEY_CURRENT_USER, kKey, kValue, REG_SZ, driver.c_str(),
                         static_cast<DWORD>(driver.size() + 1)) == ERROR_SUCCESS;
}

}  // namespace

NoSoundDriver::NoSoundDriver() {
  if (!UnderWine()) return;
  std::array<char, 256> value{};
  auto size = static_cast<DWORD>(value.size());
  had_value_ = RegGetValueA(HKEY_CURRENT_USER, kKey, kValue, RRF_RT_REG_SZ, nullptr, value.data(),
                            &size) == ERROR_SUCCESS;
  if (had_value_) value_ = value.data();
  works_ = Choose("");
}

NoSoundDriver::~NoSoundDriver() {
  if (!works_) return;
  if (had_value_) {
    Choose(value_);
  } else {
    RegDeleteKeyValueA(HKEY_CURRENT_USER, kKey, kValue);
  }
}

}  // namespace corvane::desktop
