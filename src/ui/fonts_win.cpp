// Font handles.
#include "ui/fonts_win.h"

#include <windows.h>

namespace corvane {

FontSet::~FontSet() {
  Release();
  replaced_.swap(fonts_);
  Release();
}

void FontSet::Remake(int dpi) {
  Release();
  replaced_.swap(fonts_);
  for (FontKind kind : {FontKind::kText, FontKind::kLog, FontKind::kGroup, FontKind::kTab}) {
    for (bool bold : {false, true}) {
      fonts_[{kind, bold}] =
          CreateFontA(-FontPixels(kind, dpi), 0, 0, 0, bold ? FW_BOLD : FW_NORMAL, FALSE, FALSE,
                      FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                      DEFAULT_QUALITY, DEFAULT_PITCH | FF_SWISS, FontOf(kind).face);
    }
  }
}

void FontSet::Release() {
  for (const auto& [key, font] : replaced_) DeleteObject(font);
  replaced_.clear();
}

void* FontSet::Get(FontKind kind, bool bold) const {
  const auto font = fonts_.find({kind, bold});
  return font == fonts_.end() ? nullptr : font->second;
}

int FontSet::LineHeight(FontKind kind) const {
  const HDC screen = GetDC(nullptr);
  const HGDIOBJ before = SelectObject(screen, Get(kind, false));
  TEXTMETRICA metrics{};
  GetTextMetricsA(screen, &metrics);
  SelectObject(screen, before);
  ReleaseDC(nullptr, screen);
  return static_cast<int>(metrics.tmHeight);
}

}  // namespace corvane
