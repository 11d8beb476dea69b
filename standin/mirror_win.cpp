// Every window, controls included, runs one window procedure of this file in front of its class's
// own. While the mirror itself changes a window, what that window then tells is not passed back.
#include "standin/mirror_win.h"

#include <windows.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "standin/mirror_controls_win.h"
#include "standin/mirror_paint_win.h"

namespace corvane::standin {

namespace {

constexpr std::size_t kMaxCommandBytes = 4096;

}  // namespace

class Mirror::Impl : public WindowTree::Observer {
 public:
  Impl(WindowTree& tree, Hooks hooks) : tree_(tree), hooks_(std::move(hooks)) {
    tree_.SetObserver(this);
    const std::vector<WindowId> top = tree_.top_level();
    for (auto id = top.rbegin(); id != top.rend(); ++id) {
      Created(*tree_.Find(*id));
      for (const WindowId child : tree_.Descendants(*id)) Created(*tree_.Find(child));
    }
  }

  ~Impl() override {
    tree_.SetObserver(nullptr);
    const Echo echo(*this);
    while (!nodes_.empty()) DestroyWindow(nodes_.begin()->second->window);
  }

  [[nodiscard]] HWND Handle(WindowId id) const {
    const auto found = nodes_.find(id);
    return found == nodes_.end() ? nullptr : found->second->window;
  }

  void Created(const Window& window) override {
    const Echo echo(*this);
    auto node = std::make_unique<Node>();
    node->owner = this;
    node->id = window.id;
    node->kind = window.kind;
    node->original = reinterpret_cast<WNDPROC>(factory_.Register(window));
    Node* made = node.get();
    nodes_[window.id] = std::move(node);
    factory_.Create(window, Handle(window.parent), made);
    SendMessageA(made->window, WM_SETFONT, reinterpret_cast<WPARAM>(paint_.font()), FALSE);
    if (window.kind == Kind::kFrame && window.visible) {
      ShowWindow(made->window,
                 window.show_state == ShowState::kNormal ? SW_SHOWNORMAL : SW_SHOWMINIMIZED);
    }
  }

  void Destroyed(WindowId id) override {
    const Echo echo(*this);
    if (const HWND window = Handle(id)) DestroyWindow(window);
  }

