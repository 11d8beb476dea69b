// Factories of the real socket and of the windows of another process.
#include <windows.h>

#include <array>
#include <memory>
#include <stdexcept>
#include <string>

#include "contract/child_windows.h"
#include "contract/real_program_win.h"
#include "contract/tcp_peer.h"
#include "link/socket_win.h"
#include "link/window_ops_win.h"

namespace corvane::contract {

namespace {

class RealSocketUnderTest : public SocketUnderTest {
 public:
  LoopUnderTest& idle() override { return loop_; }
  Socket& socket() override { return socket_; }
  std::uint16_t port() override { return peer_.port(); }
  void SetListening(bool listening) override { peer_.SetListening(listening); }
  void PeerSends(const std::string& bytes) override { peer_.Send(bytes); }
  void PeerCloses() override { peer_.Close(false); }
  void PeerResets() override { peer_.Close(true); }
  std::string PeerReceived() override { return peer_.Received(); }

 private:
  RealLoopUnderTest loop_;
  TcpPeer peer_;
  SocketWin socket_{loop_.real()};
};

// A window of this program over `place`, painted when this returns.
HWND MakeCover(const RECT& place, COLORREF colour) {
  WNDCLASSA info{};
  info.lpfnWndProc = DefWindowProcA;
  info.hInstance = GetModuleHandleA(nullptr);
  info.hbrBackground = CreateSolidBrush(colour);
  info.lpszClassName = "CorvaneContract.Cover";
  UnregisterClassA(info.lpszClassName, info.hInstance);
  RegisterClassA(&info);
  HWND cover = CreateWindowExA(WS_EX_TOPMOST | WS_EX_NOACTIVATE, info.lpszClassName, "", WS_POPUP,
                               place.left, place.top, place.right - place.left,
                               place.bottom - place.top, nullptr, nullptr, info.hInstance, nullptr);
  ShowWindow(cover, SW_SHOWNOACTIVATE);
  UpdateWindow(cover);
  return cover;
}

class RealWindowsUnderTest : public WindowsUnderTest {
 public:
  RealWindowsUnderTest() {
    if (!loop_.IdleUntil([this] { return Find(); })) throw std::runtime_error("no child window");
  }
  ~RealWindowsUnderTest() override {
    if (cover_ != nullptr) DestroyWindow(cover_);
  }
  LoopUnderTest& idle() override { return loop_; }
  WindowOps& windows() override { return windows_; }
  WindowHandle top() override { return ToHandle(top_); }
  std::string top_class() override { return kChildClass; }
  std::string top_text() override { return kChildTitle; }
  WindowHandle check_box() override { return ToHandle(check_box_); }
  WindowHandle edit() override { return ToHandle(edit_); }
  WindowHandle edit_top() override { return ToHandle(top_); }
  WindowHandle selector() override { return ToHandle(selector_); }
  bool SelectorPressed() override {
    return (SendMessageA(selector_, BM_GETSTATE, 0, 0) & BST_PUSHED) != 0;
  }
  bool Checked() override { return SendMessageA(check_box_, BM_GETCHECK, 0, 0) == BST_CHECKED; }
  std::vector<Painted> PaintedPoints() override {
    SetWindowPos(top_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    POINT upper{220, kChildGreenTop - 20};
    POINT lower{220, kChildGreenTop + 20};
    ClientToScreen(top_, &upper);
    ClientToScreen(top_, &lower);
    return {{static_cast<std::int32_t>(upper.x), static_cast<std::int32_t>(upper.y), kChildRed},
            {static_cast<std::int32_t>(lower.x), static_cast<std::int32_t>(lower.y), kChildGreen}};
  }
  bool IsInFront() override { return GetForegroundWindow() == top_; }
  void CoverCheckBox(Cover by) override {
    RECT box{};
    GetWindowRect(check_box_, &box);
    const COLORREF colour =
        static_cast<COLORREF>(windows_.ScreenPixel(check_box(), box.left + 7, box.top + 7));
    if (by == Cover::kOwnProgram) {
      SendMessageA(top_, kChildCoverMessage, colour, 0);
      return;
    }
    cover_ = MakeCover(box, colour);
  }
  void Hang(int ms) override {
    PostMessageA(top_, kChildHangMessage, static_cast<WPARAM>(ms), 0);
    // It hangs as soon as it has taken the message. That it is slow to answer would not say so.
    if (!loop_.IdleUntil([this] { return GetPropA(top_, kChildHangs) != nullptr; })) {
      throw std::runtime_error("the child does not hang");
    }
  }
  void End() override { child_.End(); }

 private:
  bool Find() {
    top_ = nullptr;
    EnumWindows(&RealWindowsUnderTest::Visit, reinterpret_cast<LPARAM>(this));
    if (top_ == nullptr) return false;
    EnumChildWindows(top_, &RealWindowsUnderTest::VisitChild, reinterpret_cast<LPARAM>(this));
    return check_box_ != nullptr && edit_ != nullptr && selector_ != nullptr &&
           IsWindowVisible(top_) != 0;
  }
  static BOOL CALLBACK Visit(HWND window, LPARAM parameter) {
    auto& self = *reinterpret_cast<RealWindowsUnderTest*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    std::array<char, 100> name{};
    GetClassNameA(window, name.data(), static_cast<int>(name.size()));
    if (process != self.child_.id() || std::string(name.data()) != kChildClass) return TRUE;
    self.top_ = window;
    return FALSE;
  }
  static BOOL CALLBACK VisitChild(HWND window, LPARAM parameter) {
    auto& self = *reinterpret_cast<RealWindowsUnderTest*>(parameter);
    const int id = GetDlgCtrlID(window);
    if (id == kChildCheckBoxId) self.check_box_ = window;
    if (id == kChildEditId) self.edit_ = window;
    if (id == kChildSelectorId) self.selector_ = window;
    return TRUE;
  }

  RealLoopUnderTest loop_;
  WindowOpsWin windows_;
  ChildProcess child_{kChildSwitch};
  HWND top_ = nullptr;
  HWND check_box_ = nullptr;
  HWND edit_ = nullptr;
  HWND selector_ = nullptr;
  HWND cover_ = nullptr;
};

}  // namespace

std::unique_ptr<SocketUnderTest> MakeSocket() {
  return std::make_unique<RealSocketUnderTest>();
}

std::unique_ptr<WindowsUnderTest> MakeWindows() {
  return std::make_unique<RealWindowsUnderTest>();
}

}  // namespace corvane::contract
