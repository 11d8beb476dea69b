// The names of the ids, for whoever has only a control's name.
#include "ui/control_ids.h"

#include <utility>

namespace corvane {

namespace {

// clang-format off
#define NAMED(name) {#name, ControlId::name}
constexpr std::pair<std::string_view, ControlId> kNames[] = {
    NAMED(fraWinsock),
    NAMED(cmdStartAll),
    NAMED(lstStatusLog),
    NAMED(ShapeWinsock_state),
    NAMED(Label15),
    NAMED(fraCallDetails),
    NAMED(lblGroupHold),
    NAMED(lblGroupNumber),
    NAMED(lblGSSI_label),
    NAMED(Label12),
    NAMED(lblCurrentSSI),
    NAMED(lblSSI_label),
    NAMED(lblSsiLastSeen),
    NAMED(Label17),
    NAMED(lblCallID),
    NAMED(Label11),
    NAMED(lblTimeSlotNumber),
    NAMED(Label8),
    NAMED(lblCarrierNumber),
    NAMED(lstCurrentSSI_Users),
    NAMED(lblTimeoutCountdown),
    NAMED(lblNetworkInfo),
    NAMED(lblManualD_Release),
    NAMED(ShapeBusy_state),
    NAMED(lstCallLog),
    NAMED(cmdSettingTab_0),
    NAMED(cmdSettingTab_1),
    NAMED(cmdSettingTab_2),
    NAMED(cmdSettingTab_3),
    NAMED(cmdSettingTab_4),
    NAMED(fraPresets),
    NAMED(lblVcVolume),
    NAMED(txtVcVolume),
    NAMED(lblCalcBaseFreq),
    NAMED(cboBaseFrequency),
    NAMED(lblOffset),
    NAMED(optOffsets_0),
    NAMED(optOffsets_1),
    NAMED(optOffsets_2),
    NAMED(optOffsets_3),
    NAMED(lblCallTimeout),
    NAMED(txtTimeout),
    NAMED(lblChangeToCcFrequency),
    NAMED(txtParkCarrier),
    NAMED(fraRecordingOptions),
    NAMED(optRecordMode_0),
    NAMED(optRecordMode_1),
    NAMED(optRecordMode_2),
    NAMED(txtRecOnlyGSSI),
    NAMED(lstRecOnlyGSSI),
    NAMED(chkDeleteForcedCallEndFile),
    NAMED(fraOptions),
    NAMED(chkPositionSDRsharps),
    NAMED(lblPositionSdrSharpCC),
    NAMED(chkIgnorePriority),
    NAMED(chkSuppressLockoutMessages),
    NAMED(chkSuppressSomePduMessages),
    NAMED(fraLoggingOptions),
    NAMED(chkCreateCcVcLog),
    NAMED(chkCreateEventLog),
    NAMED(chkCreateCallActivityCvsFile),
    NAMED(fraCheckboxDetection),
    NAMED(cmdSetUnCheckedValue),
    NAMED(cmdSetCheckedValue),
    NAMED(lblUnCheckedValue),
    NAMED(lblCheckedValue),
    NAMED(lblValidateState),
    NAMED(lblTetraPanelExpanded),
    NAMED(mnuOptions),
    NAMED(mnuGSSIEditor),
    NAMED(mnuCompactMode),
    NAMED(mnuMCClabel),
    NAMED(cboCountry),
    NAMED(cboNetworks),
    NAMED(Frame4),
    NAMED(lstGSSI_Lockouts),
    NAMED(lstGssiBlank),
    NAMED(txtGssiLabel),
    NAMED(Label2),
    NAMED(cboGSSIPriority),
    NAMED(cmdUpdateGSSI),
    NAMED(Label1),
    NAMED(List1),
    NAMED(lstSsiBlank),
    NAMED(lblSsiLabelUpdaterClearFields),
    NAMED(txtSSI_labelEdit),
    NAMED(lblLastSeen),
};
#undef NAMED
// clang-format on

}  // namespace

std::optional<ControlId> FindControlId(std::string_view name) {
  for (const auto& [known, id] : kNames) {
    if (known == name) return id;
  }
  return std::nullopt;
}

}  // namespace corvane
