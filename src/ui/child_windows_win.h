// The child windows and menu items of one window: made from its table, and brought to every later
// change of the controls' state. Handles no input.
#pragma once

#include <windows.h>

#include <string>
#include <unordered_map>
#include <vector>

#include "ui/drawing_win.h"
#include "ui/layout.h"
#include "ui/line_tips_win.h"
#include "ui/tool_tips_win.h"

namespace corvane {

// A change of a list box's lines that its window does not show yet.
struct LineChange {
  ListChange change;
  std::size_t index;
  std::string text;  // of an added or a replacing line
};

struct ChildWindow {
  const ControlRow* row;
  HWND window;
  const ChildWindow* frame = nullptr;  // nullptr: stands on the window itself
  WNDPROC own_procedure = nullptr;     // of its class, behind the one that listens
  PixelRect asked{};                   // where the layout wants it
  PixelRect rect{};                    // where it stands
  int extent = 0;                      // lists: width of the widest line, in pixels
  int fitted_height = 0;               // kFitsRows: the client height that its rows take
  std::vector<LineChange> waiting{};   // lists
  bool selection_waits = false;        // lists

  [[nodiscard]] Control& control() const { return row->control; }
  [[nodiscard]] ControlKind kind() const { return row->control.kind(); }
  [[nodiscard]] int number() const { return Number(row->id); }
  LRESULT Send(UINT message, WPARAM w_param = 0, LPARAM l_param = 0) const {
    return SendMessageA(window, message, w_param, l_param);
  }
};

class ChildWindows {
 public:
  // Makes all of the table's controls on the window `owner`. False when one is refused. The table
  // stays where it is until Clear.
  [[nodiscard]] bool Create(HWND owner, const WindowTable& table, int dpi);
  // Forgets them; their windows end with the owner.
  void Clear();

  // nullptr for what is no child window of these.
  [[nodiscard]] ChildWindow* Find(const Control& control);
  [[nodiscard]] ChildWindow* Find(HWND window);
  [[nodiscard]] ChildWindow* FindNumber(int id);
  // The menu item with this command id, or nullptr.
  [[nodiscard]] MenuItem* FindMenuItem(int id) const;
  // The one that this key stands for, or nullptr.
  [[nodiscard]] MenuItem* FindShortcut(int key_code, bool control) const;
  [[nodiscard]] std::vector<ChildWindow>& all() { return children_; }

  // Brings the window (or menu item) of `control` to the state of `field`.
  void Mirror(const Control& control, Field field);
  void MirrorList(const ListBox& list, ListChange change, std::size_t index);
  // Lines and selections of list boxes are kept back until this: showing each one costs far more
  // than all together, and what they tell of is often still being done.
  void ShowLists();
  [[nodiscard]] bool lists_wait() const { return lists_wait_; }
  // True while a text is being mirrored into a box, whose notifications are then no user's.
  [[nodiscard]] bool mirroring_text() const { return mirroring_text_; }

  [[nodiscard]] LineTips& line_tips() { return line_tips_; }

  // To be shown each message of the queue for the owner or one of these.
  void Notice(const MSG& message) { tips_.Relay(message); }

  // Places everything for the owner's present client area.
  void LayOut(int dpi);
  // Places everything for a client area that the owner is going to have, and shows what is to be
  // seen, with fonts for another resolution if it is one. Nothing of it is painted: that is the
  // owner's part, when it has its size.
  void Arrange(int dpi, int client_width, int client_height);

  // True when the control and its frame are shown, and are no part that a compact window leaves
  // out.
  [[nodiscard]] bool Shown(const ChildWindow& child) const;

  // Answers WM_CTLCOLOR*: sets the colours of `dc` and gives the brush, nullptr for a stranger.
  [[nodiscard]] HBRUSH ColourOf(HDC dc, HWND window);
  // Answers WM_DRAWITEM; false for a stranger.
  bool Draw(const DRAWITEMSTRUCT& item);
  void PaintFrameOf(const ChildWindow& child);

 private:
  [[nodiscard]] bool CreateChild(const ControlRow& row);
  void CreateMenuBar();
  void MirrorAll(ChildWindow& child);
  void MirrorMenuItem(const MenuRow& row);
  void MirrorValue(ChildWindow& child);
  void MirrorSelection(ChildWindow& child);
  void MirrorEntries(ChildWindow& child);
  void MirrorText(ChildWindow& child);
  void MirrorVisible(const ChildWindow& child);
  void MirrorEnabled(ChildWindow& child);
  void ShowList(ChildWindow& list);
  void Widen(ChildWindow& list, const std::string& line);
  void MeasureLines(ChildWindow& list);
  [[nodiscard]] HFONT FontOf(const ChildWindow& child) const;
  void SetFont(const ChildWindow& child);
  void SetTabStop(const ChildWindow& child);
  void UpdateDisabledTip(const ChildWindow& child);
  void ChangeFonts();
  void PlaceAll(int client_width, int client_height);
  void Place(ChildWindow& child);
  void Move(const ChildWindow& child, int height) const;
  void FitList(ChildWindow& list);

  HWND owner_ = nullptr;
  HMENU menu_ = nullptr;
  const WindowTable* table_ = nullptr;
  int dpi_ = kDesignDpi;
  bool mirroring_text_ = false;
  bool lists_wait_ = false;
  std::vector<ChildWindow> children_;
  std::unordered_map<const Control*, std::size_t> by_control_;
  FontSet fonts_;
  BrushCache brushes_;
  ToolTips tips_;
  LineTips line_tips_{tips_};
  bool arranging_ = false;
};

// Reads back where a list is scrolled to; to be called after everything that can scroll it.
void ReportTopIndex(const ChildWindow& list);
// True when the program draws the entries of this combo box.
[[nodiscard]] bool IsDrawnHere(const ChildWindow& combo);
// True when the list's last line shows, or it has none.
[[nodiscard]] bool EndInView(const ChildWindow& list);
void ScrollToEnd(const ChildWindow& list);
// The line or entry that is selected in the window of a list or combo box; -1: none.
[[nodiscard]] int SelectedIndex(const ChildWindow& child);
// The text that the window of a text box shows, cut at kLongestBoxText.
[[nodiscard]] std::string ShownText(const ChildWindow& box);
inline constexpr std::size_t kLongestBoxText = 4096;

}  // namespace corvane