  void Changed(const Window& window, Aspect aspect) override {
    const HWND handle = Handle(window.id);
    if (handle == nullptr) return;
    const Echo echo(*this);
    switch (aspect) {
      case Aspect::kText: {
        const std::string& text =
            window.kind == Kind::kMultiLine ? window.lines.text() : window.text;
        appended_.erase(window.id);
        if (WindowText(handle) != text) SetWindowTextA(handle, text.c_str());
        break;
      }
      case Aspect::kBox:
        SetWindowPos(handle, nullptr, window.box.left, window.box.top, window.box.width,
                     window.box.height, SWP_NOZORDER | SWP_NOACTIVATE);
        break;
      case Aspect::kVisible:
        ShowWindow(handle, window.visible ? SW_SHOWNA : SW_HIDE);
        break;
      case Aspect::kChecked:
        if (window.kind == Kind::kCheckBox) {
          SendMessageA(handle, BM_SETCHECK, window.checked ? BST_CHECKED : BST_UNCHECKED, 0);
        } else {
          RedrawWindow(handle, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        }
        break;
      case Aspect::kShowState:
        ShowWindow(handle, window.show_state == ShowState::kNormal ? SW_RESTORE : SW_MINIMIZE);
        break;
      case Aspect::kPaint:
        RedrawWindow(handle, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        break;
      case Aspect::kItems:
        lists_[window.id].whole = true;
        break;
      case Aspect::kOrder:
        SetForegroundWindow(handle);
        break;
    }
  }

  void Appended(const Window& window, std::string_view text) override {
    appended_[window.id] += text;
  }

  void ItemAdded(const Window& window, bool) override { ++lists_[window.id].added; }

  void Flush() {
    const Echo echo(*this);
    for (const auto& [id, text] : std::exchange(appended_, {})) {
      const HWND edit = Handle(id);
      if (edit == nullptr) continue;
      AppendToEdit(edit, text);
    }
  }

  [[nodiscard]] bool lists_wait() const { return !lists_.empty(); }

  void ShowLists() {
    const Echo echo(*this);
    for (const auto& [id, change] : std::exchange(lists_, {})) {
      const Window* window = tree_.Find(id);
      const HWND list = Handle(id);
      if (window == nullptr || list == nullptr) continue;
      if (change.whole) {
        FillList(list, window->items);
      } else {
        AddToList(list, window->items, change.added);
      }
    }
  }

 private:
  struct Node {
    Impl* owner = nullptr;
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

  // While one exists, the mirror itself is the cause of what windows tell.
  class Echo {
   public:
    explicit Echo(Impl& mirror) : mirror_(mirror) { ++mirror_.echo_; }
    ~Echo() { --mirror_.echo_; }
    Echo(const Echo&) = delete;
    Echo& operator=(const Echo&) = delete;

   private:
    Impl& mirror_;
  };

  static LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM w_param, LPARAM l_param) {
    auto* node = reinterpret_cast<Node*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (node == nullptr) {
      if (message != WM_NCCREATE) return DefWindowProcA(window, message, w_param, l_param);
      node = static_cast<Node*>(reinterpret_cast<CREATESTRUCTA*>(l_param)->lpCreateParams);
      node->window = window;
      SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(node));
    }
    Impl& mirror = *node->owner;
    if (message == WM_NCDESTROY) {
      const WNDPROC original = node->original;
      SetWindowLongPtrA(window, GWLP_USERDATA, 0);
      mirror.nodes_.erase(node->id);
      return CallOriginal(original, window, message, w_param, l_param);
    }
    LRESULT result = 0;
    if (mirror.Handle(*node, message, w_param, l_param, result)) return result;
    return CallOriginal(node->original, window, message, w_param, l_param);
  }

  static LRESULT CallOriginal(WNDPROC original, HWND window, UINT message, WPARAM w_param,
                              LPARAM l_param) {
    return IsWindowUnicode(window) ? CallWindowProcW(original, window, message, w_param, l_param)
                                   : CallWindowProcA(original, window, message, w_param, l_param);
  }

  // True when the message is dealt with.
  bool Handle(const Node& node, UINT message, WPARAM w_param, LPARAM l_param, LRESULT& result) {
    switch (message) {
      case WM_DRAWITEM:
        Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(l_param));
        result = TRUE;
        return true;
      case WM_CTLCOLORSTATIC: {
        const Window* label = WindowOf(reinterpret_cast<HWND>(l_param));
        if (label == nullptr || label->paint != Paint::kHeader) return false;
        result = reinterpret_cast<LRESULT>(paint_.PrepareHeader(reinterpret_cast<HDC>(w_param)));
        return true;
      }
      case WM_COMMAND:
        OnCommand(HIWORD(w_param), reinterpret_cast<HWND>(l_param));
        return true;
      case WM_SETTEXT:
        return OnSetText(node, w_param, l_param, result);
      case EM_GETLINE:
        RepairGetLine(l_param);
        return false;
      case WM_LBUTTONDOWN:
      case WM_LBUTTONDBLCLK:
        if (node.kind != Kind::kSelector) return false;
        hooks_.before_input();
        tree_.MouseDown(node.id, static_cast<short>(LOWORD(l_param)),
                        static_cast<short>(HIWORD(l_param)));
        return true;
      case WM_WINDOWPOSCHANGED:
        if (node.kind != Kind::kFrame) return false;
        result = DefWindowProcA(node.window, message, w_param, l_param);
        OnMoved(node);
        return true;
      case WM_COPYDATA:
        if (node.kind != Kind::kFrame) return false;
        result = OnCopyData(*reinterpret_cast<const COPYDATASTRUCT*>(l_param)) ? 1 : 0;
        return true;
      case WM_CLOSE:
        if (node.kind != Kind::kFrame) return false;
        hooks_.before_input();
        hooks_.close(node.id);
        return true;
      default:
        return false;
    }
  }

