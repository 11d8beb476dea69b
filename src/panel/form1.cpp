// The main window's controls in their starting states.
#include "panel/form1.h"

namespace corvane {

CallDetails::CallDetails(ControlSink& sink)
    : fraCallDetails(sink, "fraCallDetails", "Call details"),
      lblGroupHold(sink, "lblGroupHold", "Group:"),
      lblGroupNumber(sink, "lblGroupNumber"),
      lblGSSI_label(sink, "lblGSSI_label"),
      Label12(sink, "Label12", "TX SSI:"),
      lblCurrentSSI(sink, "lblCurrentSSI"),
      lblSSI_label(sink, "lblSSI_label"),
      lblLastSeenCaption(sink, "lblLastSeenCaption", "Last seen:"),
      lblSsiLastSeen(sink, "lblSsiLastSeen"),
      Label17(sink, "Label17", "Call ID:"),
      lblCallID(sink, "lblCallID"),
      Label11(sink, "Label11", "Timeslot:"),
      lblTimeSlotNumber(sink, "lblTimeSlotNumber"),
      Label8(sink, "Label8", "Carrier:"),
      lblCarrierNumber(sink, "lblCarrierNumber"),
      lstCurrentSSI_Users(sink, "lstCurrentSSI_Users", kUserListFullRows),
      lblCountdownCaption(sink, "lblCountdownCaption", "Silent call ends in (x 0.3 s):"),
      lblTimeoutCountdown(sink, "lblTimeoutCountdown"),
      lblNetworkInfo(sink, "lblNetworkInfo"),
      lblManualD_Release(sink, "lblManualD_Release", "Call"),
      ShapeBusy_state(sink, "ShapeBusy_state") {
  lblGroupHold.tool_tip = "Right click to hold a GSSI";
  lblSsiLastSeen.tool_tip = "SSI: Last time seen";
  lstCurrentSSI_Users.tool_tip = "List of current SSIs seen during this call";
  lblTimeoutCountdown.tool_tip = "Value = (TimeOut Seconds / 300mS)";
  lblNetworkInfo.tool_tip = "Current MNC,LA";
  lblManualD_Release.tool_tip = "Click to end call";
}

LinkPanel::LinkPanel(ControlSink& sink)
    : fraWinsock(sink, "fraWinsock", ""),
      cmdStartAll(sink, "cmdStartAll", "Start"),
      lstStatusLog(sink, "lstStatusLog", kStatusLogFullRows),
      ShapeWinsock_state(sink, "ShapeWinsock_state"),
      Label15(sink, "Label15", "VC SDR# Connected") {
  cmdStartAll.back_colour = kStartGreen;
}

PresetsPage::PresetsPage(ControlSink& sink)
    : fraPresets(sink, "fraPresets", "Presets"),
      lblVcVolume(sink, "lblVcVolume", "VC Volume"),
      txtVcVolume(sink, "txtVcVolume"),
      lblCalcBaseFreq(sink, "lblCalcBaseFreq", "Base frequency"),
      cboBaseFrequency(sink, "cboBaseFrequency"),
      lblOffset(sink, "lblOffset", "Offset"),
      optOffsets{{{sink, "optOffsets_0", "0 KHz"},
                  {sink, "optOffsets_1", "+6.25 KHz"},
                  {sink, "optOffsets_2", "-6.25 KHz"},
                  {sink, "optOffsets_3", "+12.5 KHz"}}},
      lblCallTimeout(sink, "lblCallTimeout", "Call Timeout"),
      txtTimeout(sink, "txtTimeout"),
      lblChangeToCcFrequency(sink, "lblChangeToCcFrequency", "CC Park"),
      txtParkCarrier(sink, "txtParkCarrier") {
  txtVcVolume.tool_tip = "Volume for SDR# audio (effects record level)";
  cboBaseFrequency.tool_tip = "Select band of operation";
  txtTimeout.tool_tip = "Delay that timeslot is inactive before force ending a call. 1-30 seconds";
  txtParkCarrier.tool_tip = "Park on CC frequency";
  optOffsets[3].value = true;
  std::vector<ComboBox::Entry> bands;
  for (int hundred = 1; hundred <= 9; ++hundred) {
    bands.push_back({std::to_string(hundred * 100) + " MHz", hundred});
  }
  cboBaseFrequency.entries = bands;
  cboBaseFrequency.list_index = 7;
}

RecordingPage::RecordingPage(ControlSink& sink)
    : fraRecordingOptions(sink, "fraRecordingOptions", "Record options"),
      optRecordMode{{{sink, "optRecordMode_0", "Recording OFF"},
                     {sink, "optRecordMode_1", "Record ALL calls"},
                     {sink, "optRecordMode_2", "Record select GSSIs"}}},
      txtRecOnlyGSSI(sink, "txtRecOnlyGSSI"),
      lstRecOnlyGSSI(sink, "lstRecOnlyGSSI", kRecOnlyFullRows),
      chkDeleteForcedCallEndFile(sink, "chkDeleteForcedCallEndFile", "Delete forced ended call") {
  txtRecOnlyGSSI.tool_tip = "Add a valid GSSI and press enter";
  lstRecOnlyGSSI.tool_tip = "Double click to remove GSSI";
  optRecordMode[0].value = true;
}

OptionsPage::OptionsPage(ControlSink& sink)
    : fraOptions(sink, "fraOptions", "Options"),
      chkPositionSDRsharps(sink, "chkPositionSDRsharps", "Position SDR#"),
      lblPositionSdrSharpCC(sink, "lblPositionSdrSharpCC"),
      chkIgnorePriority(sink, "chkIgnorePriority", "Ignore call priority"),
      chkSuppressLockoutMessages(sink, "chkSuppressLockoutMessages", "Suppress lockout messages"),
      chkSuppressSomePduMessages(sink, "chkSuppressSomePduMessages", "Suppress some PDU messages") {
  chkPositionSDRsharps.tool_tip = "Restore SDR# to your favourite positions on startup or reset";
  lblPositionSdrSharpCC.tool_tip = "DBL Click to set CC SDR# position";
}

LoggingPage::LoggingPage(ControlSink& sink)
    : fraLoggingOptions(sink, "fraLoggingOptions", "Logging options"),
      chkCreateCcVcLog(sink, "chkCreateCcVcLog", "Create CC VC log"),
      chkCreateEventLog(sink, "chkCreateEventLog", "Create event log"),
      chkCreateCallActivityCvsFile(sink, "chkCreateCallActivityCvsFile",
                                   "Create Call Activity CVS - NO CALLS") {
  chkCreateCallActivityCvsFile.tool_tip = "No calls will be heard in LOGGING mode";
}

CheckboxPage::CheckboxPage(ControlSink& sink)
    : fraCheckboxDetection(sink, "fraCheckboxDetection", "Checkbox detection"),
      cmdSetUnCheckedValue(sink, "cmdSetUnCheckedValue", "Set unchecked"),
      cmdSetCheckedValue(sink, "cmdSetCheckedValue", "Set checked"),
      lblUnCheckedValue(sink, "lblUnCheckedValue"),
      lblCheckedValue(sink, "lblCheckedValue"),
      lblValidateState(sink, "lblValidateState"),
      lblTetraPanelExpanded(sink, "lblTetraPanelExpanded") {}

MainMenu::MainMenu(ControlSink& sink)
    : mnuOptions(sink, "mnuOptions", "Tools"),
      mnuGSSIEditor(sink, "mnuGSSIEditor", "G/SSI Editor"),
      mnuCompactMode(sink, "mnuCompactMode", "Compact"),
      mnuMCClabel(sink, "mnuMCClabel", "MCC: ?"),
      mnuEditShown(sink, "mnuEditShown", "Edit group on screen"),
      mnuEndCall(sink, "mnuEndCall", "End call"),
      mnuParkOnCC(sink, "mnuParkOnCC", "Park on CC"),
      mnuCapturePosition(sink, "mnuCapturePosition", "Set CC SDR# position") {}

Form1::Form1(ControlSink& sink)
    : Window(sink, "Form1", kTitle),
      CallDetails(sink),
      LinkPanel(sink),
      PresetsPage(sink),
      RecordingPage(sink),
      OptionsPage(sink),
      LoggingPage(sink),
      CheckboxPage(sink),
      MainMenu(sink),
      lstCallLog(sink, "lstCallLog", kCallLogFullRows),
      cmdSettingTab{{{sink, "cmdSettingTab_0", "Presets"},
                     {sink, "cmdSettingTab_1", "Recording options"},
                     {sink, "cmdSettingTab_2", "Options"},
                     {sink, "cmdSettingTab_3", "Logging options"},
                     {sink, "cmdSettingTab_4", "Checkbox detection"}}} {}

void EnableRecOnlyControls(Form1& form) {
  const bool selected_groups = form.optRecordMode[2].value;
  form.txtRecOnlyGSSI.enabled = selected_groups;
  form.lstRecOnlyGSSI.enabled = selected_groups;
}

const ListBox& HomeOf(const Form1& form) {
  return form.mnuCompactMode.checked ? form.lstCurrentSSI_Users : form.lstCallLog;
}

void SetFocus(Form1& form, const Control& control) {
  const bool in_hidden_frame = &control == &form.lstStatusLog && !form.fraWinsock.visible;
  const bool is_unseen = form.mnuCompactMode.checked && &control != &form.lstCurrentSSI_Users;
  const bool can_take = control.visible && control.enabled && !in_hidden_frame && !is_unseen;
  form.sink().FocusWanted(can_take ? control : HomeOf(form));
}

}  // namespace corvane
