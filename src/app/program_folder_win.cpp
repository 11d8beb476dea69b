// Paths in wide letters, as far as the code page does not hold them.
#include "app/program_folder_win.h"

#include <windows.h>

#include <string_view>

namespace corvane {

namespace {

constexpr std::size_t kLongestPath = 32768;
constexpr std::wstring_view kLongPrefix = L"\\\\?\\";
constexpr std::wstring_view kLongSharePrefix = L"\\\\?\\UNC\\";

// A path may come with the prefix of those that are not looked at, which no other program expects.
std::wstring WithoutPrefix(const std::wstring& path) {
  if (path.starts_with(kLongSharePrefix)) return L"\\\\" + path.substr(kLongSharePrefix.size());
  if (path.starts_with(kLongPrefix)) return path.substr(kLongPrefix.size());
  return path;
}

std::wstring WithPrefix(const std::wstring& path) {
  if (path.starts_with(L"\\\\")) return std::wstring(kLongSharePrefix) + path.substr(2);
  return std::wstring(kLongPrefix) + path;
}

std::optional<std::string> InCodePage(const std::wstring& text) {
  // The code page may be UTF-8, which holds everything and takes no such arguments.
  const bool utf8 = GetACP() == CP_UTF8;
  BOOL lost = FALSE;
  BOOL* const may_lose = utf8 ? nullptr : &lost;
  const DWORD flags = utf8 ? 0 : WC_NO_BEST_FIT_CHARS;
  const auto length = static_cast<int>(text.size());
  const int size =
      WideCharToMultiByte(CP_ACP, flags, text.data(), length, nullptr, 0, nullptr, may_lose);
  if (size <= 0 || lost) return std::nullopt;
  std::string narrow(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_ACP, flags, text.data(), length, narrow.data(), size, nullptr, nullptr);
  return narrow;
}

std::optional<std::wstring> ShortForm(const std::wstring& path) {
  std::wstring form(kLongestPath, L'\0');
  for (const std::wstring& asked : {path, WithPrefix(path)}) {
    const DWORD size =
        GetShortPathNameW(asked.c_str(), form.data(), static_cast<DWORD>(form.size()));
    if (size == 0 || size >= form.size()) continue;
    return WithoutPrefix(form.substr(0, size));
  }
  return std::nullopt;
}

}  // namespace

std::wstring FolderOfProgram() {
  std::wstring path(kLongestPath, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  path = WithoutPrefix(path);
  return path.substr(0, path.find_last_of(L'\\'));
}

FolderForms FormsOf(const std::wstring& folder) {
  FolderForms forms{InCodePage(folder), std::nullopt};
  if (const auto short_form = ShortForm(folder)) forms.short_form = InCodePage(*short_form);
  return forms;
}

void ShowFolderProblem(const std::wstring& folder, const std::string& problem) {
  const std::wstring text = L"Corvane cannot work in this folder:\r\n" + folder + L"\r\n" +
                            std::wstring(problem.begin(), problem.end()) + L"\r\nAborting.";
  MessageBoxW(nullptr, text.c_str(), L"Error", MB_OK | MB_ICONERROR | MB_SETFOREGROUND);
}

}  // namespace corvane
