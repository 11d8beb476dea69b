// The handle table: SDR#'s main window and the plug-ins' controls by role, as discovery found them.
#pragma once

#include <array>
#include <cstddef>

#include "link/window_ops.h"

namespace corvane {

// Index of a window in the table.
enum class SdrRole : std::size_t {
  kMainWindow = 0,
  kNetRemoteHeader = 2,  // label "Net Remote *"
  kNetworkButton = 3,    // switches Net Remote on (and, being a check box, off)
  kPortBox = 4,
  kTetraHeader = 5,     // label "TETRA Demodulator *"
  kDemodulatorBox = 6,  // check box that is kept on
  kAutoBox = 7,         // check box that is kept off
  kTimeslot1 = 8,
  kTimeslot2 = 9,
  kTimeslot3 = 10,
  kTimeslot4 = 11,
  kNetInfoButton = 12,  // opens the Network Info window
  kNetworkInfoWindow = 13,
  kNetworkInfoEdit = 14,
  kMccLabel = 15,
  kMncLabel = 16,
  kLaLabel = 17,
};

class SdrHandles {
 public:
  static constexpr std::size_t kCount = 18;

  // 0 when the window was not found. A window can be gone although its handle stands here.
  [[nodiscard]] WindowHandle operator[](SdrRole role) const {
    return handles_[static_cast<std::size_t>(role)];
  }
  [[nodiscard]] WindowHandle& operator[](SdrRole role) {
    return handles_[static_cast<std::size_t>(role)];
  }
  // The selector of `timeslot`, 1 to 4; 0 for any other number.
  [[nodiscard]] WindowHandle Timeslot(int timeslot) const {
    if (timeslot < 1 || timeslot > 4) return 0;
    return handles_[static_cast<std::size_t>(SdrRole::kTimeslot1) +
                    static_cast<std::size_t>(timeslot - 1)];
  }
  // How many of the indexes `first` to `last` are set.
  [[nodiscard]] int CountSet(SdrRole first, SdrRole last) const {
    int set = 0;
    for (auto i = static_cast<std::size_t>(first); i <= static_cast<std::size_t>(last); ++i) {
      if (handles_[i] != 0) ++set;
    }
    return set;
  }
  void Clear() { handles_.fill(0); }

 private:
  std::array<WindowHandle, kCount> handles_{};
};

}  // namespace corvane
