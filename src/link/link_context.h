// What the parts of the SDR# link share: the seams, the main window's state and the handle table.
#pragma once

#include "base/loop.h"
#include "base/wall_clock.h"
#include "link/sdr_handles.h"
#include "link/socket.h"
#include "link/window_ops.h"
#include "panel/form1.h"
#include "panel/program_flags.h"

namespace corvane {

struct LinkContext {
  Loop& loop;
  const WallClock& clock;
  WindowOps& windows;
  Socket& socket;
  Form1& form;
  ProgramFlags& flags;

  SdrHandles handles{};
  // The button that the refused-connection handler pressed and no discovery has taken note of yet.
  WindowHandle pressed_after_refusal = 0;
};

// BM_CLICK, unless there is no such button. False when the button did not take it.
bool PressButton(LinkContext& context, SdrRole role);

inline constexpr const char* kNetRemoteHost = "127.0.0.1";
inline constexpr std::uint16_t kNetRemotePort = 3383;
inline constexpr const char* kNetRemotePortText = "3383";

}  // namespace corvane
