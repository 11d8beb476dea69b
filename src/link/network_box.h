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

  // A discovery found all windows. The box is pressed, but not under a live connection, which shows
  // that the server listens, and not when the same box was pressed after a refusal and no discovery
  // has come since: that press was to switch it on.
  void SwitchOnWhenFound(WindowHandle port_box, WindowHandle box);
  // A connection was refused: nothing listens, so the box is pressed.
  void SwitchOnAfterRefusal(WindowHandle port_box, WindowHandle box);

 private:
  WindowOps& windows_;
  const Socket& socket_;
  WindowHandle pressed_after_refusal_ = 0;  // and no discovery has taken note of it yet
};

}  // namespace corvane
