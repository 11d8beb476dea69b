// The seam to other programs' windows.
//
// Every window can be gone at any line: a call about a window that does not exist gives the empty
// answer. Every message to another program's window has a time limit.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

namespace corvane {

using WindowHandle = std::uintptr_t;  // 0: none

// Message numbers and parameters, as SDR#'s windows receive them.
inline constexpr unsigned kWmSetText = 12;
inline constexpr unsigned kWmGetText = 13;
inline constexpr unsigned kWmGetTextLength = 14;
inline constexpr unsigned kEmGetLineCount = 186;
inline constexpr unsigned kEmLineIndex = 187;
inline constexpr unsigned kEmLineLength = 193;
inline constexpr unsigned kEmGetLine = 196;
inline constexpr unsigned kBmClick = 245;
inline constexpr unsigned kWmLButtonDown = 513;

// A window's answer to one message.
struct Answer {
  bool answered = false;  // false: timed out, hung, or no such window
  std::intptr_t value = 0;
};
struct TextAnswer {
  bool answered = false;
  std::intptr_t value = 0;  // what the message returned
  std::string text;         // as many bytes of the buffer as `value` says
};

struct ScreenRect {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;
  bool operator==(const ScreenRect&) const = default;
};

inline constexpr std::uint32_t kShowNormal = 1;
inline constexpr std::uint32_t kShowMinimised = 6;

// A window's show state and restored position (the 44-byte placement structure).
struct Placement {
  std::uint32_t flags = 0;
  std::uint32_t show_state = 0;
  std::array<std::int32_t, 2> min_position{};
  std::array<std::int32_t, 2> max_position{};
  ScreenRect normal_position;
};

class WindowOps {
 public:
  virtual ~WindowOps() = default;

  // Calls `visit` for each window, topmost first, until it answers false.
  virtual void EnumTopLevel(const std::function<bool(WindowHandle)>& visit) = 0;
  // All descendants of `parent`; none when it is 0.
  virtual void EnumChildren(WindowHandle parent,
                            const std::function<bool(WindowHandle)>& visit) = 0;

  // At most 49 characters.
  [[nodiscard]] virtual std::string ClassName(WindowHandle window) = 0;
  [[nodiscard]] virtual WindowHandle Parent(WindowHandle window) = 0;
  [[nodiscard]] virtual bool IsAlive(WindowHandle window) = 0;
  [[nodiscard]] virtual bool IsVisible(WindowHandle window) = 0;

  // Sends a message without text.
  virtual Answer Send(WindowHandle window, unsigned message, std::uintptr_t w_param,
                      std::intptr_t l_param) = 0;
  // WM_SETTEXT.
  virtual Answer SetText(WindowHandle window, const std::string& text) = 0;
  // WM_GETTEXT into a buffer of `size` bytes.
  virtual TextAnswer GetText(WindowHandle window, std::size_t size) = 0;
  // EM_GETLINE into a buffer of `size` bytes (at least 64) whose first 16-bit word is `size`.
  virtual TextAnswer GetLine(WindowHandle window, std::int32_t line, std::size_t size) = 0;

  // False when there is no such window.
  [[nodiscard]] virtual bool GetPlacement(WindowHandle window, Placement& placement) = 0;
  // Applies it by other calls where the direct one is refused.
  virtual void SetPlacement(WindowHandle window, const Placement& placement) = 0;
  [[nodiscard]] virtual bool GetRect(WindowHandle window, ScreenRect& rect) = 0;
  virtual void SetForeground(WindowHandle window) = 0;

  // The pixel of the screen at (x, y) as the screen gives it, -1 outside of it. `control` is the
  // window that the device context is released with.
  [[nodiscard]] virtual std::int32_t ScreenPixel(WindowHandle control, std::int32_t x,
                                                 std::int32_t y) = 0;

  // The program's own main window, to bring it back to the front.
  [[nodiscard]] virtual WindowHandle OwnMainWindow() = 0;
};

}  // namespace corvane
