// WindowOps on the stand-in's window tree, as another program sees it: hung and dead windows, what
// covers what on the screen.
#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "link/window_ops.h"
#include "sim/sim_loop.h"
#include "standin/model.h"

namespace corvane::sim {

class SimWindowOps : public WindowOps {
 public:
  // `catch_up` brings the model to the loop's present time; it is called before every look.
  SimWindowOps(SimLoop& loop, standin::Model& model, std::function<void()> catch_up);

  // A message to a window that hangs waits like a bounded send does, on the loop's clock, up to
  // kSendLimitMs; once it has hung for kHungAfterMs it is not asked any more.
  static constexpr int kSendLimitMs = 2000;
  static constexpr int kHungAfterMs = 5000;

  static WindowHandle HandleOf(standin::WindowId id);
  static standin::WindowId IdOf(WindowHandle handle);

  // The program's own window, an ordinary top-level window of another program.
  void SetOwnMainWindow(standin::WindowId id) { own_ = id; }

  // What a message was sent for.
  enum class Sent { kText, kLineCount, kLine, kLineStart, kPress, kSetText, kPressSelector };
  struct Message {
    WindowHandle window = 0;
    Sent sent = Sent::kText;
    std::string text{};      // of kSetText
    std::int32_t index = 0;  // of kLine and kLineStart
    bool operator==(const Message&) const = default;
  };
  // The latest kKeptMessages calls of the message functions, oldest first; and how many there were.
  static constexpr std::size_t kKeptMessages = 10000;
  [[nodiscard]] const std::vector<Message>& messages() const { return messages_; }
  void ForgetMessages() { messages_.clear(); }
  // False: none is kept any more.
  void SetKeepsMessages(bool keeps) { keeps_messages_ = keeps; }
  [[nodiscard]] std::int64_t send_count() const { return send_count_; }
  // Is called with each message before it arrives.
  void SetOnMessage(std::function<void(const Message&)> hook) { on_message_ = std::move(hook); }
  // Is asked at each question about a window that the system answers by itself: true means that the
  // window is not there for this once.
  void SetMissing(std::function<bool()> missing) { missing_ = std::move(missing); }
  // For so many of the next messages no answer comes, without any hang.
  void FailNextSends(int count) { fail_sends_ = count; }
  // No message to this window is answered, without any hang, until that is taken back.
  void SetSilent(WindowHandle window, bool silent);
  // Another limit than kSendLimitMs, from now on.
  void SetSendLimitMs(int ms) { send_limit_ms_ = ms; }
  // SDR# runs with more rights than this program: only its texts can be read (as the stand-in's
  // "elevated on").
  void SetRefusing(bool refusing) { model_.SetElevated(refusing); }
  // Presses and texts that were given up because of a hang are carried out when it is over, in the
  // order of sending, before anything that is sent later.
  void SetActsLate(bool late) { acts_late_ = late; }
  // What GetPlacement says of the window's state, whatever it is; kNoShowState: the truth.
  static constexpr std::uint32_t kNoShowState = 0xFFFF;
  void PretendShowState(std::uint32_t state) { show_state_ = state; }
  // Windows brought to the front, and windows moved or shown otherwise, oldest first.
  [[nodiscard]] const std::vector<WindowHandle>& foregrounds() const { return foregrounds_; }
  [[nodiscard]] const std::vector<WindowHandle>& placed() const { return placed_; }

  void EnumTopLevel(const std::function<bool(WindowHandle)>& visit) override;
  void EnumChildren(WindowHandle parent, const std::function<bool(WindowHandle)>& visit) override;
  std::string ClassName(WindowHandle window) override;
  WindowHandle Parent(WindowHandle window) override;
  ProgramId Program(WindowHandle window) override;
  std::string Title(WindowHandle window) override;
  bool IsAlive(WindowHandle window) override;
  bool IsVisible(WindowHandle window) override;
  bool GetPlacement(WindowHandle window, Placement& placement) override;
  bool GetRect(WindowHandle window, ScreenRect& rect) override;
  std::int32_t ScreenPixel(WindowHandle control, std::int32_t x, std::int32_t y) override;
  bool IsSeenAt(WindowHandle window, std::int32_t x, std::int32_t y) override;
  bool WrapsLines(WindowHandle edit) override;
  WindowHandle Foreground() override;
  WindowHandle OwnMainWindow() override { return HandleOf(own_); }
  Answer<std::string> Text(WindowHandle window) override;
  Answer<std::int32_t> LineCount(WindowHandle edit) override;
  Answer<std::string> Line(WindowHandle edit, std::int32_t index) override;
  Answer<std::int32_t> LineStart(WindowHandle edit, std::int32_t index) override;
  Reply Press(WindowHandle button) override;
  Reply SetText(WindowHandle window, const std::string& text) override;
  Reply PressSelector(WindowHandle selector) override;
  Reply SetPlacement(WindowHandle window, const Placement& placement) override;
  WindowHandle SetForeground(WindowHandle window) override;

 private:
  // `window` is set when the reply is kAnswered. Waits for a hang to end within the limit.
  Reply Ask(const Message& message, const standin::Window*& window);
  bool WaitForAnswer(const standin::Window& window);
  [[nodiscard]] std::int64_t HungUntilMs(const standin::Window& window) const;
  void KeepMessage(const Message& message);
  bool Answers(WindowHandle window) {
    const standin::Window* found = Look(window);
    return found == nullptr || WaitForAnswer(*found);
  }
  void CarryOut(const Message& message);
  void CarryOutLate();
  const standin::Window* Look(WindowHandle window);
  // As the system answers about it.
  const standin::Window* Know(WindowHandle window) {
    return missing_ && missing_() ? nullptr : Look(window);
  }
  [[nodiscard]] bool BelongsToSdr(const standin::Window& window) const {
    return window.top == model_.ids().main || window.top == model_.ids().info_window;
  }

  static constexpr std::size_t kMaxForegrounds = 1000;
  static void Keep(std::vector<WindowHandle>& windows, WindowHandle window);

  SimLoop& loop_;
  standin::Model& model_;
  std::function<void()> catch_up_;
  standin::WindowId own_ = 0;
  int fail_sends_ = 0;
  std::set<WindowHandle> silent_;
  int send_limit_ms_ = kSendLimitMs;
  bool acts_late_ = false;
  std::vector<Message> late_;
  std::uint32_t show_state_ = kNoShowState;
  std::vector<Message> messages_;
  bool keeps_messages_ = true;
  std::function<void(const Message&)> on_message_;
  std::function<bool()> missing_;
  std::int64_t send_count_ = 0;
  std::vector<WindowHandle> foregrounds_;
  std::vector<WindowHandle> placed_;
};

}  // namespace corvane::sim
