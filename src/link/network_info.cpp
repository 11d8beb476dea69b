// Messages to the Network Info edit box.
#include "link/network_info.h"

#include <algorithm>
#include <limits>

#include "link/window_text.h"

namespace corvane {

std::uintptr_t NetworkInfo::Identity() const {
  return context_.handles[SdrRole::kNetworkInfoEdit];
}

std::int32_t NetworkInfo::LineCount() {
  const WindowHandle box = context_.handles[SdrRole::kNetworkInfoEdit];
  if (box == 0) return 0;
  const Answer count = context_.windows.Send(box, kEmGetLineCount, 0, 0);
  if (!count.answered) return 0;
  return static_cast<std::int32_t>(
      std::clamp<std::intptr_t>(count.value, 0, std::numeric_limits<std::int32_t>::max()));
}

std::optional<std::string> NetworkInfo::Line(std::int32_t index) {
  return GetEditLine(context_.windows, context_.handles[SdrRole::kNetworkInfoEdit], index);
}

void NetworkInfo::Clear() {
  const WindowHandle box = context_.handles[SdrRole::kNetworkInfoEdit];
  if (box != 0) context_.windows.SetText(box, {});
}

}  // namespace corvane
