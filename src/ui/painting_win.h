// Colours, and the controls that the window draws itself: buttons, shapes and frames.
#pragma once

#include <cstdint>
#include <map>

#include "panel/controls.h"

namespace corvane {

// What the system's drawing calls take (COLORREF) for a control's colour.
[[nodiscard]] std::uint32_t DrawnColour(Colour colour);

// Brushes by colour. System colours are looked up at each call, so a change of theme shows.
class BrushCache {
 public:
  BrushCache() = default;
  ~BrushCache();
  BrushCache(const BrushCache&) = delete;
  BrushCache& operator=(const BrushCache&) = delete;
  // The brush's handle (HBRUSH), valid as long as the cache.
  [[nodiscard]] void* Get(Colour colour);

 private:
  std::map<std::uint32_t, void*> brushes_;
};

// `draw_item` is the DRAWITEMSTRUCT* of WM_DRAWITEM; the device context has the control's font
// where `font` (HFONT) is given.
void DrawButton(const void* draw_item, const Button& button, void* font, BrushCache& brushes);
// A disc; its border counts pixels of 96 dpi.
void DrawShape(const void* draw_item, const Shape& shape, int dpi, BrushCache& brushes);
// Answers WM_PAINT of a frame's window (HWND).
void PaintFrame(void* window, const Frame& frame, void* font, int dpi, BrushCache& brushes);

}  // namespace corvane
