// System calls of the main window's tests: pointer, keys, colours, and what is painted when.
#include "desktop/ui_window/real_window_win.h"
//
#include <commctrl.h>

#include <array>

#include "desktop/harness/user_input.h"

namespace corvane::ui_test {

namespace {

constexpr std::array<int, 6> kGroundsAndTexts = {COLOR_BTNFACE,    COLOR_WINDOW,    COLOR_BTNTEXT,
                                                 COLOR_WINDOWTEXT, COLOR_BTNSHADOW, COLOR_GRAYTEXT};

struct PaintNotes {
  HWND window;
  std::vector<Painted> painted;
};

LRESULT CALLBACK NotePaint(HWND window, UINT message, WPARAM w, LPARAM l, UINT_PTR,
                           DWORD_PTR data) {
  auto& notes = *reinterpret_cast<PaintNotes*>(data);
  if (message == WM_PAINT || message == WM_NCPAINT) {
    notes.painted.push_back(PaintedNow(notes.window));
  }
  return DefSubclassProc(window, message, w, l);
}

struct TipSearch {
  HWND owner;
  HWND found;
};

BOOL CALLBACK FindShownTip(HWND window, LPARAM data) {
  auto& search = *reinterpret_cast<TipSearch*>(data);
  std::array<char, 64> name{};
  GetClassNameA(window, name.data(), static_cast<int>(name.size()));
  const bool is_tip = std::string(name.data()) == TOOLTIPS_CLASSA;
  if (!is_tip || !IsWindowVisible(window) || GetWindow(window, GW_OWNER) != search.owner) {
    return TRUE;
  }
  search.found = window;
  return FALSE;
}

HWND ShownTip(Handle window) {
  TipSearch search{window, nullptr};
  EnumThreadWindows(GetCurrentThreadId(), FindShownTip, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

}  // namespace

unsigned ThisProgram() {
  return GetCurrentProcessId();
}

std::uint32_t SystemColour(int number) {
  return GetSysColor(number);
}

void SetPixelOf(Handle window, int x, int y, std::uint32_t colour) {
  UpdateWindow(window);
  const HDC dc = GetDC(window);
  SetPixel(dc, x, y, colour);
  ReleaseDC(window, dc);
}

int InkIn(Handle window) {
  const std::uint32_t ground = GetSysColor(COLOR_BTNFACE);
  const PixelRect client = ClientRect(window);
  int ink = 0;
  for (int y = 0; y < client.height; ++y) {
    for (int x = 0; x < client.width / 2; ++x) {
      if (PixelOf(window, x, y) != ground) ++ink;
    }
  }
  return ink;
}

LightOnDark::LightOnDark() {
  for (const int number : kGroundsAndTexts) before_.push_back(GetSysColor(number));
  const std::array<COLORREF, 6> colours = {0, 0, 0xFFFFFF, 0xFFFFFF, 0x808080, 0x3FF23F};
  SetSysColors(static_cast<int>(colours.size()), kGroundsAndTexts.data(), colours.data());
}

LightOnDark::~LightOnDark() {
  SetSysColors(static_cast<int>(before_.size()), kGroundsAndTexts.data(), before_.data());
}

void MovePointer(int x, int y) {
  desktop::MovePointer(x, y);
}

void ClickPointer() {
  desktop::PressMouse(desktop::MouseButton::kLeft);
}

void StrikeKey(int key, int with) {
  desktop::HandKey(key, with);
}

LPARAM PointerIn(Handle window) {
  POINT at{};
  GetCursorPos(&at);
  ScreenToClient(window, &at);
  return MAKELPARAM(at.x, at.y);
}

std::string ShownToolTip(Handle window) {
  const HWND tip = ShownTip(window);
  return tip == nullptr ? std::string{} : TextOf(tip);
}

PixelRect ShownToolTipRect(Handle window) {
  const HWND tip = ShownTip(window);
  return tip == nullptr ? PixelRect{} : OuterRect(tip);
}

bool IsTabStop(Handle window) {
  return (GetWindowLongPtrA(window, GWL_STYLE) & WS_TABSTOP) != 0;
}

Painted PaintedNow(Handle window) {
  Painted now{OuterRect(window), {}};
  for (const int id : ChildIds(window)) {
    const Handle child = GetDlgItem(window, id);
    if (IsWindowVisible(child)) now.children.push_back(RectIn(window, child));
  }
  return now;
}

std::vector<Painted> PaintedDuring(Handle window, const std::function<void()>& work) {
  PaintNotes notes{window, {}};
  std::vector<Handle> windows = {window};
  for (const int id : ChildIds(window)) windows.push_back(GetDlgItem(window, id));
  for (const Handle one : windows) {
    UpdateWindow(one);
    SetWindowSubclass(one, NotePaint, 7, reinterpret_cast<DWORD_PTR>(&notes));
  }
  work();
  for (const Handle one : windows) RemoveWindowSubclass(one, NotePaint, 7);
  return notes.painted;
}

}  // namespace corvane::ui_test
