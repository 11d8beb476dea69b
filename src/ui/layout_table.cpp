// The main window's layout, written in pixels of the design's resolution.
#include <array>

#include "ui/layout.h"

namespace corvane {

namespace {

using enum ControlId;
using enum FontKind;

constexpr int kTwipsPerPixel = kTwipsPerInch / kDesignDpi;

constexpr ControlPlace Place(ControlId id, std::optional<ControlId> frame, int left, int top,
                             int width, int height, FontKind font = kText,
                             unsigned growth = kFixed) {
  return {id,
          frame,
          left * kTwipsPerPixel,
          top * kTwipsPerPixel,
          width * kTwipsPerPixel,
          height * kTwipsPerPixel,
          font,
          growth};
}

// clang-format off
constexpr std::array kPlaces = {
    // Link.
    Place(cmdStartAll, fraWinsock, 8, 4, 56, 24),
    Place(ShapeWinsock_state, fraWinsock, 70, 9, 14, 14),
    Place(Label15, fraWinsock, 88, 8, 124, 16),
    Place(lstStatusLog, fraWinsock, 8, 30, 198, 75),
    // Call details.
    Place(lblGroupHold, fraCallDetails, 8, 20, 48, 16),
    Place(lblGroupNumber, fraCallDetails, 58, 17, 86, 20, kGroup),
    Place(ShapeBusy_state, fraCallDetails, 146, 18, 18, 18),
    Place(lblManualD_Release, fraCallDetails, 170, 17, 36, 20),
    Place(lblGSSI_label, fraCallDetails, 8, 40, 198, 16),
    Place(Label12, fraCallDetails, 8, 60, 48, 16),
    Place(lblCurrentSSI, fraCallDetails, 58, 60, 148, 16),
    Place(lblSSI_label, fraCallDetails, 8, 76, 198, 16),
    Place(lblSsiLastSeen, fraCallDetails, 8, 92, 198, 16),
    Place(Label17, fraCallDetails, 8, 111, 48, 16),
    Place(lblCallID, fraCallDetails, 58, 111, 44, 16),
    Place(Label11, fraCallDetails, 106, 111, 56, 16),
    Place(lblTimeSlotNumber, fraCallDetails, 164, 111, 42, 16),
    Place(Label8, fraCallDetails, 8, 127, 48, 16),
    Place(lblCarrierNumber, fraCallDetails, 58, 127, 44, 16),
    Place(lblTimeoutCountdown, fraCallDetails, 164, 127, 42, 16),
    Place(lstCurrentSSI_Users, fraCallDetails, 8, 146, 198, 60, kText, kGrowsDown),
    Place(lblNetworkInfo, fraCallDetails, 8, 210, 198, 16, kText, kMovesDown),
    // The call log.
    Place(lstCallLog, std::nullopt, 230, 8, 322, 333, kLog, kGrowsRight | kGrowsDown),
    // The tabs of the settings pages.
    Place(cmdSettingTab_0, std::nullopt, 560, 7, 121, 24, kTab, kMovesRight),
    Place(cmdSettingTab_1, std::nullopt, 685, 7, 121, 24, kTab, kMovesRight),
    Place(cmdSettingTab_2, std::nullopt, 560, 34, 121, 24, kTab, kMovesRight),
    Place(cmdSettingTab_3, std::nullopt, 685, 34, 121, 24, kTab, kMovesRight),
    Place(cmdSettingTab_4, std::nullopt, 560, 61, 246, 24, kTab, kMovesRight),
    // Presets.
    Place(lblVcVolume, fraPresets, 12, 26, 108, 16),
    Place(txtVcVolume, fraPresets, 124, 23, 60, 22),
    Place(lblCalcBaseFreq, fraPresets, 12, 55, 108, 16),
    Place(cboBaseFrequency, fraPresets, 124, 52, 100, 22),
    Place(lblOffset, fraPresets, 12, 84, 108, 16),
    Place(optOffsets_3, fraPresets, 124, 82, 112, 20),
    Place(optOffsets_2, fraPresets, 124, 102, 112, 20),
    Place(optOffsets_1, fraPresets, 124, 122, 112, 20),
    Place(optOffsets_0, fraPresets, 124, 142, 112, 20),
    Place(lblCallTimeout, fraPresets, 12, 174, 108, 16),
    Place(txtTimeout, fraPresets, 124, 171, 60, 22),
    Place(lblChangeToCcFrequency, fraPresets, 12, 203, 108, 16),
    Place(txtParkCarrier, fraPresets, 124, 200, 60, 22),
    // Record options.
    Place(optRecordMode_2, fraRecordingOptions, 12, 20, 224, 20),
    Place(optRecordMode_1, fraRecordingOptions, 12, 40, 224, 20),
    Place(optRecordMode_0, fraRecordingOptions, 12, 60, 224, 20),
    Place(txtRecOnlyGSSI, fraRecordingOptions, 12, 84, 110, 22),
    Place(lstRecOnlyGSSI, fraRecordingOptions, 12, 110, 222, 112, kText, kGrowsDown),
    Place(chkDeleteForcedCallEndFile, fraRecordingOptions, 12, 226, 224, 20, kText, kMovesDown),
    // Options.
    Place(chkPositionSDRsharps, fraOptions, 12, 24, 224, 20),
    Place(lblPositionSdrSharpCC, fraOptions, 30, 48, 206, 20),
    Place(chkIgnorePriority, fraOptions, 12, 78, 224, 20),
    Place(chkSuppressLockoutMessages, fraOptions, 12, 104, 224, 20),
    Place(chkSuppressSomePduMessages, fraOptions, 12, 130, 224, 20),
    // Logging options.
    Place(chkCreateCcVcLog, fraLoggingOptions, 12, 24, 230, 20),
    Place(chkCreateEventLog, fraLoggingOptions, 12, 50, 230, 20),
    Place(chkCreateCallActivityCvsFile, fraLoggingOptions, 12, 76, 230, 20),
    // Checkbox detection.
    Place(cmdSetUnCheckedValue, fraCheckboxDetection, 12, 24, 104, 26),
    Place(lblUnCheckedValue, fraCheckboxDetection, 126, 29, 108, 16),
    Place(cmdSetCheckedValue, fraCheckboxDetection, 12, 58, 104, 26),
    Place(lblCheckedValue, fraCheckboxDetection, 126, 63, 108, 16),
    Place(lblValidateState, fraCheckboxDetection, 12, 96, 222, 16),
    Place(lblTetraPanelExpanded, fraCheckboxDetection, 12, 120, 222, 32),
    // Frames.
    Place(fraWinsock, std::nullopt, 8, 3, 214, 108),
    Place(fraCallDetails, std::nullopt, 8, 112, 214, 232, kText, kGrowsDown),
    Place(fraPresets, std::nullopt, 560, 88, 246, 253, kText, kMovesRight | kGrowsDown),
    Place(fraRecordingOptions, std::nullopt, 560, 88, 246, 253, kText, kMovesRight | kGrowsDown),
    Place(fraOptions, std::nullopt, 560, 88, 246, 253, kText, kMovesRight | kGrowsDown),
    Place(fraLoggingOptions, std::nullopt, 560, 88, 246, 253, kText, kMovesRight | kGrowsDown),
    Place(fraCheckboxDetection, std::nullopt, 560, 88, 246, 253, kText, kMovesRight | kGrowsDown),
};
// clang-format on

}  // namespace

std::span<const ControlPlace> MainWindowPlaces() {
  return kPlaces;
}

}  // namespace corvane
