// What the Windows loop promises beyond the laws: the system's own loops, filters, quitting, and
// that waiting costs no processor time.
#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/loop_win.h"
#include "base/prompts_win.h"
#include "contract/factories.h"

namespace corvane::contract {
namespace {

// Processor time of this thread, in milliseconds.
std::int64_t ProcessorMs() {
  FILETIME created{};
  FILETIME exited{};
  FILETIME kernel{};
  FILETIME user{};
  GetThreadTimes(GetCurrentThread(), &created, &exited, &kernel, &user);
  const auto ms = [](const FILETIME& time) {
    return ((static_cast<std::int64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime) / 10'000;
  };
  return ms(kernel) + ms(user);
}

class TestWindow {
 public:
  TestWindow() {
    window_ = CreateWindowExA(0, "STATIC", "Corvane test", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50,
                              300, 200, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
  }
  ~TestWindow() { DestroyWindow(window_); }
  TestWindow(const TestWindow&) = delete;
  TestWindow& operator=(const TestWindow&) = delete;
  [[nodiscard]] HWND handle() const { return window_; }

 private:
  HWND window_ = nullptr;
};

class NotedHook : public LoopWin::Hook {
 public:
  bool FilterMessage(MSG& message) override { return filter && filter(message); }
  void Idle(bool at_rest) override {
    if (idle) idle(at_rest);
  }
  std::function<bool(const MSG&)> filter;
  std::function<void(bool)> idle;
};

TEST(LoopWin, QuittingEndsRunWithItsCode) {
  LoopWin loop;
  loop.Post(EventSource::kUser, [&] { loop.Quit(7); });
  EXPECT_EQ(loop.Run(), 7);
}

TEST(LoopWin, AQuitThatDoEventsMeetsIsKeptForRun) {
  LoopWin loop;
  int after = 0;
  const auto timer = loop.MakeTimer(10, [&] { ++after; });
  timer->SetEnabled(true);
  loop.Sleep(50);
  loop.Quit(5);
  for (int i = 0; i < 3; ++i) loop.DoEvents();
  EXPECT_EQ(after, 0);
  EXPECT_EQ(loop.Run(), 5);
}

TEST(LoopWin, AQuitInsideAWaitForSocketEventsIsKeptForRun) {
  LoopWin loop;
  loop.Quit(6);
  loop.WaitForSocketEvents(50);
  EXPECT_EQ(loop.Run(), 6);
}

TEST(LoopWin, AHookMayGoAndAnotherComeWhileOneIsAtWork) {
  LoopWin loop;
  const TestWindow window;
  NotedHook first;
  NotedHook second;
  int seen_by_second = 0;
  second.filter = [&](const MSG& message) {
    seen_by_second += message.message == WM_APP ? 1 : 0;
    return false;
  };
  first.filter = [&](const MSG& message) {
    if (message.message != WM_APP) return false;
    loop.AddHook(second);
    loop.RemoveHook(first);
    return true;
  };
  loop.AddHook(first);
  PostMessageA(window.handle(), WM_APP, 0, 0);
  loop.DoEvents();
  EXPECT_EQ(seen_by_second, 0);
  PostMessageA(window.handle(), WM_APP, 0, 0);
  loop.DoEvents();
  EXPECT_EQ(seen_by_second, 1);
  loop.RemoveHook(second);
}

TEST(LoopWin, TheFilterSeesMessagesFirstAndMayTakeThem) {
  LoopWin loop;
  const TestWindow window;
  int seen = 0;
  NotedHook hook;
  hook.filter = [&](const MSG& got) {
    if (got.hwnd != window.handle() || got.message != WM_CHAR) return false;
    ++seen;
    return true;
  };
  loop.AddHook(hook);
  PostMessageA(window.handle(), WM_CHAR, 'x', 0);
  loop.DoEvents();
  EXPECT_EQ(seen, 1);
  PostMessageA(window.handle(), WM_CHAR, 'x', 0);
  loop.Post(EventSource::kUser, [&] { loop.Quit(); });
  loop.Run();
  EXPECT_EQ(seen, 2);
  loop.RemoveHook(hook);
}

TEST(LoopWin, WhatCanWaitIsDoneWhenNothingElseIsLeft) {
  LoopWin loop;
  std::vector<std::string> done;
  loop.Post(EventSource::kUser, [&] {
    done.emplace_back("first");
    loop.Post(EventSource::kUser, [&] { done.emplace_back("inside"); });
    loop.DoEvents();
    done.emplace_back("first goes on");
  });
  // Begins when the loop is at rest. Without that the other one ends the case.
  const auto timer = loop.MakeTimer(20, [&] {
    done.emplace_back("timer");
    loop.Quit();
  });
  const auto patience = loop.MakeTimer(kPatienceMs, [&] {
    done.emplace_back("patience");
    loop.Quit();
  });
  patience->SetEnabled(true);
  NotedHook hook;
  hook.idle = [&](bool at_rest) {
    done.emplace_back(at_rest ? "rest" : "pause");
    if (at_rest) timer->SetEnabled(true);
  };
  loop.AddHook(hook);
  loop.Run();

  const auto at = [&](const char* what) { return std::ranges::find(done, what) - done.begin(); };
  EXPECT_EQ(at("first"), 0);
  EXPECT_EQ(at("inside"), 1);
  EXPECT_EQ(at("pause"), 2);
  EXPECT_LT(at("pause"), at("first goes on"));
  EXPECT_LT(at("first goes on"), at("rest"));
  EXPECT_LT(at("rest"), at("timer"));
  EXPECT_EQ(std::ranges::count(done, "patience"), 0);
}

TEST(LoopWin, TimersAndEventsGoOnInsideAnOpenMenu) {
  LoopWin loop;
  const TestWindow window;
  HMENU menu = CreatePopupMenu();
  AppendMenuA(menu, MF_STRING, 1, "Entry");
  int ticks = 0;
  bool posted = false;
  const auto timer = loop.MakeTimer(50, [&] {
    if (++ticks == 3) loop.Post(EventSource::kUser, [&] { posted = true; });
    if (posted || ticks > 400) EndMenu();
  });
  timer->SetEnabled(true);
  SetForegroundWindow(window.handle());
  TrackPopupMenu(menu, 0, 100, 100, 0, window.handle(), nullptr);
  DestroyMenu(menu);
  EXPECT_GE(ticks, 3);
  EXPECT_TRUE(posted);
}

// Moves the window by the keyboard, from the system menu; Enter ends it. Wine 10 ends it with the
// first message behind which it sees the mouse button up.
void MoveByKeyboard(HWND window) {
  BYTE keys[256] = {};
  GetKeyboardState(keys);
  keys[VK_LBUTTON] |= 0x80;
  SetKeyboardState(keys);
  SendMessageA(window, WM_SYSCOMMAND, SC_MOVE, 0);
  keys[VK_LBUTTON] &= 0x7F;
  SetKeyboardState(keys);
}

TEST(LoopWin, TimersGoOnWhileAWindowIsBeingMoved) {
  LoopWin loop;
  const TestWindow window;
  int ticks = 0;
  const auto timer = loop.MakeTimer(50, [&] {
    if (++ticks == 3) PostMessageA(window.handle(), WM_KEYDOWN, VK_RETURN, 0);
    if (ticks > 200) PostMessageA(window.handle(), WM_CANCELMODE, 0, 0);
  });
  timer->SetEnabled(true);
  MoveByKeyboard(window.handle());
  EXPECT_GE(ticks, 3);
}

// A handler that waits inside the system's loop, and the key that ends that loop: posted right
// before the wait, so that a wait which takes it has it.
struct WaitInside {
  explicit WaitInside(UINT key) {
    hook.filter = [this](const MSG& message) {
      keys_taken += message.message == WM_KEYDOWN ? 1 : 0;
      return false;
    };
    loop.AddHook(hook);
    timer = loop.MakeTimer(50, [this, key] {
      if (++ticks == 3) {
        PostMessageA(window.handle(), WM_KEYDOWN, key, 0);
        loop.Post(EventSource::kUser, [this] { ran_inside = true; });
        loop.DoEvents();
      }
      if (ticks > kLongest) PostMessageA(window.handle(), WM_KEYDOWN, key, 0);
      if (ticks > kLongest) EndMenu();
    });
    timer->SetEnabled(true);
    SetForegroundWindow(window.handle());
  }
  ~WaitInside() { loop.RemoveHook(hook); }

  static constexpr int kLongest = 200;
  LoopWin loop;
  TestWindow window;
  NotedHook hook;
  std::unique_ptr<Timer> timer;
  int ticks = 0;
  int keys_taken = 0;
  bool ran_inside = false;
};

TEST(LoopWin, AWaitInsideAMenuLeavesTheMenuItsKeys) {
  WaitInside wait(VK_ESCAPE);
  HMENU menu = CreatePopupMenu();
  AppendMenuA(menu, MF_STRING, 1, "Entry");
  TrackPopupMenu(menu, 0, 100, 100, 0, wait.window.handle(), nullptr);
  DestroyMenu(menu);
  EXPECT_TRUE(wait.ran_inside);
  EXPECT_EQ(wait.keys_taken, 0);
  EXPECT_LT(wait.ticks, WaitInside::kLongest) << "the key did not end the menu";
}

TEST(LoopWin, AWaitInsideAMoveLeavesTheMoveItsKeys) {
  WaitInside wait(VK_RETURN);
  MoveByKeyboard(wait.window.handle());
  EXPECT_TRUE(wait.ran_inside);
  EXPECT_EQ(wait.keys_taken, 0);
  EXPECT_LT(wait.ticks, WaitInside::kLongest) << "the key did not end the move";
}

TEST(LoopWin, APeriodIsKeptOverManyTicks) {
  LoopWin loop;
  std::vector<std::int64_t> times;
  const auto timer = loop.MakeTimer(100, [&] { times.push_back(loop.TickMs()); });
  const std::int64_t begin = loop.TickMs();
  timer->SetEnabled(true);
  while (times.size() < 20 && loop.TickMs() < begin + kPatienceMs) {
    loop.Sleep(1);
    loop.DoEvents();
  }
  ASSERT_EQ(times.size(), 20U);
  EXPECT_GE(times.back() - begin, 2000);
}

TEST(LoopWin, WaitingForSocketEventsCostsNoProcessorTime) {
  LoopWin loop;
  const TestWindow window;
  loop.Post(EventSource::kUser, [] {});
  for (int i = 0; i < 100; ++i) PostMessageA(window.handle(), WM_APP, 0, 0);
  const std::int64_t before = ProcessorMs();
  loop.WaitForSocketEvents(2000);
  EXPECT_LE(ProcessorMs() - before, 500);
  loop.DoEvents();
}

TEST(LoopWin, IdlingCostsNoProcessorTime) {
  LoopWin loop;
  const auto tick = loop.MakeTimer(60, [] {});
  tick->SetEnabled(true);
  const auto end = loop.MakeTimer(2000, [&] { loop.Quit(); });
  end->SetEnabled(true);
  const std::int64_t before = ProcessorMs();
  loop.Run();
  EXPECT_LE(ProcessorMs() - before, 500);
}

TEST(LoopWin, WhatAFilterThrowsIsReported) {
  LoopWin loop;
  const TestWindow window;
  std::string reported;
  loop.SetErrorReporter([&](const std::string& what) { reported = what; });
  NotedHook hook;
  hook.filter = [&](const MSG& message) -> bool {
    if (message.message == WM_APP) throw std::runtime_error("filter");
    return false;
  };
  loop.AddHook(hook);
  PostMessageA(window.handle(), WM_APP, 0, 0);
  loop.DoEvents();
  EXPECT_EQ(reported, "filter");
}

TEST(LoopWin, TwoLoopsOneAfterTheOther) {
  for (int i = 0; i < 3; ++i) {
    LoopWin loop;
    bool ran = false;
    loop.Post(EventSource::kUser, [&] { ran = true; });
    loop.DoEvents();
    EXPECT_TRUE(ran);
  }
}

TEST(PromptsWin, TheOwnerTakesNoInputWhileABoxIsOpen) {
  LoopWin loop;
  const TestWindow owner;
  PromptsWin prompts;
  prompts.SetOwner(owner.handle());
  bool disabled = false;
  const auto answer = loop.MakeTimer(100, [&] {
    HWND box = FindWindowA("#32770", "Corvane contract box");
    if (box == nullptr) return;
    disabled = IsWindowEnabled(owner.handle()) == 0;
    PostMessageA(box, WM_COMMAND, IDOK, 0);
  });
  answer->SetEnabled(true);
  prompts.ShowBox("text", "Corvane contract box", BoxIcon::kCritical);
  EXPECT_TRUE(disabled);
  EXPECT_NE(IsWindowEnabled(owner.handle()), 0);
}

}  // namespace
}  // namespace corvane::contract
