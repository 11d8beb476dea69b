// Fonts, brushes and drawing by plain GDI.
#include "ui/drawing_win.h"

#include <algorithm>
#include <iterator>

namespace corvane {

namespace {

constexpr Colour kSystemColourBit = 0x80000000;
constexpr Colour kButtonShadow = 0x80000010;

// A mixture: `weight` hundredths of `one`, the rest of `other`.
COLORREF Mix(COLORREF one, COLORREF other, int weight) {
  const auto channel = [&](int shift) {
    const int first = static_cast<int>((one >> shift) & 0xFF);
    const int second = static_cast<int>((other >> shift) & 0xFF);
    return static_cast<COLORREF>((first * weight + second * (100 - weight)) / 100) << shift;
  };
  return channel(0) | channel(8) | channel(16);
}

// Selects an object for the life of this one.
class Selected {
 public:
  Selected(HDC dc, HGDIOBJ object) : dc_(dc), before_(SelectObject(dc, object)) {}
  ~Selected() { SelectObject(dc_, before_); }
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;

 private:
  HDC dc_;
  HGDIOBJ before_;
};

}  // namespace

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

HFONT FontSet::Get(FontKind kind, bool bold) const {
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

COLORREF DrawnColour(Colour colour) {
  if ((colour & kSystemColourBit) == 0) return colour & 0x00FFFFFF;
  return GetSysColor(static_cast<int>(colour & 0xFF));
}

BrushCache::~BrushCache() {
  for (const auto& [colour, brush] : brushes_) DeleteObject(brush);
}

HBRUSH BrushCache::Get(Colour colour) {
  HBRUSH& brush = brushes_[DrawnColour(colour)];
  if (brush == nullptr) brush = CreateSolidBrush(DrawnColour(colour));
  return brush;
}

void DrawButton(const DRAWITEMSTRUCT& item, const Button& button, HFONT font, BrushCache& brushes) {
  const HDC dc = item.hDC;
  RECT rect = item.rcItem;
  const bool disabled = (item.itemState & ODS_DISABLED) != 0;
  const bool pressed = (item.itemState & ODS_SELECTED) != 0;
  const COLORREF face = DrawnColour(button.back_colour);
  const COLORREF shadow = DrawnColour(kButtonShadow);

  // Lighter than the window where the colour is the window's own, so that it reads as a button.
  COLORREF fill = face;
  if (button.back_colour == kButtonFace) fill = Mix(face, RGB(255, 255, 255), 55);
  if (disabled) fill = face;
  if (pressed) fill = Mix(fill, shadow, 70);
  FillRect(dc, &rect, brushes.Get(fill));
  FrameRect(dc, &rect, brushes.Get(disabled ? Mix(shadow, face, 50) : shadow));

  const Selected with_font(dc, font);
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, disabled ? GetSysColor(COLOR_GRAYTEXT) : DrawnColour(button.fore_colour));
  RECT text = rect;
  if (pressed) OffsetRect(&text, 1, 1);
  DrawTextA(dc, button.caption.get().c_str(), -1, &text,
            DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
  if ((item.itemState & ODS_FOCUS) != 0 && (item.itemState & ODS_NOFOCUSRECT) == 0) {
    InflateRect(&rect, -3, -3);
    SetTextColor(dc, 0);
    SetBkColor(dc, RGB(255, 255, 255));
    DrawFocusRect(dc, &rect);
  }
}

namespace {

constexpr Colour kHighlight = 0x8000000D;
constexpr Colour kHighlightText = 0x8000000E;
constexpr int kTickBox = 13 * kTwipsPerPixel;
constexpr int kTickMargin = 3 * kTwipsPerPixel;

// Gives the text colour, after filling the line with what belongs under it.
COLORREF FillLine(const DRAWITEMSTRUCT& item, BrushCache& brushes) {
  const bool selected = (item.itemState & ODS_SELECTED) != 0;
  const bool disabled = (item.itemState & ODS_DISABLED) != 0;
  FillRect(item.hDC, &item.rcItem, brushes.Get(selected ? kHighlight : kWindowBackground));
  if (disabled) return GetSysColor(COLOR_GRAYTEXT);
  return DrawnColour(selected ? kHighlightText : kWindowText);
}

void DrawLineText(const DRAWITEMSTRUCT& item, const std::string& text, COLORREF colour, int left) {
  RECT rect = item.rcItem;
  rect.left += left;
  SetBkMode(item.hDC, TRANSPARENT);
  SetTextColor(item.hDC, colour);
  DrawTextA(item.hDC, text.c_str(), -1, &rect,
            DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_EXPANDTABS);
  if ((item.itemState & ODS_FOCUS) != 0 && (item.itemState & ODS_NOFOCUSRECT) == 0) {
    SetTextColor(item.hDC, 0);
    SetBkColor(item.hDC, RGB(255, 255, 255));
    DrawFocusRect(item.hDC, &item.rcItem);
  }
}

// Line `item.itemID` as the window has it: the state may be ahead of it.
std::string LineText(const DRAWITEMSTRUCT& item, UINT length_message, UINT text_message) {
  const LRESULT length = SendMessageA(item.hwndItem, length_message, item.itemID, 0);
  if (length <= 0) return {};
  std::string text(static_cast<std::size_t>(length), '\0');
  SendMessageA(item.hwndItem, text_message, item.itemID, reinterpret_cast<LPARAM>(text.data()));
  return text;
}

}  // namespace

void DrawCheckLine(const DRAWITEMSTRUCT& item, HFONT font, int dpi, BrushCache& brushes) {
  if (item.itemID == static_cast<UINT>(-1)) return;
  const HDC dc = item.hDC;
  const COLORREF text_colour = FillLine(item, brushes);
  const int margin = ToPixels(kTickMargin, dpi);
  const int height = static_cast<int>(item.rcItem.bottom - item.rcItem.top);
  const int size = std::min(ToPixels(kTickBox, dpi), height - 2);
  const int left = item.rcItem.left + margin;
  const int top = item.rcItem.top + (height - size) / 2;
  RECT box{left, top, left + size, top + size};
  FillRect(dc, &box, brushes.Get(kWindowBackground));
  for (int edge = std::max(1, MulDiv(1, dpi, kDesignDpi)); edge > 0; --edge) {
    FrameRect(dc, &box, brushes.Get(kWindowText));
    InflateRect(&box, -1, -1);
  }
  if (item.itemData != 0) {
    const HPEN pen =
        CreatePen(PS_SOLID, std::max(2, MulDiv(2, dpi, kDesignDpi)), DrawnColour(kWindowText));
    {
      const Selected with_pen(dc, pen);
      const POINT tick[] = {{left + size * 3 / 13, top + size * 6 / 13},
                            {left + size * 5 / 13, top + size * 9 / 13},
                            {left + size * 10 / 13, top + size * 3 / 13}};
      Polyline(dc, tick, static_cast<int>(std::size(tick)));
    }
    DeleteObject(pen);
  }
  const Selected with_font(dc, font);
  DrawLineText(item, LineText(item, LB_GETTEXTLEN, LB_GETTEXT), text_colour, 2 * margin + size);
}

void DrawComboLine(const DRAWITEMSTRUCT& item, const ComboBox& combo, int dpi,
                   BrushCache& brushes) {
  const COLORREF colour = FillLine(item, brushes);
  const bool none = item.itemID == static_cast<UINT>(-1);
  const std::string text = none ? combo.text.get() : LineText(item, CB_GETLBTEXTLEN, CB_GETLBTEXT);
  DrawLineText(item, text, colour, ToPixels(kTickMargin, dpi));
}

void DrawShape(const DRAWITEMSTRUCT& item, const Shape& shape, int dpi, BrushCache& brushes) {
  RECT rect = item.rcItem;
  FillRect(item.hDC, &rect, brushes.Get(shape.back_colour));
  const int width = std::max(1, MulDiv(shape.border_width, dpi, kDesignDpi));
  const HPEN pen = CreatePen(PS_INSIDEFRAME, width, DrawnColour(shape.border_colour));
  {
    const Selected with_pen(item.hDC, pen);
    const Selected with_brush(item.hDC, brushes.Get(shape.fill_colour));
    Ellipse(item.hDC, rect.left, rect.top, rect.right, rect.bottom);
  }
  DeleteObject(pen);
}

void PaintFrame(HWND window, const Frame& frame, HFONT font, int dpi, BrushCache& brushes) {
  PAINTSTRUCT paint{};
  const HDC dc = BeginPaint(window, &paint);
  if (dc == nullptr) return;
  RECT rect{};
  GetClientRect(window, &rect);
  FillRect(dc, &rect, brushes.Get(frame.back_colour));

  const Selected with_font(dc, font);
  const std::string& caption = frame.caption;
  const int indent = MulDiv(8, dpi, kDesignDpi);
  SIZE size{};
  if (!caption.empty()) {
    GetTextExtentPoint32A(dc, caption.data(), static_cast<int>(caption.size()), &size);
    rect.top += size.cy / 2;
  }
  const COLORREF line = Mix(DrawnColour(kButtonShadow), DrawnColour(frame.back_colour), 60);
  FrameRect(dc, &rect, brushes.Get(line));
  if (!caption.empty()) {
    SetTextColor(dc, DrawnColour(frame.fore_colour));
    SetBkColor(dc, DrawnColour(frame.back_colour));
    SetBkMode(dc, OPAQUE);
    const std::string with_margin = " " + caption + " ";
    RECT text{indent, 0, rect.right - indent, size.cy};
    DrawTextA(dc, with_margin.c_str(), -1, &text, DT_SINGLELINE | DT_END_ELLIPSIS);
  }
  EndPaint(window, &paint);
}

}  // namespace corvane
