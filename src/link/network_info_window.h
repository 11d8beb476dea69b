// Keeps the plug-in's Network Info window open and out of the way.
#pragma once

#include <cstdint>
#include <optional>

#include "link/discovery.h"
#include "link/link_context.h"

namespace corvane {

class NetworkInfoWindow {
 public:
  // "Net Info" is pressed no more often than this.
  static constexpr int kPressPauseMs = 1000;

  NetworkInfoWindow(LinkContext& context, Discovery& discovery)
      : context_(context), discovery_(discovery) {}

  // One step per cycle: finds the window again after it was closed or replaced, presses "Net Info"
  // while it is not to be seen, and minimises it when it is shown normally.
  void KeepOpen();

  // Minimises it when it is shown normally.
  void Minimise();

 private:
  [[nodiscard]] bool IsThere();
  void PressNetInfo();

  LinkContext& context_;
  Discovery& discovery_;
  std::optional<std::int64_t> pressed_at_ms_;
};

}  // namespace corvane
