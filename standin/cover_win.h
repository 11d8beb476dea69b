// A window of another program over one of SDR#'s: what lies there is no business of SDR#'s, and a
// program that looks at the screen must see that. A second process of this program shows it.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace corvane::standin {

class CoverProcess {
 public:
  // The window is seen when this returns, always above all others; the keyboard stays where it is.
  // Where the process cannot be started there is none.
  CoverProcess(const RECT& place, COLORREF colour);
  ~CoverProcess();
  CoverProcess(const CoverProcess&) = delete;
  CoverProcess& operator=(const CoverProcess&) = delete;

 private:
  HANDLE process_ = nullptr;
};

// The other side: shows the window that the arguments tell until the process that asked for it has
// ended.
inline constexpr char kCoverSwitch[] = "--cover-window";
[[nodiscard]] int RunCover(const std::vector<std::string>& arguments);

}  // namespace corvane::standin
