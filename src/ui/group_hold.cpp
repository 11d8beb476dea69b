// Group hold. Whether a group is held is told by the label's colour alone: the tag may hold other
// text while none is.
#include "ui/group_hold.h"

#include <string>

#include "base/text.h"

namespace corvane {

bool HoldingGroup(const Form1& form) {
  return form.lblGroupHold.fore_colour != kButtonText;
}

void ToggleGroupHold(Form1& form) {
  if (HoldingGroup(form)) {
    ReleaseGroupHold(form);
    return;
  }
  const std::string group(TrimRight(form.lblGroupNumber.caption.get()));
  if (group.empty()) return;
  form.lblGroupHold.tool_tip = "Holding GSSI: " + group;
  form.lblGroupNumber.tool_tip = "Holding GSSI: " + group;
  form.lblGroupHold.tag = group;
  form.lblGroupHold.fore_colour = kHoldOrange;
  form.lblGroupHold.bold = true;
}

void ReleaseGroupHold(Form1& form) {
  form.lblGroupHold.tool_tip = "Right click to hold a GSSI";
  form.lblGroupNumber.tool_tip = "";
  form.lblGroupHold.tag = "";
  form.lblGroupHold.fore_colour = kButtonText;
  form.lblGroupHold.bold = false;
}

}  // namespace corvane
