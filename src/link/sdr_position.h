// Where the user wants SDR#'s main window to be.
#pragma once

#include <optional>
#include <string_view>

#include "link/link_context.h"

namespace corvane {

// Reads "left,top,right,bottom"; nullopt for anything else.
[[nodiscard]] std::optional<ScreenRect> ParsePosition(std::string_view text);

// The double click on lblPositionSdrSharpCC: shows in it where SDR# is now, if SDR# is shown
// normally (neither minimised nor maximised).
void TakeSdrPosition(LinkContext& context);

// Puts SDR# where lblPositionSdrSharpCC says, if chkPositionSDRsharps is ticked, the caption is a
// position and SDR# is shown normally.
void ApplySdrPosition(LinkContext& context);

}  // namespace corvane
