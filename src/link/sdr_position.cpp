// SDR#'s restored rectangle as text and back.
#include "link/sdr_position.h"

#include "base/number_text.h"
#include "base/text.h"

namespace corvane {

std::optional<ScreenRect> ParsePosition(std::string_view text) {
  const std::vector<std::string> parts = Split(text, ',');
  if (parts.size() != 4) return std::nullopt;
  std::array<std::int32_t, 4> edges{};
  for (std::size_t i = 0; i < edges.size(); ++i) {
    const auto edge = ParseShown<std::int32_t>(parts[i]);
    if (!edge) return std::nullopt;
    edges[i] = *edge;
  }
  return ScreenRect{edges[0], edges[1], edges[2], edges[3]};
}

void TakeSdrPosition(LinkContext& context) {
  Placement placement;
  const WindowHandle window = context.handles[SdrRole::kMainWindow];
  if (window == 0 || !context.windows.GetPlacement(window, placement)) return;
  if (placement.show_state != kShowNormal) return;
  const ScreenRect& rect = placement.normal_position;
  context.form.lblPositionSdrSharpCC.caption = Decimal(rect.left) + "," + Decimal(rect.top) + "," +
                                               Decimal(rect.right) + "," + Decimal(rect.bottom);
}

void ApplySdrPosition(LinkContext& context) {
  if (!context.form.chkPositionSDRsharps.checked()) return;
  const auto position = ParsePosition(context.form.lblPositionSdrSharpCC.caption.get());
  if (!position) return;
  Placement placement;
  const WindowHandle window = context.handles[SdrRole::kMainWindow];
  if (window == 0 || !context.windows.GetPlacement(window, placement)) return;
  if (placement.show_state != kShowNormal) return;
  placement.normal_position = *position;
  context.windows.SetPlacement(window, placement);
}

}  // namespace corvane
