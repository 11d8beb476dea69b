// Every window, controls included, runs one window procedure of this file in front of its class's
// own. While the mirror itself changes a window, what that window then tells is not passed back.
#include "standin/mirror_win.h"

#include <utility>
#include <vector>

#include "standin/control_protocol.h"

namespace corvane::standin {

namespace {

constexpr std::size_t kMaxCommandBytes = 4096;

}  // namespace

// While one exists, the mirror itself is the cause of what windows tell.
class Mirror::Echo {
 public:
  explicit Echo(Mirror& mirror) : mirror_(mirror) { ++mirror_.echo_; }
  ~Echo() { --mirror_.echo_; }
  Echo(const Echo&) = delete;
  Echo& operator=(const Echo&) = delete;

 private:
  Mirror& mirror_;
};

Mirror::Mirror(WindowTree& tree, Hooks hooks) : tree_(tree), hooks_(std::move(hooks)) {
  tree_.SetObserver(this);
  const std::vector<WindowId> top = tree_.top_level();
  for (auto id = top.rbegin(); id != top.rend(); ++id) {
    Created(*tree_.Find(*id));
    for (const WindowId child : tree_.Descendants(*id)) Created(*tree_.Find(child));
  }
}

Mirror::~Mirror() {
  tree_.SetObserver(nullptr);
  const Echo echo(*this);
  while (!nodes_.empty()) DestroyWindow(nodes_.begin()->second->window);
}

HWND Mirror::Handle(WindowId id) const {
  const auto found = nodes_.find(id);
  return found == nodes_.end() ? nullptr : found->second->window;
}

void Mirror::ShowCover(const Window& window) {
  RECT place{};
  if (GetWindowRect(Handle(window.over), &place) == 0) return;
  InflateRect(&place, WindowTree::kCoverMargin, WindowTree::kCoverMargin);
  covers_.try_emplace(window.id, place, static_cast<COLORREF>(window.colour));
}

void Mirror::ShowStranger(const Window& window) {
  const Box& box = window.box;
  const RECT place{box.left, box.top, box.left + box.width, box.top + box.height};
  covers_.try_emplace(window.id, place, window.class_name, window.hang_ms);
}

void Mirror::Created(const Window& window) {
  if (window.kind == Kind::kCover) return ShowCover(window);
  if (window.kind == Kind::kStranger) return ShowStranger(window);
  const Echo echo(*this);
  auto node = std::make_unique<Node>();
  node->owner = this;
  node->id = window.id;
  node->kind = window.kind;
  node->original = factory_.Register(window);
  Node* made = node.get();
  nodes_[window.id] = std::move(node);
  factory_.Create(window, Handle(window.parent == 0 ? window.owner : window.parent), made);
  SendMessageA(made->window, WM_SETFONT, reinterpret_cast<WPARAM>(painter_.font()), FALSE);
  if (window.kind == Kind::kFrame && window.visible) {
    ShowWindow(made->window,
               window.show_state == ShowState::kNormal ? SW_SHOWNORMAL : SW_SHOWMINIMIZED);
  }
}

void Mirror::Destroyed(WindowId id) {
  const Echo echo(*this);
  covers_.erase(id);
  if (const HWND window = Handle(id)) DestroyWindow(window);
}

void Mirror::Changed(const Window& window, Aspect aspect) {
  const HWND handle = Handle(window.id);
  if (handle == nullptr) return;
  const Echo echo(*this);
  switch (aspect) {
    case Aspect::kText: {
      const std::string& text = window.kind == Kind::kMultiLine ? window.lines.text() : window.text;
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

void Mirror::Appended(const Window& window, std::string_view text) {
  appended_[window.id] += text;
}

void Mirror::ItemAdded(const Window& window, bool) {
  ++lists_[window.id].added;
}

void Mirror::Flush() {
  const Echo echo(*this);
  for (const auto& [id, text] : std::exchange(appended_, {})) {
    const HWND edit = Handle(id);
    if (edit == nullptr) continue;
    AppendToEdit(edit, text);
  }
}

void Mirror::ShowLists() {
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

LRESULT CALLBACK Mirror::Proc(HWND window, UINT message, WPARAM w_param, LPARAM l_param) {
  auto* node = reinterpret_cast<Node*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  if (node == nullptr) {
    if (message != WM_NCCREATE) return DefWindowProcA(window, message, w_param, l_param);
    node = static_cast<Node*>(reinterpret_cast<CREATESTRUCTA*>(l_param)->lpCreateParams);
    node->window = window;
    SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(node));
  }
  Mirror& mirror = *node->owner;
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

LRESULT Mirror::CallOriginal(WNDPROC original, HWND window, UINT message, WPARAM w_param,
                             LPARAM l_param) {
  return IsWindowUnicode(window) ? CallWindowProcW(original, window, message, w_param, l_param)
                                 : CallWindowProcA(original, window, message, w_param, l_param);
}

bool Mirror::Handle(const Node& node, UINT message, WPARAM w_param, LPARAM l_param,
                    LRESULT& result) {
  switch (message) {
    case WM_DRAWITEM: {
      const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(l_param);
      const Window* drawn = WindowOf(item.hwndItem);
      if (drawn != nullptr) painter_.Draw(item.hDC, *drawn);
      result = TRUE;
      return true;
    }
    case WM_CTLCOLORSTATIC: {
      const Window* label = WindowOf(reinterpret_cast<HWND>(l_param));
      if (label == nullptr || label->paint != Paint::kHeader) return false;
      result = reinterpret_cast<LRESULT>(painter_.PrepareHeader(reinterpret_cast<HDC>(w_param)));
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

void Mirror::OnCommand(WORD what, HWND control) {
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

bool Mirror::OnSetText(const Node& node, WPARAM w_param, LPARAM l_param, LRESULT& result) {
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

void Mirror::OnMoved(const Node& node) {
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

bool Mirror::OnCopyData(const COPYDATASTRUCT& block) {
  if (block.cbData > kMaxCommandBytes || (block.cbData > 0 && block.lpData == nullptr)) {
    return false;
  }
  if (block.dwData != kCommandData) return false;
  hooks_.before_input();
  const bool done = hooks_.command({static_cast<const char*>(block.lpData), block.cbData});
  Flush();
  return done;
}

const Window* Mirror::WindowOf(HWND handle) const {
  const auto* node = reinterpret_cast<const Node*>(GetWindowLongPtrA(handle, GWLP_USERDATA));
  return node == nullptr ? nullptr : tree_.Find(node->id);
}

}  // namespace corvane::standin
