// The controls that draw themselves, and the font of all.
#pragma once

#include <cstdint>

#include "standin/window_tree.h"

namespace corvane::standin {

class MirrorPaint {
 public:
  MirrorPaint();
  ~MirrorPaint();
  MirrorPaint(const MirrorPaint&) = delete;
  MirrorPaint& operator=(const MirrorPaint&) = delete;

  [[nodiscard]] void* font() const { return font_; }  // HFONT
  // Draws a check box or a selector; `device` is an HDC.
  void Draw(void* device, const Window& window) const;
  // Sets the colours of a header label up; gives the brush for its ground (HBRUSH).
  [[nodiscard]] void* PrepareHeader(void* device) const;

 private:
  void* font_;
  void* header_brush_;
};

[[nodiscard]] bool IsWine();
// The sort of WM_COPYDATA block that carries a command.
[[nodiscard]] bool IsCommandData(std::uintptr_t kind);

}  // namespace corvane::standin
