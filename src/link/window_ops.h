// The seam to other programs' windows.
//
// Every window can be gone at any line. What the system itself knows is answered at once; what the
// window has to do something for has a time limit, and the answer says what came of it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace corvane {

using WindowHandle = std::uintptr_t;  // 0: none
using ProgramId = std::uint32_t;      // a program that runs; 0: none

// What came of a message to another program's window.
enum class Reply {
  kAnswered,
  kNoAnswer,  // none within the time limit, or the window is known to hang
  kRefused,   // the system lets this program send it nothing (error 5)
  kGone,      // there is no such window; nothing was sent
};

template <typename T>
struct Answer {
  Reply reply = Reply::kGone;
  T value{};  // of an answer; otherwise empty

  [[nodiscard]] bool answered() const { return reply == Reply::kAnswered; }
};

// What a window without a text reads as.
inline constexpr const char* kNoWindowText = ">No text for this class<";

struct ScreenRect {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;
  bool operator==(const ScreenRect&) const = default;
};

inline constexpr std::uint32_t kShowNormal = 1;
inline constexpr std::uint32_t kShownMinimised = 2;  // what a minimised window answers
inline constexpr std::uint32_t kShowMinimised = 6;   // what minimises it

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

  // --- What the system knows. A window that does not exist gives the empty answer. ---

  // Calls `visit` for each window, topmost first, until it answers false.
  virtual void EnumTopLevel(const std::function<bool(WindowHandle)>& visit) = 0;
  // All descendants of `parent`; none when it is 0.
  virtual void EnumChildren(WindowHandle parent,
                            const std::function<bool(WindowHandle)>& visit) = 0;
  // At most 49 characters.
  [[nodiscard]] virtual std::string ClassName(WindowHandle window) = 0;
  [[nodiscard]] virtual WindowHandle Parent(WindowHandle window) = 0;
  // Whose window it is.
  [[nodiscard]] virtual ProgramId Program(WindowHandle window) = 0;
  // The title that the system keeps of a top-level window: what its text is as a rule, but nobody
  // has to answer for it.
  [[nodiscard]] virtual std::string Title(WindowHandle window) = 0;
  [[nodiscard]] virtual bool IsAlive(WindowHandle window) = 0;
  [[nodiscard]] virtual bool IsVisible(WindowHandle window) = 0;
  // False when there is no such window.
  [[nodiscard]] virtual bool GetPlacement(WindowHandle window, Placement& placement) = 0;
  [[nodiscard]] virtual bool GetRect(WindowHandle window, ScreenRect& rect) = 0;
  // The pixel of the screen at (x, y) as the screen gives it, -1 outside of it. `control` is the
  // window that the device context is released with.
  [[nodiscard]] virtual std::int32_t ScreenPixel(WindowHandle control, std::int32_t x,
                                                 std::int32_t y) = 0;
  // Whether what the screen shows at (x, y) is `window`: the window there is it, or one of its
  // ancestors or descendants within its own top-level window. A window that lies over it, whosever
  // that is, the desktop, and an owner are none of these.
  [[nodiscard]] virtual bool IsSeenAt(WindowHandle window, std::int32_t x, std::int32_t y) = 0;
  // Whether an edit box breaks long lines at its edge. Its lines are then those on the screen.
  [[nodiscard]] virtual bool WrapsLines(WindowHandle edit) = 0;
  // The window in front of all, whosever it is; 0 while there is none.
  [[nodiscard]] virtual WindowHandle Foreground() = 0;
  // The program's own main window, to bring it back to the front.
  [[nodiscard]] virtual WindowHandle OwnMainWindow() = 0;

  // --- Questions that the window answers ---

  // kNoWindowText when it has none. What is behind kLongestText characters is cut off.
  static constexpr std::size_t kLongestText = 65535;
  [[nodiscard]] virtual Answer<std::string> Text(WindowHandle window) = 0;
  // Lines of an edit box, which are never fewer than 1.
  [[nodiscard]] virtual Answer<std::int32_t> LineCount(WindowHandle edit) = 0;
  // One line of an edit box by its zero-based index; "" for a negative index, which asks nothing,
  // and for a line that is not there.
  [[nodiscard]] virtual Answer<std::string> Line(WindowHandle edit, std::int32_t index) = 0;
  // Where a line begins, in characters from the beginning of the box; -1 for one that is not there.
  [[nodiscard]] virtual Answer<std::int32_t> LineStart(WindowHandle edit, std::int32_t index) = 0;

  // --- Messages that have the window do something ---

  virtual Reply Press(WindowHandle button) = 0;
  virtual Reply SetText(WindowHandle window, const std::string& text) = 0;
  // The left button goes down on one of the plug-in's timeslot selectors.
  virtual Reply PressSelector(WindowHandle selector) = 0;
  // Moves and shows it. A window that does not answer is moved as soon as it does again.
  virtual Reply SetPlacement(WindowHandle window, const Placement& placement) = 0;
  // Nothing happens while `window`, or the one in front of it now, does not answer: then that one
  // is given back, otherwise 0. The system may leave the front to whoever has it.
  virtual WindowHandle SetForeground(WindowHandle window) = 0;
};

}  // namespace corvane
