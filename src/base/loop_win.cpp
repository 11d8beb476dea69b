// One hidden window takes the wake-ups of posted events and timers, a second one the sockets'
// messages, so that WaitForSocketEvents can serve those alone.
#include "base/loop_win.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <utility>

namespace corvane {

namespace {

constexpr UINT kWakeMessage = WM_APP + 1;
constexpr UINT_PTR kWakeTimer = 1;
constexpr int kShortestWakeMs = 10;
constexpr int kLongestWakeMs = 60'000;
// Input that never ceases must not keep a handler from getting on.
constexpr int kLongestYieldMs = 50;

constexpr char kWakeClass[] = "Corvane loop class";
constexpr char kSocketClass[] = "Corvane socket class";

HWND MakeMessageWindow(const char* class_name, WNDPROC procedure, void* owner) {
  WNDCLASSA window_class{};
  window_class.lpfnWndProc = procedure;
  window_class.hInstance = GetModuleHandleA(nullptr);
  window_class.lpszClassName = class_name;
  RegisterClassA(&window_class);  // fails when it is there already, which is as good
  HWND window = CreateWindowExA(0, class_name, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                window_class.hInstance, nullptr);
  if (window != nullptr) {
    SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(owner));
  }
  return window;
}

// Whether the system runs a menu on this thread, or a window is being moved or sized there.
bool InMenuOrMove() {
  constexpr DWORD kLoops = GUI_INMENUMODE | GUI_INMOVESIZE | GUI_POPUPMENUMODE | GUI_SYSTEMMENUMODE;
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  return GetGUIThreadInfo(GetCurrentThreadId(), &info) != 0 && (info.flags & kLoops) != 0;
}

}  // namespace

class LoopWin::TimerWin : public Timer {
 public:
  TimerWin(LoopWin& loop, TimerTable::Id id) : loop_(loop), id_(id) {}
  ~TimerWin() override { loop_.timers_.Remove(id_); }
  void SetEnabled(bool enabled) override {
    loop_.timers_.SetEnabled(id_, enabled, loop_.TickMs());
    loop_.Arm();
  }
  [[nodiscard]] bool enabled() const override { return loop_.timers_.enabled(id_); }
  [[nodiscard]] int interval_ms() const override { return loop_.timers_.interval_ms(id_); }

 private:
  LoopWin& loop_;
  TimerTable::Id id_;
};

LoopWin::LoopWin() {
  window_ = MakeMessageWindow(kWakeClass, &LoopWin::WakeProcedure, this);
  socket_window_ = MakeMessageWindow(kSocketClass, &LoopWin::SocketProcedure, this);
  if (window_ != nullptr && socket_window_ != nullptr) return;
  DestroyWindows();
  throw std::runtime_error("no message window");
}

LoopWin::~LoopWin() {
  DestroyWindows();
}

void LoopWin::DestroyWindows() {
  if (window_ != nullptr) DestroyWindow(window_);
  if (socket_window_ != nullptr) DestroyWindow(socket_window_);
}

std::int64_t LoopWin::TickMs() const {
  return static_cast<std::int64_t>(GetTickCount64());
}

std::unique_ptr<Timer> LoopWin::MakeTimer(int interval_ms, std::function<void()> handler) {
  return std::make_unique<TimerWin>(*this, timers_.Add(interval_ms, std::move(handler)));
}

void LoopWin::Post(EventSource source, std::function<void()> event) {
  queue_.Add(source, std::move(event));
  Wake();
}

void LoopWin::Sleep(int ms) {
  ::Sleep(static_cast<DWORD>(std::max(ms, 0)));
}

void LoopWin::Guard(const std::function<void()>& work) noexcept {
  const bool taking_before = std::exchange(taking_messages_, false);
  std::optional<std::string> what;
  try {
    work();
  } catch (const std::exception& error) {
    what = error.what();
  } catch (...) {
    what = "unknown exception";
  }
  taking_messages_ = taking_before;
  if (!what) return;
  if (!error_reporter_) std::abort();
  error_reporter_(*what);
}

void LoopWin::Wake() {
  if (wake_posted_ || queue_.empty()) return;
  // When the system's queue is full, the next timer or DoEvents finds the event.
  wake_posted_ = PostMessageA(window_, kWakeMessage, 0, 0) != 0;
}

void LoopWin::Arm() {
  const std::optional<std::int64_t> next = timers_.NextDueMs();
  if (next == armed_for_) return;
  armed_for_.reset();
  if (!next) {
    KillTimer(window_, kWakeTimer);
    return;
  }
  const auto wait = static_cast<UINT>(
      std::clamp<std::int64_t>(*next - TickMs(), kShortestWakeMs, kLongestWakeMs));
  if (SetTimer(window_, kWakeTimer, wait, nullptr) != 0) armed_for_ = next;
}

bool LoopWin::RunPosted() {
  const std::function<void()> event = queue_.Take();
  if (!event) return false;
  Wake();  // a wait inside this event serves those behind it
  Guard(event);
  return true;
}

bool LoopWin::RunDue(TimerTable::Pass& pass) {
  const TimerTable::Handler handler = timers_.TakeDue(TickMs(), pass);
  if (!handler) return false;
  Arm();  // the timers go on while this handler waits or shows a box
  Guard(*handler);
  return true;
}

