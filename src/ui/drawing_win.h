// Fonts and colours, and the controls that a window draws itself: buttons, shapes and frames.
#pragma once

#include <windows.h>

#include <map>
#include <utility>

#include "panel/controls.h"
#include "ui/drawn_colours.h"
#include "ui/layout.h"

namespace corvane {

// The fonts of a window at one resolution.
class FontSet {
 public:
  FontSet() = default;
  ~FontSet();
  FontSet(const FontSet&) = delete;
  FontSet& operator=(const FontSet&) = delete;

  // Makes the fonts for `dpi` in place of the old ones, which stay valid until Release: windows
  // still have them. Tahoma takes the place of a missing face.
  void Remake(int dpi);
  // Frees the fonts that the last Remake replaced.
  void Release();

  [[nodiscard]] HFONT Get(FontKind kind, bool bold) const;
  // Height of a line of text, in pixels.
  [[nodiscard]] int LineHeight(FontKind kind) const;

 private:
  std::map<std::pair<FontKind, bool>, HFONT> fonts_;
  std::map<std::pair<FontKind, bool>, HFONT> replaced_;
};

// The system's colours of the moment.
[[nodiscard]] Theme CurrentTheme();
// What the system's drawing calls take for a control's colour.
[[nodiscard]] COLORREF DrawnColour(Colour colour);
// The colours of a control's text and ground, as they are drawn at the moment.
[[nodiscard]] TextColours ColoursOf(const Control& control);

// Brushes by colour. System colours are looked up at each call, so a change of theme shows.
class BrushCache {
 public:
  BrushCache() = default;
  ~BrushCache();
  BrushCache(const BrushCache&) = delete;
  BrushCache& operator=(const BrushCache&) = delete;
  // Valid as long as the cache.
  [[nodiscard]] HBRUSH Get(Colour colour);

 private:
  std::map<COLORREF, HBRUSH> brushes_;
};

void DrawButton(const DRAWITEMSTRUCT& item, const Button& button, HFONT font, BrushCache& brushes);
// One entry of a drop-down list, or what its box shows while none is selected.
void DrawComboLine(const DRAWITEMSTRUCT& item, const ComboBox& combo, int dpi, BrushCache& brushes);
// One line of a list. The selected one has a tinted ground and a bar at its left: it is no more
// worth than the others.
void DrawLine(const DRAWITEMSTRUCT& item, const Control& list, HFONT font, int dpi,
              BrushCache& brushes, int indent = 0);
// The same with a box before the text, ticked or not.
void DrawCheckLine(const DRAWITEMSTRUCT& item, const CheckList& list, HFONT font, int dpi,
                   BrushCache& brushes);
// A disc; its border counts pixels of 96 dpi. A border of several pixels has a dark line inside, so
// that it stands out by more than its colour.
void DrawShape(const DRAWITEMSTRUCT& item, const Shape& shape, int dpi, BrushCache& brushes);
// Answers WM_PAINT of a frame's window.
void PaintFrame(HWND window, const Frame& frame, HFONT font, int dpi, BrushCache& brushes);

}  // namespace corvane
