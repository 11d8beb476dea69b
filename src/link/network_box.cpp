// When the box is pressed, and when not.
#include "link/network_box.h"

#include <utility>

namespace corvane {

void NetworkBox::SwitchOnWhenFound(WindowHandle port_box, WindowHandle box) {
  windows_.SetText(port_box, kNetRemotePortText);
  const bool just_pressed = std::exchange(pressed_after_refusal_, 0) == box;
  if (just_pressed || socket_.State() == SocketState::kConnected) return;
  windows_.Press(box);
}

void NetworkBox::SwitchOnAfterRefusal(WindowHandle port_box, WindowHandle box) {
  windows_.SetText(port_box, kNetRemotePortText);
  if (windows_.Press(box) == Reply::kAnswered) pressed_after_refusal_ = box;
}

}  // namespace corvane
