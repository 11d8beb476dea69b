// A control as a screen reader hears of it.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace corvane::ui_test {

struct Spoken {
  bool found = false;
  std::string name;
  std::string value;
  struct Line {
    std::string name;
    bool ticked = false;
    bool selected = false;
    bool operator==(const Line&) const = default;
  };
  std::vector<Line> lines;  // of a list
};
[[nodiscard]] Spoken SpokenOf(HWND control);

}  // namespace corvane::ui_test
