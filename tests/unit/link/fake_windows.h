// A desktop of a few windows, given and watched by the test.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "link/window_ops.h"

namespace corvane::test {

struct FakeWindow {
  WindowHandle handle = 0;
  WindowHandle parent = 0;
  std::string class_name;
  std::string text;
  bool visible = true;
  bool hung = false;
  Placement placement{0, kShowNormal, {}, {}, {10, 20, 810, 620}};
  ScreenRect rect{100, 200, 180, 220};
  std::function<void()> on_click;
  std::vector<std::string> lines{""};  // of an edit box
};

class FakeWindows : public WindowOps {
 public:
  struct Message {
    WindowHandle window;
    unsigned number;
    std::uintptr_t w_param;
    std::intptr_t l_param;
    std::string text;  // of WM_SETTEXT
    bool operator==(const Message&) const = default;
  };
  std::vector<Message> messages;
  std::vector<WindowHandle> foregrounds;
  std::vector<std::pair<WindowHandle, Placement>> placements;
  std::map<std::pair<std::int32_t, std::int32_t>, std::int32_t> pixels;
  std::vector<std::pair<std::int32_t, std::int32_t>> sampled;
  std::function<void()> on_hang;  // called for each message to a hung window
  std::function<void(unsigned message)> on_message;
  WindowHandle own = 9999;
  bool null_parent_asked = false;
  std::size_t last_line_buffer = 0;
  std::size_t last_text_buffer = 0;

  FakeWindow& Add(WindowHandle handle, WindowHandle parent, std::string class_name,
                  std::string text = {}) {
    FakeWindow window;
    window.handle = handle;
    window.parent = parent;
    window.class_name = std::move(class_name);
    window.text = std::move(text);
    order_.push_back(handle);
    return windows_[handle] = std::move(window);
  }
  FakeWindow& At(WindowHandle handle) { return windows_.at(handle); }
  // With everything in it.
  void Destroy(WindowHandle handle) {
    for (const WindowHandle other : std::vector<WindowHandle>(order_)) {
      const auto child = windows_.find(other);
      if (child != windows_.end() && child->second.parent == handle && other != handle) {
        Destroy(other);
      }
    }
    windows_.erase(handle);
    std::erase(order_, handle);
  }
  [[nodiscard]] int CountOf(WindowHandle window, unsigned number) const {
    return static_cast<int>(std::count_if(messages.begin(), messages.end(), [&](const Message& m) {
      return m.window == window && m.number == number;
    }));
  }
  void HangAll(bool hung) {
    for (auto& [handle, window] : windows_) window.hung = hung;
  }

  void EnumTopLevel(const std::function<bool(WindowHandle)>& visit) override {
    for (const WindowHandle handle : std::vector<WindowHandle>(order_)) {
      if (windows_.contains(handle) && windows_[handle].parent == 0 && !visit(handle)) return;
    }
  }
  void EnumChildren(WindowHandle parent, const std::function<bool(WindowHandle)>& visit) override {
    if (parent == 0) null_parent_asked = true;
    for (const WindowHandle handle : std::vector<WindowHandle>(order_)) {
      if (IsInside(handle, parent) && !visit(handle)) return;
    }
  }
  std::string ClassName(WindowHandle window) override {
    return IsAlive(window) ? At(window).class_name.substr(0, 49) : "";
  }
  WindowHandle Parent(WindowHandle window) override {
    return IsAlive(window) ? At(window).parent : 0;
  }
  bool IsAlive(WindowHandle window) override { return windows_.contains(window); }
  bool IsVisible(WindowHandle window) override { return IsAlive(window) && At(window).visible; }

  Answer Send(WindowHandle window, unsigned message, std::uintptr_t w_param,
              std::intptr_t l_param) override {
    messages.push_back({window, message, w_param, l_param, {}});
    if (!Answers(window, message)) return {};
    FakeWindow& target = At(window);
    if (message == kWmGetTextLength) return Number(target.text.size());
    if (message == kEmGetLineCount) return Number(target.lines.size());
    if (message == kEmLineIndex) return LineIndex(target, w_param);
    if (message == kEmLineLength) return LineLength(target, w_param);
    if (message == kBmClick && target.on_click) {
      const auto click = target.on_click;  // the click may destroy the window
      click();
    }
    return {true, 0};
  }
  Answer SetText(WindowHandle window, const std::string& text) override {
    messages.push_back({window, kWmSetText, 0, 0, text});
    if (!Answers(window, kWmSetText)) return {};
    At(window).text = text;
    if (text.empty()) At(window).lines = {""};
    return {true, 1};
  }
  TextAnswer GetText(WindowHandle window, std::size_t size) override {
    messages.push_back({window, kWmGetText, size, 0, {}});
    last_text_buffer = size;
    if (!Answers(window, kWmGetText)) return {};
    const std::string text = At(window).text.substr(0, size - 1);
    return {true, static_cast<std::intptr_t>(text.size()), text};
  }
  TextAnswer GetLine(WindowHandle window, std::int32_t line, std::size_t size) override {
    messages.push_back({window, kEmGetLine, static_cast<std::uintptr_t>(line), 0, {}});
    last_line_buffer = size;
    if (!Answers(window, kEmGetLine)) return {};
    // As a faulty edit box does: half of what the buffer allows, and rubbish behind a short line.
    std::string text = At(window).lines.at(static_cast<std::size_t>(line));
    text = (text + std::string(40, '#')).substr(0, size / 2);
    return {true, static_cast<std::intptr_t>(text.size()), text};
  }

  bool GetPlacement(WindowHandle window, Placement& placement) override {
    if (!IsAlive(window)) return false;
    placement = At(window).placement;
    return true;
  }
  void SetPlacement(WindowHandle window, const Placement& placement) override {
    placements.emplace_back(window, placement);
    if (IsAlive(window)) At(window).placement = placement;
  }
  bool GetRect(WindowHandle window, ScreenRect& rect) override {
    if (!IsAlive(window)) return false;
    rect = At(window).rect;
    return true;
  }
  void SetForeground(WindowHandle window) override { foregrounds.push_back(window); }
  std::int32_t ScreenPixel(WindowHandle, std::int32_t x, std::int32_t y) override {
    sampled.emplace_back(x, y);
    const auto pixel = pixels.find({x, y});
    return pixel == pixels.end() ? -1 : pixel->second;
  }
  WindowHandle OwnMainWindow() override { return own; }

 private:
  static Answer Number(std::size_t value) { return {true, static_cast<std::intptr_t>(value)}; }

  bool Answers(WindowHandle window, unsigned message) {
    if (on_message) on_message(message);
    if (!IsAlive(window)) return false;
    if (!At(window).hung) return true;
    if (on_hang) on_hang();
    return false;
  }
  bool IsInside(WindowHandle handle, WindowHandle parent) {
    for (WindowHandle up = IsAlive(handle) ? At(handle).parent : 0; up != 0; up = Parent(up)) {
      if (up == parent) return true;
    }
    return false;
  }
  // Each line counts 1000 characters in the box's own numbering.
  static Answer LineIndex(const FakeWindow& box, std::uintptr_t line) {
    if (line >= box.lines.size()) return {true, -1};
    return Number(line * 1000);
  }
  static Answer LineLength(const FakeWindow& box, std::uintptr_t start) {
    return Number(box.lines.at(start / 1000).size());
  }

  std::map<WindowHandle, FakeWindow> windows_;
  std::vector<WindowHandle> order_;  // topmost first
};

}  // namespace corvane::test
