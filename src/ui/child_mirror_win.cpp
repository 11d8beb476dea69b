// Bringing the child windows to the controls' state, field by field. The lines of list boxes are
// in child_lists_win.cpp.
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

}  // namespace

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
    const auto& list = static_cast<const ListBox&>(*child.control);
    for (std::size_t i = 0; i < list.items().size(); ++i) MirrorList(list, ListChange::kAdded, i);
    MirrorSelection(child);
    ShowList(child);
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
  child.selection_waits = true;
  lists_wait_ = true;
}

void ChildWindows::MirrorEntries(ChildWindow& child) {
  const auto& combo = static_cast<const ComboBox&>(*child.control);
  Send(child, CB_RESETCONTENT);
  for (const ComboBox::Entry& entry : combo.entries.get()) {
    Send(child, CB_ADDSTRING, 0, Text(entry.text));
  }
  MirrorSelection(child);
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

}  // namespace corvane
