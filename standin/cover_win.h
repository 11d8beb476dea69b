// Windows of another program above SDR#'s, shown by a second process of this program: one that lies
// over a part of SDR#, because a program that looks at the screen must see that this is no business
// of SDR#'s; and one of SDR#'s kind that hangs, because a program that looks for SDR# meets it
// first.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace corvane::standin {

class CoverProcess {
 public:
  // The window is seen when this returns, always above all others; the keyboard stays where it is.
  // Where the process cannot be started there is none.
  CoverProcess(const RECT& place, COLORREF colour);
  // The window hangs as soon as it is seen, for so long.
  CoverProcess(const RECT& place, const std::string& class_name, std::int64_t hang_ms);
  ~CoverProcess();
  CoverProcess(const CoverProcess&) = delete;
  CoverProcess& operator=(const CoverProcess&) = delete;

 private:
  void Start(const RECT& place, const std::string& rest);

  HANDLE process_ = nullptr;
};

// The other side: shows the window that the arguments tell until the process that asked for it has
// ended.
// The exit code of arguments that cannot be understood.
inline constexpr int kExitUsage = 2;
inline constexpr char kCoverSwitch[] = "--cover-window";
[[nodiscard]] int RunCover(const std::vector<std::string>& arguments);

}  // namespace corvane::standin
