// How each kind of window in the tree becomes a real one: class, style, and the common operations
// on it. Handles are void pointers here, so that no system header is needed.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "standin/window_tree.h"

namespace corvane::standin {

class ControlFactory {
 public:
  // `procedure` (a WNDPROC) runs in front of the procedure of every class registered here.
  explicit ControlFactory(void* procedure) : procedure_(procedure) {}

  // Registers the window's class, if that is not done, on top of the system's class of its kind.
  // Gives the system class's own procedure, for CallWindowProc.
  [[nodiscard]] void* Register(const Window& window);
  // Makes it, top-level windows hidden; `data` arrives with WM_NCCREATE.
  void Create(const Window& window, void* parent, void* data) const;

 private:
  [[nodiscard]] void* RegisterEdit(const std::string& name);

  void* procedure_;
  std::set<std::string> registered_;
};

[[nodiscard]] bool IsEdit(Kind kind);
[[nodiscard]] std::string WindowText(void* window);
void FillList(void* list, const std::vector<std::string>& items);
// Shows the last `added` of `items`, scrolled to, in a list that shows those before; what is above
// `items` by now goes.
void AddToList(void* list, const std::vector<std::string>& items, std::size_t added);
void AppendToEdit(void* edit, const std::string& text);
// Before the control sees an EM_GETLINE with this block; see the .cpp.
void RepairGetLine(std::intptr_t block);

}  // namespace corvane::standin
