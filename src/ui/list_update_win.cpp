// What a list showed before its lines changed is compared with what it shows after.
#include "ui/list_update_win.h"

#include <algorithm>
#include <cstdlib>

namespace corvane {

std::string LineText(HWND list, int index) {
  const auto at = static_cast<WPARAM>(index);
  const LRESULT length = SendMessageA(list, LB_GETTEXTLEN, at, 0);
  if (index < 0 || length == LB_ERR) return {};
  std::string text(static_cast<std::size_t>(length) + 1, '\0');
  const LRESULT got = SendMessageA(list, LB_GETTEXT, at, reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(std::max<LRESULT>(0, got)));
  return text;
}

LRESULT ListUpdate::Ask(UINT message, WPARAM w_param, LPARAM l_param) const {
  return SendMessageA(list_, message, w_param, l_param);
}

ListUpdate::Line ListUpdate::LineAt(int index) const {
  if (index >= Ask(LB_GETCOUNT)) return {};
  return {LineText(list_, index), true, Ask(LB_GETSEL, static_cast<WPARAM>(index)) > 0,
          GetFocus() == list_ && Ask(LB_GETCARETINDEX) == index};
}

std::vector<ListUpdate::Line> ListUpdate::VisibleLines() const {
  const int top = static_cast<int>(Ask(LB_GETTOPINDEX));
  const int rows = static_cast<int>(client_.bottom) / row_height_ + 1;
  std::vector<Line> lines;
  for (int row = 0; row < rows; ++row) lines.push_back(LineAt(top + row));
  return lines;
}

ListUpdate::ListUpdate(HWND list)
    : list_(list),
      row_height_(std::max(1, static_cast<int>(Ask(LB_GETITEMHEIGHT)))),
      top_(static_cast<int>(Ask(LB_GETTOPINDEX))),
      style_(GetWindowLongPtrA(list_, GWL_STYLE)),
      pending_(CreateRectRgn(0, 0, 0, 0)) {
  GetClientRect(list_, &client_);
  GetUpdateRgn(list_, pending_, FALSE);
  before_ = VisibleLines();
  Ask(WM_SETREDRAW, FALSE);
  // Some lists move their pixels all the same, unless there are none.
  SetWindowLongPtrA(list_, GWL_STYLE, style_ & ~static_cast<LONG_PTR>(WS_VISIBLE));
}

// Moves what is on the screen already and leaves what comes into view to be painted.
void ListUpdate::Scroll(int rows) {
  if (rows == 0) return;
  const auto lines = static_cast<int>(before_.size());
  if (std::abs(rows) >= lines) {
    before_.assign(before_.size(), {});
    InvalidateRect(list_, nullptr, TRUE);
    return;
  }
  ScrollWindowEx(list_, 0, -rows * row_height_, nullptr, nullptr, nullptr, nullptr,
                 SW_INVALIDATE | SW_ERASE);
  OffsetRgn(pending_, 0, -rows * row_height_);
  if (rows > 0) {
    std::rotate(before_.begin(), before_.begin() + rows, before_.end());
    std::fill(before_.end() - rows, before_.end(), Line{});
  } else {
    std::rotate(before_.begin(), before_.end() + rows, before_.end());
    std::fill(before_.begin(), before_.begin() - rows, Line{});
  }
}

ListUpdate::~ListUpdate() {
  const LONG_PTR shown = style_ & WS_VISIBLE;
  SetWindowLongPtrA(list_, GWL_STYLE, GetWindowLongPtrA(list_, GWL_STYLE) | shown);
  Ask(WM_SETREDRAW, TRUE);
  RECT client{};
  GetClientRect(list_, &client);
  if (Ask(LB_GETITEMHEIGHT) != row_height_ || !EqualRect(&client, &client_)) {
    InvalidateRect(list_, nullptr, TRUE);
  } else {
    // The list may have called for all of itself.
    RedrawWindow(list_, nullptr, nullptr, RDW_VALIDATE | RDW_NOERASE);
    Scroll(static_cast<int>(Ask(LB_GETTOPINDEX)) - top_);
    const std::vector<Line> after = VisibleLines();
    for (std::size_t row = 0; row < after.size(); ++row) {
      if (after[row] == before_[row]) continue;
      const int top = static_cast<int>(row) * row_height_;
      const RECT line{0, top, client_.right, top + row_height_};
      InvalidateRect(list_, &line, after[row].exists ? FALSE : TRUE);
    }
    InvalidateRgn(list_, pending_, TRUE);
  }
  DeleteObject(pending_);
}

// Counted: the list's own answer ends at 65535, and some lists give the last line for a point below
// it.
int LineUnder(HWND list, POINT point) {
  RECT client{};
  GetClientRect(list, &client);
  const auto height = static_cast<int>(SendMessageA(list, LB_GETITEMHEIGHT, 0, 0));
  if (!PtInRect(&client, point) || height <= 0) return -1;
  const auto top = static_cast<int>(SendMessageA(list, LB_GETTOPINDEX, 0, 0));
  const int line = top + static_cast<int>(point.y) / height;
  return line < SendMessageA(list, LB_GETCOUNT, 0, 0) ? line : -1;
}

}  // namespace corvane
