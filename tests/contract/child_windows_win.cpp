// The child's side: one top-level window with a panel that holds a check box and an edit box.
#include "contract/child_windows.h"

#include <windows.h>

#include <algorithm>
#include <stdexcept>
#include <string>

namespace corvane::contract {

namespace {

constexpr char kPanelClass[] = "CorvaneContract.Panel";
constexpr char kCoverClass[] = "CorvaneContract.ChildCover";
constexpr UINT_PTR kEndTimer = 1;
constexpr UINT kLongestLifeMs = 600'000;

WNDPROC edit_procedure = nullptr;

// Wine 8 passes EM_GETLINE from another process on with a block that begins one word inside an
// allocation, and fills neither the block's first word, by which the control decides how many
// characters it copies, nor the word before it, by which the system decides how many it sends back.
// The procedure is a wide one, because the conversion for a narrow one would already go by them.
void RepairGetLine(LPARAM block) {
  static const bool is_wine =
      GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr;
  if (!is_wine || block == 0 || (InSendMessageEx(nullptr) & ISMEX_SEND) == 0) return;
  WORD* words = reinterpret_cast<WORD*>(block) - 1;
  const SIZE_T bytes = HeapSize(GetProcessHeap(), 0, words);
  if (bytes == static_cast<SIZE_T>(-1) || bytes < 2 * sizeof(WORD)) return;
  const SIZE_T room = (bytes - sizeof(WORD)) / sizeof(wchar_t);
  words[0] = words[1] = static_cast<WORD>(std::min<SIZE_T>(room, 0xFFFF));
}

LRESULT CALLBACK EditProcedure(HWND window, UINT message, WPARAM w, LPARAM l) {
  if (message == EM_GETLINE) RepairGetLine(l);
  return CallWindowProcW(edit_procedure, window, message, w, l);
}

void Paint(HWND window) {
  PAINTSTRUCT paint{};
  HDC context = BeginPaint(window, &paint);
  RECT area{};
  GetClientRect(window, &area);
  RECT upper = area;
  upper.bottom = kChildGreenTop;
  RECT lower = area;
  lower.top = kChildGreenTop;
  HBRUSH red = CreateSolidBrush(static_cast<COLORREF>(kChildRed));
  HBRUSH green = CreateSolidBrush(static_cast<COLORREF>(kChildGreen));
  FillRect(context, &upper, red);
  FillRect(context, &lower, green);
  DeleteObject(red);
  DeleteObject(green);
  EndPaint(window, &paint);
}

HWND panel_window = nullptr;
COLORREF cover_colour = 0;

LRESULT CALLBACK CoverProcedure(HWND window, UINT message, WPARAM w, LPARAM l) {
  if (message != WM_ERASEBKGND) return DefWindowProcA(window, message, w, l);
  RECT area{};
  GetClientRect(window, &area);
  HBRUSH brush = CreateSolidBrush(cover_colour);
  FillRect(reinterpret_cast<HDC>(w), &area, brush);
  DeleteObject(brush);
  return 1;
}

void CoverCheckBox(COLORREF colour) {
  cover_colour = colour;
  HWND cover = CreateWindowExA(0, kCoverClass, "", WS_CHILD | WS_CLIPSIBLINGS, 0, 0, 100, 20,
                               panel_window, nullptr, GetModuleHandleA(nullptr), nullptr);
  SetWindowPos(cover, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
  UpdateWindow(cover);
}

LRESULT CALLBACK TopProcedure(HWND window, UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case kChildHangMessage:
      SetPropA(window, kChildHangs, GetModuleHandleA(nullptr));
      Sleep(static_cast<DWORD>(w));
      RemovePropA(window, kChildHangs);
      return 0;
    case kChildCoverMessage:
      CoverCheckBox(static_cast<COLORREF>(w));
      return 0;
    case WM_PAINT:
      Paint(window);
      return 0;
    case WM_TIMER:
    case WM_DESTROY:
      PostQuitMessage(0);
      return 0;
    default:
      return DefWindowProcA(window, message, w, l);
  }
}

void Register(const char* name, WNDPROC procedure) {
  WNDCLASSA window_class{};
  window_class.lpfnWndProc = procedure;
  window_class.hInstance = GetModuleHandleA(nullptr);
  window_class.lpszClassName = name;
  window_class.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
  RegisterClassA(&window_class);
}

HWND Child(HWND parent, const char* class_name, DWORD style, int id, RECT place) {
  return CreateWindowExA(0, class_name, "", WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                         place.right, place.bottom, parent,
                         reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                         GetModuleHandleA(nullptr), nullptr);
}

}  // namespace

int RunChildWindows() {
  Register(kChildClass, &TopProcedure);
  Register(kPanelClass, &DefWindowProcA);
  Register(kCoverClass, &CoverProcedure);
  HWND top = CreateWindowExA(0, kChildClass, kChildTitle, WS_OVERLAPPEDWINDOW, 100, 100, 420, 330,
                             nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
  HWND panel = Child(top, kPanelClass, 0, 10, {10, 10, 180, 120});
  panel_window = panel;
  Child(panel, "BUTTON", BS_AUTOCHECKBOX, kChildCheckBoxId, {0, 0, 100, 20});
  Child(panel, "BUTTON", BS_PUSHBUTTON, kChildSelectorId, {105, 0, 70, 25});
  HWND edit = Child(panel, "EDIT", ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL | WS_VSCROLL,
                    kChildEditId, {0, 30, 180, 90});
  if (edit == nullptr) return 1;
  SendMessageA(edit, EM_SETLIMITTEXT, 0, 0);
  edit_procedure = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&EditProcedure)));
  SetTimer(top, kEndTimer, kLongestLifeMs, nullptr);
  ShowWindow(top, SW_SHOWNORMAL);
  UpdateWindow(top);
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  return 0;
}

ChildProcess::ChildProcess(const std::string& arguments) {
  std::string path(MAX_PATH, '\0');
  path.resize(GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size())));
  std::string command = "\"" + path + "\" " + arguments;
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION info{};
  if (CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                     &startup, &info) == 0) {
    throw std::runtime_error("the child cannot be started");
  }
  CloseHandle(info.hThread);
  process_ = info.hProcess;
  id_ = info.dwProcessId;
}

ChildProcess::~ChildProcess() {
  End();
  CloseHandle(process_);
}

bool ChildProcess::WaitForEnd(int ms, std::uint32_t& exit_code) {
  DWORD code = 0;
  if (WaitForSingleObject(process_, static_cast<DWORD>(ms)) != WAIT_OBJECT_0) return false;
  if (GetExitCodeProcess(process_, &code) == 0) return false;
  exit_code = code;
  return true;
}

void ChildProcess::End() {
  TerminateProcess(process_, 1);
  WaitForSingleObject(process_, 10'000);
}

}  // namespace corvane::contract
