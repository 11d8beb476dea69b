// The Network Info box as call following reads it, on the handle table.
#pragma once

#include "core/ports.h"
#include "link/link_context.h"

namespace corvane {

class NetworkInfo : public NetworkInfoBox {
 public:
  explicit NetworkInfo(LinkContext& context) : context_(context) {}

  [[nodiscard]] std::uintptr_t Identity() const override;
  [[nodiscard]] std::int32_t LineCount() override;
  [[nodiscard]] std::optional<std::string> Line(std::int32_t index) override;
  void Clear() override;

 private:
  LinkContext& context_;
};

}  // namespace corvane
