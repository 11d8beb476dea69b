// How each kind of window in the tree becomes a real one: class, style, font, what the drawn ones
// look like, and the common operations on it.
#pragma once

#include <windows.h>

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "standin/window_tree.h"

namespace corvane::standin {

class ControlFactory {
 public:
  // `procedure` runs in front of the procedure of every class registered here.
  explicit ControlFactory(WNDPROC procedure) : procedure_(procedure) {}

  // Registers the window's class, if that is not done, on top of the system's class of its kind.
  // Gives the system class's own procedure, for CallWindowProc.
  [[nodiscard]] WNDPROC Register(const Window& window);
  // Makes it, top-level windows hidden; `data` arrives with WM_NCCREATE.
  void Create(const Window& window, HWND parent, void* data) const;

 private:
  [[nodiscard]] WNDPROC RegisterEdit(const std::string& name);

  WNDPROC procedure_;
  std::set<std::string> registered_;
};

class ControlPainter {
 public:
  ControlPainter();
  ~ControlPainter();
  ControlPainter(const ControlPainter&) = delete;
  ControlPainter& operator=(const ControlPainter&) = delete;

  [[nodiscard]] HFONT font() const { return font_; }
  // Draws a check box or a selector.
  void Draw(HDC device, const Window& window) const;
  // Sets the colours of a header label up; gives the brush for its ground.
  [[nodiscard]] HBRUSH PrepareHeader(HDC device) const;

 private:
  HFONT font_;
  HBRUSH header_brush_;
};

[[nodiscard]] bool IsEdit(Kind kind);
[[nodiscard]] std::string WindowText(HWND window);
void FillList(HWND list, const std::vector<std::string>& items);
// Shows the last `added` of `items`, scrolled to, in a list that shows those before; what is above
// `items` by now goes.
void AddToList(HWND list, const std::vector<std::string>& items, std::size_t added);
void AppendToEdit(HWND edit, const std::string& text);
// Before the control sees an EM_GETLINE with this block; see the .cpp.
void RepairGetLine(LPARAM block);

}  // namespace corvane::standin
