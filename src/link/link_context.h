// What the parts of the SDR# link share: the seams, the main window's state, the table of SDR#'s
// windows by role, the "Network" box, and what is told of SDR#'s answers.
#pragma once

#include <array>
#include <cstddef>

#include "base/loop.h"
#include "base/wall_clock.h"
#include "link/network_box.h"
#include "link/sdr_answers.h"
#include "link/socket.h"
#include "link/window_ops.h"
#include "panel/form1.h"
#include "panel/program_flags.h"

namespace corvane {

// Index of a window in the handle table.
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

// The handle table: SDR#'s main window and the plug-ins' controls by role. Discovery alone writes
// it.
class SdrHandles {
 public:
  static constexpr std::size_t kCount = 18;

  // 0 when the window was not found. A window can be gone although its handle stands here.
  [[nodiscard]] WindowHandle operator[](SdrRole role) const {
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

 private:
  friend class Discovery;
  [[nodiscard]] WindowHandle& At(SdrRole role) { return handles_[static_cast<std::size_t>(role)]; }
  void Clear() { handles_.fill(0); }

  std::array<WindowHandle, kCount> handles_{};
};

struct LinkContext {
  Loop& loop;
  const WallClock& clock;
  WindowOps& windows;
  Socket& socket;
  Form1& form;
  ProgramFlags& flags;

  SdrHandles handles{};
  NetworkBox network_box{windows, socket};
  SdrAnswers answers{windows, form, clock};
};

}  // namespace corvane
