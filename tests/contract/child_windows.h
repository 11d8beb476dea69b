// A second process of the contract program: windows that belong to another program.
#pragma once

#include <cstdint>
#include <string>

namespace corvane::contract {

// What the child's windows are called and understand.
inline constexpr char kChildSwitch[] = "--child-windows";
// Longer than the part of a class name that is read.
inline constexpr char kChildClass[] =
    "CorvaneContract.Window.8.app.0.a-tail-that-is-longer-than-any";
inline constexpr char kChildTitle[] = "Contract child v1.0";
inline constexpr int kChildCheckBoxId = 11;
inline constexpr int kChildEditId = 12;
inline constexpr int kChildSelectorId = 13;
inline constexpr unsigned kChildHangMessage = 0x8001;  // wParam: milliseconds
// Lays a window over the check box, beside it in its panel; wParam: its colour.
inline constexpr unsigned kChildCoverMessage = 0x8002;
// A property of the top-level window from when it hangs to when it does not any more.
inline constexpr char kChildHangs[] = "CorvaneContract.Hangs";
inline constexpr std::int32_t kChildRed = 0x000000FF;
inline constexpr std::int32_t kChildGreen = 0x0000FF00;
// In its client area: the upper part is red, the lower green from this line on.
inline constexpr int kChildGreenTop = 150;

// Shows the windows and serves them until they are closed. Ends by itself after ten minutes.
int RunChildWindows();

// A started copy of this program.
class ChildProcess {
 public:
  // Starts it with `arguments`. Throws std::runtime_error when that fails.
  explicit ChildProcess(const std::string& arguments);
  // Ends it if it still runs.
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  [[nodiscard]] std::uint32_t id() const { return id_; }
  // True and its exit code when it ended within `ms`.
  [[nodiscard]] bool WaitForEnd(int ms, std::uint32_t& exit_code);
  void End();

 private:
  void* process_ = nullptr;
  std::uint32_t id_ = 0;
};

}  // namespace corvane::contract
