// The number of every control of both windows: child windows carry it as their control id, menu
// items as their command id. Tests and other programs find the controls by it, so a number once
// given stays.
#pragma once

#include <optional>
#include <string_view>

namespace corvane {

enum class ControlId : int {
  // The main window.
  fraWinsock = 1001,
  cmdStartAll = 1002,
  lstStatusLog = 1003,
  ShapeWinsock_state = 1004,
  Label15 = 1005,
  fraCallDetails = 1010,
  lblGroupHold = 1011,
  lblGroupNumber = 1012,
  lblGSSI_label = 1013,
  Label12 = 1014,
  lblCurrentSSI = 1015,
  lblSSI_label = 1016,
  lblSsiLastSeen = 1017,
  Label17 = 1018,
  lblCallID = 1019,
  Label11 = 1020,
  lblTimeSlotNumber = 1021,
  Label8 = 1022,
  lblCarrierNumber = 1023,
  lstCurrentSSI_Users = 1024,
  lblTimeoutCountdown = 1025,
  lblNetworkInfo = 1026,
  lblManualD_Release = 1027,
  ShapeBusy_state = 1028,
  lstCallLog = 1030,
  cmdSettingTab_0 = 1040,
  cmdSettingTab_1 = 1041,
  cmdSettingTab_2 = 1042,
  cmdSettingTab_3 = 1043,
  cmdSettingTab_4 = 1044,
  fraPresets = 1050,
  lblVcVolume = 1051,
  txtVcVolume = 1052,
  lblCalcBaseFreq = 1053,
  cboBaseFrequency = 1054,
  lblOffset = 1055,
  optOffsets_0 = 1056,
  optOffsets_1 = 1057,
  optOffsets_2 = 1058,
  optOffsets_3 = 1059,
  lblCallTimeout = 1060,
  txtTimeout = 1061,
  lblChangeToCcFrequency = 1062,
  txtParkCarrier = 1063,
  fraRecordingOptions = 1070,
  optRecordMode_0 = 1071,
  optRecordMode_1 = 1072,
  optRecordMode_2 = 1073,
  txtRecOnlyGSSI = 1074,
  lstRecOnlyGSSI = 1075,
  chkDeleteForcedCallEndFile = 1076,
  fraOptions = 1080,
  chkPositionSDRsharps = 1081,
  lblPositionSdrSharpCC = 1082,
  chkIgnorePriority = 1083,
  chkSuppressLockoutMessages = 1084,
  chkSuppressSomePduMessages = 1085,
  fraLoggingOptions = 1090,
  chkCreateCcVcLog = 1091,
  chkCreateEventLog = 1092,
  chkCreateCallActivityCvsFile = 1093,
  fraCheckboxDetection = 1100,
  cmdSetUnCheckedValue = 1101,
  cmdSetCheckedValue = 1102,
  lblUnCheckedValue = 1103,
  lblCheckedValue = 1104,
  lblValidateState = 1105,
  lblTetraPanelExpanded = 1106,
  mnuOptions = 1120,
  mnuGSSIEditor = 1121,
  mnuCompactMode = 1122,
  mnuMCClabel = 1123,

  // The G/SSI editor.
  cboCountry = 1201,
  cboNetworks = 1202,
  Frame4 = 1203,
  lstGSSI_Lockouts = 1204,
  lstGssiBlank = 1205,
  txtGssiLabel = 1206,
  Label2 = 1207,
  cboGSSIPriority = 1208,
  cmdUpdateGSSI = 1209,
  Label1 = 1210,
  List1 = 1211,
  lstSsiBlank = 1212,
  lblSsiLabelUpdaterClearFields = 1213,
  txtSSI_labelEdit = 1214,
  lblLastSeen = 1215,
};

// The id that belongs to a control's own name; nullopt for a name that is no control's.
[[nodiscard]] std::optional<ControlId> FindControlId(std::string_view name);

[[nodiscard]] constexpr int Number(ControlId id) {
  return static_cast<int>(id);
}

}  // namespace corvane
