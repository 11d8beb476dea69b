// Bringing the child windows to the controls' state, field by field, and the lines, selections and
// scrolling of the list boxes.
#include "ui/child_windows_win.h"
//
#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "ui/list_update_win.h"

namespace corvane {

namespace {

// Blanks at the end of the widest line stay clear of the list's edge.
constexpr int kExtentMargin = 8;
// Room around the text of a line that the program draws, in twips.
constexpr int kRowMargin = 30;
// A burst longer than a log is shown in pieces.
constexpr std::size_t kMostWaiting = 2000;

LPARAM Text(const std::string& text) {
  return reinterpret_cast<LPARAM>(text.c_str());
}

void Apply(const ChildWindow& list, const LineChange& change) {
  switch (change.change) {
    case ListChange::kAdded:
      list.Send(LB_INSERTSTRING, change.index, Text(change.text));
      break;
    case ListChange::kRemoved:
      list.Send(LB_DELETESTRING, change.index);
      break;
    case ListChange::kCleared:
      list.Send(LB_RESETCONTENT);
      break;
    case ListChange::kReplaced: {
      const LRESULT top = list.Send(LB_GETTOPINDEX);
      const LRESULT selected = list.Send(LB_GETCURSEL);
      list.Send(LB_DELETESTRING, change.index);
      list.Send(LB_INSERTSTRING, change.index, Text(change.text));
      list.Send(LB_SETCURSEL, static_cast<WPARAM>(selected));
      list.Send(LB_SETTOPINDEX, static_cast<WPARAM>(top));
      break;
    }
    case ListChange::kTicked:
      break;
  }
}

}  // namespace

bool IsDrawnHere(const ChildWindow& combo) {
  return (GetWindowLongPtrA(combo.window, GWL_STYLE) & CBS_OWNERDRAWFIXED) != 0;
}

int SelectedIndex(const ChildWindow& child) {
  const UINT message = child.kind() == ControlKind::kComboBox ? CB_GETCURSEL : LB_GETCURSEL;
  return static_cast<int>(child.Send(message));
}

std::string ShownText(const ChildWindow& box) {
  std::string text(kLongestBoxText + 1, '\0');
  const int length = GetWindowTextA(box.window, text.data(), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(std::max(0, length)));
  return text;
}

void ChildWindows::Mirror(const Control& control, Field field) {
  if (control.kind() == ControlKind::kMenuItem) {
    for (const MenuRow& row : table_->menu) {
      if (&row.item == &control) MirrorMenuItem(row);
    }
    return;
  }
  ChildWindow* child = Find(control);
  if (child == nullptr) return;
  switch (field) {
    case Field::kCaption:
      SetWindowTextA(child->window, control.caption.get().c_str());
      if (child->kind() == ControlKind::kFrame) InvalidateRect(child->window, nullptr, FALSE);
      break;
    case Field::kText:
      MirrorText(*child);
      break;
    case Field::kVisible:
      MirrorVisible(*child);
      break;
    case Field::kEnabled:
      MirrorEnabled(*child);
      break;
    case Field::kToolTip:
      tips_.SetText(child->window, child->number(), control.tool_tip);
      break;
    case Field::kBold:
      SetFont(*child);
      break;
    case Field::kForeColour:
    case Field::kBackColour:
    case Field::kFillColour:
    case Field::kBorderColour:
    case Field::kBorderWidth:
      InvalidateRect(child->window, nullptr, TRUE);
      for (const Lamp& lamp : table_->lamps) {
        if (&lamp.shape == &control) InvalidateRect(Find(lamp.text)->window, nullptr, TRUE);
      }
      break;
    case Field::kValue:
      MirrorValue(*child);
      break;
    case Field::kListIndex:
      MirrorSelection(*child);
      break;
    case Field::kItems:
      MirrorEntries(*child);
      break;
    case Field::kBounds:
      LayOut(dpi_);
      break;
    case Field::kTag:
    case Field::kChecked:
      break;
  }
}

void ChildWindows::MirrorAll(ChildWindow& child) {
  const Control& control = child.control();
  SetFont(child);
  if (!control.caption.get().empty()) SetWindowTextA(child.window, control.caption.get().c_str());
  switch (child.kind()) {
    case ControlKind::kTextBox:
      MirrorText(child);
      break;
    case ControlKind::kComboBox:
      MirrorEntries(child);
      break;
    case ControlKind::kListBox:
    case ControlKind::kCheckList: {
      const auto& list = As<ListBox>(control);
      for (std::size_t i = 0; i < list.items().size(); ++i) {
        MirrorList(list, ListChange::kAdded, i);
      }
      MirrorSelection(child);
      ShowList(child);
      break;
    }
    case ControlKind::kCheckBox:
    case ControlKind::kOption:
      MirrorValue(child);
      break;
    default:
      break;
  }
  tips_.SetText(child.window, child.number(), control.tool_tip);
  EnableWindow(child.window, control.enabled);
  MirrorVisible(child);
}

void ChildWindows::MirrorMenuItem(const MenuRow& row) {
  std::string caption = row.Text();
  MENUITEMINFOA info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_STRING | MIIM_STATE;
  info.dwTypeData = caption.data();
  info.fState = (row.item.checked ? MFS_CHECKED : MFS_UNCHECKED) |
                (row.item.enabled ? MFS_ENABLED : MFS_DISABLED);
  SetMenuItemInfoA(menu_, static_cast<UINT>(Number(row.id)), FALSE, &info);
  DrawMenuBar(owner_);
}

void ChildWindows::MirrorText(ChildWindow& child) {
  if (child.kind() != ControlKind::kTextBox) return;  // a drop-down list shows its selected entry
  mirroring_text_ = true;
  SetWindowTextA(child.window, As<TextBox>(child.control()).text.get().c_str());
  mirroring_text_ = false;
}

void ChildWindows::MirrorVisible(const ChildWindow& child) {
  const UINT change = Shown(child) ? SWP_SHOWWINDOW : SWP_HIDEWINDOW;
  SetWindowPos(child.window, nullptr, 0, 0, 0, 0,
               change | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE |
                   (arranging_ ? SWP_NOREDRAW : 0U));
  UpdateDisabledTip(child);
  for (const ChildWindow& inner : children_) {
    if (inner.frame == &child) MirrorVisible(inner);
  }
}

void ChildWindows::MirrorEnabled(ChildWindow& child) {
  const bool enabled = child.control().enabled;
  // A disabled window would keep the keyboard to itself.
  if (!enabled && GetFocus() == child.window) ::SetFocus(Find(table_->Home())->window);
  EnableWindow(child.window, enabled);
  InvalidateRect(child.window, nullptr, TRUE);
  UpdateDisabledTip(child);
}

void ChildWindows::MirrorValue(ChildWindow& child) {
  if (child.kind() == ControlKind::kCheckBox) {
    child.Send(BM_SETCHECK, static_cast<WPARAM>(As<CheckBox>(child.control()).value));
  } else {
    const bool selected = As<OptionButton>(child.control()).value;
    child.Send(BM_SETCHECK, selected ? BST_CHECKED : BST_UNCHECKED);
    SetTabStop(child);
  }
}

void ChildWindows::MirrorSelection(ChildWindow& child) {
  if (child.kind() == ControlKind::kComboBox) {
    child.Send(CB_SETCURSEL, static_cast<WPARAM>(As<ComboBox>(child.control()).list_index));
    return;
  }
  child.selection_waits = true;
  lists_wait_ = true;
}

void ChildWindows::MirrorEntries(ChildWindow& child) {
  child.Send(CB_RESETCONTENT);
  for (const ComboBox::Entry& entry : As<ComboBox>(child.control()).entries.get()) {
    child.Send(CB_ADDSTRING, 0, Text(entry.text));
  }
  MirrorSelection(child);
}

void ChildWindows::SetFont(const ChildWindow& child) {
  child.Send(WM_SETFONT, reinterpret_cast<WPARAM>(FontOf(child)), arranging_ ? FALSE : TRUE);
  // What the program draws has the height that it is told.
  const int row = fonts_.LineHeight(child.row->font) + ToPixels(kRowMargin, dpi_);
  if (child.kind() == ControlKind::kCheckList) child.Send(LB_SETITEMHEIGHT, 0, row);
  if (child.kind() == ControlKind::kComboBox && IsDrawnHere(child)) {
    child.Send(CB_SETITEMHEIGHT, 0, row);
  }
  if (child.kind() == ControlKind::kListBox && !child.row->Has(kFitsRows)) {
    child.Send(LB_SETITEMHEIGHT, 0, fonts_.LineHeight(child.row->font));
  }
}

// The tab key passes by what a compact window leaves out, and stops once in a group of options.
void ChildWindows::SetTabStop(const ChildWindow& child) {
  if (child.kind() == ControlKind::kLabel || child.kind() == ControlKind::kShape ||
      child.kind() == ControlKind::kFrame) {
    return;
  }
  bool stop = !table_->LeftOut(*child.row) && !child.row->Has(kNoTabStop);
  if (child.kind() == ControlKind::kOption) {
    stop = stop && As<OptionButton>(child.control()).value;
  }
  const LONG_PTR style = GetWindowLongPtrA(child.window, GWL_STYLE);
  const LONG_PTR wanted = stop ? style | WS_TABSTOP : style & ~static_cast<LONG_PTR>(WS_TABSTOP);
  if (style != wanted) SetWindowLongPtrA(child.window, GWL_STYLE, wanted);
}

void ChildWindows::UpdateDisabledTip(const ChildWindow& child) {
  const bool covered = Shown(child) && !child.control().enabled;
  tips_.SetDisabledRect(child.number(), covered ? child.rect : PixelRect{});
}

void ReportTopIndex(const ChildWindow& list) {
  As<ListBox>(list.control()).ReportTopIndex(static_cast<int>(list.Send(LB_GETTOPINDEX)));
}

bool EndInView(const ChildWindow& list) {
  const LRESULT count = list.Send(LB_GETCOUNT);
  RECT line{};
  RECT client{};
  list.Send(LB_GETITEMRECT, static_cast<WPARAM>(count - 1), reinterpret_cast<LPARAM>(&line));
  GetClientRect(list.window, &client);
  return count == 0 || line.top < client.bottom;
}

void ScrollToEnd(const ChildWindow& list) {
  list.Send(LB_SETTOPINDEX, static_cast<WPARAM>(list.Send(LB_GETCOUNT) - 1));
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

  line_tips_.Hide(list.window);
  const bool follows = list.row->Has(kFollowsEnd) && EndInView(list);
  {
    const ListUpdate update(list.window);
    for (const LineChange& change : changes) Apply(list, change);
    if (selects) {
      list.Send(LB_SETCURSEL, static_cast<WPARAM>(As<ListBox>(list.control()).list_index()));
    }
    if (follows) ScrollToEnd(list);
  }
  for (const LineChange& change : changes) {
    if (change.change == ListChange::kTicked) {
      RECT line{};
      list.Send(LB_GETITEMRECT, change.index, reinterpret_cast<LPARAM>(&line));
      InvalidateRect(list.window, &line, FALSE);
    } else if (change.change != ListChange::kCleared) {
      Widen(list, change.text);
    } else if (list.extent != 0) {
      list.extent = 0;
      list.Send(LB_SETHORIZONTALEXTENT);
    }
  }
  // The first wide line brought a scroll bar, which covers the last one.
  if (follows) ScrollToEnd(list);
  ReportTopIndex(list);
}

void ChildWindows::Widen(ChildWindow& list, const std::string& line) {
  if (!list.row->Has(kScrollsSideways)) return;
  const HDC dc = GetDC(list.window);
  const HGDIOBJ before = SelectObject(dc, FontOf(list));
  SIZE size{};
  GetTextExtentPoint32A(dc, line.data(), static_cast<int>(line.size()), &size);
  SelectObject(dc, before);
  ReleaseDC(list.window, dc);
  const int wanted = static_cast<int>(size.cx) + kExtentMargin;
  if (wanted <= list.extent) return;
  list.extent = wanted;
  list.Send(LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(wanted));
  // A scroll bar that comes with the first wide line must not cost the list its rows.
  RECT client{};
  GetClientRect(list.window, &client);
  if (!arranging_ && list.fitted_height != 0 && client.bottom != list.fitted_height) {
    list.asked = {};
    LayOut(dpi_);
  }
}

void ChildWindows::MeasureLines(ChildWindow& list) {
  list.extent = 0;
  for (const std::string& line : As<ListBox>(list.control()).items()) Widen(list, line);
}

}  // namespace corvane
