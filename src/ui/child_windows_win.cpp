// Making the child windows, placing and drawing them. What follows the state is in
// child_mirror_win.cpp.
#include "ui/child_windows_win.h"

#include <windows.h>
//
#include <commctrl.h>

#include <algorithm>
#include <cassert>

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

ChildKind KindOf(const Control& control) {
  if (dynamic_cast<const Button*>(&control) != nullptr) return ChildKind::kButton;
  if (dynamic_cast<const TextBox*>(&control) != nullptr) return ChildKind::kTextBox;
  if (dynamic_cast<const ListBox*>(&control) != nullptr) return ChildKind::kListBox;
  if (dynamic_cast<const ComboBox*>(&control) != nullptr) return ChildKind::kComboBox;
  if (dynamic_cast<const CheckBox*>(&control) != nullptr) return ChildKind::kCheckBox;
  if (dynamic_cast<const OptionButton*>(&control) != nullptr) return ChildKind::kOption;
  if (dynamic_cast<const Shape*>(&control) != nullptr) return ChildKind::kShape;
  if (dynamic_cast<const Frame*>(&control) != nullptr) return ChildKind::kFrame;
  assert(dynamic_cast<const Label*>(&control) != nullptr);
  return ChildKind::kLabel;
}

// Check boxes and option buttons do not switch by themselves: the state does, and shows all three
// values. A list that scrolls sideways keeps its scroll bars, so that its rows stay as many.
WindowStyle StyleOf(ChildKind kind, const ControlPlace& place) {
  switch (kind) {
    case ChildKind::kLabel: {
      DWORD style = SS_LEFT | SS_NOTIFY;
      if (place.height <= kOneLineHeight) style |= SS_ENDELLIPSIS;
      if (place.id == ControlId::lblPositionSdrSharpCC) style |= SS_CENTERIMAGE | WS_BORDER;
      if (place.id == ControlId::lblManualD_Release) {
        style |= SS_CENTER | SS_CENTERIMAGE | WS_BORDER;
      }
      return {WC_STATICA, style, 0};
    }
    case ChildKind::kShape:
      return {WC_STATICA, SS_OWNERDRAW | SS_NOTIFY, 0};
    case ChildKind::kButton:
      return {WC_BUTTONA, BS_OWNERDRAW | WS_TABSTOP, 0};
    case ChildKind::kTextBox:
      return {WC_EDITA, ES_LEFT | ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE};
    case ChildKind::kListBox: {
      DWORD style = LBS_NOTIFY | LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT | WS_VSCROLL | WS_TABSTOP;
      if (place.id == ControlId::lstCallLog) style |= WS_HSCROLL | LBS_DISABLENOSCROLL;
      if (place.id == ControlId::lstStatusLog) style |= WS_HSCROLL;
      return {WC_LISTBOXA, style, WS_EX_CLIENTEDGE};
    }
    case ChildKind::kComboBox:
      return {WC_COMBOBOXA, CBS_DROPDOWNLIST | CBS_HASSTRINGS | WS_VSCROLL | WS_TABSTOP, 0};
    case ChildKind::kCheckBox:
      return {WC_BUTTONA, BS_3STATE | WS_TABSTOP, 0};
    case ChildKind::kOption:
      return {WC_BUTTONA, BS_RADIOBUTTON, 0};
    case ChildKind::kFrame:
      return {WC_BUTTONA, BS_GROUPBOX, 0};
  }
  return {};
}

HWND Handle(const ChildWindow& child) {
  return static_cast<HWND>(child.window);
}

}  // namespace

bool ChildWindows::Create(void* owner, Form1& form, int dpi) {
  owner_ = owner;
  form_ = &form;
  dpi_ = dpi;
  fonts_.Remake(dpi);
  tips_.Create(owner);
  std::unordered_map<int, Control*> controls;
  for (Control* control : form.Controls()) {
    const auto id = FindControlId(control->name());
    assert(id);
    if (auto* item = dynamic_cast<MenuItem*>(control)) {
      menu_items_[Number(*id)] = item;
    } else {
      controls[Number(*id)] = control;
    }
  }
  children_.reserve(MainWindowPlaces().size());  // ChildWindow::frame points into it
  for (const ControlPlace& place : MainWindowPlaces()) {
    assert(controls.contains(Number(place.id)));
    if (!CreateChild(place, *controls[Number(place.id)])) return false;
  }
  for (ChildWindow& child : children_) {
    if (child.place->frame) child.frame = Find(*child.place->frame);
  }
  CreateMenu();
  for (ChildWindow& child : children_) MirrorAll(child);
  return true;
}

