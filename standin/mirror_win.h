// Real windows as a mirror of the window tree, and what is done to them passed on to the tree.
#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "standin/cover_win.h"
#include "standin/mirror_controls_win.h"
#include "standin/window_tree.h"

namespace corvane::standin {

class Mirror : private WindowTree::Observer {
 public:
  struct Hooks {
    std::function<void()> before_input;             // brings the model to the present time
    std::function<void(WindowId)> close;            // the user closes a top-level window
    std::function<bool(std::string_view)> command;  // see control_protocol.h
  };
  // Makes the windows that are in the tree already. The tree must outlive the mirror.
  Mirror(WindowTree& tree, Hooks hooks);
  ~Mirror() override;
  Mirror(const Mirror&) = delete;
  Mirror& operator=(const Mirror&) = delete;

  // Shows the text that was appended since the last time. Texts come in bursts, and each one shown
  // alone would cost more than the burst.
  void Flush();
  // Brings the list boxes up to date. Only people look at those, and what makes them change is
  // often the beginning of a dialogue with another program, which is not to be held up by it.
  void ShowLists();
  [[nodiscard]] bool lists_wait() const { return !lists_.empty(); }

  // The window's handle; nullptr when there is none.
  [[nodiscard]] HWND Handle(WindowId id) const;

 private:
  struct Node {
    Mirror* owner = nullptr;
    WindowId id = 0;
    Kind kind = Kind::kPanel;
    HWND window = nullptr;
    WNDPROC original = nullptr;
  };
  // What a list box does not show yet.
  struct ListChanges {
    bool whole = false;  // all its lines are others
    std::size_t added = 0;
  };
  class Echo;

  void Created(const Window& window) override;
  void Destroyed(WindowId id) override;
  void Changed(const Window& window, Aspect aspect) override;
  void Appended(const Window& window, std::string_view text) override;
  void ItemAdded(const Window& window, bool dropped) override;

  static LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM w_param, LPARAM l_param);
  static LRESULT CallOriginal(WNDPROC original, HWND window, UINT message, WPARAM w_param,
                              LPARAM l_param);
  // True when the message is dealt with.
  bool Handle(const Node& node, UINT message, WPARAM w_param, LPARAM l_param, LRESULT& result);
  void ShowCover(const Window& window);
  void ShowStranger(const Window& window);
  void OnCommand(WORD what, HWND control);
  bool OnSetText(const Node& node, WPARAM w_param, LPARAM l_param, LRESULT& result);
  // A user or another program has moved, minimised, restored, shown or hidden a window.
  void OnMoved(const Node& node);
  bool OnCopyData(const COPYDATASTRUCT& block);
  [[nodiscard]] const Window* WindowOf(HWND handle) const;

  WindowTree& tree_;
  Hooks hooks_;
  ControlPainter painter_;
  ControlFactory factory_{Proc};
  std::map<WindowId, std::unique_ptr<Node>> nodes_;
  std::map<WindowId, CoverProcess> covers_;
  std::map<WindowId, std::string> appended_;  // not yet shown
  std::map<WindowId, ListChanges> lists_;
  int echo_ = 0;
};

}  // namespace corvane::standin
