// Making the child windows, placing and drawing them. What follows the state is in
// child_mirror_win.cpp.
#include "ui/child_windows_win.h"

#include <commctrl.h>

#include <algorithm>

namespace corvane {

namespace {

// Rows of a combo box's opened list.
constexpr int kDropRows = 10;
// Room around the text of a text or combo box, top and bottom together, in twips.
constexpr int kFieldMargin = 60;
// Taller labels than this, in twips, show their text in several lines.
constexpr int kOneLineHeight = 25 * kTwipsPerInch / kDesignDpi;

struct WindowStyle {
  const char* window_class;
  DWORD style;
  DWORD extended;
};

DWORD LabelStyle(const ControlRow& row) {
  DWORD style = SS_LEFT | SS_NOTIFY | SS_NOPREFIX;
  if (row.height <= kOneLineHeight) style |= SS_ENDELLIPSIS;
  if (row.Has(kBordered)) style |= SS_CENTERIMAGE | WS_BORDER;
  if (row.Has(kCentred)) style |= SS_CENTER;
  return style;
}

DWORD ListStyle(const ControlRow& row) {
  DWORD style = LBS_NOTIFY | LBS_HASSTRINGS | LBS_OWNERDRAWFIXED | LBS_NOINTEGRALHEIGHT |
                WS_VSCROLL | WS_TABSTOP;
  if (row.Has(kScrollsSideways)) style |= WS_HSCROLL;
  if (row.Has(kFitsRows)) style |= LBS_DISABLENOSCROLL;
  return style;
}

// A drop-down list shows nothing while nothing is selected: one that has a text for that is drawn
// by the program.
DWORD ComboStyle(const ControlRow& row) {
  DWORD style = CBS_DROPDOWNLIST | CBS_HASSTRINGS | WS_VSCROLL | WS_TABSTOP;
  if (!As<ComboBox>(row.control).text.get().empty()) style |= CBS_OWNERDRAWFIXED;
  return style;
}

// Check boxes and option buttons do not switch by themselves: the state does, and shows all three
// values. A list that has to show so many rows keeps its scroll bars, so that they stay as many.
WindowStyle StyleOf(const ControlRow& row) {
  switch (row.control.kind()) {
    case ControlKind::kLabel:
      return {WC_STATICA, LabelStyle(row), 0};
    case ControlKind::kShape:
      return {WC_STATICA, SS_OWNERDRAW | SS_NOTIFY, 0};
    case ControlKind::kButton:
      return {WC_BUTTONA, BS_OWNERDRAW | WS_TABSTOP, 0};
    case ControlKind::kTextBox:
      return {WC_EDITA, ES_LEFT | ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE};
    case ControlKind::kListBox:
      return {WC_LISTBOXA, ListStyle(row), WS_EX_CLIENTEDGE};
    case ControlKind::kCheckList:
      return {WC_LISTBOXA, ListStyle(row) | LBS_OWNERDRAWFIXED, WS_EX_CLIENTEDGE};
    case ControlKind::kComboBox:
      return {WC_COMBOBOXA, ComboStyle(row), 0};
    case ControlKind::kCheckBox:
      return {WC_BUTTONA, BS_3STATE | WS_TABSTOP | (row.Has(kWraps) ? BS_MULTILINE : 0U), 0};
    case ControlKind::kOption:
      return {WC_BUTTONA, BS_RADIOBUTTON, 0};
    case ControlKind::kFrame:
      return {WC_BUTTONA, BS_GROUPBOX, 0};
    case ControlKind::kMenuItem:
    case ControlKind::kWindow:
      break;
  }
  assert(false);
  return {};
}

void SetStyle(HWND window, LONG_PTR added, LONG_PTR removed) {
  SetWindowLongPtrA(window, GWL_STYLE, (GetWindowLongPtrA(window, GWL_STYLE) & ~removed) | added);
}

}  // namespace

bool ChildWindows::Create(HWND owner, const WindowTable& table, int dpi) {
  owner_ = owner;
  table_ = &table;
  dpi_ = dpi;
  fonts_.Remake(dpi);
  tips_.Create(owner);
  children_.reserve(table.controls.size());  // ChildWindow::frame points into it
  for (const ControlRow& row : table.controls) {
    if (!CreateChild(row)) return false;
  }
  for (ChildWindow& child : children_) {
    if (child.row->frame != nullptr) child.frame = Find(*child.row->frame);
  }
  CreateMenuBar();
  for (ChildWindow& child : children_) MirrorAll(child);
  return true;
}

void ChildWindows::Clear() {
  children_.clear();
  by_control_.clear();
  tips_.Clear();
  owner_ = nullptr;
  menu_ = nullptr;
  table_ = nullptr;
}

bool ChildWindows::CreateChild(const ControlRow& row) {
  const WindowStyle style = StyleOf(row);
  // The arrow keys move inside a group of options; every other control is a group of its own.
  const bool continues_group = row.control.kind() == ControlKind::kOption && !children_.empty() &&
                               children_.back().kind() == ControlKind::kOption;
  const DWORD group = continues_group ? 0 : WS_GROUP;
  const HWND window = CreateWindowExA(
      style.extended, style.window_class, "", style.style | group | WS_CHILD | WS_CLIPSIBLINGS, 0,
      0, 0, 0, owner_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(Number(row.id))),
      GetModuleHandleA(nullptr), nullptr);
  if (window == nullptr) return false;
  by_control_[&row.control] = children_.size();
  children_.push_back({&row, window});
  tips_.Add(window, Number(row.id));
  return true;
}

