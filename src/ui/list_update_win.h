// Changes of a list box's lines without flicker: nothing is painted meanwhile, and afterwards only
// what differs.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace corvane {

// From its making to its end the list paints nothing.
class ListUpdate {
 public:
  explicit ListUpdate(HWND list);
  ~ListUpdate();
  ListUpdate(const ListUpdate&) = delete;
  ListUpdate& operator=(const ListUpdate&) = delete;

 private:
  // What of a line can be seen.
  struct Line {
    std::string text;
    bool exists = false;
    bool selected = false;
    bool has_focus = false;
    bool operator==(const Line&) const = default;
  };
  LRESULT Ask(UINT message, WPARAM w_param = 0, LPARAM l_param = 0) const;
  [[nodiscard]] Line LineAt(int index) const;
  [[nodiscard]] std::vector<Line> VisibleLines() const;
  void Scroll(int rows);

  HWND list_;
  int row_height_ = 1;
  int top_ = 0;
  RECT client_{};
  LONG_PTR style_;
  HRGN pending_;  // what waited to be painted before
  std::vector<Line> before_;
};

// The clear pixels before a line's text.
inline constexpr int kLineMargin = 2;

// The line under a point of the list's client area; -1 when there is none.
[[nodiscard]] int LineUnder(HWND list, POINT point);
// The text of a list box's line; "" when there is none.
[[nodiscard]] std::string LineText(HWND list, int index);

}  // namespace corvane
