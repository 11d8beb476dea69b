// Reading the box, re-finding, opening and minimising its window.
#include "link/network_info.h"

#include <utility>

namespace corvane {

std::uintptr_t NetworkInfo::Identity() const {
  return Box();
}

std::int32_t NetworkInfo::LineCount() {
  return context_.windows.LineCount(Box()).value;
}

std::optional<std::string> NetworkInfo::Line(std::int32_t index) {
  if (Box() == 0 || index < 0) return std::string{};
  Answer<std::string> line = context_.windows.Line(Box(), index);
  if (!line.answered()) return std::nullopt;
  return std::move(line.value);
}

void NetworkInfo::Clear() {
  context_.windows.SetText(Box(), {});
}

bool NetworkInfo::IsThere() {
  return context_.windows.IsAlive(context_.handles[SdrRole::kNetworkInfoWindow]) &&
         context_.windows.IsAlive(Box());
}

void NetworkInfo::PressNetInfo() {
  // A press per cycle would open window after window in a plug-in that makes a new one each time.
  const std::int64_t now_ms = context_.loop.TickMs();
  if (pressed_at_ms_ && now_ms - *pressed_at_ms_ < kPressPauseMs) return;
  pressed_at_ms_ = now_ms;
  context_.windows.Press(context_.handles[SdrRole::kNetInfoButton]);
}

void NetworkInfo::KeepOpen() {
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

void NetworkInfo::Minimise() {
  const WindowHandle window = context_.handles[SdrRole::kNetworkInfoWindow];
  Placement placement;
  if (window == 0 || !context_.windows.GetPlacement(window, placement)) return;
  if (placement.show_state != kShowNormal) return;
  placement.show_state = kShowMinimised;
  context_.windows.SetPlacement(window, placement);
}

}  // namespace corvane