  void OnCommand(WORD what, HWND control) {
    const auto* sender = reinterpret_cast<const Node*>(GetWindowLongPtrA(control, GWLP_USERDATA));
    if (control == nullptr || sender == nullptr || echo_ > 0) return;
    const WindowId id = sender->id;
    if (sender->kind == Kind::kTextBox && what == EN_CHANGE) {
      hooks_.before_input();
      tree_.EnterText(id, WindowText(control));
    } else if (what == BN_CLICKED &&
               (sender->kind == Kind::kButton || sender->kind == Kind::kCheckBox ||
                sender->kind == Kind::kDrawnCheckBox)) {
      hooks_.before_input();
      tree_.Press(id);
    }
  }

  bool OnSetText(const Node& node, WPARAM w_param, LPARAM l_param, LRESULT& result) {
    if (echo_ > 0 || !IsEdit(node.kind)) return false;
    const WindowId id = node.id;
    const HWND window = node.window;
    hooks_.before_input();
    if (Handle(id) != window) return true;
    {
      const Echo echo(*this);
      result = CallOriginal(node.original, window, WM_SETTEXT, w_param, l_param);
    }
    tree_.EnterText(id, WindowText(window));
    return true;
  }

  // A user or another program has moved, minimised, restored, shown or hidden a window.
  void OnMoved(const Node& node) {
    if (echo_ > 0) return;
    const Echo echo(*this);
    const WindowId id = node.id;
    tree_.SetVisible(id, IsWindowVisible(node.window) != FALSE);
    const bool minimised = IsIconic(node.window) != FALSE;
    tree_.SetShowState(id, minimised ? ShowState::kMinimised : ShowState::kNormal);
    RECT rect;
    if (!minimised && GetWindowRect(node.window, &rect)) {
      tree_.SetBox(id, {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top});
    }
  }

  bool OnCopyData(const COPYDATASTRUCT& block) {
    if (block.cbData > kMaxCommandBytes || (block.cbData > 0 && block.lpData == nullptr)) {
      return false;
    }
    if (!IsCommandData(block.dwData)) return false;
    hooks_.before_input();
    const bool done = hooks_.command({static_cast<const char*>(block.lpData), block.cbData});
    Flush();
    return done;
  }

  void Draw(const DRAWITEMSTRUCT& item) {
    const Window* window = WindowOf(item.hwndItem);
    if (window != nullptr) paint_.Draw(item.hDC, *window);
  }

  [[nodiscard]] const Window* WindowOf(HWND handle) const {
    const auto* node = reinterpret_cast<const Node*>(GetWindowLongPtrA(handle, GWLP_USERDATA));
    return node == nullptr ? nullptr : tree_.Find(node->id);
  }

  WindowTree& tree_;
  Hooks hooks_;
  MirrorPaint paint_;
  std::map<WindowId, std::unique_ptr<Node>> nodes_;
  ControlFactory factory_{reinterpret_cast<void*>(Proc)};
  std::map<WindowId, std::string> appended_;  // not yet shown
  std::map<WindowId, ListChanges> lists_;
  int echo_ = 0;
};

Mirror::Mirror(WindowTree& tree, Hooks hooks)
    : impl_(std::make_unique<Impl>(tree, std::move(hooks))) {}

Mirror::~Mirror() = default;

void Mirror::Flush() {
  impl_->Flush();
}

void Mirror::ShowLists() {
  impl_->ShowLists();
}

bool Mirror::lists_wait() const {
  return impl_->lists_wait();
}

void* Mirror::Handle(WindowId id) const {
  return impl_->Handle(id);
}

}  // namespace corvane::standin
