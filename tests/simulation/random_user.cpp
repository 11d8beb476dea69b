// The main window under a user who clicks about.
#include "simulation/random_user.h"

#include <string>

namespace corvane::sim {

void UseTheMainWindow(World& world, const std::function<int(int, int)>& pick) {
  Form1& form = world.form();
  MainForm& user = world.user();
  switch (pick(0, 13)) {
    case 0:
      return user.Click(form.lblManualD_Release);
    case 1:
      return user.DoubleClick(form.lblChangeToCcFrequency);
    case 2:
      return user.Click(form.chkCreateCallActivityCvsFile);
    case 3:
      return user.Click(form.optRecordMode[static_cast<std::size_t>(pick(0, 2))]);
    case 4:
      return user.MouseUp(form.lblGroupHold, kLeftButton, -1);
    case 5:
      return user.Click(form.cmdSettingTab[static_cast<std::size_t>(pick(0, 4))]);
    case 6:
      user.TextEdited(form.txtTimeout, std::to_string(pick(0, 40)));
      return user.LostFocus(form.txtTimeout);
    case 7:
      return user.Click(form.mnuCompactMode);
    case 8:
      return user.Click(form.chkDeleteForcedCallEndFile);
    case 9:
      return user.Click(form.chkCreateEventLog);
    case 10:
      return user.Click(form.chkCreateCcVcLog);
    case 11:
      return form.lstCallLog.ReportTopIndex(0);
    case 12:
      user.TextEdited(form.txtVcVolume, std::to_string(pick(0, 99)));
      return user.LostFocus(form.txtVcVolume);
    default:
      static_cast<void>(user.KeyPress(form.lstCallLog, ' '));
  }
}

}  // namespace corvane::sim
