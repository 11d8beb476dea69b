// The child windows and menu items of the main window: made from the controls' state, and brought
// to every later change of it. Handles no input.
#pragma once

#include <unordered_map>
#include <vector>

#include "panel/form1.h"
#include "ui/control_ids.h"
#include "ui/fonts_win.h"
#include "ui/layout.h"
#include "ui/painting_win.h"
#include "ui/tool_tips_win.h"

namespace corvane {

enum class ChildKind {
  kLabel,
  kButton,
  kTextBox,
  kListBox,
  kComboBox,
  kCheckBox,
  kOption,
  kShape,
  kFrame,
};

// A change of a list box's lines that its window does not show yet.
struct LineChange {
  ListChange change;
  std::size_t index;
  std::string text;  // of an added or a replacing line
};

struct ChildWindow {
  ChildKind kind;
  ControlId id;
  Control* control;
  const ControlPlace* place;
  const ChildWindow* frame;           // nullptr: stands on the window itself
  void* window;                       // HWND
  PixelRect asked;                    // where the layout wants it
  PixelRect rect;                     // where it stands
  int extent;                         // lists: width of the widest line, in pixels
  std::vector<LineChange> waiting{};  // lists
  bool selection_waits = false;       // lists
};

class ChildWindows {
 public:
  // Makes all of `form`'s controls on the window `owner` (HWND). False when one is refused.
  [[nodiscard]] bool Create(void* owner, Form1& form, int dpi);
  // Forgets them; their windows end with the owner.
  void Clear();

  // nullptr for what is no child window of these.
  [[nodiscard]] ChildWindow* Find(const Control& control);
  [[nodiscard]] ChildWindow* Find(ControlId id);
  // The menu item with this command id, or nullptr.
  [[nodiscard]] MenuItem* FindMenuItem(ControlId id);
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

  // Places everything for the owner's present client area.
  void LayOut(int dpi, bool compact);
  // As LayOut, with fonts for another resolution.
  void ChangeDpi(int dpi, bool compact);

  // True when the control and its frame are shown.
  [[nodiscard]] bool Shown(const ChildWindow& child) const;

  // Answers WM_CTLCOLOR*: sets the colours of `dc` and gives the brush, nullptr for a stranger.
  [[nodiscard]] void* ColourOf(void* dc, void* window);
  // Answers WM_DRAWITEM; false for a stranger.
  bool Draw(const void* draw_item);
  void PaintFrameOf(const ChildWindow& child);

 private:
  [[nodiscard]] bool CreateChild(const ControlPlace& place, Control& control);
  void CreateMenu();
  void MirrorAll(ChildWindow& child);
  void MirrorMenuItem(const MenuItem& item);
  void MirrorValue(ChildWindow& child);
  void MirrorSelection(ChildWindow& child);
  void ShowList(ChildWindow& list);
  void MirrorEntries(ChildWindow& child);
  void MirrorText(ChildWindow& child);
  void MirrorVisible(const ChildWindow& child);
  void MirrorEnabled(ChildWindow& child);
  void SetFont(const ChildWindow& child);
  void SetTabStop(const ChildWindow& child);
  void UpdateDisabledTip(const ChildWindow& child);
  void Place(ChildWindow& child);
  void FitCallLog(ChildWindow& log);
  void Widen(ChildWindow& list, const std::string& line);
  void MeasureLines(ChildWindow& list);

  void* owner_ = nullptr;
  void* menu_ = nullptr;
  Form1* form_ = nullptr;
  int dpi_ = kDesignDpi;
  bool compact_ = false;
  int call_log_client_height_ = 0;
  bool mirroring_text_ = false;
  bool lists_wait_ = false;
  std::vector<ChildWindow> children_;
  std::unordered_map<const Control*, std::size_t> by_control_;
  std::unordered_map<int, MenuItem*> menu_items_;
  FontSet fonts_;
  BrushCache brushes_;
  ToolTips tips_;
};

// Reads back where a list is scrolled to; to be called after everything that can scroll it.
void ReportTopIndex(const ChildWindow& list);
// True when the list's last line shows, or it has none.
[[nodiscard]] bool EndInView(const ChildWindow& list);
void ScrollToEnd(const ChildWindow& list);
// The line or entry that is selected in the window of a list or combo box; -1: none.
[[nodiscard]] int SelectedIndex(const ChildWindow& child);
// The text that the window of a text box shows, cut at kLongestBoxText.
[[nodiscard]] std::string ShownText(const ChildWindow& box);
inline constexpr std::size_t kLongestBoxText = 4096;

}  // namespace corvane
