// Every window, controls included, runs one window procedure of this file in front of its class's
// own. While the mirror itself changes a window, what that window then tells is not passed back.
#include "standin/mirror_win.h"

#include <windows.h>

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "standin/mirror_paint_win.h"

namespace corvane::standin {

namespace {

constexpr DWORD kFrameStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
constexpr std::size_t kMaxCommandBytes = 4096;
constexpr LPARAM kMaxEditBytes = 0x7FFFFFFE;

struct Look {
  const char* base;  // the system's class; nullptr: none
  DWORD style;
};

Look LookOf(Kind kind) {
  switch (kind) {
    case Kind::kFrame:
      return {nullptr, kFrameStyle | WS_CLIPCHILDREN};
    case Kind::kPanel:
      return {nullptr, WS_CHILD | WS_CLIPCHILDREN};
    case Kind::kLabel:
      return {"STATIC", WS_CHILD | SS_LEFT | SS_NOPREFIX};
    case Kind::kButton:
      return {"BUTTON", WS_CHILD | WS_TABSTOP | BS_PUSHBUTTON};
    case Kind::kCheckBox:
      return {"BUTTON", WS_CHILD | WS_TABSTOP | BS_CHECKBOX};
    case Kind::kDrawnCheckBox:
    case Kind::kSelector:
      return {"BUTTON", WS_CHILD | WS_TABSTOP | BS_OWNERDRAW};
    case Kind::kTextBox:
      return {"EDIT", WS_CHILD | WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL};
    case Kind::kMultiLine:
      return {"EDIT", WS_CHILD | WS_TABSTOP | WS_BORDER | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE |
                          ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_READONLY};
    case Kind::kListBox:
      return {"LISTBOX", WS_CHILD | WS_BORDER | WS_VSCROLL | LBS_NOINTEGRALHEIGHT | LBS_NOSEL};
  }
  return {nullptr, WS_CHILD};
}

std::string TextOf(HWND window) {
  std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
  text.resize(
      static_cast<std::size_t>(GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

// A foreign fault repaired where it arrives: under Wine 8 EM_GETLINE from another process comes
// with a block inside a larger one, and neither the block's first word nor the word before it is
// filled. By the one the control decides how many characters it copies, by the other the system how
// many it sends back; both at random end the thread sooner or later. The sender has asked for the
// line's length before, so its block holds the line.
void RepairGetLine(HWND edit, WPARAM line, LPARAM block) {
  constexpr LPARAM kBlockAlignment = 16;
  if (!IsWine() || block == 0 || (InSendMessageEx(nullptr) & ISMEX_SEND) == 0) return;
  const LRESULT start = SendMessageW(edit, EM_LINEINDEX, line, 0);
  const LRESULT length =
      start < 0 ? 0 : SendMessageW(edit, EM_LINELENGTH, static_cast<WPARAM>(start), 0);
  WORD* words = reinterpret_cast<WORD*>(block);
  words[0] = static_cast<WORD>(std::min<LRESULT>(length, 0xFFFF));
  // Only where the block does begin one word behind an allocation.
  if (block % kBlockAlignment == sizeof(WORD)) words[-1] = words[0];
}

// In front of the narrow procedure of every box of many lines: on its way from the wide to the
// narrow form EM_GETLINE gets a copy of the block, as long as the unfilled word says.
WNDPROC narrow_edit = nullptr;
LRESULT CALLBACK WideEditProc(HWND window, UINT message, WPARAM w_param, LPARAM l_param) {
  if (message == EM_GETLINE) RepairGetLine(window, w_param, l_param);
  return CallWindowProcW(narrow_edit, window, message, w_param, l_param);
}

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
    const Look look = LookOf(window.kind);
    auto node = std::make_unique<Node>();
    node->owner = this;
    node->id = window.id;
    node->kind = window.kind;
    node->original = Register(window.class_name, look.base);
    Node* made = node.get();
    nodes_[window.id] = std::move(node);
    const bool frame = window.kind == Kind::kFrame;
    const DWORD visible = window.visible && !frame ? WS_VISIBLE : 0;
    CreateWindowExA(0, window.class_name.c_str(), window.text.c_str(), look.style | visible,
                    window.box.left, window.box.top, window.box.width, window.box.height,
                    Handle(window.parent), nullptr, GetModuleHandleA(nullptr), made);
    if (window.kind == Kind::kMultiLine) {
      narrow_edit = reinterpret_cast<WNDPROC>(
          SetWindowLongPtrW(made->window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(WideEditProc)));
    }
    SendMessageA(made->window, WM_SETFONT, reinterpret_cast<WPARAM>(paint_.font()), FALSE);
    if (window.kind == Kind::kMultiLine) {
      SendMessageA(made->window, EM_SETLIMITTEXT, kMaxEditBytes, 0);
      SetWindowTextA(made->window, window.lines.text().c_str());
    }
    if (window.kind == Kind::kListBox) FillList(made->window, window.items);
    if (window.checked) SendMessageA(made->window, BM_SETCHECK, BST_CHECKED, 0);
    if (frame && window.visible) {
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
        if (TextOf(handle) != text) SetWindowTextA(handle, text.c_str());
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
        FillList(handle, window.items);
        break;
      case Aspect::kOrder:
        SetForegroundWindow(handle);
        break;
    }
  }

  void Appended(const Window& window, std::string_view text) override {
    const HWND handle = Handle(window.id);
    const Echo echo(*this);
    const auto end = static_cast<WPARAM>(GetWindowTextLengthA(handle));
    SendMessageA(handle, EM_SETSEL, end, static_cast<LPARAM>(end));
    const std::string terminated(text);
    SendMessageA(handle, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(terminated.c_str()));
  }

  void ItemAdded(const Window& window, bool dropped) override {
    const HWND handle = Handle(window.id);
    const Echo echo(*this);
    if (dropped) SendMessageA(handle, LB_DELETESTRING, 0, 0);
    const LRESULT at = SendMessageA(handle, LB_ADDSTRING, 0,
                                    reinterpret_cast<LPARAM>(window.items.back().c_str()));
    SendMessageA(handle, LB_SETTOPINDEX, static_cast<WPARAM>(at), 0);
  }

 private:
  struct Node {
    Impl* owner = nullptr;
    WindowId id = 0;
    Kind kind = Kind::kPanel;
    HWND window = nullptr;
    WNDPROC original = nullptr;
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

  // The class of that name on top of the system's class; gives the procedure of the latter.
  WNDPROC Register(const std::string& name, const char* base) {
    WNDCLASSEXA info{};
    info.cbSize = sizeof info;
    if (base != nullptr) {
      GetClassInfoExA(nullptr, base, &info);
    } else {
      info.lpfnWndProc = DefWindowProcA;
      info.hCursor = LoadCursorA(nullptr, IDC_ARROW);
      info.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    }
    const WNDPROC original = info.lpfnWndProc;
    if (registered_.insert(name).second) {
      info.lpfnWndProc = Proc;
      info.hInstance = GetModuleHandleA(nullptr);
      info.lpszClassName = name.c_str();
      info.style &= ~static_cast<UINT>(CS_GLOBALCLASS);
      RegisterClassExA(&info);
    }
    return original;
  }

  static void FillList(HWND list, const std::vector<std::string>& items) {
    SendMessageA(list, WM_SETREDRAW, FALSE, 0);
    SendMessageA(list, LB_RESETCONTENT, 0, 0);
    for (const std::string& item : items) {
      SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
    }
    SendMessageA(list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list, nullptr, TRUE);
  }

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
      return CallWindowProcA(original, window, message, w_param, l_param);
    }
    LRESULT result = 0;
    if (mirror.Handle(*node, message, w_param, l_param, result)) return result;
    return CallWindowProcA(node->original, window, message, w_param, l_param);
  }

  // True when the message is dealt with.
  bool Handle(const Node& node, UINT message, WPARAM w_param, LPARAM l_param, LRESULT& result) {
    switch (message) {
      case WM_DRAWITEM:
        Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(l_param));
        result = TRUE;
        return true;
      case WM_COMMAND:
        OnCommand(HIWORD(w_param), reinterpret_cast<HWND>(l_param));
        return true;
      case WM_SETTEXT:
        return OnSetText(node, w_param, l_param, result);
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
      tree_.EnterText(id, TextOf(control));
    } else if (what == BN_CLICKED &&
               (sender->kind == Kind::kButton || sender->kind == Kind::kCheckBox ||
                sender->kind == Kind::kDrawnCheckBox)) {
      hooks_.before_input();
      tree_.Press(id);
    }
  }

