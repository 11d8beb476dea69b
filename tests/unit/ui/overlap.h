// What no two controls may do.
#pragma once

#include "ui/layout.h"

namespace corvane {

[[nodiscard]] inline bool Overlap(const PixelRect& one, const PixelRect& other) {
  return one.left < other.right() && other.left < one.right() && one.top < other.bottom() &&
         other.top < one.bottom();
}

}  // namespace corvane
