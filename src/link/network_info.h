// The plug-in's Network Info window: its edit box as call following reads it, and keeping the
// window open and out of the user's way.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/ports.h"
#include "link/discovery.h"
#include "link/link_context.h"

namespace corvane {

class NetworkInfo : public NetworkInfoBox {
 public:
  // "Net Info" is pressed no more often than this.
  static constexpr int kPressPauseMs = 1000;

  NetworkInfo(LinkContext& context, Discovery& discovery)
      : context_(context), discovery_(discovery) {}

  [[nodiscard]] std::uintptr_t Identity() const override;
  [[nodiscard]] std::int32_t LineCount() override;
  [[nodiscard]] std::optional<std::string> Line(std::int32_t index) override;
  void Clear() override;

  // One step per cycle: finds the window again after it was closed or replaced, presses "Net Info"
  // while it is not to be seen, and minimises it when it is shown normally.
  void KeepOpen();

  // Minimises it when it is shown normally.
  void Minimise();

 private:
  [[nodiscard]] WindowHandle Box() const { return context_.handles[SdrRole::kNetworkInfoEdit]; }
  [[nodiscard]] bool IsThere();
  void PressNetInfo();

  LinkContext& context_;
  Discovery& discovery_;
  std::optional<std::int64_t> pressed_at_ms_;
};

}  // namespace corvane
