// The system's own controls under names of our own.
#include "standin/mirror_controls_win.h"

#include <algorithm>

#include "standin/wine_win.h"

namespace corvane::standin {

namespace {

constexpr DWORD kFrameStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
constexpr WORD kIconResource = 1;
constexpr WPARAM kListExtent = 1400;
constexpr LPARAM kEndOfText = 0x7FFFFFFE;
constexpr LPARAM kMaxEditBytes = 0x7FFFFFFE;

constexpr int kFontHeight = -12;
constexpr COLORREF kHeaderColour = RGB(214, 222, 235);
constexpr COLORREF kSelectedColour = 10580318;

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
    case Kind::kCover:
    case Kind::kStranger:
      break;  // made by a process of its own
  }
  return {nullptr, WS_CHILD};
}

void Fill(HDC device, const RECT& rect, COLORREF colour) {
  const HBRUSH brush = CreateSolidBrush(colour);
  FillRect(device, &rect, brush);
  DeleteObject(brush);
}

void DrawCheckBox(HDC device, const Window& window) {
  RECT all{0, 0, window.box.width, window.box.height};
  Fill(device, all, GetSysColor(COLOR_BTNFACE));
  const Glyph look = GlyphAt(window.scale);
  const RECT glyph{look.first, look.first, look.last + 1, look.last + 1};
  std::int32_t colour = window.checked ? look.checked : look.unchecked;
  if (window.paint == Paint::kOther) colour = kOtherColour;
  Fill(device, glyph, static_cast<COLORREF>(colour));
  FrameRect(device, &glyph, static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH)));
  all.left = glyph.right + 6;
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

WNDPROC ControlFactory::Register(const Window& window) {
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
    info.hIcon = LoadIconA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(kIconResource));
  }
  const WNDPROC original = info.lpfnWndProc;
  if (registered_.insert(window.class_name).second) {
    info.lpfnWndProc = procedure_;
    info.hInstance = GetModuleHandleA(nullptr);
    info.lpszClassName = window.class_name.c_str();
    info.style &= ~static_cast<UINT>(CS_GLOBALCLASS);
    RegisterClassExA(&info);
  }
  return original;
}

// Unicode through and through: EM_GETLINE from another process is to be repaired as it arrives,
// before a conversion copies by the unfilled length word.
WNDPROC ControlFactory::RegisterEdit(const std::string& name) {
  WNDCLASSEXW info{};
  info.cbSize = sizeof info;
  GetClassInfoExW(nullptr, L"EDIT", &info);
  const WNDPROC original = info.lpfnWndProc;
  if (registered_.insert(name).second) {
    const std::wstring wide(name.begin(), name.end());  // letters, digits, "_" and "." alone
    info.lpfnWndProc = procedure_;
    info.hInstance = GetModuleHandleA(nullptr);
    info.lpszClassName = wide.c_str();
    info.style &= ~static_cast<UINT>(CS_GLOBALCLASS);
    RegisterClassExW(&info);
  }
  return original;
}

void ControlFactory::Create(const Window& window, HWND parent, void* data) const {
  const Box& box = window.box;
  const HINSTANCE program = GetModuleHandleA(nullptr);
  const bool shown = window.visible && window.kind != Kind::kFrame;
  DWORD style = LookOf(window.kind).style | (shown ? WS_VISIBLE : 0);
  if (window.wrap != Wrap::kNone) style &= ~static_cast<DWORD>(WS_HSCROLL | ES_AUTOHSCROLL);
  if (!IsEdit(window.kind)) {
    const HWND made =
        CreateWindowExA(0, window.class_name.c_str(), window.text.c_str(), style, box.left, box.top,
                        box.width, box.height, parent, nullptr, program, data);
    if (window.kind == Kind::kListBox) {
      SendMessageA(made, LB_SETHORIZONTALEXTENT, kListExtent, 0);
      FillList(made, window.items);
    }
    if (window.checked) SendMessageA(made, BM_SETCHECK, BST_CHECKED, 0);
    return;
  }
  const std::wstring wide(window.class_name.begin(), window.class_name.end());
  const HWND made = CreateWindowExW(0, wide.c_str(), L"", style, box.left, box.top, box.width,
                                    box.height, parent, nullptr, program, data);
  if (window.kind == Kind::kMultiLine) SendMessageA(made, EM_SETLIMITTEXT, kMaxEditBytes, 0);
  const bool many = window.kind == Kind::kMultiLine;
  SetWindowTextA(made, (many ? window.lines.text() : window.text).c_str());
}

ControlPainter::ControlPainter()
    : font_(CreateFontA(kFontHeight, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                        OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                        DEFAULT_PITCH | FF_SWISS, "Tahoma")),
      header_brush_(CreateSolidBrush(kHeaderColour)) {}

ControlPainter::~ControlPainter() {
  DeleteObject(font_);
  DeleteObject(header_brush_);
}

HBRUSH ControlPainter::PrepareHeader(HDC device) const {
  SetBkColor(device, kHeaderColour);
  return header_brush_;
}

void ControlPainter::Draw(HDC device, const Window& window) const {
  const HGDIOBJ before = SelectObject(device, font_);
  SetBkMode(device, TRANSPARENT);
  if (window.kind == Kind::kSelector) {
    DrawSelector(device, window);
  } else {
    DrawCheckBox(device, window);
  }
  SelectObject(device, before);
}

bool IsEdit(Kind kind) {
  return kind == Kind::kTextBox || kind == Kind::kMultiLine;
}

std::string WindowText(HWND window) {
  std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
  text.resize(
      static_cast<std::size_t>(GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

void FillList(HWND list, const std::vector<std::string>& items) {
  SendMessageA(list, WM_SETREDRAW, FALSE, 0);
  SendMessageA(list, LB_RESETCONTENT, 0, 0);
  for (const std::string& item : items) {
    SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
  }
  SendMessageA(list, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(list, nullptr, TRUE);
}

void AddToList(HWND list, const std::vector<std::string>& items, std::size_t added) {
  if (items.empty()) return;
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

void AppendToEdit(HWND edit, const std::string& text) {
  SendMessageA(edit, EM_SETSEL, kEndOfText, kEndOfText);
  SendMessageA(edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
}

// A foreign fault repaired where it arrives: Wine 8 passes EM_GETLINE from another process on with
// a block that begins one word inside an allocation, and fills neither the block's first word, by
// which the control decides how many characters it copies, nor the word before it, by which the
// system decides how many it sends back. The heap knows how many there is room for.
void RepairGetLine(LPARAM block) {
  if (!IsWine() || block == 0 || (InSendMessageEx(nullptr) & ISMEX_SEND) == 0) return;
  WORD* words = reinterpret_cast<WORD*>(block) - 1;
  const SIZE_T bytes = HeapSize(GetProcessHeap(), 0, words);
  if (bytes == static_cast<SIZE_T>(-1) || bytes < 2 * sizeof(WORD)) return;
  const SIZE_T room = (bytes - sizeof(WORD)) / sizeof(wchar_t);
  words[0] = words[1] = static_cast<WORD>(std::min<SIZE_T>(room, 0xFFFF));
}

}  // namespace corvane::standin
