// Tool tips by the common control, ANSI texts.
#include "ui/tool_tips_win.h"

#include <commctrl.h>

#include <algorithm>

namespace corvane {

namespace {

// Two tools per control: its window, and its rectangle in the owner.
TTTOOLINFOA WindowTool(HWND control) {
  TTTOOLINFOA tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_IDISHWND;
  tool.hwnd = GetParent(control);
  tool.uId = reinterpret_cast<UINT_PTR>(control);
  return tool;
}

TTTOOLINFOA RectTool(HWND owner, int id) {
  TTTOOLINFOA tool{};
  tool.cbSize = sizeof tool;
  tool.hwnd = owner;
  tool.uId = static_cast<UINT_PTR>(id);
  return tool;
}

// The one that is put where it is wanted.
constexpr UINT_PTR kPlacedId = 1;

TTTOOLINFOA PlacedTool(HWND owner) {
  TTTOOLINFOA tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_TRACK | TTF_ABSOLUTE | TTF_TRANSPARENT;
  tool.hwnd = owner;
  tool.uId = kPlacedId;
  return tool;
}

RECT ScreenOf(const RECT& place) {
  MONITORINFO info{};
  info.cbSize = sizeof info;
  GetMonitorInfoA(MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &info);
  return info.rcWork;
}

void Send(HWND tips, UINT message, TTTOOLINFOA& tool) {
  SendMessageA(tips, message, 0, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace

void ToolTips::Create(HWND owner) {
  owner_ = owner;
  tips_ = CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr,
                          WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT, CW_USEDEFAULT,
                          CW_USEDEFAULT, CW_USEDEFAULT, owner, nullptr, GetModuleHandleA(nullptr),
                          nullptr);
  if (tips_ == nullptr) return;
  char nothing[] = "";
  TTTOOLINFOA placed = PlacedTool(owner);
  placed.lpszText = nothing;
  Send(tips_, TTM_ADDTOOLA, placed);
}

void ToolTips::Add(HWND control, int id) {
  if (tips_ == nullptr) return;
  char nothing[] = "";
  TTTOOLINFOA window = WindowTool(control);
  window.lpszText = nothing;
  Send(tips_, TTM_ADDTOOLA, window);
  TTTOOLINFOA rect = RectTool(owner_, id);
  rect.lpszText = nothing;
  Send(tips_, TTM_ADDTOOLA, rect);
}

void ToolTips::Relay(MSG message) {
  if (tips_ == nullptr || message.message < WM_MOUSEFIRST || message.message > WM_MOUSELAST) return;
  SendMessageA(tips_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&message));
}

void ToolTips::SetText(HWND control, int id, const std::string& text) {
  if (tips_ == nullptr) return;
  std::string copy = text;
  TTTOOLINFOA window = WindowTool(control);
  window.lpszText = copy.data();
  Send(tips_, TTM_UPDATETIPTEXTA, window);
  TTTOOLINFOA rect = RectTool(owner_, id);
  rect.lpszText = copy.data();
  Send(tips_, TTM_UPDATETIPTEXTA, rect);
}

void ToolTips::ShowPlaced(const std::string& text, const RECT& place) {
  if (tips_ == nullptr) return;
  std::string copy = text;
  TTTOOLINFOA tool = PlacedTool(owner_);
  tool.lpszText = copy.data();
  const RECT screen = ScreenOf(place);
  // With a width to keep to, a text that is wider than the screen takes several lines.
  SendMessageA(tips_, TTM_SETMAXTIPWIDTH, 0, screen.right - screen.left);
  Send(tips_, TTM_UPDATETIPTEXTA, tool);
  RECT outer = place;
  SendMessageA(tips_, TTM_ADJUSTRECT, TRUE, reinterpret_cast<LPARAM>(&outer));
  const auto size = static_cast<LPARAM>(
      SendMessageA(tips_, TTM_GETBUBBLESIZE, 0, reinterpret_cast<LPARAM>(&tool)));
  const int left = std::max(
      static_cast<int>(screen.left),
      std::min(static_cast<int>(outer.left), static_cast<int>(screen.right) - LOWORD(size)));
  SendMessageA(tips_, TTM_TRACKPOSITION, 0, MAKELPARAM(left, outer.top));
  SendMessageA(tips_, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
}

void ToolTips::HidePlaced() {
  if (tips_ == nullptr) return;
  TTTOOLINFOA tool = PlacedTool(owner_);
  SendMessageA(tips_, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&tool));
}

void ToolTips::SetDisabledRect(int id, const PixelRect& rect) {
  if (tips_ == nullptr) return;
  TTTOOLINFOA tool = RectTool(owner_, id);
  tool.rect = {rect.left, rect.top, rect.right(), rect.bottom()};
  Send(tips_, TTM_NEWTOOLRECTA, tool);
}

}  // namespace corvane
