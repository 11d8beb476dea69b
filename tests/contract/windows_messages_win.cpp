// Which messages WindowOpsWin sends to a window, in which order and with which parameters, and what
// it makes of odd answers.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <future>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "link/window_ops_win.h"

namespace corvane::contract {
namespace {

struct Received {
  UINT message = 0;
  WPARAM w = 0;
  LPARAM l = 0;  // 0 where it is an address
  bool operator==(const Received&) const = default;
};

// A window of another thread that keeps what it is sent and answers by a script.
class ScriptedWindow {
 public:
  ScriptedWindow() : thread_([this] { Run(); }) {
    window_ = created_.get_future().get();
    if (window_ != nullptr) return;
    thread_.join();
    throw std::runtime_error("the window cannot be created");
  }
  ~ScriptedWindow() {
    PostMessageA(window_, WM_CLOSE, 0, 0);
    thread_.join();
  }
  ScriptedWindow(const ScriptedWindow&) = delete;
  ScriptedWindow& operator=(const ScriptedWindow&) = delete;

  [[nodiscard]] WindowHandle handle() const { return ToHandle(window_); }
  std::vector<Received> Take() {
    const std::lock_guard lock(mutex_);
    return std::exchange(received_, {});
  }

  // What was given up has been handled, too. Until then `slow_message` must stay: within one
  // program a late answer is written where the buffer was.
  void AwaitIdle() { SendMessageA(window_, WM_NULL, 0, 0); }

  // Set between two questions.
  std::string text;
  std::vector<std::string> lines;
  UINT slow_message = 0;  // is answered only after the limit
  WORD line_room = 0;     // the first word of the last buffer for a line

 private:
  static constexpr LRESULT kLineStep = 1000;  // what each line counts in the box's numbering
  static constexpr char kClass[] = "CorvaneContract.Scripted";

  void Run() {
    WNDCLASSA window_class{};
    window_class.lpfnWndProc = &ScriptedWindow::Procedure;
    window_class.hInstance = GetModuleHandleA(nullptr);
    window_class.lpszClassName = kClass;
    RegisterClassA(&window_class);
    HWND window = CreateWindowExA(0, kClass, "", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr,
                                  nullptr, window_class.hInstance, nullptr);
    if (window != nullptr) {
      SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    }
    created_.set_value(window);
    if (window == nullptr) return;
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) DispatchMessageA(&message);
  }
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM w, LPARAM l) {
    auto* self = reinterpret_cast<ScriptedWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (message == WM_DESTROY) PostQuitMessage(0);
    if (self == nullptr) return DefWindowProcA(window, message, w, l);
    return self->OnMessage(window, message, w, l);
  }
  LRESULT OnMessage(HWND window, UINT message, WPARAM w, LPARAM l) {
    const bool address = message == WM_GETTEXT || message == WM_SETTEXT || message == EM_GETLINE;
    switch (message) {
      case WM_GETTEXTLENGTH:
      case WM_GETTEXT:
      case WM_SETTEXT:
      case EM_GETLINECOUNT:
      case EM_LINEINDEX:
      case EM_LINELENGTH:
      case EM_GETLINE:
      case BM_CLICK:
      case WM_LBUTTONDOWN: {
        const std::lock_guard lock(mutex_);
        received_.push_back({message, w, address ? 0 : l});
        break;
      }
      default:
        return DefWindowProcA(window, message, w, l);
    }
    if (message == slow_message) Sleep(2 * WindowOpsWin::kSendLimitMs);
    return message == slow_message ? 0 : Answer(message, w, reinterpret_cast<char*>(l));
  }
  LRESULT Answer(UINT message, WPARAM w, char* buffer) {
    const auto line = static_cast<std::size_t>(w);
    switch (message) {
      case WM_GETTEXTLENGTH:
        return static_cast<LRESULT>(text.size());
      case WM_GETTEXT:
        return Copy(text, buffer, std::min(text.size(), static_cast<std::size_t>(w) - 1));
      case WM_SETTEXT:
        text = buffer;
        return TRUE;
      case EM_GETLINECOUNT:
        return static_cast<LRESULT>(lines.size());
      case EM_LINEINDEX:
        return line < lines.size() ? static_cast<LRESULT>(line) * kLineStep : -1;
      case EM_LINELENGTH:
        return static_cast<LRESULT>(lines.at(line / kLineStep).size());
      case EM_GETLINE:
        std::memcpy(&line_room, buffer, sizeof line_room);
        // As a faulty box does: half of what the room allows, and more than the line.
        return Copy(lines.at(line) + std::string(40, '#'), buffer,
                    std::min<std::size_t>(line_room / 2, lines.at(line).size() + 40));
      default:
        return 0;
    }
  }
  static LRESULT Copy(const std::string& from, char* to, std::size_t size) {
    std::memcpy(to, from.data(), size);
    return static_cast<LRESULT>(size);
  }

