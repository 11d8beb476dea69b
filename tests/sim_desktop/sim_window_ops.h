// WindowOps on the stand-in's window tree, as another program sees it: hung and dead windows, what
// covers what on the screen.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/loop.h"
#include "link/window_ops.h"
#include "standin/model.h"

namespace corvane::sim {

class SimWindowOps : public WindowOps {
 public:
  // `catch_up` brings the model to the loop's present time; it is called before every look.
  SimWindowOps(Loop& loop, standin::Model& model, std::function<void()> catch_up);

  // A message to a window that hangs waits like a bounded send does, on the loop's clock, up to
  // kSendLimitMs; once it has hung for kHungAfterMs it is not asked any more.
  static constexpr int kSendLimitMs = 2000;
  static constexpr int kHungAfterMs = 5000;

  static WindowHandle HandleOf(standin::WindowId id);
  static standin::WindowId IdOf(WindowHandle handle);

  // The program's own window, an ordinary top-level window of another program.
  void SetOwnMainWindow(standin::WindowId id) { own_ = id; }
  // For so many of the next messages no answer comes, without any hang.
  void FailNextSends(int count) { fail_sends_ = count; }
  // Calls of the message functions so far.
  [[nodiscard]] std::int64_t send_count() const { return send_count_; }
  // Windows brought to the front, oldest first.
  [[nodiscard]] const std::vector<WindowHandle>& foregrounds() const { return foregrounds_; }

  void EnumTopLevel(const std::function<bool(WindowHandle)>& visit) override;
  void EnumChildren(WindowHandle parent, const std::function<bool(WindowHandle)>& visit) override;
  std::string ClassName(WindowHandle window) override;
  WindowHandle Parent(WindowHandle window) override;
  bool IsAlive(WindowHandle window) override;
  bool IsVisible(WindowHandle window) override;
  Answer Send(WindowHandle window, unsigned message, std::uintptr_t w_param,
              std::intptr_t l_param) override;
  Answer SetText(WindowHandle window, const std::string& text) override;
  TextAnswer GetText(WindowHandle window, std::size_t size) override;
  TextAnswer GetLine(WindowHandle window, std::int32_t line, std::size_t size) override;
  bool GetPlacement(WindowHandle window, Placement& placement) override;
  void SetPlacement(WindowHandle window, const Placement& placement) override;
  bool GetRect(WindowHandle window, ScreenRect& rect) override;
  void SetForeground(WindowHandle window) override;
  std::int32_t ScreenPixel(WindowHandle control, std::int32_t x, std::int32_t y) override;
  WindowHandle OwnMainWindow() override { return HandleOf(own_); }

 private:
  // The window, when it is there and answers; waits for a hang to end within the limit.
  const standin::Window* Ask(WindowHandle window);
  const standin::Window* Look(WindowHandle window);
  [[nodiscard]] bool BelongsToSdr(const standin::Window& window) const;

  static constexpr std::size_t kMaxForegrounds = 1000;

  Loop& loop_;
  standin::Model& model_;
  std::function<void()> catch_up_;
  standin::WindowId own_ = 0;
  int fail_sends_ = 0;
  std::int64_t send_count_ = 0;
  std::vector<WindowHandle> foregrounds_;
};

}  // namespace corvane::sim
