// The arguments behind the switch: the asking process, left, top, right, bottom, colour, how long
// it hangs in milliseconds, class.
#include "standin/cover_win.h"

#include <array>
#include <cstdint>

#include "base/number_text.h"
#include "standin/window_tree.h"
#include "standin/wine_win.h"

namespace corvane::standin {

namespace {

constexpr DWORD kShownLimitMs = 10'000;
constexpr std::size_t kNumbers = 7;
constexpr UINT_PTR kHangTimer = 1;
constexpr UINT kHangAfterMs = 50;
constexpr DWORD kRaiseEveryMs = 50;

struct CoverLook {
  RECT place{};
  COLORREF colour = 0;
  DWORD hang_ms = 0;
  std::string class_name;
  HANDLE asking = nullptr;  // the process that wants to have it
};

// What it hangs for begins once the process has waited for input, which is how the one that started
// it knows that the window is there.
LRESULT CALLBACK CoverProcedure(HWND window, UINT message, WPARAM w_param, LPARAM l_param) {
  if (message == WM_TIMER && w_param == kHangTimer) {
    KillTimer(window, kHangTimer);
    const auto* look = reinterpret_cast<const CoverLook*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (WaitForSingleObject(look->asking, look->hang_ms) == WAIT_OBJECT_0) ExitProcess(0);
    return 0;
  }
  if (message == WM_DESTROY) PostQuitMessage(0);
  return DefWindowProcA(window, message, w_param, l_param);
}

HWND ShowCoverWindow(const CoverLook& look) {
  WNDCLASSA info{};
  info.lpfnWndProc = CoverProcedure;
  info.hInstance = GetModuleHandleA(nullptr);
  info.hCursor = LoadCursorA(nullptr, IDC_ARROW);
  info.hbrBackground = CreateSolidBrush(look.colour);
  info.lpszClassName = look.class_name.c_str();
  RegisterClassA(&info);
  const RECT& place = look.place;
  const HWND window =
      CreateWindowExA(WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, info.lpszClassName,
                      look.hang_ms > 0 ? kStrangerTitle : "", WS_POPUP, place.left, place.top,
                      place.right - place.left, place.bottom - place.top, nullptr, nullptr,
                      info.hInstance, nullptr);
  SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&look));
  ShowWindow(window, SW_SHOWNOACTIVATE);
  UpdateWindow(window);
  if (look.hang_ms > 0) SetTimer(window, kHangTimer, kHangAfterMs, nullptr);
  return window;
}

// A foreign fault repaired: under Wine without a window manager a window that comes to the front is
// drawn above another program's topmost one, whatever the order of the windows is. Only a change of
// order has the screen follow it.
void RaiseAgain(HWND window) {
  constexpr UINT kStay = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;
  SetWindowPos(window, HWND_NOTOPMOST, 0, 0, 0, 0, kStay);
  SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, kStay);
}

}  // namespace

CoverProcess::CoverProcess(const RECT& place, COLORREF colour) {
  Start(place, Decimal(std::int64_t{colour}) + " 0 " + kCoverClass);
}

CoverProcess::CoverProcess(const RECT& place, const std::string& class_name, std::int64_t hang_ms) {
  Start(place, "0 " + Decimal(hang_ms) + " " + class_name);
  // Until it hangs it would answer.
  Sleep(2 * kHangAfterMs);
}

void CoverProcess::Start(const RECT& place, const std::string& rest) {
  std::string program(MAX_PATH, '\0');
  program.resize(GetModuleFileNameA(nullptr, program.data(), MAX_PATH));
  std::string command = "\"" + program + "\" " + kCoverSwitch;
  for (const std::int64_t number :
       {std::int64_t{GetCurrentProcessId()}, std::int64_t{place.left}, std::int64_t{place.top},
        std::int64_t{place.right}, std::int64_t{place.bottom}}) {
    command += " " + Decimal(number);
  }
  command += " " + rest;
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION info{};
  if (CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                     &startup, &info) == 0) {
    return;
  }
  CloseHandle(info.hThread);
  process_ = info.hProcess;
  // It waits for input only once its window is painted.
  WaitForInputIdle(process_, kShownLimitMs);
}

CoverProcess::~CoverProcess() {
  if (process_ == nullptr) return;
  TerminateProcess(process_, 0);
  WaitForSingleObject(process_, kShownLimitMs);
  CloseHandle(process_);
}

int RunCover(const std::vector<std::string>& arguments) {
  std::array<std::int64_t, kNumbers> numbers{};
  if (arguments.size() != kNumbers + 2) return kExitUsage;
  for (std::size_t i = 0; i < kNumbers; ++i) {
    const auto number = ParseDecimal<std::int64_t>(arguments[i + 1]);
    if (!number) return kExitUsage;
    numbers[i] = *number;
  }
  const HANDLE asking = OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(numbers[0]));
  if (asking == nullptr) return kExitUsage;
  const CoverLook look{{static_cast<LONG>(numbers[1]), static_cast<LONG>(numbers[2]),
                        static_cast<LONG>(numbers[3]), static_cast<LONG>(numbers[4])},
                       static_cast<COLORREF>(numbers[5]),
                       static_cast<DWORD>(numbers[6]),
                       arguments.back(),
                       asking};
  const HWND window = ShowCoverWindow(look);
  for (;;) {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
      if (message.message == WM_QUIT) return 0;
      DispatchMessageA(&message);
    }
    const DWORD wait = IsWine() ? kRaiseEveryMs : INFINITE;
    const DWORD woken = MsgWaitForMultipleObjects(1, &asking, FALSE, wait, QS_ALLINPUT);
    if (woken == WAIT_OBJECT_0) return 0;
    if (woken == WAIT_TIMEOUT) RaiseAgain(window);
  }
}

}  // namespace corvane::standin
