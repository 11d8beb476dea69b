// Tool tips by the common control, ANSI texts.
#include "ui/tool_tips_win.h"

#include <windows.h>
//
#include <commctrl.h>

namespace corvane {

namespace {

// Two tools per control: its window, and its rectangle in the owner.
TTTOOLINFOA WindowTool(void* control) {
  TTTOOLINFOA tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = GetParent(static_cast<HWND>(control));
  tool.uId = reinterpret_cast<UINT_PTR>(control);
  return tool;
}

TTTOOLINFOA RectTool(void* owner, int id) {
  TTTOOLINFOA tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_SUBCLASS;
  tool.hwnd = static_cast<HWND>(owner);
  tool.uId = static_cast<UINT_PTR>(id);
  return tool;
}

void Send(void* tips, UINT message, TTTOOLINFOA& tool) {
  SendMessageA(static_cast<HWND>(tips), message, 0, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace

void ToolTips::Create(void* owner) {
  owner_ = owner;
  tips_ = CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr,
                          WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT, CW_USEDEFAULT,
                          CW_USEDEFAULT, CW_USEDEFAULT, static_cast<HWND>(owner), nullptr,
                          GetModuleHandleA(nullptr), nullptr);
}

void ToolTips::Add(void* control, int id) {
  if (tips_ == nullptr) return;
  char nothing[] = "";
  TTTOOLINFOA window = WindowTool(control);
  window.lpszText = nothing;
  Send(tips_, TTM_ADDTOOLA, window);
  TTTOOLINFOA rect = RectTool(owner_, id);
  rect.lpszText = nothing;
  Send(tips_, TTM_ADDTOOLA, rect);
}

void ToolTips::SetText(void* control, int id, const std::string& text) {
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
