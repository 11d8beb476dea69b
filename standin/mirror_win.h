// Real windows as a mirror of the window tree, and what is done to them passed on to the tree.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "standin/window_tree.h"

namespace corvane::standin {

class Mirror {
 public:
  struct Hooks {
    std::function<void()> before_input;             // brings the model to the present time
    std::function<void(WindowId)> close;            // the user closes a top-level window
    std::function<bool(std::string_view)> command;  // see control_protocol.h
  };
  // Makes the windows that are in the tree already. The tree must outlive the mirror.
  Mirror(WindowTree& tree, Hooks hooks);
  ~Mirror();
  Mirror(const Mirror&) = delete;
  Mirror& operator=(const Mirror&) = delete;

  // Shows the text that was appended since the last time. Texts come in bursts, and each one shown
  // alone would cost more than the burst.
  void Flush();
  // Brings the list boxes up to date. Only people look at those, and what makes them change is
  // often the beginning of a dialogue with another program, which is not to be held up by it.
  void ShowLists();
  [[nodiscard]] bool lists_wait() const;

  // The window's handle; nullptr when there is none.
  [[nodiscard]] void* Handle(WindowId id) const;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace corvane::standin
