// Every window, controls included, runs one window procedure of this file in front of its class's
// own. While the mirror itself changes a window, what that window then tells is not passed back.
#include "standin/mirror_win.h"

#include <windows.h>

#include <algorithm>
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
constexpr WPARAM kListExtent = 1400;
constexpr LPARAM kEndOfText = 0x7FFFFFFE;
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
      return {"LISTBOX",
              WS_CHILD | WS_BORDER | WS_VSCROLL | WS_HSCROLL | LBS_NOINTEGRALHEIGHT | LBS_NOSEL};
  }
  return {nullptr, WS_CHILD};
}

bool IsEdit(Kind kind) {
  return kind == Kind::kTextBox || kind == Kind::kMultiLine;
}

std::string TextOf(HWND window) {
  std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
  text.resize(
      static_cast<std::size_t>(GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

// A foreign fault repaired where it arrives: Wine 8 passes EM_GETLINE from another process on with
// a block that begins one word inside an allocation, and fills neither the block's first word, by
// which the control decides how many characters it copies, nor the word before it, by which the
// system decides how many it sends back. The heap knows how many there is room for.
void RepairGetLine(LPARAM block) {
  if (!IsWine() || block == 0 || (InSendMessageEx(nullptr) & ISMEX_SEND) == 0) return;
  WORD* words = reinterpret_cast<WORD*>(block) - 1;
  const SIZE_T bytes = HeapSize(GetProcessHeap(), 0, words);
  if (bytes == static_cast<SIZE_T>(-1) || bytes < 2 * sizeof(WORD)) return;
  const SIZE_T room = (bytes - sizeof(WORD)) / sizeof(wchar_t);
  words[0] = words[1] = static_cast<WORD>(std::min<SIZE_T>(room, 0xFFFF));
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
    node->original = Register(window.class_name, window.kind, look.base);
    Node* made = node.get();
    nodes_[window.id] = std::move(node);
    const bool frame = window.kind == Kind::kFrame;
    const DWORD visible = window.visible && !frame ? WS_VISIBLE : 0;
    Create(window, look.style | visible, made);
    SendMessageA(made->window, WM_SETFONT, reinterpret_cast<WPARAM>(paint_.font()), FALSE);
    if (window.kind == Kind::kMultiLine) {
      SendMessageA(made->window, EM_SETLIMITTEXT, kMaxEditBytes, 0);
      SetWindowTextA(made->window, window.lines.text().c_str());
    }
    if (window.kind == Kind::kListBox) {
      SendMessageA(made->window, LB_SETHORIZONTALEXTENT, kListExtent, 0);
      FillList(made->window, window.items);
    }
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
        appended_.erase(window.id);
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
    appended_[window.id] += text;
  }

  void ItemAdded(const Window& window, bool) override { grown_lists_.insert(window.id); }

  void Flush() {
    const Echo echo(*this);
    for (const auto& [id, text] : std::exchange(appended_, {})) {
      const HWND edit = Handle(id);
      if (edit == nullptr) continue;
      SendMessageA(edit, EM_SETSEL, kEndOfText, kEndOfText);
      SendMessageA(edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
    }
    for (const WindowId id : std::exchange(grown_lists_, {})) {
      const Window* window = tree_.Find(id);
      if (window == nullptr || Handle(id) == nullptr || window->items.empty()) continue;
      FillList(Handle(id), window->items);
      SendMessageA(Handle(id), LB_SETTOPINDEX, window->items.size() - 1, 0);
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
  WNDPROC Register(const std::string& name, Kind kind, const char* base) {
    if (IsEdit(kind)) return RegisterEdit(name);
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

  // Unicode through and through: EM_GETLINE from another process is to be repaired as it arrives,
  // before a conversion copies by the unfilled length word.
  WNDPROC RegisterEdit(const std::string& name) {
    WNDCLASSEXW info{};
    info.cbSize = sizeof info;
    GetClassInfoExW(nullptr, L"EDIT", &info);
    const WNDPROC original = info.lpfnWndProc;
    if (registered_.insert(name).second) {
      const std::wstring wide(name.begin(), name.end());  // letters, digits, "_" and "." alone
      info.lpfnWndProc = Proc;
      info.hInstance = GetModuleHandleA(nullptr);
      info.lpszClassName = wide.c_str();
      info.style &= ~static_cast<UINT>(CS_GLOBALCLASS);
      RegisterClassExW(&info);
    }
    return original;
  }

  void Create(const Window& window, DWORD style, Node* node) {
    const Box& box = window.box;
    const HWND parent = Handle(window.parent);
    const HINSTANCE program = GetModuleHandleA(nullptr);
    if (!IsEdit(window.kind)) {
      CreateWindowExA(0, window.class_name.c_str(), window.text.c_str(), style, box.left, box.top,
                      box.width, box.height, parent, nullptr, program, node);
      return;
    }
    const std::wstring wide(window.class_name.begin(), window.class_name.end());
    CreateWindowExW(0, wide.c_str(), L"", style, box.left, box.top, box.width, box.height, parent,
                    nullptr, program, node);
    SetWindowTextA(node->window, window.text.c_str());
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
      tree_.EnterText(id, TextOf(control));
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
  std::set<std::string> registered_;
  std::map<WindowId, std::string> appended_;  // not yet shown
  std::set<WindowId> grown_lists_;
  int echo_ = 0;
};

Mirror::Mirror(WindowTree& tree, Hooks hooks)
    : impl_(std::make_unique<Impl>(tree, std::move(hooks))) {}

Mirror::~Mirror() = default;

void Mirror::Flush() {
  impl_->Flush();
}

void* Mirror::Handle(WindowId id) const {
  return impl_->Handle(id);
}

}  // namespace corvane::standin