void LoopWin::RunTimers() {
  armed_for_.reset();  // the system's timer may have been early
  TimerTable::Pass pass;
  for (int budget = kEventsPerYield; budget > 0; --budget) {
    if (!RunPosted() && !RunDue(pass)) break;
  }
  Arm();
}

LRESULT CALLBACK LoopWin::WakeProcedure(HWND window, UINT message, WPARAM w, LPARAM l) {
  auto* self = reinterpret_cast<LoopWin*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  if (self != nullptr && message == kWakeMessage) {
    self->wake_posted_ = false;
    self->RunPosted();
    self->Idle(false);
    return 0;
  }
  if (self != nullptr && message == WM_TIMER && w == kWakeTimer) {
    self->RunTimers();
    self->Idle(false);
    return 0;
  }
  return DefWindowProcA(window, message, w, l);
}

LRESULT CALLBACK LoopWin::SocketProcedure(HWND window, UINT message, WPARAM w, LPARAM l) {
  auto* self = reinterpret_cast<LoopWin*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  if (self != nullptr && message >= kFirstSocketMessage && message <= kLastSocketMessage) {
    ++self->socket_messages_;
    if (self->socket_handler_) {
      self->Guard([&] { self->socket_handler_(message, w, l); });
    }
    return 0;
  }
  return DefWindowProcA(window, message, w, l);
}

template <typename Call>
auto LoopWin::Taking(Call take) {
  taking_messages_ = true;
  const auto taken = take();
  taking_messages_ = false;
  return taken;
}

void LoopWin::Dispatch(MSG& message) {
  bool taken = false;
  for (std::size_t at = 0; at < hooks_.size() && !taken; ++at) {
    Guard([&] { taken = hooks_[at]->FilterMessage(message); });
  }
  if (taken) return;
  TranslateMessage(&message);
  DispatchMessageA(&message);
}

// Of the messages of a menu or a move, which are those of the user's hands, none is taken: the loop
// that the system runs for it would miss them, and who they are meant for would be another.
bool LoopWin::TakeMessage(MSG& message, bool in_menu_or_move) {
  const auto peek = [&](HWND window, UINT kind) {
    return PeekMessageA(&message, window, kind, kind, PM_REMOVE) != 0;
  };
  return Taking([&] {
    if (!in_menu_or_move) return peek(nullptr, 0);
    return peek(window_, 0) || peek(socket_window_, 0) || peek(nullptr, WM_PAINT);
  });
}

void LoopWin::DoEvents() {
  if (depth_ >= kDeepestYield) return;
  ++depth_;
  const bool in_menu_or_move = InMenuOrMove();
  const std::int64_t end = TickMs() + kLongestYieldMs;
  TimerTable::Pass pass;
  bool quitting = false;
  for (int budget = kEventsPerYield; budget > 0 && TickMs() <= end; --budget) {
    MSG message;
    if (!TakeMessage(message, in_menu_or_move)) {
      if (!RunPosted() && !RunDue(pass)) break;
    } else if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      quitting = true;
      break;
    } else if (message.hwnd == window_ && message.message == WM_TIMER) {
      armed_for_.reset();  // the due timers come below, when no other message is left
    } else {
      Dispatch(message);
    }
  }
  // Nor may the timers starve under input that never ceases.
  while (!quitting && RunDue(pass)) {
  }
  Arm();
  Idle(false);
  --depth_;
}

void LoopWin::Idle(bool at_rest) {
  for (std::size_t at = 0; at < hooks_.size(); ++at) {
    Guard([&] { hooks_[at]->Idle(at_rest); });
  }
}

bool LoopWin::DispatchSocketMessages() {
  const std::int64_t before = socket_messages_;
  MSG message;
  for (int budget = kEventsPerYield; budget > 0; --budget) {
    if (PeekMessageA(&message, socket_window_, kFirstSocketMessage, kLastSocketMessage,
                     PM_REMOVE) == 0) {
      break;
    }
    // A filter that names a window brings WM_QUIT as well.
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      break;
    }
    DispatchMessageA(&message);
  }
  bool any = socket_messages_ != before;
  for (std::size_t waiting = queue_.socket_events(); waiting > 0; --waiting) {
    const std::function<void()> event = queue_.TakeSocketEvent();
    if (!event) break;
    Guard(event);
    any = true;
  }
  return any;
}

void LoopWin::WaitForSocketEvents(int ms) {
  const std::int64_t end = TickMs() + std::max(ms, 0);
  while (!DispatchSocketMessages()) {
    const std::int64_t left = end - TickMs();
    if (left <= 0) return;
    // The wait ends with every new posted message; those for other windows stay in the queue, and
    // a sleep keeps them from being looked at without end. It may take 16 ms: no answer waits for
    // it.
    MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(left), QS_POSTMESSAGE, 0);
    if (DispatchSocketMessages()) return;
    if (TickMs() < end) ::Sleep(1);
  }
}

int LoopWin::Run() {
  MSG message;
  for (;;) {
    if (!hooks_.empty() &&
        Taking([&] { return PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE); }) == 0) {
      Idle(true);
    }
    const int got = Taking([&] { return GetMessageA(&message, nullptr, 0, 0); });
    if (got == 0) return static_cast<int>(message.wParam);
    if (got < 0) return EXIT_FAILURE;
    Dispatch(message);
    Wake();  // for an event whose wake-up the system had no room for
  }
}

void LoopWin::Quit(int exit_code) {
  PostQuitMessage(exit_code);
}

}  // namespace corvane
