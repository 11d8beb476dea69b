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
      Row(cmdStartAll, link.cmdStartAll, in, 8, 4, 56, 24),
      Row(ShapeWinsock_state, link.ShapeWinsock_state, in, 70, 9, 14, 14),
      Row(Label15, link.Label15, in, 88, 8, 124, 16),
      Row(lstStatusLog, link.lstStatusLog, in, 8, 30, 198, 75, kScrollsSideways),
  };
}

std::vector<ControlRow> CallRows(CallDetails& call) {
  const Frame* in = &call.fraCallDetails;
  return {
      Row(lblGroupHold, call.lblGroupHold, in, 8, 20, 48, 16, kClickable),
      Row(lblGroupNumber, call.lblGroupNumber, in, 58, 17, 86, 20, kClickable, kGroup),
      Row(ShapeBusy_state, call.ShapeBusy_state, in, 146, 18, 18, 18),
      Row(lblManualD_Release, call.lblManualD_Release, in, 170, 17, 36, 20,
          kClickable | kBordered | kCentred),
      Row(lblGSSI_label, call.lblGSSI_label, in, 8, 40, 198, 16),
      Row(Label12, call.Label12, in, 8, 60, 48, 16),
      Row(lblCurrentSSI, call.lblCurrentSSI, in, 58, 60, 148, 16, kClickable),
      Row(lblSSI_label, call.lblSSI_label, in, 8, 76, 198, 16),
      Row(lblSsiLastSeen, call.lblSsiLastSeen, in, 8, 92, 198, 16),
      Row(Label17, call.Label17, in, 8, 111, 48, 16),
      Row(lblCallID, call.lblCallID, in, 58, 111, 44, 16),
      Row(Label11, call.Label11, in, 106, 111, 56, 16),
      Row(lblTimeSlotNumber, call.lblTimeSlotNumber, in, 164, 111, 42, 16),
      Row(Label8, call.Label8, in, 8, 127, 48, 16),
      Row(lblCarrierNumber, call.lblCarrierNumber, in, 58, 127, 44, 16),
      Row(lblTimeoutCountdown, call.lblTimeoutCountdown, in, 164, 127, 42, 16),
      Row(lstCurrentSSI_Users, call.lstCurrentSSI_Users, in, 8, 146, 198, 60, kGrowsDown),
      Row(lblNetworkInfo, call.lblNetworkInfo, in, 8, 210, 198, 16, kMovesDown),
  };
}

std::vector<ControlRow> LogAndTabRows(Form1& form) {
  return {
      Row(lstCallLog, form.lstCallLog, nullptr, 230, 8, 322, 333,
          kGrowsRight | kGrowsDown | kScrollsSideways | kFitsRows, kLog),
      Row(cmdSettingTab_0, form.cmdSettingTab[0], nullptr, 560, 7, 121, 24, kMovesRight, kTab),
      Row(cmdSettingTab_1, form.cmdSettingTab[1], nullptr, 685, 7, 121, 24, kMovesRight, kTab),
      Row(cmdSettingTab_2, form.cmdSettingTab[2], nullptr, 560, 34, 121, 24, kMovesRight, kTab),
      Row(cmdSettingTab_3, form.cmdSettingTab[3], nullptr, 685, 34, 121, 24, kMovesRight, kTab),
      Row(cmdSettingTab_4, form.cmdSettingTab[4], nullptr, 560, 61, 246, 24, kMovesRight, kTab),
  };
}

std::vector<ControlRow> PresetsRows(PresetsPage& page) {
  const Frame* in = &page.fraPresets;
  return {
      Row(lblVcVolume, page.lblVcVolume, in, 12, 26, 108, 16),
      Row(txtVcVolume, page.txtVcVolume, in, 124, 23, 60, 22),
      Row(lblCalcBaseFreq, page.lblCalcBaseFreq, in, 12, 55, 108, 16),
      Row(cboBaseFrequency, page.cboBaseFrequency, in, 124, 52, 100, 22),
      Row(lblOffset, page.lblOffset, in, 12, 84, 108, 16),
      Row(optOffsets_3, page.optOffsets[3], in, 124, 82, 112, 20),
      Row(optOffsets_2, page.optOffsets[2], in, 124, 102, 112, 20),
      Row(optOffsets_1, page.optOffsets[1], in, 124, 122, 112, 20),
      Row(optOffsets_0, page.optOffsets[0], in, 124, 142, 112, 20),
      Row(lblCallTimeout, page.lblCallTimeout, in, 12, 174, 108, 16),
      Row(txtTimeout, page.txtTimeout, in, 124, 171, 60, 22),
      Row(lblChangeToCcFrequency, page.lblChangeToCcFrequency, in, 12, 203, 108, 16, kClickable),
      Row(txtParkCarrier, page.txtParkCarrier, in, 124, 200, 60, 22),
  };
}