void ChildWindows::Clear() {
  children_.clear();
  by_control_.clear();
  menu_items_.clear();
  tips_.Clear();
  owner_ = menu_ = nullptr;
  form_ = nullptr;
}

bool ChildWindows::CreateChild(const ControlPlace& place, Control& control) {
  const ChildKind kind = KindOf(control);
  const WindowStyle style = StyleOf(kind, place);
  // The arrow keys move inside a group of options; every other control is a group of its own.
  const bool continues_group = kind == ChildKind::kOption && !children_.empty() &&
                               children_.back().kind == ChildKind::kOption;
  const DWORD group = continues_group ? 0 : WS_GROUP;
  const HWND window = CreateWindowExA(
      style.extended, style.window_class, "", style.style | group | WS_CHILD | WS_CLIPSIBLINGS, 0,
      0, 0, 0, static_cast<HWND>(owner_),
      reinterpret_cast<HMENU>(static_cast<INT_PTR>(Number(place.id))), GetModuleHandleA(nullptr),
      nullptr);
  if (window == nullptr) return false;
  by_control_[&control] = children_.size();
  children_.push_back({kind, place.id, &control, &place, nullptr, window, {}, {}, 0});
  tips_.Add(window, Number(place.id));
  return true;
}

void ChildWindows::CreateMenu() {
  const HMENU bar = ::CreateMenu();
  const HMENU tools = CreatePopupMenu();
  const auto append = [](HMENU menu, const MenuItem& item, ControlId id) {
    AppendMenuA(menu, MF_STRING, static_cast<UINT_PTR>(Number(id)), item.caption.get().c_str());
  };
  append(tools, form_->mnuGSSIEditor, ControlId::mnuGSSIEditor);
  append(tools, form_->mnuCompactMode, ControlId::mnuCompactMode);
  AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(tools),
              form_->mnuOptions.caption.get().c_str());
  append(bar, form_->mnuMCClabel, ControlId::mnuMCClabel);
  MENUITEMINFOA number{};
  number.cbSize = sizeof number;
  number.fMask = MIIM_ID;
  number.wID = static_cast<UINT>(Number(ControlId::mnuOptions));
  SetMenuItemInfoA(bar, 0, TRUE, &number);
  menu_ = bar;
  SetMenu(static_cast<HWND>(owner_), bar);
  for (const auto& [id, item] : menu_items_) MirrorMenuItem(*item);
}

ChildWindow* ChildWindows::Find(const Control& control) {
  const auto found = by_control_.find(&control);
  return found == by_control_.end() ? nullptr : &children_[found->second];
}

ChildWindow* ChildWindows::Find(ControlId id) {
  const auto found = std::find_if(children_.begin(), children_.end(),
                                  [id](const ChildWindow& child) { return child.id == id; });
  return found == children_.end() ? nullptr : &*found;
}

MenuItem* ChildWindows::FindMenuItem(ControlId id) {
  const auto found = menu_items_.find(Number(id));
  return found == menu_items_.end() ? nullptr : found->second;
}

bool ChildWindows::Shown(const ChildWindow& child) const {
  return child.control->visible && (child.frame == nullptr || child.frame->control->visible);
}

void ChildWindows::LayOut(int dpi, bool compact) {
  ShowLists();
  dpi_ = dpi;
  compact_ = compact;
  RECT client{};
  GetClientRect(static_cast<HWND>(owner_), &client);
  LayoutInput input{dpi, static_cast<int>(client.right), static_cast<int>(client.bottom), compact};
  input.call_details_left = form_->fraCallDetails.left;
  input.call_details_top = form_->fraCallDetails.top;
  const auto placed = ComputeLayout(input);
  for (std::size_t index = 0; index < placed.size(); ++index) {
    ChildWindow& child = children_[index];
    if (child.asked != placed[index].rect) {
      child.asked = child.rect = placed[index].rect;
      Place(child);
      if (child.kind == ChildKind::kFrame) InvalidateRect(Handle(child), nullptr, FALSE);
      if (child.id == ControlId::lstCallLog) FitCallLog(child);
      UpdateDisabledTip(child);
    }
    SetTabStop(child);
  }
}

