// Input by SendInput.
#include "desktop/harness/user_input.h"

#include <windows.h>

#include <cctype>
#include <cstddef>
#include <cstring>

#include "desktop/harness/handles_win.h"
#include "desktop/harness/wait.h"

namespace corvane::desktop {

namespace {

struct ButtonFlags {
  DWORD down;
  DWORD up;
};

ButtonFlags FlagsOf(MouseButton button) {
  switch (button) {
    case MouseButton::kRight:
      return {MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP};
    case MouseButton::kMiddle:
      return {MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_MIDDLEUP};
    case MouseButton::kLeft:
      break;
  }
  return {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP};
}

void Mouse(DWORD flags, LONG x = 0, LONG y = 0) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dx = x;
  input.mi.dy = y;
  input.mi.dwFlags = flags;
  SendInput(1, &input, sizeof input);
}

// A pixel of the first screen in the 65536 steps that an absolute position is given in, such that
// rounding down leads back to it.
LONG Steps(int pixel, int size) {
  return static_cast<LONG>((static_cast<long long>(pixel) * 65536 + size - 1) / size);
}

// The place goes with the press and with the release: what the system reports of an earlier
// movement in between cannot carry the pointer away.
void PressAt(int x, int y, MouseButton button) {
  const LONG across = Steps(x, GetSystemMetrics(SM_CXSCREEN));
  const LONG down = Steps(y, GetSystemMetrics(SM_CYSCREEN));
  constexpr DWORD kThere = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
  const ButtonFlags flags = FlagsOf(button);
  Mouse(kThere | flags.down, across, down);
  Mouse(kThere | flags.up, across, down);
}

// A second click at the place of the first would be a double click when it comes soon enough.
void ClickAt(int x, int y, MouseButton button) {
  static POINT last{-1, -1};
  const bool same_place = last.x == x && last.y == y;
  last = {same_place ? x + GetSystemMetrics(SM_CXDOUBLECLK) + 1 : x, y};
  PressAt(last.x, last.y, button);
}

void Key(int virtual_key, bool down) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = static_cast<WORD>(virtual_key);
  input.ki.wScan =
      static_cast<WORD>(MapVirtualKeyA(static_cast<UINT>(virtual_key), MAPVK_VK_TO_VSC));
  input.ki.dwFlags = down ? 0 : KEYEVENTF_KEYUP;
  SendInput(1, &input, sizeof input);
}

// A message of numbers alone, so it crosses between programs as it is.
LRESULT AskNumber(WindowHandle window, UINT message, WPARAM w_param, LRESULT none) {
  DWORD_PTR answer = 0;
  const bool answered = SendMessageTimeoutA(Hwnd(window), message, w_param, 0, SMTO_NORMAL,
                                            kAnswerLimit_ms, &answer) != 0;
  return answered ? static_cast<LRESULT>(answer) : none;
}

constexpr int kInTheText = 40;

int MiddleOfLine(WindowHandle list, int line) {
  constexpr int kBorder = 2;
  const int row = static_cast<int>(AskNumber(list, LB_GETITEMHEIGHT, 0, 0));
  const int top = static_cast<int>(AskNumber(list, LB_GETTOPINDEX, 0, 0));
  return kBorder + (line - top) * row + row / 2;
}

WindowHandle SeenWindow(unsigned process_id, std::string_view class_name) {
  for (const WindowHandle window : TopLevelWindows(process_id)) {
    if (Visible(window) && ClassOf(window) == class_name) return window;
  }
  return 0;
}

// The clipboard takes the block over.
bool PutOnClipboard(std::string_view text) {
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, text.size() + 1);
  if (block == nullptr) return false;
  std::memcpy(GlobalLock(block), text.data(), text.size());
  GlobalUnlock(block);
  if (OpenClipboard(nullptr) == FALSE) return false;
  EmptyClipboard();
  const bool put = SetClipboardData(CF_TEXT, block) != nullptr;
  CloseClipboard();
  return put;
}

}  // namespace

void MovePointer(int x, int y) {
  SetCursorPos(x, y);
}

void PressMouse(MouseButton button) {
  const ButtonFlags flags = FlagsOf(button);
  Mouse(flags.down);
  Mouse(flags.up);
}

void HandClickAt(WindowHandle control, int x, int y, MouseButton button) {
  const WindowPlace place = PlaceOf(control);
  ClickAt(place.left + x, place.top + y, button);
}

void HandClick(WindowHandle control, MouseButton button) {
  const WindowPlace place = PlaceOf(control);
  HandClickAt(control, place.width / 2, place.height / 2, button);
}

void HandClickLine(WindowHandle list, int line, MouseButton button) {
  HandClickAt(list, kInTheText, MiddleOfLine(list, line), button);
}

void HandDoubleClickAt(WindowHandle control, int x, int y) {
  const WindowPlace place = PlaceOf(control);
  PressAt(place.left + x, place.top + y, MouseButton::kLeft);
  PressAt(place.left + x, place.top + y, MouseButton::kLeft);
}

void HandDoubleClick(WindowHandle control) {
  const WindowPlace place = PlaceOf(control);
  HandDoubleClickAt(control, place.width / 2, place.height / 2);
}

void HandDoubleClickLine(WindowHandle list, int line) {
  HandDoubleClickAt(list, kInTheText, MiddleOfLine(list, line));
}

void HandMoveOver(WindowHandle control) {
  const WindowPlace place = PlaceOf(control);
  MovePointer(place.left + place.width / 2, place.top + place.height / 2);
  MovePointer(place.left + place.width / 2 + 1, place.top + place.height / 2);
}

void HandKey(int virtual_key, int with) {
  if (with != 0) Key(with, true);
  Key(virtual_key, true);
  Key(virtual_key, false);
  if (with != 0) Key(with, false);
}

void HandType(std::string_view text) {
  for (const char letter : text) {
    const auto code = static_cast<unsigned char>(letter);
    HandKey(std::toupper(code), std::isupper(code) != 0 ? kShiftKey : 0);
  }
}

bool HandPaste(std::string_view text) {
  if (!WaitFor([&] { return PutOnClipboard(text); }, kAnswerLimit_ms)) return false;
  HandKey('V', kControlKey);
  return true;
}

WindowHandle FocusIn(WindowHandle window) {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  const DWORD thread = GetWindowThreadProcessId(Hwnd(window), nullptr);
  if (thread == 0 || GetGUIThreadInfo(thread, &info) == FALSE) return 0;
  return reinterpret_cast<WindowHandle>(info.hwndFocus);
}

bool ComboIsOpen(WindowHandle combo) {
  return AskNumber(combo, CB_GETDROPPEDSTATE, 0, 0) != 0;
}

int TickOf(WindowHandle list, int line) {
  return static_cast<int>(AskNumber(list, LB_GETITEMDATA, static_cast<WPARAM>(line), -1));
}

std::string SeenToolTip(unsigned process_id) {
  return TextOf(SeenWindow(process_id, "tooltips_class32"));
}

WindowHandle OpenMenu(unsigned process_id) {
  return SeenWindow(process_id, "#32768");
}

}  // namespace corvane::desktop