std::vector<ControlRow> RecordingRows(RecordingPage& page) {
  const Frame* in = &page.fraRecordingOptions;
  return {
      Row(optRecordMode_2, page.optRecordMode[2], in, 12, 20, 224, 20),
      Row(optRecordMode_1, page.optRecordMode[1], in, 12, 40, 224, 20),
      Row(optRecordMode_0, page.optRecordMode[0], in, 12, 60, 224, 20),
      Row(txtRecOnlyGSSI, page.txtRecOnlyGSSI, in, 12, 84, 110, 22),
      Row(lstRecOnlyGSSI, page.lstRecOnlyGSSI, in, 12, 110, 222, 112, kGrowsDown),
      Row(chkDeleteForcedCallEndFile, page.chkDeleteForcedCallEndFile, in, 12, 226, 224, 20,
          kMovesDown),
  };
}

std::vector<ControlRow> OptionsRows(OptionsPage& page) {
  const Frame* in = &page.fraOptions;
  return {
      Row(chkPositionSDRsharps, page.chkPositionSDRsharps, in, 12, 24, 224, 20),
      Row(lblPositionSdrSharpCC, page.lblPositionSdrSharpCC, in, 30, 48, 206, 20,
          kClickable | kBordered),
      Row(chkIgnorePriority, page.chkIgnorePriority, in, 12, 78, 224, 20),
      Row(chkSuppressLockoutMessages, page.chkSuppressLockoutMessages, in, 12, 104, 224, 20),
      Row(chkSuppressSomePduMessages, page.chkSuppressSomePduMessages, in, 12, 130, 224, 20),
  };
}

std::vector<ControlRow> LoggingRows(LoggingPage& page) {
  const Frame* in = &page.fraLoggingOptions;
  return {
      Row(chkCreateCcVcLog, page.chkCreateCcVcLog, in, 12, 24, 230, 20),
      Row(chkCreateEventLog, page.chkCreateEventLog, in, 12, 50, 230, 20),
      Row(chkCreateCallActivityCvsFile, page.chkCreateCallActivityCvsFile, in, 12, 76, 230, 20),
  };
}

std::vector<ControlRow> CheckboxRows(CheckboxPage& page) {
  const Frame* in = &page.fraCheckboxDetection;
  return {
      Row(cmdSetUnCheckedValue, page.cmdSetUnCheckedValue, in, 12, 24, 104, 26),
      Row(lblUnCheckedValue, page.lblUnCheckedValue, in, 126, 29, 108, 16),
      Row(cmdSetCheckedValue, page.cmdSetCheckedValue, in, 12, 58, 104, 26),
      Row(lblCheckedValue, page.lblCheckedValue, in, 126, 63, 108, 16),
      Row(lblValidateState, page.lblValidateState, in, 12, 96, 222, 16),
      Row(lblTetraPanelExpanded, page.lblTetraPanelExpanded, in, 12, 120, 222, 32),
  };
}

std::vector<ControlRow> FrameRows(Form1& form) {
  return {
      Row(fraWinsock, form.fraWinsock, nullptr, 8, 3, 214, 108),
      Row(fraCallDetails, form.fraCallDetails, nullptr, 0, 0, 214, 232,
          kGrowsDown | kMovable | kInCompact | kTakesMouse),
      Row(fraPresets, form.fraPresets, nullptr, 560, 88, 246, 253, kPage),
      Row(fraRecordingOptions, form.fraRecordingOptions, nullptr, 560, 88, 246, 253, kPage),
      Row(fraOptions, form.fraOptions, nullptr, 560, 88, 246, 253, kPage),
      Row(fraLoggingOptions, form.fraLoggingOptions, nullptr, 560, 88, 246, 253, kPage),
      Row(fraCheckboxDetection, form.fraCheckboxDetection, nullptr, 560, 88, 246, 253, kPage),
  };
}

// clang-format on

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
      .controls = {},
      .menu = {{mnuOptions, form.mnuOptions, nullptr},
               {mnuGSSIEditor, form.mnuGSSIEditor, &form.mnuOptions},
               {mnuCompactMode, form.mnuCompactMode, &form.mnuOptions},
               {mnuMCClabel, form.mnuMCClabel, nullptr}},
  };
  for (const auto& rows :
       {LinkRows(form), CallRows(form), LogAndTabRows(form), PresetsRows(form), RecordingRows(form),
        OptionsRows(form), LoggingRows(form), CheckboxRows(form), FrameRows(form)}) {
    for (const ControlRow& row : rows) table.controls.push_back(row);
  }
  return table;
}

}  // namespace corvane
