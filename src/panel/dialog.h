// The G/SSI editor as state. A new one is made each time the editor is opened.
#pragma once

#include "panel/controls.h"

namespace corvane {

inline constexpr int kGroupListFullRows = 9;
inline constexpr int kSubscriberListFullRows = 9;
inline constexpr int kPriorities = 10;  // 0 to 9

struct Dialog : Window {
  explicit Dialog(ControlSink& sink);

  ComboBox cboCountry;   // item data: MCC
  ComboBox cboNetworks;  // item data: MNC

  Frame Frame4;
  CheckList lstGSSI_Lockouts;  // a line is ticked when its group is followed
  ListBox lstGssiBlank;        // covers it while there is nothing to show
  TextBox txtGssiLabel;
  Label Label2;  // "Priority"
  ComboBox cboGSSIPriority;
  Button cmdUpdateGSSI;

  Label Label1;  // the group whose subscribers are listed
  ListBox List1;
  ListBox lstSsiBlank;  // covers it
  Label lblSsiLabelUpdaterClearFields;
  TextBox txtSSI_labelEdit;
  Label lblLastSeenName;
  Label lblLastSeen;
};

}  // namespace corvane
