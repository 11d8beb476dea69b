// The main window's behaviour: what each thing the user can do changes in the controls' state, and
// which handler then runs. Knows no window system and nothing of the program behind Actions.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "base/loop.h"
#include "panel/form1.h"
#include "panel/presets.h"
#include "panel/program_flags.h"
#include "ui/actions.h"
#include "ui/editor_hand_over.h"

namespace corvane {

// Mouse buttons as MouseUp counts them.
inline constexpr int kLeftButton = 1;
inline constexpr int kRightButton = 2;
inline constexpr int kMiddleButton = 4;

// Key codes and characters with a meaning here.
inline constexpr int kBackspaceCode = 8;
inline constexpr int kEnterCode = 13;
inline constexpr int kSpaceBarCode = 32;

class MainForm {
 public:
  // `tmrDetectcheckbox` is switched with the settings page; its tick belongs to whoever made it.
  MainForm(Form1& form, Presets& presets, const ProgramFlags& flags, Timer& tmrDetectcheckbox,
           Actions& actions);
  MainForm(const MainForm&) = delete;
  MainForm& operator=(const MainForm&) = delete;

  // -- What the user does. Each method first brings the state to what the user sees, then runs the
  // handler, which may let events run. All of them do nothing once mblnShuttingDown is set, and
  // nothing for a disabled control.

  // Buttons, check boxes, option buttons, labels, menu items. Check boxes and option buttons take
  // their new value here, through the sink: the window need not change by itself.
  void Click(Control& control);
  // Labels and lists; the list's selection has been reported before.
  void DoubleClick(Control& control);
  // The box shows `text` now. No echo to the sink.
  void TextEdited(TextBox& box, const std::string& text);
  // A character is about to be typed; false when it is to be discarded.
  [[nodiscard]] bool KeyPress(Control& control, int code);
  void KeyUp(Control& control, int key_code);
  // The control has lost the keyboard focus. A real window reports this by itself, also for a
  // change of focus that FocusWanted caused; a simulated one must do the same.
  void LostFocus(Control& control);
  // Line `index` (-1: none) is selected now. No echo to the sink.
  void ListSelected(ListBox& list, int index, bool by_mouse);
  void ComboSelected(ComboBox& combo, int index);
  void MouseUp(Control& control, int button);
  // The mouse moved over a control's own area; for a frame, over it and the labels in it.
  void MouseMove(Control& control, bool form_is_foreground);
  void CloseRequested();
  void SessionEnding();

  // -- What the program does.

  // To be called once, after the settings were put into the controls: code that sets a control runs
  // no handler, so the effects that restored values must have come from here. These and no others:
  // base frequency and offset from their selections, the record-only controls enabled by the record
  // mode, a ticked LOG mode switched on, the layout by the compact mark, settings page 0 shown.
  // May let events run.
  void ApplyRestoredSettings();

  // Shows settings page `index` (0 to 4) and gives the focus to the call log.
  void ShowSettingsPage(int index);
  // Sizes, places and title by the check mark of mnuCompactMode.
  void ApplyCompactMode();

  // Shared with the editor, which clears EditorPreselect.
  [[nodiscard]] EditorHandOver& hand_over() { return hand_over_; }

 private:
  using Handler = std::function<void()>;

  void ConnectClicks();
  void ConnectDoubleClicks();
  [[nodiscard]] bool Accepts(const Control& control) const;
  void StartClicked();
  void FlipCompactMode();
  void ApplyBaseFrequency();
  void ApplyOffset();
  void ApplyRecordMode();
  void TickBox(CheckBox& box);
  void ChooseOption(OptionButton& option);

  Form1& form_;
  Presets& presets_;
  const ProgramFlags& flags_;
  Timer& tmrDetectcheckbox_;
  Actions& actions_;
  EditorHandOver hand_over_;
  std::map<const Control*, Handler> on_click_;
  std::map<const Control*, Handler> on_double_click_;
};

}  // namespace corvane