void ChildWindows::CreateMenuBar() {
  if (table_->menu.empty()) return;
  menu_ = CreateMenu();
  std::unordered_map<const MenuItem*, HMENU> opened;
  for (const MenuRow& row : table_->menu) {
    if (row.menu != nullptr) opened.try_emplace(row.menu, CreatePopupMenu());
  }
  for (const MenuRow& row : table_->menu) {
    const HMENU in = row.menu == nullptr ? menu_ : opened[row.menu];
    if (row.begins_group) AppendMenuA(in, MF_SEPARATOR, 0, nullptr);
    std::string caption = row.Text();
    MENUITEMINFOA info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_ID | MIIM_STRING;
    info.wID = static_cast<UINT>(Number(row.id));
    info.dwTypeData = caption.data();
    if (const auto popup = opened.find(&row.item); popup != opened.end()) {
      info.fMask |= MIIM_SUBMENU;
      info.hSubMenu = popup->second;
    }
    InsertMenuItemA(in, static_cast<UINT>(GetMenuItemCount(in)), TRUE, &info);
  }
  SetMenu(owner_, menu_);
  for (const MenuRow& row : table_->menu) MirrorMenuItem(row);
}

ChildWindow* ChildWindows::Find(const Control& control) {
  const auto found = by_control_.find(&control);
  return found == by_control_.end() ? nullptr : &children_[found->second];
}

ChildWindow* ChildWindows::Find(HWND window) {
  ChildWindow* child = FindNumber(GetDlgCtrlID(window));
  return child != nullptr && child->window == window ? child : nullptr;
}

ChildWindow* ChildWindows::FindNumber(int id) {
  const auto found = std::find_if(children_.begin(), children_.end(),
                                  [id](const ChildWindow& child) { return child.number() == id; });
  return found == children_.end() ? nullptr : &*found;
}

MenuItem* ChildWindows::FindMenuItem(int id) const {
  for (const MenuRow& row : table_->menu) {
    if (Number(row.id) == id) return &row.item;
  }
  return nullptr;
}

MenuItem* ChildWindows::FindShortcut(int key_code, bool control) const {
  for (const MenuRow& row : table_->menu) {
    if (row.shortcut.key_code == key_code && row.shortcut.control == control) return &row.item;
  }
  return nullptr;
}

bool ChildWindows::Shown(const ChildWindow& child) const {
  return child.control().visible && !table_->LeftOut(*child.row) &&
         (child.frame == nullptr || child.frame->control().visible);
}

void ChildWindows::LayOut(int dpi) {
  ShowLists();
  dpi_ = dpi;
  RECT client{};
  GetClientRect(owner_, &client);
  PlaceAll(static_cast<int>(client.right), static_cast<int>(client.bottom));
}

void ChildWindows::PlaceAll(int client_width, int client_height) {
  const auto placed = ComputeLayout(*table_, dpi_, client_width, client_height);
  for (std::size_t index = 0; index < placed.size(); ++index) {
    ChildWindow& child = children_[index];
    if (child.asked != placed[index]) {
      // A list that is higher for a moment is scrolled back to fill it, and stays so.
      const bool at_end = IsList(child.kind()) && EndInView(child);
      child.asked = child.rect = placed[index];
      Place(child);
      if (child.kind() == ControlKind::kFrame) InvalidateRect(child.window, nullptr, FALSE);
      if (child.row->Has(kFitsRows)) FitList(child);
      if (at_end) ScrollToEnd(child);
      UpdateDisabledTip(child);
    }
    SetTabStop(child);
  }
}

void ChildWindows::Arrange(int dpi, int client_width, int client_height) {
  ShowLists();
  arranging_ = true;
  std::vector<ChildWindow*> at_end;
  for (ChildWindow& child : children_) {
    if (IsList(child.kind()) && EndInView(child)) at_end.push_back(&child);
  }
  // Scroll bars are painted at once, whatever one asks for, unless there is nothing to be seen.
  std::vector<HWND> seen;
  for (const ChildWindow& child : children_) {
    if ((GetWindowLongPtrA(child.window, GWL_STYLE) & WS_VISIBLE) == 0) continue;
    seen.push_back(child.window);
    SetStyle(child.window, 0, WS_VISIBLE);
  }
  const bool other_fonts = dpi != dpi_;
  dpi_ = dpi;
  if (other_fonts) ChangeFonts();
  const ChildWindow* focus = Find(GetFocus());
  if (focus != nullptr && !Shown(*focus)) ::SetFocus(Find(table_->Home())->window);
  PlaceAll(client_width, client_height);
  for (const HWND window : seen) SetStyle(window, WS_VISIBLE, 0);
  for (const ChildWindow& child : children_) {
    if (child.row->frame == nullptr) MirrorVisible(child);
  }
  if (other_fonts) {
    for (const ChildWindow* list : at_end) ScrollToEnd(*list);
  }
  arranging_ = false;
}

