// The main window's behaviour: what each thing the user can do changes in the controls' state, and
// which handler then runs. Knows no window system and nothing of the program behind Actions.
#pragma once

#include <cstdint>
#include <string>

#include "base/loop.h"
#include "panel/form1.h"
#include "panel/presets.h"
#include "panel/program_flags.h"
#include "ui/actions.h"
#include "ui/editor_entry.h"
#include "ui/user_events.h"

namespace corvane {

class MainForm final : public UserEvents {
 public:
  // `tmrDetectcheckbox` is switched with the settings page; its tick belongs to whoever made it.
  MainForm(Form1& form, Presets& presets, const ProgramFlags& flags, Timer& tmrDetectcheckbox,
           Actions& actions);
  MainForm(const MainForm&) = delete;
  MainForm& operator=(const MainForm&) = delete;

  // -- What the user does. All of these do nothing once mblnShuttingDown is set, and nothing for a
  // disabled control.
  void Click(Control& control) override;
  void DoubleClick(Control& control) override;
  void TextEdited(TextBox& box, const std::string& text) override;
  [[nodiscard]] bool KeyPress(Control& control, int code) override;
  void KeyUp(Control& control, int key_code) override;
  void LostFocus(Control& control) override;
  void ListSelected(ListBox& list, int index, bool by_mouse) override;
  void ComboSelected(ComboBox& combo, int index) override;
  void MouseUp(Control& control, int button, int line) override;
  void MouseMove(Control& control, bool form_is_foreground) override;
  void AnyInput() override {}
  void Escape() override {}
  void CloseRequested() override;
  void SessionEnding() override;

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
  [[nodiscard]] bool Accepts(const Control& control) const;
  void ClickButton(const Control& button);
  void ClickMenuItem(const Control& item);
  void TickBox(CheckBox& box);
  void ChooseOption(OptionButton& option);
  void RemoveSelectedRecOnly();
  void ApplyBaseFrequency();
  void ApplyOffset();
  [[nodiscard]] bool IsPresetBox(const Control& control) const;
  // The text becomes the value in force, or that one goes back into the box. True when accepted.
  bool Accept(TextBox& box, std::int16_t lowest, std::int16_t highest, std::int16_t& value);

  Form1& form_;
  Presets& presets_;
  const ProgramFlags& flags_;
  Timer& tmrDetectcheckbox_;
  Actions& actions_;
  EditorHandOver hand_over_;
};

}  // namespace corvane
