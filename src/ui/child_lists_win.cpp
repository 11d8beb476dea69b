// The lines, selections and scrolling of the list boxes.
#include <windows.h>
//
#include <algorithm>
#include <utility>

#include "ui/child_windows_win.h"

namespace corvane {

namespace {

// Blanks at the end of the widest line stay clear of the list's edge.
constexpr int kExtentMargin = 8;
// A burst longer than a log is shown in pieces.
constexpr std::size_t kMostWaiting = 2000;

HWND Handle(const ChildWindow& child) {
  return static_cast<HWND>(child.window);
}

LRESULT Send(const ChildWindow& child, UINT message, WPARAM w_param = 0, LPARAM l_param = 0) {
  return SendMessageA(Handle(child), message, w_param, l_param);
}

void Apply(const ChildWindow& list, const LineChange& change) {
  const auto text = reinterpret_cast<LPARAM>(change.text.c_str());
  switch (change.change) {
    case ListChange::kAdded:
      Send(list, LB_INSERTSTRING, change.index, text);
      break;
    case ListChange::kRemoved:
      Send(list, LB_DELETESTRING, change.index);
      break;
    case ListChange::kCleared:
      Send(list, LB_RESETCONTENT);
      break;
    case ListChange::kReplaced: {
      const LRESULT top = Send(list, LB_GETTOPINDEX);
      const LRESULT selected = Send(list, LB_GETCURSEL);
      Send(list, LB_DELETESTRING, change.index);
      Send(list, LB_INSERTSTRING, change.index, text);
      Send(list, LB_SETCURSEL, static_cast<WPARAM>(selected));
      Send(list, LB_SETTOPINDEX, static_cast<WPARAM>(top));
      break;
    }
  }
}

}  // namespace

void ReportTopIndex(const ChildWindow& list) {
  static_cast<ListBox&>(*list.control).ReportTopIndex(static_cast<int>(Send(list, LB_GETTOPINDEX)));
}

bool EndInView(const ChildWindow& list) {
  const LRESULT count = Send(list, LB_GETCOUNT);
  RECT line{};
  RECT client{};
  Send(list, LB_GETITEMRECT, static_cast<WPARAM>(count - 1), reinterpret_cast<LPARAM>(&line));
  GetClientRect(Handle(list), &client);
  return count == 0 || line.top < client.bottom;
}

void ScrollToEnd(const ChildWindow& list) {
  Send(list, LB_SETTOPINDEX, static_cast<WPARAM>(Send(list, LB_GETCOUNT) - 1));
  ReportTopIndex(list);
}

void ChildWindows::MirrorList(const ListBox& list, ListChange change, std::size_t index) {
  ChildWindow* child = Find(list);
  if (child == nullptr) return;
  if (change == ListChange::kCleared) child->waiting.clear();
  const bool has_text = change == ListChange::kAdded || change == ListChange::kReplaced;
  child->waiting.push_back({change, index, has_text ? list.items()[index] : std::string{}});
  lists_wait_ = true;
  if (child->waiting.size() >= kMostWaiting) ShowList(*child);
}

void ChildWindows::ShowLists() {
  if (!std::exchange(lists_wait_, false)) return;
  for (ChildWindow& child : children_) ShowList(child);
}

void ChildWindows::ShowList(ChildWindow& list) {
  const std::vector<LineChange> changes = std::exchange(list.waiting, {});
  const bool selects = std::exchange(list.selection_waits, false);
  if (changes.empty() && !selects) return;

  Send(list, WM_SETREDRAW, FALSE);
  for (const LineChange& change : changes) Apply(list, change);
  if (selects) {
    const int selected = static_cast<const ListBox&>(*list.control).list_index();
    Send(list, LB_SETCURSEL, static_cast<WPARAM>(selected));
  }
  Send(list, WM_SETREDRAW, TRUE);
  InvalidateRect(Handle(list), nullptr, TRUE);
  for (const LineChange& change : changes) {
    if (change.change != ListChange::kCleared) {
      Widen(list, change.text);
    } else if (list.extent != 0) {
      list.extent = 0;
      Send(list, LB_SETHORIZONTALEXTENT, 0);
    }
  }
  ReportTopIndex(list);
}

void ChildWindows::Widen(ChildWindow& list, const std::string& line) {
  if (list.id != ControlId::lstCallLog && list.id != ControlId::lstStatusLog) return;
  const HDC dc = GetDC(Handle(list));
  const HGDIOBJ before = SelectObject(dc, fonts_.Get(list.place->font, list.control->bold));
  SIZE size{};
  GetTextExtentPoint32A(dc, line.data(), static_cast<int>(line.size()), &size);
  SelectObject(dc, before);
  ReleaseDC(Handle(list), dc);
  const int wanted = static_cast<int>(size.cx) + kExtentMargin;
  if (wanted <= list.extent) return;
  list.extent = wanted;
  Send(list, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(wanted));
  // A scroll bar that comes with the first wide line must not cost the call log its rows.
  RECT client{};
  GetClientRect(Handle(list), &client);
  if (list.id == ControlId::lstCallLog && call_log_client_height_ != 0 &&
      client.bottom != call_log_client_height_) {
    list.asked = {};
    LayOut(dpi_, compact_);
  }
}

void ChildWindows::MeasureLines(ChildWindow& list) {
  list.extent = 0;
  for (const std::string& line : static_cast<const ListBox&>(*list.control).items()) {
    Widen(list, line);
  }
}

}  // namespace corvane