void ChildWindows::ChangeFonts() {
  fonts_.Remake(dpi_);
  for (ChildWindow& child : children_) {
    SetFont(child);
    child.asked = {};
    if (IsList(child.kind())) MeasureLines(child);
  }
  fonts_.Release();
}

// `height` may be more than the control takes: that of an opened combo box.
void ChildWindows::Move(const ChildWindow& child, int height) const {
  const UINT quiet = arranging_ ? SWP_NOREDRAW | SWP_NOCOPYBITS : 0U;
  SetWindowPos(child.window, nullptr, child.rect.left, child.rect.top, child.rect.width, height,
               SWP_NOZORDER | SWP_NOACTIVATE | quiet);
}

void ChildWindows::Place(ChildWindow& child) {
  const int line = fonts_.LineHeight(child.row->font);
  const bool is_combo = child.kind() == ControlKind::kComboBox;
  if (is_combo || child.kind() == ControlKind::kTextBox) {
    // The text stands at the top of such a window, which is therefore no higher than it needs.
    const int field = line + 2 * GetSystemMetrics(SM_CYEDGE) + ToPixels(kFieldMargin, dpi_);
    const int spare = std::max(0, child.rect.height - field);
    child.rect.top += spare / 2;
    child.rect.height -= spare;
  }
  Move(child, child.rect.height + (is_combo ? kDropRows * line : 0));
  if (!is_combo) return;
  // A combo box is given the height with its list open; closed, it follows from its field's.
  RECT closed{};
  GetWindowRect(child.window, &closed);
  const int missing = child.rect.height - static_cast<int>(closed.bottom - closed.top);
  const auto part = static_cast<WPARAM>(-1);
  child.Send(CB_SETITEMHEIGHT, part, child.Send(CB_GETITEMHEIGHT, part) + missing);
}

// The list shows its full rows and a part of the next whatever its scroll bars and borders take.
void ChildWindows::FitList(ChildWindow& list) {
  RECT client{};
  GetClientRect(list.window, &client);
  const int around = list.rect.height - static_cast<int>(client.bottom);
  const int full_rows = As<ListBox>(list.control()).full_rows();
  RowFit fit =
      FitRows(full_rows, static_cast<int>(client.bottom), fonts_.LineHeight(list.row->font));
  list.Send(LB_SETITEMHEIGHT, 0, fit.row_height);
  const auto row = static_cast<int>(list.Send(LB_GETITEMHEIGHT));
  if (row != fit.row_height) fit.client_height = full_rows * row + row / 2;
  list.rect.height = fit.client_height + around;
  Move(list, list.rect.height);
  list.fitted_height = fit.client_height;
  ReportTopIndex(list);
}

HFONT ChildWindows::FontOf(const ChildWindow& child) const {
  return fonts_.Get(child.row->font, child.control().bold);
}

HBRUSH ChildWindows::ColourOf(HDC dc, HWND window) {
  const ChildWindow* child = Find(window);
  if (child == nullptr) return nullptr;
  TextColours colours = ColoursOf(child->control());
  for (const Lamp& lamp : table_->lamps) {
    if (&lamp.text == &child->control() && !lamp.lit()) colours.text = kGreyText;
  }
  SetTextColor(dc, DrawnColour(colours.text));
  SetBkColor(dc, DrawnColour(colours.ground));
  return brushes_.Get(colours.ground);
}

bool ChildWindows::Draw(const DRAWITEMSTRUCT& item) {
  const ChildWindow* child = FindNumber(static_cast<int>(item.CtlID));
  if (child == nullptr) return false;
  if (child->kind() == ControlKind::kButton) {
    DrawButton(item, As<Button>(child->control()), FontOf(*child), brushes_);
  } else if (child->kind() == ControlKind::kListBox) {
    DrawLine(item, child->control(), FontOf(*child), dpi_, brushes_);
  } else if (child->kind() == ControlKind::kShape) {
    DrawShape(item, As<Shape>(child->control()), dpi_, brushes_);
  } else if (child->kind() == ControlKind::kCheckList) {
    DrawCheckLine(item, As<CheckList>(child->control()), FontOf(*child), dpi_, brushes_);
  } else if (child->kind() == ControlKind::kComboBox) {
    DrawComboLine(item, As<ComboBox>(child->control()), dpi_, brushes_);
  }
  return true;
}

void ChildWindows::PaintFrameOf(const ChildWindow& child) {
  PaintFrame(child.window, As<Frame>(child.control()), FontOf(child), dpi_, brushes_);
}

}  // namespace corvane
