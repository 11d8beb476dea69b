// Texts of windows, with every length bounded before it becomes a buffer.
#include "link/window_text.h"

#include <algorithm>
#include <cassert>

namespace corvane {

namespace {

constexpr std::size_t kSmallestLineBuffer = 64;
constexpr std::size_t kLargestLineBuffer = 65535;  // the size goes into a 16-bit word

// A window that is gone does not answer either, but it is not slow.
bool TimedOut(WindowOps& windows, WindowHandle window, bool answered) {
  return !answered && window != 0 && windows.IsAlive(window);
}

}  // namespace

WindowText ReadWindowText(WindowOps& windows, WindowHandle window) {
  if (window == 0) return {kNoWindowText, false};
  const Answer length = windows.Send(window, kWmGetTextLength, 0, 0);
  if (!length.answered || length.value <= 0) {
    return {kNoWindowText, TimedOut(windows, window, length.answered)};
  }
  const auto size = std::min(static_cast<std::size_t>(length.value), kLongestWindowText) + 1;
  TextAnswer text = windows.GetText(window, size);
  if (!text.answered) return {{}, TimedOut(windows, window, false)};
  if (text.text.size() > size) text.text.resize(size);
  return {std::move(text.text), false};
}

std::string GetWindowTextOf(WindowOps& windows, WindowHandle window) {
  return ReadWindowText(windows, window).text;
}

std::optional<std::string> GetEditLine(WindowOps& windows, WindowHandle window, std::int32_t line) {
  if (window == 0 || line < 0) return std::string{};
  const Answer start = windows.Send(window, kEmLineIndex, static_cast<std::uintptr_t>(line), 0);
  if (!start.answered) return std::nullopt;
  if (start.value < 0) return std::string{};
  const Answer length =
      windows.Send(window, kEmLineLength, static_cast<std::uintptr_t>(start.value), 0);
  if (!length.answered) return std::nullopt;
  if (length.value <= 0) return std::string{};

  // Some edit boxes copy only half of what the size in the buffer allows.
  const auto characters = std::min(static_cast<std::size_t>(length.value), kLargestLineBuffer);
  const std::size_t size = std::clamp(2 * characters + 2, kSmallestLineBuffer, kLargestLineBuffer);
  TextAnswer text = windows.GetLine(window, line, size);
  if (!text.answered) return std::nullopt;
  if (text.text.size() > characters) text.text.resize(characters);
  return std::move(text.text);
}

}  // namespace corvane
