// The editor's controls, one row each: their order is that of the tab key, and of two that stand in
// the same place the first is in front.
#include "ui/editor_layout.h"

namespace corvane {

namespace {

using enum ControlId;

// clang-format off
std::vector<ControlRow> Rows(Dialog& dialog) {
  const Frame* in = &dialog.Frame4;
  return {
      Row(cboCountry, dialog.cboCountry, nullptr, 8, 8, 197, 22),
      Row(cboNetworks, dialog.cboNetworks, nullptr, 213, 8, 197, 22),
      Row(lstGssiBlank, dialog.lstGssiBlank, in, 10, 20, 382, 152, kNoTabStop),
      Row(lstGSSI_Lockouts, dialog.lstGSSI_Lockouts, in, 10, 20, 382, 152),
      Row(txtGssiLabel, dialog.txtGssiLabel, in, 10, 180, 196, 22),
      Row(Label2, dialog.Label2, in, 216, 183, 44, 16),
      Row(cboGSSIPriority, dialog.cboGSSIPriority, in, 262, 180, 44, 22),
      Row(cmdUpdateGSSI, dialog.cmdUpdateGSSI, in, 316, 178, 76, 26),
      Row(Label1, dialog.Label1, nullptr, 8, 258, 402, 16),
      Row(lstSsiBlank, dialog.lstSsiBlank, nullptr, 8, 276, 402, 124, kNoTabStop),
      Row(List1, dialog.List1, nullptr, 8, 276, 402, 124),
      Row(lblSsiLabelUpdaterClearFields, dialog.lblSsiLabelUpdaterClearFields, nullptr,
          8, 411, 58, 16),
      Row(txtSSI_labelEdit, dialog.txtSSI_labelEdit, nullptr, 68, 408, 196, 22),
      Row(lblLastSeenName, dialog.lblLastSeenName, nullptr, 8, 435, 58, 16),
      Row(lblLastSeen, dialog.lblLastSeen, nullptr, 68, 435, 196, 16),
      Row(Frame4, dialog.Frame4, nullptr, 8, 38, 402, 212),
  };
}
// clang-format on

}  // namespace

WindowTable EditorWindowTable(Dialog& dialog) {
  constexpr int kClientWidth = 418;
  constexpr int kClientHeight = 460;
  return {
      .window = dialog,
      .window_class = kEditorWindowClass,
      .minimises = false,
      .width = 0,
      .height = 0,
      .client_width = kClientWidth * kTwipsPerPixel,
      .client_height = kClientHeight * kTwipsPerPixel,
      .compact = nullptr,
      .compact_client_height = 0,
      .home = dialog.lstGSSI_Lockouts,
      .controls = Rows(dialog),
      .menu = {},
  };
}

}  // namespace corvane
