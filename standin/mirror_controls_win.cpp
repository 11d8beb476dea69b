// The system's own controls under names of our own.
#include "standin/mirror_controls_win.h"

#include <windows.h>

#include <algorithm>

#include "standin/mirror_paint_win.h"

namespace corvane::standin {

namespace {

constexpr DWORD kFrameStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
constexpr WPARAM kListExtent = 1400;
constexpr LPARAM kEndOfText = 0x7FFFFFFE;
constexpr LPARAM kMaxEditBytes = 0x7FFFFFFE;

struct Look {
  const char* base;  // the system's class; nullptr: none
  DWORD style;
};

Look LookOf(Kind kind) {
  switch (kind) {
    case Kind::kFrame:
      return {nullptr, kFrameStyle | WS_CLIPCHILDREN};
    case Kind::kPanel:
      return {nullptr, WS_CHILD | WS_CLIPCHILDREN};
    case Kind::kLabel:
      return {"STATIC", WS_CHILD | SS_LEFT | SS_NOPREFIX};
    case Kind::kButton:
      return {"BUTTON", WS_CHILD | WS_TABSTOP | BS_PUSHBUTTON};
    case Kind::kCheckBox:
      return {"BUTTON", WS_CHILD | WS_TABSTOP | BS_CHECKBOX};
    case Kind::kDrawnCheckBox:
    case Kind::kSelector:
      return {"BUTTON", WS_CHILD | WS_TABSTOP | BS_OWNERDRAW};
    case Kind::kTextBox:
      return {"EDIT", WS_CHILD | WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL};
    case Kind::kMultiLine:
      return {"EDIT", WS_CHILD | WS_TABSTOP | WS_BORDER | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE |
                          ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_READONLY};
    case Kind::kListBox:
      return {"LISTBOX",
              WS_CHILD | WS_BORDER | WS_VSCROLL | WS_HSCROLL | LBS_NOINTEGRALHEIGHT | LBS_NOSEL};
  }
  return {nullptr, WS_CHILD};
}

}  // namespace

void* ControlFactory::Register(const Window& window) {
  if (IsEdit(window.kind)) return RegisterEdit(window.class_name);
  const char* base = LookOf(window.kind).base;
  WNDCLASSEXA info{};
  info.cbSize = sizeof info;
  if (base != nullptr) {
    GetClassInfoExA(nullptr, base, &info);
  } else {
    info.lpfnWndProc = DefWindowProcA;
    info.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    info.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  }
  const WNDPROC original = info.lpfnWndProc;
  if (registered_.insert(window.class_name).second) {
    info.lpfnWndProc = reinterpret_cast<WNDPROC>(procedure_);
    info.hInstance = GetModuleHandleA(nullptr);
    info.lpszClassName = window.class_name.c_str();
    info.style &= ~static_cast<UINT>(CS_GLOBALCLASS);
    RegisterClassExA(&info);
  }
  return reinterpret_cast<void*>(original);
}

// Unicode through and through: EM_GETLINE from another process is to be repaired as it arrives,
// before a conversion copies by the unfilled length word.
void* ControlFactory::RegisterEdit(const std::string& name) {
  WNDCLASSEXW info{};
  info.cbSize = sizeof info;
  GetClassInfoExW(nullptr, L"EDIT", &info);
  const WNDPROC original = info.lpfnWndProc;
  if (registered_.insert(name).second) {
    const std::wstring wide(name.begin(), name.end());  // letters, digits, "_" and "." alone
    info.lpfnWndProc = reinterpret_cast<WNDPROC>(procedure_);
    info.hInstance = GetModuleHandleA(nullptr);
    info.lpszClassName = wide.c_str();
    info.style &= ~static_cast<UINT>(CS_GLOBALCLASS);
    RegisterClassExW(&info);
  }
  return reinterpret_cast<void*>(original);
}

void ControlFactory::Create(const Window& window, void* parent, void* data) const {
  const Box& box = window.box;
  const HWND holder = static_cast<HWND>(parent);
  const HINSTANCE program = GetModuleHandleA(nullptr);
  const bool shown = window.visible && window.kind != Kind::kFrame;
  const DWORD style = LookOf(window.kind).style | (shown ? WS_VISIBLE : 0);
  if (!IsEdit(window.kind)) {
    const HWND made =
        CreateWindowExA(0, window.class_name.c_str(), window.text.c_str(), style, box.left, box.top,
                        box.width, box.height, holder, nullptr, program, data);
    if (window.kind == Kind::kListBox) {
      SendMessageA(made, LB_SETHORIZONTALEXTENT, kListExtent, 0);
      FillList(made, window.items);
    }
    if (window.checked) SendMessageA(made, BM_SETCHECK, BST_CHECKED, 0);
    return;
  }
  const std::wstring wide(window.class_name.begin(), window.class_name.end());
  const HWND made = CreateWindowExW(0, wide.c_str(), L"", style, box.left, box.top, box.width,
                                    box.height, holder, nullptr, program, data);
  if (window.kind == Kind::kMultiLine) SendMessageA(made, EM_SETLIMITTEXT, kMaxEditBytes, 0);
  const bool many = window.kind == Kind::kMultiLine;
  SetWindowTextA(made, (many ? window.lines.text() : window.text).c_str());
}

bool IsEdit(Kind kind) {
  return kind == Kind::kTextBox || kind == Kind::kMultiLine;
}

std::string WindowText(void* handle) {
  const HWND window = static_cast<HWND>(handle);
  std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
  text.resize(
      static_cast<std::size_t>(GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

void FillList(void* handle, const std::vector<std::string>& items) {
  const HWND list = static_cast<HWND>(handle);
  SendMessageA(list, WM_SETREDRAW, FALSE, 0);
  SendMessageA(list, LB_RESETCONTENT, 0, 0);
  for (const std::string& item : items) {
    SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
  }
  SendMessageA(list, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(list, nullptr, TRUE);
}

void AddToList(void* handle, const std::vector<std::string>& items, std::size_t added) {
  if (items.empty()) return;
  const HWND list = static_cast<HWND>(handle);
  SendMessageA(list, WM_SETREDRAW, FALSE, 0);
  for (std::size_t i = items.size() - std::min(added, items.size()); i < items.size(); ++i) {
    SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(items[i].c_str()));
  }
  while (SendMessageA(list, LB_GETCOUNT, 0, 0) > static_cast<LRESULT>(items.size())) {
    if (SendMessageA(list, LB_DELETESTRING, 0, 0) == LB_ERR) break;
  }
  SendMessageA(list, LB_SETTOPINDEX, items.size() - 1, 0);
  SendMessageA(list, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(list, nullptr, TRUE);
}

void AppendToEdit(void* handle, const std::string& text) {
  const HWND edit = static_cast<HWND>(handle);
  SendMessageA(edit, EM_SETSEL, kEndOfText, kEndOfText);
  SendMessageA(edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
}

// A foreign fault repaired where it arrives: Wine 8 passes EM_GETLINE from another process on with
// a block that begins one word inside an allocation, and fills neither the block's first word, by
// which the control decides how many characters it copies, nor the word before it, by which the
// system decides how many it sends back. The heap knows how many there is room for.
void RepairGetLine(std::intptr_t block) {
  if (!IsWine() || block == 0 || (InSendMessageEx(nullptr) & ISMEX_SEND) == 0) return;
  WORD* words = reinterpret_cast<WORD*>(block) - 1;
  const SIZE_T bytes = HeapSize(GetProcessHeap(), 0, words);
  if (bytes == static_cast<SIZE_T>(-1) || bytes < 2 * sizeof(WORD)) return;
  const SIZE_T room = (bytes - sizeof(WORD)) / sizeof(wchar_t);
  words[0] = words[1] = static_cast<WORD>(std::min<SIZE_T>(room, 0xFFFF));
}

}  // namespace corvane::standin
