// The fonts of the main window at one resolution.
#pragma once

#include <map>
#include <utility>

#include "ui/layout.h"

namespace corvane {

class FontSet {
 public:
  FontSet() = default;
  ~FontSet();
  FontSet(const FontSet&) = delete;
  FontSet& operator=(const FontSet&) = delete;

  // Makes the fonts for `dpi` in place of the old ones, which stay valid until Release: windows
  // still have them. A missing face is replaced by the system with one that fits best.
  void Remake(int dpi);
  // Frees the fonts that the last Remake replaced.
  void Release();

  // The font's handle (HFONT).
  [[nodiscard]] void* Get(FontKind kind, bool bold) const;
  // Height of a line of text, in pixels.
  [[nodiscard]] int LineHeight(FontKind kind) const;

 private:
  std::map<std::pair<FontKind, bool>, void*> fonts_;
  std::map<std::pair<FontKind, bool>, void*> replaced_;
};

}  // namespace corvane
