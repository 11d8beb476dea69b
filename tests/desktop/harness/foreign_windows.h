// Windows of the tested programs, looked at and operated from outside as a user would.
//
// Every call has a time limit and stands a window that is gone: it then gives the empty answer.
// Clicks and keys are posted, so a program that is busy does not hold the test up; what they bring
// about is waited for (wait.h). Texts are bytes of the ANSI code page.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::desktop {

using WindowHandle = std::uintptr_t;  // 0: none

// How long a program may take to answer one message before it counts as not answering.
inline constexpr int kAnswerLimit_ms = 15'000;

// Finding. Top-level windows are those of one process, hidden ones included, topmost first.
[[nodiscard]] std::vector<WindowHandle> TopLevelWindows(unsigned process_id);
// The first top-level window of the process whose title begins with `title`, 0 when there is none.
[[nodiscard]] WindowHandle FindTopLevel(unsigned process_id, std::string_view title);
// Like FindTopLevel, but looks at `known` first, the answer of an earlier time: searching costs
// every window on the desktop a message.
[[nodiscard]] WindowHandle FindTopLevelAgain(WindowHandle known, unsigned process_id,
                                             std::string_view title);
[[nodiscard]] std::vector<WindowHandle> Descendants(WindowHandle parent);
// The descendant with this control id.
[[nodiscard]] WindowHandle Child(WindowHandle parent, int control_id);
// The first descendant whose class name contains `class_part` and whose text is `text`.
[[nodiscard]] WindowHandle ChildByText(WindowHandle parent, std::string_view class_part,
                                       std::string_view text);
[[nodiscard]] WindowHandle ForegroundWindow();

// Looking.
[[nodiscard]] bool Alive(WindowHandle window);
[[nodiscard]] bool Visible(WindowHandle window);
[[nodiscard]] bool Enabled(WindowHandle window);
[[nodiscard]] std::string ClassOf(WindowHandle window);
[[nodiscard]] std::string TextOf(WindowHandle window);
[[nodiscard]] bool Checked(WindowHandle button);
// The entries of a list box, as far as they could be read.
[[nodiscard]] std::vector<std::string> ItemsOf(WindowHandle list);

// A log: a list whose lines stay as they came until all are cleared. Those read before are not
// asked for again, so that looking often does not keep the program busy that is looked at.
class LogLines {
 public:
  [[nodiscard]] const std::vector<std::string>& Of(WindowHandle list);

 private:
  WindowHandle list_ = 0;
  std::vector<std::string> lines_;
};
[[nodiscard]] int TopIndexOf(WindowHandle list);
// -1: none.
[[nodiscard]] int SelectedIn(WindowHandle list);
// Lines of a multi-line edit box, the last one included.
[[nodiscard]] int LineCountOf(WindowHandle edit);
// The window's thread takes an empty message within the limit.
[[nodiscard]] bool Responds(WindowHandle window, int limit_ms);
struct WindowPlace {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  bool operator==(const WindowPlace&) const = default;
};
[[nodiscard]] WindowPlace PlaceOf(WindowHandle window);
// The first screen without task bars.
[[nodiscard]] WindowPlace ScreenPlace();

// Operating.
void Click(WindowHandle button);
void MouseClick(WindowHandle control);
void RightClick(WindowHandle control);
void DoubleClick(WindowHandle control);
void DoubleClickItem(WindowHandle list, int index);
// Clicks into the box and replaces its text by typing.
void Type(WindowHandle edit, std::string_view text);
// The same, and presses Enter.
void TypeAndEnter(WindowHandle edit, std::string_view text);
// Both replace the text and send, not post, what is sent when Enter is pressed and when the box
// loses the focus. True: the program has done what it then does. False: it was gone before it had.
[[nodiscard]] bool EnterAtOnce(WindowHandle edit, std::string_view text);
[[nodiscard]] bool LeaveAtOnce(WindowHandle edit, std::string_view text);
void PressKey(WindowHandle control, int virtual_key);
void ChooseInCombo(WindowHandle combo, int index);
void ChooseMenuItem(WindowHandle window, int command);
// Selects an entry of a list by a posted message, of which the program is not told: once it is
// seen, all that was posted before has been taken.
void SelectByPost(WindowHandle list, int index);
// What the cross in the corner does.
void Close(WindowHandle window);
// What the system asks and tells a window when the user logs off. False: the window objected, or
// did not answer in time.
[[nodiscard]] bool EndSession(WindowHandle window);
void Minimise(WindowHandle window);
void BringToFront(WindowHandle window);
void MoveWindowTo(WindowHandle window, int left, int top);
// Replaces a control's text at once, without typing.
void SetText(WindowHandle control, std::string_view text);
// WM_COPYDATA; the receiver's answer, 0 when there was none.
[[nodiscard]] std::intptr_t SendData(WindowHandle window, std::uint32_t kind,
                                     std::string_view data);

// The title of a message box and the texts in it, "title: text".
[[nodiscard]] std::string DescribeMessageBox(WindowHandle box);

// Saves a window as it is seen on the screen (0: the whole screen) as a PNG file. False when the
// window is gone or the file cannot be written.
[[nodiscard]] bool SaveScreenshot(WindowHandle window, const std::filesystem::path& file);

}  // namespace corvane::desktop
