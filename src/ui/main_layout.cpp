// The main window's controls, one row each: their order is that of the tab key.
#include "ui/main_layout.h"

namespace corvane {

namespace {

using enum ControlId;
using enum FontKind;

constexpr unsigned kPage = kMovesRight | kGrowsDown;

// clang-format off
std::vector<ControlRow> LinkRows(LinkPanel& link) {
  const Frame* in = &link.fraWinsock;
  return {
      Row(cmdStartAll, link.cmdStartAll, in, 5, 4, 60, 24),
      Row(ShapeWinsock_state, link.ShapeWinsock_state, in, 72, 9, 14, 14),
      Row(Label15, link.Label15, in, 91, 8, 119, 16),
      Row(lstStatusLog, link.lstStatusLog, in, 5, 30, 204, 75,
          kScrollsSideways | kFollowsEnd | kTipsCutLines),
  };
}

std::vector<ControlRow> CallRows(CallDetails& call) {
  const Frame* in = &call.fraCallDetails;
  return {
      Row(lblGroupHold, call.lblGroupHold, in, 4, 21, 42, 16, kClickable),
      Row(lblGroupNumber, call.lblGroupNumber, in, 46, 13, 90, 24, kClickable, kGroup),
      Row(ShapeBusy_state, call.ShapeBusy_state, in, 139, 12, 28, 28),
      Row(lblManualD_Release, call.lblManualD_Release, in, 172, 15, 37, 22,
          kClickable | kBordered | kCentred),
      Row(lblGSSI_label, call.lblGSSI_label, in, 4, 40, 206, 18, kPlain, kLabel),
      Row(Label12, call.Label12, in, 4, 67, 42, 16),
      Row(lblCurrentSSI, call.lblCurrentSSI, in, 46, 59, 164, 24, kClickable, kGroup),
      Row(lblSSI_label, call.lblSSI_label, in, 4, 83, 206, 18, kPlain, kLabel),
      Row(lblLastSeenCaption, call.lblLastSeenCaption, in, 4, 102, 60, 15),
      Row(lblSsiLastSeen, call.lblSsiLastSeen, in, 64, 102, 146, 15),
      Row(Label17, call.Label17, in, 3, 118, 39, 15),
      Row(lblCallID, call.lblCallID, in, 42, 118, 36, 15),
      Row(Label11, call.Label11, in, 78, 118, 50, 15),
      Row(lblTimeSlotNumber, call.lblTimeSlotNumber, in, 128, 118, 12, 15),
      Row(Label8, call.Label8, in, 140, 118, 42, 15),
      Row(lblCarrierNumber, call.lblCarrierNumber, in, 182, 118, 29, 15),
      Row(lblCountdownCaption, call.lblCountdownCaption, in, 4, 134, 156, 15),
      Row(lblTimeoutCountdown, call.lblTimeoutCountdown, in, 162, 134, 48, 15),
      Row(lstCurrentSSI_Users, call.lstCurrentSSI_Users, in, 4, 151, 206, 62,
          kGrowsDown | kActsOnEnter),
      Row(lblNetworkInfo, call.lblNetworkInfo, in, 4, 215, 206, 15, kMovesDown),
  };
}

std::vector<ControlRow> LogAndTabRows(Form1& form) {
  return {
      Row(lstCallLog, form.lstCallLog, nullptr, 226, 8, 402, 333,
          kGrowsRight | kGrowsDown | kScrollsSideways | kFitsRows | kTipsCutLines | kActsOnEnter,
          kLog),
      Row(cmdSettingTab_0, form.cmdSettingTab[0], nullptr, 632, 7, 60, 24, kMovesRight, kTab),
      Row(cmdSettingTab_1, form.cmdSettingTab[1], nullptr, 694, 7, 114, 24, kMovesRight, kTab),
      Row(cmdSettingTab_2, form.cmdSettingTab[2], nullptr, 632, 34, 60, 24, kMovesRight, kTab),
      Row(cmdSettingTab_3, form.cmdSettingTab[3], nullptr, 694, 34, 114, 24, kMovesRight, kTab),
      Row(cmdSettingTab_4, form.cmdSettingTab[4], nullptr, 632, 61, 176, 24, kMovesRight, kTab),
  };
}

std::vector<ControlRow> PresetsRows(PresetsPage& page) {
  const Frame* in = &page.fraPresets;
  return {
      Row(lblVcVolume, page.lblVcVolume, in, 7, 26, 86, 16),
      Row(txtVcVolume, page.txtVcVolume, in, 94, 23, 60, 22),
      Row(lblCalcBaseFreq, page.lblCalcBaseFreq, in, 7, 55, 86, 16),
      Row(cboBaseFrequency, page.cboBaseFrequency, in, 94, 52, 76, 22),
      Row(lblOffset, page.lblOffset, in, 7, 84, 86, 16),
      Row(optOffsets_3, page.optOffsets[3], in, 94, 82, 78, 20),
      Row(optOffsets_2, page.optOffsets[2], in, 94, 102, 78, 20),
      Row(optOffsets_1, page.optOffsets[1], in, 94, 122, 78, 20),
      Row(optOffsets_0, page.optOffsets[0], in, 94, 142, 78, 20),
      Row(lblCallTimeout, page.lblCallTimeout, in, 7, 174, 86, 16),
      Row(txtTimeout, page.txtTimeout, in, 94, 171, 60, 22),
      Row(lblChangeToCcFrequency, page.lblChangeToCcFrequency, in, 7, 203, 86, 16, kClickable),
      Row(txtParkCarrier, page.txtParkCarrier, in, 94, 200, 60, 22),
  };
}

std::vector<ControlRow> RecordingRows(RecordingPage& page) {
  const Frame* in = &page.fraRecordingOptions;
  return {
      Row(optRecordMode_2, page.optRecordMode[2], in, 7, 20, 164, 20),
      Row(optRecordMode_1, page.optRecordMode[1], in, 7, 40, 164, 20),
      Row(optRecordMode_0, page.optRecordMode[0], in, 7, 60, 164, 20),
      Row(txtRecOnlyGSSI, page.txtRecOnlyGSSI, in, 7, 84, 110, 22),
      Row(lstRecOnlyGSSI, page.lstRecOnlyGSSI, in, 7, 110, 162, 112, kGrowsDown | kActsOnEnter),
      Row(chkDeleteForcedCallEndFile, page.chkDeleteForcedCallEndFile, in, 7, 226, 164, 20,
          kMovesDown),
  };
}

std::vector<ControlRow> OptionsRows(OptionsPage& page) {
  const Frame* in = &page.fraOptions;
  return {
      Row(chkPositionSDRsharps, page.chkPositionSDRsharps, in, 7, 24, 164, 20),
      Row(lblPositionSdrSharpCC, page.lblPositionSdrSharpCC, in, 24, 48, 145, 20,
          kClickable | kBordered),
      Row(chkIgnorePriority, page.chkIgnorePriority, in, 7, 78, 164, 20),
      Row(chkSuppressLockoutMessages, page.chkSuppressLockoutMessages, in, 7, 102, 164, 32, kWraps),
      Row(chkSuppressSomePduMessages, page.chkSuppressSomePduMessages, in, 7, 136, 164, 32, kWraps),
  };
}

std::vector<ControlRow> LoggingRows(LoggingPage& page) {
  const Frame* in = &page.fraLoggingOptions;
  return {
      Row(chkCreateCcVcLog, page.chkCreateCcVcLog, in, 7, 24, 164, 20),
      Row(chkCreateEventLog, page.chkCreateEventLog, in, 7, 50, 164, 20),
      Row(chkCreateCallActivityCvsFile, page.chkCreateCallActivityCvsFile, in, 7, 74, 164, 32,
          kWraps),
  };
}

std::vector<ControlRow> CheckboxRows(CheckboxPage& page) {
  const Frame* in = &page.fraCheckboxDetection;
  return {
      Row(cmdSetUnCheckedValue, page.cmdSetUnCheckedValue, in, 7, 24, 92, 26),
      Row(lblUnCheckedValue, page.lblUnCheckedValue, in, 102, 29, 70, 16),
      Row(cmdSetCheckedValue, page.cmdSetCheckedValue, in, 7, 58, 92, 26),
      Row(lblCheckedValue, page.lblCheckedValue, in, 102, 63, 70, 16),
      Row(lblValidateState, page.lblValidateState, in, 7, 96, 164, 16),
      Row(lblTetraPanelExpanded, page.lblTetraPanelExpanded, in, 7, 120, 164, 48),
  };
}

std::vector<ControlRow> FrameRows(Form1& form) {
  return {
      Row(fraWinsock, form.fraWinsock, nullptr, 8, 3, 214, 108),
      Row(fraCallDetails, form.fraCallDetails, nullptr, 0, 0, 214, 232,
          kGrowsDown | kMovable | kInCompact | kTakesMouse),
      Row(fraPresets, form.fraPresets, nullptr, 632, 88, 176, 253, kPage),
      Row(fraRecordingOptions, form.fraRecordingOptions, nullptr, 632, 88, 176, 253, kPage),
      Row(fraOptions, form.fraOptions, nullptr, 632, 88, 176, 253, kPage),
      Row(fraLoggingOptions, form.fraLoggingOptions, nullptr, 632, 88, 176, 253, kPage),
      Row(fraCheckboxDetection, form.fraCheckboxDetection, nullptr, 632, 88, 176, 253, kPage),
  };
}

// clang-format on

std::vector<MenuRow> MenuRows(Form1& form) {
  const MenuItem* tools = &form.mnuOptions;
  return {{mnuOptions, form.mnuOptions, nullptr},
          {mnuGSSIEditor, form.mnuGSSIEditor, tools},
          {mnuCompactMode, form.mnuCompactMode, tools},
          {mnuEditShown, form.mnuEditShown, tools, {kF2Code, false, "F2"}, true},
          {mnuEndCall, form.mnuEndCall, tools, {'E', true, "Ctrl+E"}},
          {mnuParkOnCC, form.mnuParkOnCC, tools, {'K', true, "Ctrl+K"}},
          {mnuCapturePosition, form.mnuCapturePosition, tools},
          {mnuMCClabel, form.mnuMCClabel, nullptr}};
}

}  // namespace

WindowTable MainWindowTable(Form1& form) {
  WindowTable table{
      .window = form,
      .window_class = kMainWindowClass,
      .minimises = true,
      .width = kNormalArrangement.width,
      .height = kNormalArrangement.height,
      .client_width = kClientWidth,
      .client_height = kClientHeight,
      .compact = &form.mnuCompactMode,
      .compact_client_height = kCompactClientHeight,
      .home = form.lstCallLog,
      .compact_home = &form.lstCurrentSSI_Users,
      .lamps = {{form.Label15, form.ShapeWinsock_state}},
      .controls = {},
      .menu = MenuRows(form),
  };
  for (const auto& rows :
       {LinkRows(form), CallRows(form), LogAndTabRows(form), PresetsRows(form), RecordingRows(form),
        OptionsRows(form), LoggingRows(form), CheckboxRows(form), FrameRows(form)}) {
    for (const ControlRow& row : rows) table.controls.push_back(row);
  }
  return table;
}

}  // namespace corvane
