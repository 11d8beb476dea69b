// The main window's handlers.
#include "ui/main_form.h"

#include <array>
#include <span>

#include "base/number_text.h"
#include "ui/main_layout.h"

namespace corvane {

namespace {

constexpr int kCheckboxPageIndex = 4;
constexpr std::size_t kLongestParkText = 6;

std::array<Frame*, 5> PagesOf(Form1& form) {
  return {&form.fraPresets, &form.fraRecordingOptions, &form.fraOptions, &form.fraLoggingOptions,
          &form.fraCheckboxDetection};
}

// True when `chosen` was one of them.
bool ChooseAmong(std::span<OptionButton> options, const OptionButton& chosen) {
  bool found = false;
  for (const OptionButton& option : options) found = found || &option == &chosen;
  if (!found) return false;
  for (OptionButton& option : options) option.value = &option == &chosen;
  return true;
}

bool PassesDigitFilter(int code) {
  return code == kBackspaceCode || (code >= '0' && code <= '9');
}

}  // namespace

MainForm::MainForm(Form1& form, Presets& presets, const ProgramFlags& flags,
                   Timer& tmrDetectcheckbox, Actions& actions)
    : form_(form),
      presets_(presets),
      flags_(flags),
      tmrDetectcheckbox_(tmrDetectcheckbox),
      actions_(actions) {}

bool MainForm::Accepts(const Control& control) const {
  return !flags_.mblnShuttingDown && control.enabled;
}

void MainForm::Click(Control& control) {
  if (!Accepts(control)) return;
  switch (control.kind()) {
    case ControlKind::kButton:
      return ClickButton(control);
    case ControlKind::kCheckBox:
      return TickBox(As<CheckBox>(control));
    case ControlKind::kOption:
      return ChooseOption(As<OptionButton>(control));
    case ControlKind::kMenuItem:
      return ClickMenuItem(control);
    default:
      if (&control == &form_.lblManualD_Release) actions_.ManualRelease();
  }
}

void MainForm::ClickButton(const Control& button) {
  if (&button == &form_.cmdStartAll) {
    form_.cmdStartAll.enabled = false;
    form_.cmdStartAll.back_colour = kButtonFace;
    return actions_.StartLink();
  }
  if (&button == &form_.cmdSetCheckedValue) return actions_.SampleCheckedColour();
  if (&button == &form_.cmdSetUnCheckedValue) return actions_.SampleUnCheckedColour();
  for (std::size_t tab = 0; tab < form_.cmdSettingTab.size(); ++tab) {
    if (&button == &form_.cmdSettingTab[tab]) ShowSettingsPage(static_cast<int>(tab));
  }
}

void MainForm::ClickMenuItem(const Control& item) {
  if (&item == &form_.mnuGSSIEditor) ShowEditorFromMenu(hand_over_, actions_);
  if (&item == &form_.mnuCompactMode) {
    form_.mnuCompactMode.checked = !form_.mnuCompactMode.checked;
    ApplyCompactMode();
  }
  if (&item == &form_.mnuEditShown) QuickEditShown(form_, hand_over_, actions_);
  if (&item == &form_.mnuEndCall) actions_.ManualRelease();
  if (&item == &form_.mnuParkOnCC) actions_.ParkOnControlChannel();
  if (&item == &form_.mnuCapturePosition) actions_.CaptureSdrPosition();
}

void MainForm::DoubleClick(Control& control) {
  if (!Accepts(control)) return;
  if (&control == &form_.lstCallLog) ShowEditorFromCallLog(form_, hand_over_, actions_);
  if (&control == &form_.lstRecOnlyGSSI) RemoveSelectedRecOnly();
  if (&control == &form_.lblChangeToCcFrequency) actions_.ParkOnControlChannel();
  if (&control == &form_.lblPositionSdrSharpCC) actions_.CaptureSdrPosition();
}

void MainForm::TextEdited(TextBox& box, const std::string& text) {
  if (Accepts(box)) box.text.TakeFromUser(text);
}

bool MainForm::IsPresetBox(const Control& control) const {
  return &control == &form_.txtTimeout || &control == &form_.txtVcVolume ||
         &control == &form_.txtParkCarrier;
}

bool MainForm::KeyPress(Control& control, int code) {
  if (!Accepts(control)) return false;
  const bool is_preset = IsPresetBox(control);
  if (code != kEnterCode) return !is_preset || PassesDigitFilter(code);
  if (&control == &form_.txtRecOnlyGSSI) actions_.AddRecOnlyGssi();
  if (is_preset || &control == &form_.txtRecOnlyGSSI) SetFocus(form_, form_.lstStatusLog);
  return false;
}

void MainForm::KeyUp(Control& control, int key_code) {
  if (!Accepts(control)) return;
  if (&control == &form_.lstRecOnlyGSSI && key_code == kDeleteCode) RemoveSelectedRecOnly();
  if (&control != &form_.lstCallLog && &control != &form_.lstCurrentSSI_Users &&
      &control != &form_.lstStatusLog) {
    return;
  }
  if (key_code == kSpaceBarCode) actions_.ToggleGroupHold();
  if (key_code != kContextMenuCode) return;
  if (&control == &form_.lstCurrentSSI_Users && form_.lstCurrentSSI_Users.list_index() >= 0) {
    QuickEditListed(form_, hand_over_, actions_);
  } else {
    QuickEditShown(form_, hand_over_, actions_);
  }
}

void MainForm::RemoveSelectedRecOnly() {
  if (form_.lstRecOnlyGSSI.list_index() >= 0) actions_.RemoveRecOnlyGssi();
}

void MainForm::LostFocus(Control& control) {
  if (!Accepts(control)) return;
  bool to_be_saved = false;
  if (&control == &form_.txtTimeout) {
    to_be_saved = Accept(form_.txtTimeout, 1, kLongestTimeoutSeconds, presets_.CallTimeoutSeconds);
  }
  if (&control == &form_.txtVcVolume) {
    to_be_saved = Accept(form_.txtVcVolume, kLowestVolume, kHighestVolume, presets_.VcAudioGain);
  }
  if (&control == &form_.txtParkCarrier) {
    Accept(form_.txtParkCarrier, 0, kHighestParkCarrier, presets_.ParkCarrier);
  }
  if (to_be_saved) actions_.SaveSettings();
}

// Pasted text can be anything; a number too large for the type is as wrong as letters.
bool MainForm::Accept(TextBox& box, std::int16_t lowest, std::int16_t highest,
                      std::int16_t& value) {
  const std::string& text = box.text;
  const auto number = ParseDecimal<std::int16_t>(text);
  const bool too_long = &box == &form_.txtParkCarrier && text.size() > kLongestParkText;
  if (too_long || !number || *number < lowest || *number > highest) {
    box.text = Decimal(value);
    return false;
  }
  value = *number;
  return true;
}

void MainForm::ListSelected(ListBox& list, int index, bool by_mouse) {
  if (!Accepts(list)) return;
  list.SelectFromUser(index >= 0 && index < list.count() ? index : -1);
  if (&list == &form_.lstCurrentSSI_Users && by_mouse) {
    QuickEditListed(form_, hand_over_, actions_);
  }
}

void MainForm::ComboSelected(ComboBox& combo, int index) {
  if (!Accepts(combo)) return;
  if (index < 0 || index >= static_cast<int>(combo.entries.get().size())) return;
  combo.list_index.TakeFromUser(index);
  ApplyBaseFrequency();  // there is no other
}

void MainForm::MouseUp(Control& control, int button, int) {
  if (!Accepts(control)) return;
  if (&control == &form_.lblGroupHold && button == kLeftButton) actions_.ToggleGroupHold();
  if (&control == &form_.lblGroupNumber || &control == &form_.lblCurrentSSI) {
    QuickEditShown(form_, hand_over_, actions_);
  }
}

void MainForm::MouseMove(Control& control, bool form_is_foreground) {
  if (!Accepts(control) || !form_is_foreground) return;
  if (&control == &form_.fraCallDetails || &control == &form_.lstCallLog) {
    SetFocus(form_, HomeOf(form_));
  }
}

void MainForm::CloseRequested() {
  if (!flags_.mblnShuttingDown) actions_.CloseRequested();
}

void MainForm::SessionEnding() {
  if (!flags_.mblnShuttingDown) actions_.SessionEnding();
}

void MainForm::TickBox(CheckBox& box) {
  const bool was_checked = box.checked();
  box.value = box.value == 0 ? 1 : 0;
  if (&box == &form_.chkCreateCallActivityCvsFile && box.checked() != was_checked) {
    actions_.LogModeSwitched(box.checked());
  }
}

void MainForm::ChooseOption(OptionButton& option) {
  if (ChooseAmong(form_.optOffsets, option)) ApplyOffset();
  if (ChooseAmong(form_.optRecordMode, option)) EnableRecOnlyControls(form_);
}

void MainForm::ApplyBaseFrequency() {
  const int index = form_.cboBaseFrequency.list_index;
  if (index >= 0) presets_.BaseFrequency = (index + 1) * kBandStepHz;
}

void MainForm::ApplyOffset() {
  const int index = SelectedOption(form_.optOffsets);
  if (index >= 0) presets_.FrequencyOffset = kCarrierOffsets[static_cast<std::size_t>(index)];
}

void MainForm::ApplyCompactMode() {
  const WindowArrangement& arrangement =
      form_.mnuCompactMode.checked ? kCompactArrangement : kNormalArrangement;
  form_.Resize(arrangement.width, arrangement.height);
  form_.fraCallDetails.corner = arrangement.call_details;
  form_.fraWinsock.visible = arrangement.winsock_visible;
  form_.caption = arrangement.title;
}

void MainForm::ShowSettingsPage(int index) {
  const auto pages = PagesOf(form_);
  for (int page = 0; page < static_cast<int>(pages.size()); ++page) {
    const auto at = static_cast<std::size_t>(page);
    form_.cmdSettingTab[at].back_colour = page == index ? kShownTabGrey : kButtonFace;
    pages[at]->visible = page == index;
  }
  tmrDetectcheckbox_.SetEnabled(index == kCheckboxPageIndex);
  SetFocus(form_, form_.lstCallLog);
}

void MainForm::ApplyRestoredSettings() {
  ApplyBaseFrequency();
  ApplyOffset();
  EnableRecOnlyControls(form_);
  ApplyCompactMode();
  ShowSettingsPage(0);
  if (form_.chkCreateCallActivityCvsFile.checked()) actions_.LogModeSwitched(true);
}

}  // namespace corvane