  bool OnSetText(const Node& node, WPARAM w_param, LPARAM l_param, LRESULT& result) {
    if (echo_ > 0 || (node.kind != Kind::kTextBox && node.kind != Kind::kMultiLine)) return false;
    const WindowId id = node.id;
    const HWND window = node.window;
    hooks_.before_input();
    if (Handle(id) != window) return true;
    {
      const Echo echo(*this);
      result = CallWindowProcA(node.original, window, WM_SETTEXT, w_param, l_param);
    }
    tree_.EnterText(id, TextOf(window));
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
    return hooks_.command({static_cast<const char*>(block.lpData), block.cbData});
  }

  void Draw(const DRAWITEMSTRUCT& item) {
    const auto* node =
        reinterpret_cast<const Node*>(GetWindowLongPtrA(item.hwndItem, GWLP_USERDATA));
    const Window* window = node == nullptr ? nullptr : tree_.Find(node->id);
    if (window != nullptr) paint_.Draw(item.hDC, *window);
  }

  WindowTree& tree_;
  Hooks hooks_;
  MirrorPaint paint_;
  std::map<WindowId, std::unique_ptr<Node>> nodes_;
  std::set<std::string> registered_;
  int echo_ = 0;
};

Mirror::Mirror(WindowTree& tree, Hooks hooks)
    : impl_(std::make_unique<Impl>(tree, std::move(hooks))) {}

Mirror::~Mirror() = default;

void* Mirror::Handle(WindowId id) const {
  return impl_->Handle(id);
}

}  // namespace corvane::standin
