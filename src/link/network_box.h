// The "Network" box of the Net Remote plug-in, which has its server listen on the port beside it.
//
// It is a check box whose state cannot be asked for: each press turns it over. The rule when it is
// pressed and when not stands here alone, and it leads to a server that listens from either start.
#pragma once

#include <cstdint>

#include "link/socket.h"
#include "link/window_ops.h"

namespace corvane {

inline constexpr const char* kNetRemoteHost = "127.0.0.1";
inline constexpr std::uint16_t kNetRemotePort = 3383;
inline constexpr const char* kNetRemotePortText = "3383";

class NetworkBox {
 public:
  NetworkBox(WindowOps& windows, const Socket& socket) : windows_(windows), socket_(socket) {}

  // Both write the port first. A window that is 0 is sent nothing.

  // A press that got no answer may have been carried out all the same, or be carried out late.
  // Before the same box is pressed again it must have answered something, which it does in the
  // order of asking, and one more connection must have been tried.

  // A discovery found all windows. The box is pressed, but not under a live connection, which shows
  // that the server listens, and not when the same box was pressed after a refusal and no discovery
  // has come since: that press was to switch it on.
  void SwitchOnWhenFound(WindowHandle port_box, WindowHandle box);
  // A connection was refused: nothing listens, so the box is pressed.
  void SwitchOnAfterRefusal(WindowHandle port_box, WindowHandle box);

 private:
  [[nodiscard]] bool AwaitsEarlierPress(WindowHandle box, Reply port_written);
  Reply Press(WindowHandle box);

  WindowOps& windows_;
  const Socket& socket_;
  WindowHandle left_to_connection_ = 0;  // by the next discovery, which does not press it
  WindowHandle unanswered_ = 0;          // pressed, and nobody knows whether it was carried out
};

}  // namespace corvane
