// The editor's controls in their starting states.
#include "panel/dialog.h"

namespace corvane {

namespace {
constexpr const char* kTickTip = "Checked item will ignore lockout";
constexpr const char* kPriorityTip = "Not available in this version";
}  // namespace

Dialog::Dialog(ControlSink& sink)
    : Window(sink, "Dialog", "G/SSI Editor (List snapshot)"),
      cboCountry(sink, "cboCountry"),
      cboNetworks(sink, "cboNetworks"),
      Frame4(sink, "Frame4", "GSSI/Labels and Lockouts (0)"),
      lstGSSI_Lockouts(sink, "lstGSSI_Lockouts", kGroupListFullRows),
      lstGssiBlank(sink, "lstGssiBlank", kGroupListFullRows),
      txtGssiLabel(sink, "txtGssiLabel"),
      Label2(sink, "Label2", "Priority"),
      cboGSSIPriority(sink, "cboGSSIPriority"),
      cmdUpdateGSSI(sink, "cmdUpdateGSSI", "^ Update"),
      Label1(sink, "Label1", "Seen SSI for GSSI (0)"),
      List1(sink, "List1", kSubscriberListFullRows),
      lstSsiBlank(sink, "lstSsiBlank", kSubscriberListFullRows),
      lblSsiLabelUpdaterClearFields(sink, "lblSsiLabelUpdaterClearFields", "SSI label:"),
      txtSSI_labelEdit(sink, "txtSSI_labelEdit"),
      lblLastSeenName(sink, "lblLastSeenName", "Last seen:"),
      lblLastSeen(sink, "lblLastSeen") {
  for (ComboBox* combo : {&cboCountry, &cboNetworks}) combo->text = "Select Network";
  lstGSSI_Lockouts.tool_tip = kTickTip;
  lstGssiBlank.tool_tip = kTickTip;
  Label2.tool_tip = kPriorityTip;
  cboGSSIPriority.tool_tip = kPriorityTip;
  txtSSI_labelEdit.tool_tip = "Add/remove label then press enter. Green OK, Red Fail";
}

}  // namespace corvane