void ChildWindows::ChangeDpi(int dpi, bool compact) {
  ShowLists();
  dpi_ = dpi;
  fonts_.Remake(dpi);
  std::vector<ChildWindow*> at_end;
  for (ChildWindow& child : children_) {
    if (child.kind == ChildKind::kListBox && EndInView(child)) at_end.push_back(&child);
    SetFont(child);
    child.asked = {};
    if (child.kind == ChildKind::kListBox) MeasureLines(child);
  }
  fonts_.Release();
  LayOut(dpi, compact);
  for (const ChildWindow* list : at_end) ScrollToEnd(*list);
  InvalidateRect(static_cast<HWND>(owner_), nullptr, TRUE);
}

void ChildWindows::Place(ChildWindow& child) {
  const int line = fonts_.LineHeight(child.place->font);
  const bool is_field = child.kind == ChildKind::kTextBox || child.kind == ChildKind::kComboBox;
  if (is_field) {
    // The text stands at the top of such a window, which is therefore no higher than it needs.
    const int field = line + 2 * GetSystemMetrics(SM_CYEDGE) + ToPixels(kFieldMargin, dpi_);
    const int spare = std::max(0, child.rect.height - field);
    child.rect.top += spare / 2;
    child.rect.height -= spare;
  }
  const bool is_combo = child.kind == ChildKind::kComboBox;
  SetWindowPos(Handle(child), nullptr, child.rect.left, child.rect.top, child.rect.width,
               child.rect.height + (is_combo ? kDropRows * line : 0),
               SWP_NOZORDER | SWP_NOACTIVATE);
  if (!is_combo) return;
  // A combo box is given the height with its list open; closed, it follows from its field's.
  RECT closed{};
  GetWindowRect(Handle(child), &closed);
  const int missing = child.rect.height - static_cast<int>(closed.bottom - closed.top);
  const auto part = static_cast<WPARAM>(-1);
  const LRESULT height = SendMessageA(Handle(child), CB_GETITEMHEIGHT, part, 0);
  SendMessageA(Handle(child), CB_SETITEMHEIGHT, part, height + missing);
}

// The log shows 21 rows and a part of the next whatever its scroll bars and borders take.
void ChildWindows::FitCallLog(ChildWindow& log) {
  RECT client{};
  GetClientRect(Handle(log), &client);
  const int around = log.rect.height - static_cast<int>(client.bottom);
  RowFit fit = FitCallLogRows(static_cast<int>(client.bottom), fonts_.LineHeight(log.place->font));
  SendMessageA(Handle(log), LB_SETITEMHEIGHT, 0, fit.row_height);
  const auto row = static_cast<int>(SendMessageA(Handle(log), LB_GETITEMHEIGHT, 0, 0));
  if (row != fit.row_height) fit.client_height = kCallLogFullRows * row + row / 2;
  log.rect.height = fit.client_height + around;
  SetWindowPos(Handle(log), nullptr, log.rect.left, log.rect.top, log.rect.width, log.rect.height,
               SWP_NOZORDER | SWP_NOACTIVATE);
  call_log_client_height_ = fit.client_height;
  ReportTopIndex(log);
}

void* ChildWindows::ColourOf(void* dc, void* window) {
  const int id = GetDlgCtrlID(static_cast<HWND>(window));
  const ChildWindow* child = Find(static_cast<ControlId>(id));
  if (child == nullptr || child->window != window) return nullptr;
  const bool is_input = child->kind == ChildKind::kTextBox || child->kind == ChildKind::kListBox;
  const Colour back =
      is_input && !child->control->enabled ? kButtonFace : child->control->back_colour.get();
  SetTextColor(static_cast<HDC>(dc), DrawnColour(child->control->fore_colour));
  SetBkColor(static_cast<HDC>(dc), DrawnColour(back));
  return brushes_.Get(back);
}

bool ChildWindows::Draw(const void* draw_item) {
  const auto& item = *static_cast<const DRAWITEMSTRUCT*>(draw_item);
  const ChildWindow* child = Find(static_cast<ControlId>(static_cast<int>(item.CtlID)));
  if (child == nullptr) return false;
  if (const auto* button = dynamic_cast<const Button*>(child->control)) {
    DrawButton(draw_item, *button, fonts_.Get(child->place->font, button->bold), brushes_);
  } else if (const auto* shape = dynamic_cast<const Shape*>(child->control)) {
    DrawShape(draw_item, *shape, dpi_, brushes_);
  }
  return true;
}

void ChildWindows::PaintFrameOf(const ChildWindow& child) {
  PaintFrame(child.window, static_cast<const Frame&>(*child.control),
             fonts_.Get(child.place->font, child.control->bold), dpi_, brushes_);
}

}  // namespace corvane
