// The main window's user events and their handlers.
#include "ui/main_form.h"

#include "panel/logs.h"
#include "ui/editor_entry.h"
#include "ui/layout.h"
#include "ui/preset_boxes.h"

namespace corvane {

namespace {

constexpr int kCheckboxPageIndex = 4;

std::array<Frame*, 5> PagesOf(Form1& form) {
  return {&form.fraPresets, &form.fraRecordingOptions, &form.fraOptions, &form.fraLoggingOptions,
          &form.fraCheckboxDetection};
}

template <std::size_t kCount>
int SelectedOption(const std::array<OptionButton, kCount>& options) {
  for (std::size_t index = 0; index < kCount; ++index) {
    if (options[index].value) return static_cast<int>(index);
  }
  return -1;
}

// True when `chosen` was one of them.
template <std::size_t kCount>
bool ChooseAmong(std::array<OptionButton, kCount>& options, const OptionButton& chosen) {
  bool found = false;
  for (const OptionButton& option : options) found = found || &option == &chosen;
  if (!found) return false;
  for (OptionButton& option : options) option.value = &option == &chosen;
  return true;
}

}  // namespace

MainForm::MainForm(Form1& form, Presets& presets, const ProgramFlags& flags,
                   Timer& tmrDetectcheckbox, Actions& actions)
    : form_(form),
      presets_(presets),
      flags_(flags),
      tmrDetectcheckbox_(tmrDetectcheckbox),
      actions_(actions) {
  ConnectClicks();
  ConnectDoubleClicks();
}

void MainForm::ConnectClicks() {
  for (int index = 0; index < static_cast<int>(form_.cmdSettingTab.size()); ++index) {
    on_click_[&form_.cmdSettingTab[static_cast<std::size_t>(index)]] = [this, index] {
      ShowSettingsPage(index);
    };
  }
  for (OptionButton& option : form_.optOffsets) on_click_[&option] = [this] { ApplyOffset(); };
  for (OptionButton& option : form_.optRecordMode) {
    on_click_[&option] = [this] { ApplyRecordMode(); };
  }
  on_click_[&form_.cmdStartAll] = [this] { StartClicked(); };
  on_click_[&form_.mnuCompactMode] = [this] { FlipCompactMode(); };
  on_click_[&form_.mnuGSSIEditor] = [this] { ShowEditorFromMenu(hand_over_, actions_); };
  on_click_[&form_.lblManualD_Release] = [this] { actions_.ManualRelease(); };
  on_click_[&form_.cmdSetCheckedValue] = [this] { actions_.SampleCheckedColour(); };
  on_click_[&form_.cmdSetUnCheckedValue] = [this] { actions_.SampleUnCheckedColour(); };
}

void MainForm::ConnectDoubleClicks() {
  on_double_click_[&form_.lstCallLog] = [this] {
    ShowEditorFromCallLog(form_, hand_over_, actions_);
  };
  on_double_click_[&form_.lstRecOnlyGSSI] = [this] {
    if (form_.lstRecOnlyGSSI.list_index() >= 0) actions_.RemoveRecOnlyGssi();
  };
  on_double_click_[&form_.lblChangeToCcFrequency] = [this] { actions_.ParkOnControlChannel(); };
  on_double_click_[&form_.lblPositionSdrSharpCC] = [this] { actions_.CaptureSdrPosition(); };
}

bool MainForm::Accepts(const Control& control) const {
  return !flags_.mblnShuttingDown && control.enabled;
}

void MainForm::Click(Control& control) {
  if (!Accepts(control)) return;
  if (auto* box = dynamic_cast<CheckBox*>(&control)) {
    TickBox(*box);
    return;
  }
  if (auto* option = dynamic_cast<OptionButton*>(&control)) ChooseOption(*option);
  const auto handler = on_click_.find(&control);
  if (handler != on_click_.end()) handler->second();
}

void MainForm::DoubleClick(Control& control) {
  if (!Accepts(control)) return;
  const auto handler = on_double_click_.find(&control);
  if (handler != on_double_click_.end()) handler->second();
}

void MainForm::TextEdited(TextBox& box, const std::string& text) {
  if (Accepts(box)) box.text.TakeFromUser(text);
}

bool MainForm::KeyPress(Control& control, int code) {
  if (!Accepts(control)) return false;
  const bool is_preset = &control == &form_.txtTimeout || &control == &form_.txtVcVolume ||
                         &control == &form_.txtParkCarrier;
  if (code != kEnterCode) return !is_preset || PassesDigitFilter(code);
  if (&control == &form_.txtRecOnlyGSSI) actions_.AddRecOnlyGssi();
  if (is_preset || &control == &form_.txtRecOnlyGSSI) SetFocus(form_, form_.lstStatusLog);
  return false;
}

void MainForm::KeyUp(Control& control, int key_code) {
  if (!Accepts(control) || key_code != kSpaceBarCode) return;
  if (&control == &form_.lstCallLog || &control == &form_.lstCurrentSSI_Users ||
      &control == &form_.lstStatusLog) {
    actions_.ToggleGroupHold();
  }
}

void MainForm::LostFocus(Control& control) {
  if (!Accepts(control)) return;
  bool to_be_saved = false;
  if (&control == &form_.txtTimeout) to_be_saved = AcceptTimeout(form_, presets_);
  if (&control == &form_.txtVcVolume) to_be_saved = AcceptVolume(form_, presets_);
  if (&control == &form_.txtParkCarrier) AcceptParkCarrier(form_, presets_);
  if (to_be_saved) actions_.SaveSettings();
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
  if (&combo == &form_.cboBaseFrequency) ApplyBaseFrequency();
}

void MainForm::MouseUp(Control& control, int button) {
  if (!Accepts(control)) return;
  if (&control == &form_.lblGroupHold && button == kLeftButton) actions_.ToggleGroupHold();
  if (&control == &form_.lblGroupNumber || &control == &form_.lblCurrentSSI) {
    QuickEditShown(form_, hand_over_, actions_);
  }
}

void MainForm::MouseMove(Control& control, bool form_is_foreground) {
  if (!Accepts(control) || !form_is_foreground) return;
  if (&control == &form_.fraCallDetails || &control == &form_.lstCallLog) {
    SetFocus(form_, form_.lstCallLog);
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
  box.value = box.value.get() == 0 ? 1 : 0;
  if (&box == &form_.chkCreateCallActivityCvsFile && box.checked() != was_checked) {
    actions_.LogModeSwitched(box.checked());
  }
}

void MainForm::ChooseOption(OptionButton& option) {
  if (!ChooseAmong(form_.optOffsets, option)) ChooseAmong(form_.optRecordMode, option);
}

void MainForm::ApplyBaseFrequency() {
  const int index = form_.cboBaseFrequency.list_index;
  if (index >= 0) presets_.BaseFrequency = (index + 1) * kBandStepHz;
}

void MainForm::ApplyOffset() {
  const int index = SelectedOption(form_.optOffsets);
  if (index >= 0) presets_.FrequencyOffset = kCarrierOffsets[static_cast<std::size_t>(index)];
}

void MainForm::ApplyRecordMode() {
  const bool select_mode = form_.optRecordMode[2].value;
  form_.txtRecOnlyGSSI.enabled = select_mode;
  form_.lstRecOnlyGSSI.enabled = select_mode;
}

void MainForm::StartClicked() {
  form_.cmdStartAll.enabled = false;
  form_.cmdStartAll.back_colour = kButtonFace;
  actions_.StartLink();
}

void MainForm::FlipCompactMode() {
  form_.mnuCompactMode.checked = !form_.mnuCompactMode.checked;
  ApplyCompactMode();
}

void MainForm::ApplyCompactMode() {
  const WindowArrangement& arrangement =
      form_.mnuCompactMode.checked ? kCompactArrangement : kNormalArrangement;
  form_.width = arrangement.width;
  form_.height = arrangement.height;
  form_.fraCallDetails.top = arrangement.call_details_top;
  form_.fraCallDetails.left = arrangement.call_details_left;
  form_.fraWinsock.visible = arrangement.winsock_visible;
  form_.Window::caption = arrangement.title;
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
  ApplyRecordMode();
  ApplyCompactMode();
  ShowSettingsPage(0);
  if (form_.chkCreateCallActivityCvsFile.checked()) actions_.LogModeSwitched(true);
}

}  // namespace corvane
