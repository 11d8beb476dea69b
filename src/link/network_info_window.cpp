// Re-finding, opening and minimising the Network Info window.
#include "link/network_info_window.h"

namespace corvane {

bool NetworkInfoWindow::IsThere() {
  return context_.windows.IsAlive(context_.handles[SdrRole::kNetworkInfoWindow]) &&
         context_.windows.IsAlive(context_.handles[SdrRole::kNetworkInfoEdit]);
}

void NetworkInfoWindow::PressNetInfo() {
  // A press per cycle would open window after window in a plug-in that makes a new one each time.
  const std::int64_t now_ms = context_.loop.TickMs();
  if (pressed_at_ms_ && now_ms - *pressed_at_ms_ < kPressPauseMs) return;
  pressed_at_ms_ = now_ms;
  PressButton(context_, SdrRole::kNetInfoButton);
}

void NetworkInfoWindow::KeepOpen() {
  if (!IsThere()) {
    if (!discovery_.FindNetworkInfo()) {
      PressNetInfo();
      discovery_.FindNetworkInfo();
    }
  } else if (!context_.windows.IsVisible(context_.handles[SdrRole::kNetworkInfoWindow])) {
    PressNetInfo();
  }
  Minimise();
}

void NetworkInfoWindow::Minimise() {
  const WindowHandle window = context_.handles[SdrRole::kNetworkInfoWindow];
  Placement placement;
  if (window == 0 || !context_.windows.GetPlacement(window, placement)) return;
  if (placement.show_state != kShowNormal) return;
  placement.show_state = kShowMinimised;
  context_.windows.SetPlacement(window, placement);
}

}  // namespace corvane
