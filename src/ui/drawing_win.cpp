// Fonts, brushes and drawing by plain GDI.
#include "ui/drawing_win.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "ui/list_update_win.h"

namespace corvane {

namespace {

constexpr Colour kButtonShadow = 0x80000010;

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

HFONT MakeFont(const char* face, int pixels, bool bold) {
  return CreateFontA(-pixels, 0, 0, 0, bold ? FW_BOLD : FW_NORMAL, FALSE, FALSE, FALSE,
                     DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                     DEFAULT_PITCH | FF_SWISS, face);
}

// False when the system draws the font with another face.
bool HasFace(HFONT font, const char* face) {
  const HDC screen = GetDC(nullptr);
  const HGDIOBJ before = SelectObject(screen, font);
  std::array<char, LF_FACESIZE> drawn{};
  GetTextFaceA(screen, static_cast<int>(drawn.size()), drawn.data());
  SelectObject(screen, before);
  ReleaseDC(nullptr, screen);
  return lstrcmpiA(drawn.data(), face) == 0;
}

}  // namespace

FontSet::~FontSet() {
  Release();
  replaced_.swap(fonts_);
  Release();
}

void FontSet::Remake(int dpi) {
  Release();
  replaced_.swap(fonts_);
  for (FontKind kind :
       {FontKind::kText, FontKind::kLog, FontKind::kLabel, FontKind::kGroup, FontKind::kTab}) {
    const int pixels = FontPixels(kind, dpi);
    for (bool bold : {false, true}) {
      HFONT font = MakeFont(FontOf(kind, dpi).face, pixels, bold);
      if (!HasFace(font, FontOf(kind, dpi).face)) {
        DeleteObject(font);
        font = MakeFont(FontOf(FontKind::kText).face, pixels, bold);
      }
      fonts_[{kind, bold}] = font;
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

Theme CurrentTheme() {
  HIGHCONTRASTA contrast{};
  contrast.cbSize = sizeof contrast;
  const bool known = SystemParametersInfoA(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0);
  return {known && (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0,
          [](int number) { return static_cast<std::uint32_t>(GetSysColor(number)); }};
}

COLORREF DrawnColour(Colour colour) {
  return CurrentTheme().Drawn(colour);
}

TextColours ColoursOf(const Control& control) {
  const ControlKind kind = control.kind();
  const bool is_input =
      kind == ControlKind::kTextBox || kind == ControlKind::kComboBox || IsList(kind);
  if (is_input && !control.enabled) return {kGreyText, kButtonFace};
  return Legible({control.fore_colour, control.back_colour}, CurrentTheme());
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
  const TextColours colours = ColoursOf(button);
  const COLORREF shadow = DrawnColour(kButtonShadow);
  COLORREF fill = DrawnColour(colours.ground);
  FrameRect(dc, &rect, brushes.Get(disabled ? Mix(shadow, fill, 50) : shadow));
  InflateRect(&rect, -1, -1);
  // A colour that the theme does not allow becomes a thicker frame.
  if (colours.ground != button.back_colour) {
    FrameRect(dc, &rect, brushes.Get(DrawnColour(colours.text)));
    InflateRect(&rect, -1, -1);
  }
  if (pressed) fill = Mix(fill, shadow, 70);
  FillRect(dc, &rect, brushes.Get(fill));

  const Selected with_font(dc, font);
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, DrawnColour(disabled ? kGreyText : colours.text));
  RECT text = rect;
  if (pressed) OffsetRect(&text, 1, 1);
  DrawTextA(dc, button.caption.get().c_str(), -1, &text,
            DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
  if ((item.itemState & ODS_FOCUS) != 0 && (item.itemState & ODS_NOFOCUSRECT) == 0) {
    InflateRect(&rect, -2, -2);
    SetTextColor(dc, 0);
    SetBkColor(dc, RGB(255, 255, 255));
    DrawFocusRect(dc, &rect);
  }
}

namespace {

constexpr int kTickBox = 13 * kTwipsPerPixel;
constexpr int kTickMargin = 3 * kTwipsPerPixel;

bool IsSelected(const DRAWITEMSTRUCT& item) {
  return item.itemID != static_cast<UINT>(-1) && (item.itemState & ODS_SELECTED) != 0;
}

// Where the theme has no pair for the selected line, a narrow bar before its text marks it too.
void DrawSelectionBar(const DRAWITEMSTRUCT& item, const RECT& row, int dpi, BrushCache& brushes) {
  if (!IsSelected(item) || CurrentTheme().high_contrast) return;
  RECT bar = row;
  bar.right = bar.left + std::max(1, dpi / kDesignDpi);
  FillRect(item.hDC, &bar, brushes.Get(kHighlight));
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

void DrawComboLine(const DRAWITEMSTRUCT& item, const ComboBox& combo, int dpi,
                   BrushCache& brushes) {
  // The chosen one as the system draws it in the combo boxes that it draws.
  const bool chosen = IsSelected(item) && combo.enabled;
  const TextColours colours = chosen ? TextColours{kHighlightText, kHighlight} : ColoursOf(combo);
  FillRect(item.hDC, &item.rcItem, brushes.Get(colours.ground));
  const bool none = item.itemID == static_cast<UINT>(-1);
  const std::string text = none ? combo.text.get() : LineText(item, CB_GETLBTEXTLEN, CB_GETLBTEXT);
  DrawLineText(item, text, DrawnColour(colours.text), ToPixels(kTickMargin, dpi));
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
  if (shape.border_width <= 1) return;
  InflateRect(&rect, -width, -width);
  const HPEN line =
      CreatePen(PS_INSIDEFRAME, std::max(1, dpi / kDesignDpi), DrawnColour(kWindowText));
  {
    const Selected with_pen(item.hDC, line);
    const Selected with_no_brush(item.hDC, GetStockObject(NULL_BRUSH));
    Ellipse(item.hDC, rect.left, rect.top, rect.right, rect.bottom);
  }
  DeleteObject(line);
}

void DrawLine(const DRAWITEMSTRUCT& item, const Control& list, HFONT font, int dpi,
              BrushCache& brushes, int indent) {
  const HDC dc = item.hDC;
  // The row ends where the window does, however far it is scrolled to the side.
  RECT row = item.rcItem;
  RECT clip{};
  if (GetClipBox(dc, &clip) != ERROR) row.right = std::max(row.right, clip.right);
  const bool exists = item.itemID != static_cast<UINT>(-1);
  const DrawnColours colours = ColoursOfLine(ColoursOf(list), IsSelected(item), CurrentTheme());
  const std::string text =
      exists ? LineText(item.hwndItem, static_cast<int>(item.itemID)) : std::string{};
  const Selected with_font(dc, font);
  SetTextColor(dc, colours.text);
  SetBkColor(dc, colours.ground);
  TEXTMETRICA metrics{};
  GetTextMetricsA(dc, &metrics);
  const int top = static_cast<int>(row.top + (row.bottom - row.top - metrics.tmHeight) / 2);
  ExtTextOutA(dc, static_cast<int>(row.left) + indent + kLineMargin, top, ETO_OPAQUE | ETO_CLIPPED,
              &row, text.data(), static_cast<UINT>(text.size()), nullptr);
  DrawSelectionBar(item, row, dpi, brushes);
  if ((item.itemState & ODS_FOCUS) != 0 && (item.itemState & ODS_NOFOCUSRECT) == 0) {
    SetTextColor(dc, 0);
    SetBkColor(dc, RGB(255, 255, 255));
    DrawFocusRect(dc, &row);
  }
}

void DrawCheckLine(const DRAWITEMSTRUCT& item, const CheckList& list, HFONT font, int dpi,
                   BrushCache& brushes) {
  const int margin = ToPixels(kTickMargin, dpi);
  const int height = static_cast<int>(item.rcItem.bottom - item.rcItem.top);
  const int size = std::min(ToPixels(kTickBox, dpi), height - 2);
  DrawLine(item, list, font, dpi, brushes, 2 * margin + size);
  if (item.itemID == static_cast<UINT>(-1)) return;
  const HDC dc = item.hDC;
  const int left = static_cast<int>(item.rcItem.left) + margin;
  const int top = static_cast<int>(item.rcItem.top) + (height - size) / 2;
  RECT box{left, top, left + size, top + size};
  FillRect(dc, &box, brushes.Get(kWindowBackground));
  for (int edge = std::max(1, MulDiv(1, dpi, kDesignDpi)); edge > 0; --edge) {
    FrameRect(dc, &box, brushes.Get(kWindowText));
    InflateRect(&box, -1, -1);
  }
  // The state may have fewer lines than the window by now.
  if (!list.ticked(static_cast<int>(item.itemID))) return;
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
