// Tool tips by the common control, ANSI texts.
#include "ui/tool_tips_win.h"

#include <commctrl.h>

namespace corvane {

namespace {

// Two tools per control: its window, and its rectangle in the owner.
TTTOOLINFOA WindowTool(HWND control) {
  TTTOOLINFOA tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = GetParent(control);
  tool.uId = reinterpret_cast<UINT_PTR>(control);
  return tool;
}

TTTOOLINFOA RectTool(HWND owner, int id) {
  TTTOOLINFOA tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_SUBCLASS;
  tool.hwnd = owner;
  tool.uId = static_cast<UINT_PTR>(id);
  return tool;
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

void ToolTips::SetDisabledRect(int id, const PixelRect& rect) {
  if (tips_ == nullptr) return;
  TTTOOLINFOA tool = RectTool(owner_, id);
  tool.rect = {rect.left, rect.top, rect.right(), rect.bottom()};
  Send(tips_, TTM_NEWTOOLRECTA, tool);
}

}  // namespace corvane
