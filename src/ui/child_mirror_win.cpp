// Bringing the child windows to the controls' state, field by field.
#include <windows.h>
//
#include <commctrl.h>

#include <algorithm>

#include "ui/child_windows_win.h"

namespace corvane {

namespace {

HWND Handle(const ChildWindow& child) {
  return static_cast<HWND>(child.window);
}

LRESULT Send(const ChildWindow& child, UINT message, WPARAM w_param = 0, LPARAM l_param = 0) {
  return SendMessageA(Handle(child), message, w_param, l_param);
}

LPARAM Text(const std::string& text) {
  return reinterpret_cast<LPARAM>(text.c_str());
}

const std::string* CaptionOf(const Control& control) {
  if (const auto* label = dynamic_cast<const Label*>(&control)) return &label->caption.get();
  if (const auto* button = dynamic_cast<const Button*>(&control)) return &button->caption.get();
  if (const auto* box = dynamic_cast<const CheckBox*>(&control)) return &box->caption.get();
  if (const auto* option = dynamic_cast<const OptionButton*>(&control)) {
    return &option->caption.get();
  }
  if (const auto* frame = dynamic_cast<const Frame*>(&control)) return &frame->caption.get();
  return nullptr;
}

// Blanks at the end of the widest line stay clear of the list's edge.
constexpr int kExtentMargin = 8;

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

int SelectedIndex(const ChildWindow& child) {
  const UINT message = child.kind == ChildKind::kComboBox ? CB_GETCURSEL : LB_GETCURSEL;
  return static_cast<int>(Send(child, message));
}

std::string ShownText(const ChildWindow& box) {
  std::string text(kLongestBoxText + 1, '\0');
  const int length = GetWindowTextA(Handle(box), text.data(), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(std::max(0, length)));
  return text;
}

void ChildWindows::Mirror(const Control& control, Field field) {
  if (const auto* item = dynamic_cast<const MenuItem*>(&control)) {
    if (menu_ != nullptr) MirrorMenuItem(*item);
    return;
  }
  ChildWindow* child = Find(control);
  if (child == nullptr) return;
  switch (field) {
    case Field::kCaption:
      SetWindowTextA(Handle(*child), CaptionOf(control)->c_str());
      if (child->kind == ChildKind::kFrame) InvalidateRect(Handle(*child), nullptr, FALSE);
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
      tips_.SetText(child->window, Number(child->id), control.tool_tip);
      break;
    case Field::kBold:
      SetFont(*child);
      break;
    case Field::kForeColour:
    case Field::kBackColour:
    case Field::kFillColour:
    case Field::kBorderColour:
    case Field::kBorderWidth:
      InvalidateRect(Handle(*child), nullptr, TRUE);
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
      LayOut(dpi_, compact_);
      break;
    case Field::kTag:
    case Field::kChecked:
      break;
  }
}

void ChildWindows::MirrorAll(ChildWindow& child) {
  const Control& control = *child.control;
  SetFont(child);
  if (const std::string* caption = CaptionOf(control)) {
    SetWindowTextA(Handle(child), caption->c_str());
  }
  if (child.kind == ChildKind::kTextBox) MirrorText(child);
  if (child.kind == ChildKind::kComboBox) MirrorEntries(child);
  if (child.kind == ChildKind::kListBox) {
    for (const std::string& line : static_cast<ListBox&>(*child.control).items()) {
      Send(child, LB_ADDSTRING, 0, Text(line));
      Widen(child, line);
    }
    MirrorSelection(child);
  }
  if (child.kind == ChildKind::kCheckBox || child.kind == ChildKind::kOption) MirrorValue(child);
  tips_.SetText(child.window, Number(child.id), control.tool_tip);
  EnableWindow(Handle(child), control.enabled);
  MirrorVisible(child);
}

void ChildWindows::MirrorMenuItem(const MenuItem& item) {
  const auto id = FindControlId(item.name());
  if (!id) return;
  std::string caption = item.caption;
  MENUITEMINFOA info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_STRING | MIIM_STATE;
  info.dwTypeData = caption.data();
  info.fState =
      (item.checked ? MFS_CHECKED : MFS_UNCHECKED) | (item.enabled ? MFS_ENABLED : MFS_DISABLED);
  SetMenuItemInfoA(static_cast<HMENU>(menu_), static_cast<UINT>(Number(*id)), FALSE, &info);
  DrawMenuBar(static_cast<HWND>(owner_));
}

void ChildWindows::MirrorText(ChildWindow& child) {
  const auto* box = dynamic_cast<const TextBox*>(child.control);
  if (box == nullptr) return;  // a drop-down list shows its selected entry
  mirroring_text_ = true;
  SetWindowTextA(Handle(child), box->text.get().c_str());
  mirroring_text_ = false;
}

void ChildWindows::MirrorVisible(const ChildWindow& child) {
  ShowWindow(Handle(child), Shown(child) ? SW_SHOWNA : SW_HIDE);
  UpdateDisabledTip(child);
  for (const ChildWindow& inner : children_) {
    if (inner.frame == &child) MirrorVisible(inner);
  }
}

void ChildWindows::MirrorEnabled(ChildWindow& child) {
  // A disabled window would keep the keyboard to itself.
  if (!child.control->enabled && GetFocus() == Handle(child)) {
    ::SetFocus(Handle(*Find(ControlId::lstCallLog)));
  }
  EnableWindow(Handle(child), child.control->enabled);
  InvalidateRect(Handle(child), nullptr, TRUE);
  UpdateDisabledTip(child);
}

void ChildWindows::MirrorValue(ChildWindow& child) {
  if (const auto* box = dynamic_cast<const CheckBox*>(child.control)) {
    Send(child, BM_SETCHECK, static_cast<WPARAM>(box->value.get()));
  } else if (const auto* option = dynamic_cast<const OptionButton*>(child.control)) {
    Send(child, BM_SETCHECK, option->value ? BST_CHECKED : BST_UNCHECKED);
    SetTabStop(child);
  }
}

void ChildWindows::MirrorSelection(ChildWindow& child) {
  if (const auto* combo = dynamic_cast<const ComboBox*>(child.control)) {
    Send(child, CB_SETCURSEL, static_cast<WPARAM>(combo->list_index.get()));
    return;
  }
  const auto& list = static_cast<const ListBox&>(*child.control);
  Send(child, LB_SETCURSEL, static_cast<WPARAM>(list.list_index()));
  ReportTopIndex(child);
}

void ChildWindows::MirrorEntries(ChildWindow& child) {
  const auto& combo = static_cast<const ComboBox&>(*child.control);
  Send(child, CB_RESETCONTENT);
  for (const ComboBox::Entry& entry : combo.entries.get()) {
    Send(child, CB_ADDSTRING, 0, Text(entry.text));
  }
  MirrorSelection(child);
}

void ChildWindows::MirrorList(ListBox& list, ListChange change, std::size_t index) {
  ChildWindow* child = Find(list);
  if (child == nullptr) return;
  switch (change) {
    case ListChange::kAdded:
      Send(*child, LB_INSERTSTRING, index, Text(list.items()[index]));
      Widen(*child, list.items()[index]);
      break;
    case ListChange::kRemoved:
      Send(*child, LB_DELETESTRING, index);
      break;
    case ListChange::kCleared:
      Send(*child, LB_RESETCONTENT);
      child->extent = 0;
      Send(*child, LB_SETHORIZONTALEXTENT, 0);
      break;
    case ListChange::kReplaced: {
      const LRESULT top = Send(*child, LB_GETTOPINDEX);
      Send(*child, LB_DELETESTRING, index);
      Send(*child, LB_INSERTSTRING, index, Text(list.items()[index]));
      Send(*child, LB_SETCURSEL, static_cast<WPARAM>(list.list_index()));
      Send(*child, LB_SETTOPINDEX, static_cast<WPARAM>(top));
      Widen(*child, list.items()[index]);
      break;
    }
  }
  ReportTopIndex(*child);
}

void ChildWindows::SetFont(const ChildWindow& child) {
  Send(child, WM_SETFONT,
       reinterpret_cast<WPARAM>(fonts_.Get(child.place->font, child.control->bold)), TRUE);
}

// The tab key passes by what a compact window cuts off, and stops once in a group of options.
void ChildWindows::SetTabStop(const ChildWindow& child) {
  if (child.kind == ChildKind::kLabel || child.kind == ChildKind::kShape ||
      child.kind == ChildKind::kFrame) {
    return;
  }
  RECT client{};
  GetClientRect(static_cast<HWND>(owner_), &client);
  bool stop = child.rect.left < client.right || child.id == ControlId::lstCallLog;
  if (const auto* option = dynamic_cast<const OptionButton*>(child.control)) {
    stop = stop && option->value;
  }
  const LONG_PTR style = GetWindowLongPtrA(Handle(child), GWL_STYLE);
  const LONG_PTR wanted = stop ? style | WS_TABSTOP : style & ~static_cast<LONG_PTR>(WS_TABSTOP);
  if (style != wanted) SetWindowLongPtrA(Handle(child), GWL_STYLE, wanted);
}

void ChildWindows::UpdateDisabledTip(const ChildWindow& child) {
  const bool covered = Shown(child) && !child.control->enabled;
  tips_.SetDisabledRect(Number(child.id), covered ? child.rect : PixelRect{});
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
