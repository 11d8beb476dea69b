// What keeps a group's calls away, or keeps all others away: the groups that the user dropped by
// hand a moment ago, and the one that is held. The hold shows in lblGroupHold and lblGroupNumber.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "panel/form1.h"

namespace corvane {

class GroupLocks {
 public:
  // For how many ticks of AgeLockouts a dropped group is left alone.
  static constexpr int kLockoutTicks = 16;

  struct Lockout {
    std::int32_t gssi = 0;
    int age = 0;  // ticks
    bool operator==(const Lockout&) const = default;
  };

  explicit GroupLocks(Form1& form) : form_(form) {}

  [[nodiscard]] bool IsDropped(std::int32_t gssi) const;
  // Another group than `gssi` is held.
  [[nodiscard]] bool IsHeldElsewhere(std::int32_t gssi) const;
  [[nodiscard]] std::optional<std::int32_t> held() const { return held_; }

  // Leaves `gssi` alone from now on. A table of one group takes the new one in its place.
  void Drop(std::int32_t gssi);
  // Every second.
  void AgeLockouts();

  // Holds `shown_group` (nothing when there is none), or releases whatever is held.
  void ToggleHold(std::optional<std::int32_t> shown_group);
  void ReleaseHold();
  // Releases the hold because the link is reset, which the label's tag tells by "0".
  void ResetHold();

  std::vector<Lockout> TempGroupLockouts;

 private:
  void ShowReleased(const char* tag);

  Form1& form_;
  std::optional<std::int32_t> held_;
};

}  // namespace corvane
