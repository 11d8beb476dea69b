// Lockouts by hand, and the hold.
#include "core/group_locks.h"

#include <algorithm>
#include <string>

#include "base/number_text.h"

namespace corvane {

bool GroupLocks::IsDropped(std::int32_t gssi) const {
  return std::any_of(TempGroupLockouts.begin(), TempGroupLockouts.end(),
                     [gssi](const Lockout& lockout) { return lockout.gssi == gssi; });
}

bool GroupLocks::IsHeldElsewhere(std::int32_t gssi) const {
  return held_ && *held_ != gssi;
}

void GroupLocks::Drop(std::int32_t gssi) {
  const auto known = std::find_if(TempGroupLockouts.begin(), TempGroupLockouts.end(),
                                  [gssi](const Lockout& lockout) { return lockout.gssi == gssi; });
  if (known != TempGroupLockouts.end()) {
    known->age = 0;
  } else if (TempGroupLockouts.size() == 1) {
    TempGroupLockouts.front() = {gssi, 0};
  } else {
    TempGroupLockouts.push_back({gssi, 0});
  }
}

void GroupLocks::AgeLockouts() {
  for (Lockout& lockout : TempGroupLockouts) ++lockout.age;
  std::erase_if(TempGroupLockouts,
                [](const Lockout& lockout) { return lockout.age == kLockoutTicks; });
}

void GroupLocks::ToggleHold(std::optional<std::int32_t> shown_group) {
  if (held_) {
    ReleaseHold();
    return;
  }
  if (!shown_group) return;
  held_ = shown_group;
  const std::string group = " " + Decimal(*shown_group);
  form_.lblGroupHold.tool_tip = "Holding GSSI: " + group;
  form_.lblGroupNumber.tool_tip = "Holding GSSI: " + group;
  form_.lblGroupHold.tag = group;
  form_.lblGroupHold.fore_colour = kHoldOrange;
  form_.lblGroupHold.bold = true;
}

void GroupLocks::ReleaseHold() {
  ShowReleased("");
}

void GroupLocks::ResetHold() {
  ShowReleased("0");
}

void GroupLocks::ShowReleased(const char* tag) {
  held_.reset();
  form_.lblGroupHold.tool_tip = "Right click to hold a GSSI";
  form_.lblGroupNumber.tool_tip = "";
  form_.lblGroupHold.tag = tag;
  form_.lblGroupHold.fore_colour = kButtonText;
  form_.lblGroupHold.bold = false;
}

}  // namespace corvane
