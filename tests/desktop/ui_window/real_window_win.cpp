// System calls of the main window's tests.
#include "desktop/ui_window/real_window_win.h"

#include <psapi.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <climits>

#include "desktop/harness/system_objects_win.h"

namespace corvane::ui_test {

namespace {

LPARAM Middle(Handle window) {
  RECT rect{};
  GetClientRect(window, &rect);
  return MAKELPARAM(rect.right / 2, rect.bottom / 2);
}

PixelRect FromRect(const RECT& rect) {
  return {static_cast<int>(rect.left), static_cast<int>(rect.top),
          static_cast<int>(rect.right - rect.left), static_cast<int>(rect.bottom - rect.top)};
}

struct ToolTipSearch {
  HWND owner;
  HWND found;
};

BOOL CALLBACK FindToolTips(HWND window, LPARAM data) {
  auto& search = *reinterpret_cast<ToolTipSearch*>(data);
  std::array<char, 64> name{};
  GetClassNameA(window, name.data(), static_cast<int>(name.size()));
  if (std::string(name.data()) != TOOLTIPS_CLASSA) return TRUE;
  if (GetWindow(window, GW_OWNER) != search.owner) return TRUE;
  search.found = window;
  return FALSE;
}

HWND ToolTipsOf(Handle window) {
  ToolTipSearch search{window, nullptr};
  EnumThreadWindows(GetCurrentThreadId(), FindToolTips, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

BOOL CALLBACK UniteScreens(HMONITOR monitor, HDC, LPRECT, LPARAM data) {
  MONITORINFO info{};
  info.cbSize = sizeof info;
  auto& all = *reinterpret_cast<RECT*>(data);
  if (GetMonitorInfoA(monitor, &info)) UnionRect(&all, &all, &info.rcWork);
  return TRUE;
}

LRESULT CALLBACK NotePlace(HWND window, UINT message, WPARAM w, LPARAM l, UINT_PTR,
                           DWORD_PTR places) {
  if (message == WM_WINDOWPOSCHANGED) {
    const auto& position = *reinterpret_cast<const WINDOWPOS*>(l);
    if ((position.flags & (SWP_NOMOVE | SWP_NOSIZE)) != (SWP_NOMOVE | SWP_NOSIZE)) {
      RECT outer{};
      GetWindowRect(window, &outer);
      reinterpret_cast<std::vector<PixelRect>*>(places)->push_back(FromRect(outer));
    }
  }
  return DefSubclassProc(window, message, w, l);
}

// A device context with the window's font selected.
class FontContext {
 public:
  explicit FontContext(Handle window) : window_(window), dc_(GetDC(window_)) {
    before_ = SelectObject(dc_, reinterpret_cast<HGDIOBJ>(SendMessageA(window_, WM_GETFONT, 0, 0)));
  }
  ~FontContext() {
    SelectObject(dc_, before_);
    ReleaseDC(window_, dc_);
  }
  FontContext(const FontContext&) = delete;
  FontContext& operator=(const FontContext&) = delete;
  [[nodiscard]] HDC dc() const { return dc_; }

 private:
  HWND window_;
  HDC dc_;
  HGDIOBJ before_;
};

}  // namespace

std::uintptr_t NumberOf(Handle window) {
  return reinterpret_cast<std::uintptr_t>(window);
}

Handle ChildOf(Handle window, ControlId id) {
  return GetDlgItem(window, Number(id));
}

std::vector<int> ChildIds(Handle window) {
  std::vector<int> ids;
  for (HWND child = GetWindow(window, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    ids.push_back(GetDlgCtrlID(child));
  }
  return ids;
}

std::string TextOf(Handle window) {
  std::array<char, 512> text{};
  const int length = GetWindowTextA(window, text.data(), static_cast<int>(text.size()));
  return {text.data(), static_cast<std::size_t>(length)};
}

void SetText(Handle window, const std::string& text) {
  SendMessageA(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

LRESULT Send(Handle window, UINT message, WPARAM w, LPARAM l) {
  return SendMessageA(window, message, w, l);
}

void Post(Handle window, UINT message, WPARAM w, LPARAM l) {
  PostMessageA(window, message, w, l);
}

void PostClick(Handle window) {
  Post(window, WM_LBUTTONDOWN, MK_LBUTTON, Middle(window));
  Post(window, WM_LBUTTONUP, 0, Middle(window));
}

void PostDoubleClick(Handle window) {
  PostClick(window);
  Post(window, WM_LBUTTONDBLCLK, MK_LBUTTON, Middle(window));
  Post(window, WM_LBUTTONUP, 0, Middle(window));
}

void PostClickAtLine(Handle list, int line, bool twice) {
  RECT item{};
  SendMessageA(list, LB_GETITEMRECT, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(&item));
  const LPARAM place = MAKELPARAM(item.left + 4, (item.top + item.bottom) / 2);
  Post(list, WM_LBUTTONDOWN, MK_LBUTTON, place);
  Post(list, WM_LBUTTONUP, 0, place);
  if (!twice) return;
  Post(list, WM_LBUTTONDBLCLK, MK_LBUTTON, place);
  Post(list, WM_LBUTTONUP, 0, place);
}

void SendCommand(Handle parent, ControlId id, int code) {
  SendMessageA(parent, WM_COMMAND,
               MAKEWPARAM(static_cast<WORD>(Number(id)), static_cast<WORD>(code)),
               reinterpret_cast<LPARAM>(ChildOf(parent, id)));
}

bool IsShown(Handle window) {
  return IsWindowVisible(window) != FALSE;
}
bool HasVisibleStyle(Handle window) {
  return (GetWindowLongPtrA(window, GWL_STYLE) & WS_VISIBLE) != 0;
}
bool IsEnabled(Handle window) {
  return IsWindowEnabled(window) != FALSE;
}
bool IsWindowAlive(Handle window) {
  return IsWindow(window) != FALSE;
}
bool IsMinimised(Handle window) {
  return IsIconic(window) != FALSE;
}
void Minimise(Handle window) {
  ShowWindow(window, SW_MINIMIZE);
}
Handle Focused() {
  return GetFocus();
}
void Focus(Handle window) {
  SetFocus(window);
}
bool IsForeground(Handle window) {
  return GetForegroundWindow() == window;
}
void TakeForeground(Handle window) {
  SetForegroundWindow(window);
}
Handle MakeOtherWindow() {
  const HWND window = CreateWindowExA(0, WC_EDITA, "other", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                      200, 100, nullptr, nullptr, nullptr, nullptr);
  SetForegroundWindow(window);
  return window;
}
void EndWindow(Handle window) {
  DestroyWindow(window);
}

PixelRect OuterRect(Handle window) {
  RECT rect{};
  GetWindowRect(window, &rect);
  return FromRect(rect);
}

PixelRect RectIn(Handle parent, Handle child) {
  RECT rect{};
  GetWindowRect(child, &rect);
  MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&rect), 2);
  return FromRect(rect);
}

PixelRect ClientRect(Handle window) {
  RECT rect{};
  GetClientRect(window, &rect);
  return FromRect(rect);
}

void SendDpiChange(Handle window, int dpi) {
  SIZE size{};
  EXPECT_NE(SendMessageA(window, WM_GETDPISCALEDSIZE, static_cast<WPARAM>(dpi),
                         reinterpret_cast<LPARAM>(&size)),
            0);
  RECT outer{};
  GetWindowRect(window, &outer);
  RECT suggested{outer.left, outer.top, outer.left + size.cx, outer.top + size.cy};
  SendMessageA(window, WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&suggested));
}

int WrappedHeight(Handle window, const std::string& text, int width) {
  const FontContext context(window);
  RECT rect{0, 0, width, 0};
  DrawTextA(context.dc(), text.c_str(), -1, &rect, DT_CALCRECT | DT_WORDBREAK);
  // A word that is wider than the line makes the rectangle wider.
  return rect.right > width ? INT_MAX : static_cast<int>(rect.bottom);
}

std::vector<PixelRect> PlacesDuring(Handle window, const std::function<void()>& work) {
  std::vector<PixelRect> places;
  SetWindowSubclass(window, NotePlace, 0, reinterpret_cast<DWORD_PTR>(&places));
  work();
  RemoveWindowSubclass(window, NotePlace, 0);
  return places;
}

std::string ListLine(Handle list, int line) {
  const auto index = static_cast<WPARAM>(line);
  const LRESULT length = SendMessageA(list, LB_GETTEXTLEN, index, 0);
  if (length < 0) return "no such line";
  std::string text(static_cast<std::size_t>(length) + 1, '\0');
  SendMessageA(list, LB_GETTEXT, index, reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

int ScrollEnd(Handle list) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE;
  GetScrollInfo(list, SB_VERT, &info);
  return info.nMax;
}

void MoveTo(Handle window, int left, int top) {
  SetWindowPos(window, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
}

PixelRect WorkArea() {
  RECT all{};
  EnumDisplayMonitors(nullptr, nullptr, UniteScreens, reinterpret_cast<LPARAM>(&all));
  return FromRect(all);
}

FontFacts FontOfWindow(Handle window) {
  LOGFONTA font{};
  GetObjectA(reinterpret_cast<HGDIOBJ>(SendMessageA(window, WM_GETFONT, 0, 0)), sizeof font, &font);
  return {font.lfFaceName, static_cast<int>(font.lfHeight), static_cast<int>(font.lfWeight)};
}

int TextWidth(Handle window, const std::string& text) {
  const FontContext context(window);
  SIZE size{};
  GetTextExtentPoint32A(context.dc(), text.data(), static_cast<int>(text.size()), &size);
  return static_cast<int>(size.cx);
}

bool HasOutlineFont(Handle window) {
  const FontContext context(window);
  TEXTMETRICA metrics{};
  GetTextMetricsA(context.dc(), &metrics);
  return (metrics.tmPitchAndFamily & (TMPF_VECTOR | TMPF_TRUETYPE)) != 0;
}

int TextHeight(Handle window) {
  const FontContext context(window);
  TEXTMETRICA metrics{};
  GetTextMetricsA(context.dc(), &metrics);
  return static_cast<int>(metrics.tmHeight);
}

std::uint32_t LabelTextColour(Handle window, Handle label) {
  const HDC dc = GetDC(label);
  SetTextColor(dc, 0x123456);
  SendMessageA(window, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc),
               reinterpret_cast<LPARAM>(label));
  const COLORREF colour = GetTextColor(dc);
  ReleaseDC(label, dc);
  return colour;
}

std::uint32_t PixelOf(Handle window, int x, int y) {
  UpdateWindow(window);
  GdiFlush();
  const HDC dc = GetDC(window);
  const COLORREF colour = GetPixel(dc, x, y);
  ReleaseDC(window, dc);
  return colour;
}

std::uint32_t ButtonFaceColour() {
  return GetSysColor(COLOR_BTNFACE);
}

std::string ToolTipOf(Handle window, Handle child) {
  std::array<char, 512> text{};
  TTTOOLINFOA tool{};
  tool.cbSize = sizeof tool;
  tool.hwnd = window;
  tool.uId = reinterpret_cast<UINT_PTR>(child);
  tool.lpszText = text.data();
  SendMessageA(ToolTipsOf(window), TTM_GETTEXTA, text.size(), reinterpret_cast<LPARAM>(&tool));
  return text.data();
}

PixelRect DisabledToolTipRect(Handle window, ControlId id) {
  TTTOOLINFOA tool{};
  tool.cbSize = sizeof tool;
  tool.hwnd = window;
  tool.uId = static_cast<UINT_PTR>(Number(id));
  SendMessageA(ToolTipsOf(window), TTM_GETTOOLINFOA, 0, reinterpret_cast<LPARAM>(&tool));
  return FromRect(tool.rect);
}

bool ToolTipsShowAmpersands(Handle window) {
  return (GetWindowLongPtrA(ToolTipsOf(window), GWL_STYLE) & TTS_NOPREFIX) != 0;
}

MenuFacts MenuItemOf(Handle window, ControlId id) {
  std::array<char, 256> text{};
  MENUITEMINFOA info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_STRING | MIIM_STATE;
  info.dwTypeData = text.data();
  info.cch = static_cast<UINT>(text.size());
  const BOOL found = GetMenuItemInfoA(GetMenu(window), static_cast<UINT>(Number(id)), FALSE, &info);
  return {text.data(), found != FALSE, (info.fState & MFS_CHECKED) != 0};
}

std::vector<std::string> MenuBarTexts(Handle window) {
  const HMENU bar = GetMenu(window);
  std::vector<std::string> texts;
  for (int index = 0; index < GetMenuItemCount(bar); ++index) {
    std::array<char, 256> text{};
    GetMenuStringA(bar, static_cast<UINT>(index), text.data(), static_cast<int>(text.size()),
                   MF_BYPOSITION);
    texts.emplace_back(text.data());
  }
  return texts;
}

OwnUse UseOfThisProgram() {
  OwnUse use;
  const auto count_top = [](HWND window, LPARAM count) -> BOOL {
    ++*reinterpret_cast<std::size_t*>(count);
    EnumChildWindows(
        window,
        [](HWND, LPARAM inner) -> BOOL {
          ++*reinterpret_cast<std::size_t*>(inner);
          return TRUE;
        },
        count);
    return TRUE;
  };
  EnumThreadWindows(GetCurrentThreadId(), count_top, reinterpret_cast<LPARAM>(&use.windows));
  const desktop::SystemObjects objects = desktop::ObjectsOf(GetCurrentProcess());
  use.gdi_objects = objects.gdi;
  use.user_objects = objects.user;
  PROCESS_MEMORY_COUNTERS memory{};
  memory.cb = sizeof memory;
  if (GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory) != FALSE) {
    use.private_kib = memory.PagefileUsage / 1024;
  }
  return use;
}

std::size_t KibLostByLabels(int labels) {
  const HWND parent = CreateWindowExA(0, WC_STATICA, "", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr,
                                      nullptr, nullptr);
  const auto font = reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT));
  const std::size_t before_kib = UseOfThisProgram().private_kib;
  for (int label = 0; label < labels; ++label) {
    const HWND window = CreateWindowExA(0, WC_STATICA, "", WS_CHILD, 0, 0, 10, 10, parent, nullptr,
                                        nullptr, nullptr);
    SendMessageA(window, WM_SETFONT, font, FALSE);
    DestroyWindow(window);
  }
  const std::size_t after_kib = UseOfThisProgram().private_kib;
  DestroyWindow(parent);
  return after_kib - std::min(before_kib, after_kib);
}

void AdmitSentMessages(const bool volatile& done) {
  while (!done) {
    MSG message;
    PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    Sleep(1);
  }
}

}  // namespace corvane::ui_test
