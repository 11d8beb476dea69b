// When the box is pressed, and when not.
#include "link/network_box.h"

#include <utility>

namespace corvane {

Reply NetworkBox::Press(WindowHandle box) {
  const Reply reply = windows_.Press(box);
  unanswered_ = reply == Reply::kNoAnswer ? box : 0;
  return reply;
}

// Whether this is not the time to press `box`, because what became of an earlier press has to show
// first.
bool NetworkBox::AwaitsEarlierPress(WindowHandle box, Reply port_written) {
  if (unanswered_ != box || port_written == Reply::kRefused) return false;
  if (port_written == Reply::kAnswered) unanswered_ = 0;
  return true;
}

void NetworkBox::SwitchOnWhenFound(WindowHandle port_box, WindowHandle box) {
  const Reply written = windows_.SetText(port_box, kNetRemotePortText);
  const bool leave = std::exchange(left_to_connection_, 0) == box;
  if (leave || socket_.State() == SocketState::kConnected) return;
  if (AwaitsEarlierPress(box, written)) return;
  Press(box);
}

void NetworkBox::SwitchOnAfterRefusal(WindowHandle port_box, WindowHandle box) {
  const Reply written = windows_.SetText(port_box, kNetRemotePortText);
  if (AwaitsEarlierPress(box, written)) {
    // Settled only now, and the refusal may be older than that: one more attempt tells.
    if (unanswered_ == 0) left_to_connection_ = box;
    return;
  }
  if (Press(box) == Reply::kAnswered) left_to_connection_ = box;
}

}  // namespace corvane