  std::mutex mutex_;
  std::vector<Received> received_;
  std::promise<HWND> created_;
  HWND window_ = nullptr;
  std::thread thread_;
};

class WindowMessages : public ::testing::Test {
 protected:
  ScriptedWindow target_;
  WindowHandle window_ = target_.handle();
  WindowOpsWin windows_;
};

TEST_F(WindowMessages, ATextIsItsLengthAndThenABufferOneLonger) {
  target_.text = "MCC:262";
  EXPECT_EQ(windows_.Text(window_).value, "MCC:262");
  EXPECT_EQ(target_.Take(), (std::vector<Received>{{14, 0, 0}, {13, 8, 0}}));
}

TEST_F(WindowMessages, AWindowWithoutATextIsAskedOnce) {
  EXPECT_EQ(windows_.Text(window_).value, ">No text for this class<");
  EXPECT_EQ(target_.Take(), (std::vector<Received>{{14, 0, 0}}));
}

TEST_F(WindowMessages, AnEndlessTextGetsABufferOfTheLimit) {
  target_.text.assign(1'000'000, 'x');
  EXPECT_EQ(windows_.Text(window_).value.size(), WindowOps::kLongestText);
  EXPECT_EQ(target_.Take(), (std::vector<Received>{{14, 0, 0}, {13, 65536, 0}}));
}

TEST_F(WindowMessages, ALineIsItsStartItsLengthAndItsText) {
  target_.lines = {"SSI:9001 D_Setup Transmission Granted Call ID:1207 ", "short", ""};
  EXPECT_EQ(windows_.Line(window_, 1).value, "short");
  EXPECT_EQ(target_.Take(), (std::vector<Received>{{187, 1, 0}, {193, 1000, 0}, {196, 1, 0}}));
  EXPECT_EQ(target_.line_room, 64);
  EXPECT_EQ(windows_.Line(window_, 0).value, target_.lines[0]);
  EXPECT_EQ(target_.line_room, 104);
}

TEST_F(WindowMessages, NoMoreIsAskedOfALineThanNeeded) {
  target_.lines = {"one", ""};
  EXPECT_EQ(windows_.Line(window_, 1).value, "");
  EXPECT_EQ(target_.Take(), (std::vector<Received>{{187, 1, 0}, {193, 1000, 0}}));
  EXPECT_EQ(windows_.Line(window_, 2).value, "");
  EXPECT_EQ(target_.Take(), (std::vector<Received>{{187, 2, 0}}));
  EXPECT_TRUE(windows_.Line(window_, -1).answered());
  EXPECT_EQ(target_.Take(), std::vector<Received>{});
}

TEST_F(WindowMessages, AnEndlessLineIsBoundedByTheSizesSixteenBits) {
  target_.lines = {std::string(200'000, 'x')};
  const auto line = windows_.Line(window_, 0);
  EXPECT_TRUE(line.answered());
  EXPECT_EQ(target_.line_room, 65535);
  EXPECT_EQ(line.value, std::string(65535 / 2, 'x'));
}

TEST_F(WindowMessages, WhatHasTheWindowDoSomethingIsOneMessage) {
  target_.lines = {"one", "two"};
  EXPECT_EQ(windows_.LineCount(window_).value, 2);
  EXPECT_EQ(windows_.Press(window_), Reply::kAnswered);
  EXPECT_EQ(windows_.SetText(window_, "3383"), Reply::kAnswered);
  EXPECT_EQ(windows_.PressSelector(window_), Reply::kAnswered);
  EXPECT_EQ(target_.Take(),
            (std::vector<Received>{{186, 0, 0}, {245, 0, 0}, {12, 0, 0}, {513, 1, 852006}}));
  EXPECT_EQ(target_.text, "3383");
}

TEST_F(WindowMessages, NoAnswerInTimeIsNoneAtWhicheverMessageItHappens) {
  target_.text = "text";
  target_.lines = {"line"};
  for (const UINT message : {EM_LINEINDEX, EM_LINELENGTH, EM_GETLINE}) {
    target_.slow_message = message;
    EXPECT_EQ(windows_.Line(window_, 0).reply, Reply::kNoAnswer) << message;
    EXPECT_EQ(windows_.Line(window_, 0).value, "") << message;
    target_.AwaitIdle();
  }
  for (const UINT message : {WM_GETTEXTLENGTH, WM_GETTEXT}) {
    target_.slow_message = message;
    EXPECT_EQ(windows_.Text(window_).reply, Reply::kNoAnswer) << message;
    EXPECT_EQ(windows_.Text(window_).value, "") << message;
    target_.AwaitIdle();
  }
}

}  // namespace
}  // namespace corvane::contract
