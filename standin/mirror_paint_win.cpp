// Draws straight into the device context that the system gives.
#include "standin/mirror_paint_win.h"

#include <windows.h>

#include "standin/control_protocol.h"

namespace corvane::standin {

namespace {

constexpr int kFontHeight = -12;
constexpr RECT kGlyph{2, 2, 14, 14};
constexpr COLORREF kHeaderColour = RGB(214, 222, 235);
constexpr COLORREF kSelectedColour = 10580318;

void Fill(HDC device, const RECT& rect, COLORREF colour) {
  const HBRUSH brush = CreateSolidBrush(colour);
  FillRect(device, &rect, brush);
  DeleteObject(brush);
}

void DrawCheckBox(HDC device, const Window& window) {
  RECT all{0, 0, window.box.width, window.box.height};
  Fill(device, all, GetSysColor(COLOR_BTNFACE));
  std::int32_t colour = window.checked ? kCheckedColour : kUncheckedColour;
  if (window.paint == Paint::kOther) colour = kOtherColour;
  Fill(device, kGlyph, static_cast<COLORREF>(colour));
  FrameRect(device, &kGlyph, static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH)));
  all.left = kGlyph.right + 6;
  SetTextColor(device, GetSysColor(COLOR_BTNTEXT));
  DrawTextA(device, window.text.c_str(), -1, &all, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
}

void DrawSelector(HDC device, const Window& window) {
  RECT all{0, 0, window.box.width, window.box.height};
  Fill(device, all, window.checked ? kSelectedColour : GetSysColor(COLOR_BTNFACE));
  DrawEdge(device, &all, window.checked ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT);
  SetTextColor(device, window.checked ? RGB(255, 255, 255) : GetSysColor(COLOR_BTNTEXT));
  DrawTextA(device, window.text.c_str(), -1, &all,
            DT_SINGLELINE | DT_VCENTER | DT_CENTER | DT_NOPREFIX);
}

}  // namespace

MirrorPaint::MirrorPaint()
    : font_(CreateFontA(kFontHeight, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                        OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                        DEFAULT_PITCH | FF_SWISS, "Tahoma")),
      header_brush_(CreateSolidBrush(kHeaderColour)) {}

MirrorPaint::~MirrorPaint() {
  DeleteObject(font_);
  DeleteObject(header_brush_);
}

void* MirrorPaint::PrepareHeader(void* device) const {
  SetBkColor(static_cast<HDC>(device), kHeaderColour);
  return header_brush_;
}

void MirrorPaint::Draw(void* device, const Window& window) const {
  const HDC target = static_cast<HDC>(device);
  const HGDIOBJ before = SelectObject(target, font_);
  SetBkMode(target, TRANSPARENT);
  if (window.kind == Kind::kSelector) {
    DrawSelector(target, window);
  } else {
    DrawCheckBox(target, window);
  }
  SelectObject(target, before);
}

bool IsWine() {
  const HMODULE ntdll = GetModuleHandleA("ntdll.dll");
  return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

bool IsCommandData(std::uintptr_t kind) {
  return kind == kCommandData;
}

}  // namespace corvane::standin
