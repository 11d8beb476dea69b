// Hands commands to a thread and waits for it within the limits.
#include "record/mci_win.h"

#include <windows.h>

#include <mmsystem.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <utility>
#include <vector>

#include "record/wave_device_win.h"

namespace corvane {

namespace {

constexpr unsigned kErrorTextLength = 1024;
constexpr DWORD kEndLimit_ms = 1000;
// Each hanging command keeps a thread. With so many of them there is no more recording.
constexpr std::size_t kMostHanging = 16;

// One thread's commands, one at a time. Shared with the thread, which may outlast its owner.
struct Orders {
  Orders() = default;
  Orders(const Orders&) = delete;
  Orders& operator=(const Orders&) = delete;
  ~Orders() {
    CloseHandle(given);
    CloseHandle(done);
  }

  const HANDLE given = CreateEventA(nullptr, FALSE, FALSE, nullptr);
  const HANDLE done = CreateEventA(nullptr, FALSE, FALSE, nullptr);
  std::atomic<bool> end = false;
  std::string command;  // these three belong to the thread from `given` to `done`
  unsigned reply_length = 0;
  Mci::Reply reply;
};

DWORD WINAPI CarryOut(void* argument) {
  const std::unique_ptr<std::shared_ptr<Orders>> owned(
      static_cast<std::shared_ptr<Orders>*>(argument));
  Orders& orders = **owned;
  WaveDevice device;
  for (;;) {
    if (WaitForSingleObject(orders.given, INFINITE) != WAIT_OBJECT_0 || orders.end) return 0;
    orders.reply = device.Send(orders.command, orders.reply_length);
    SetEvent(orders.done);
  }
}

// Devices of this program that hang. The system keeps their aliases, and its "close all" would wait
// for them.
unsigned given_up = 0;

bool IsOver(HANDLE thread) {
  return WaitForSingleObject(thread, 0) == WAIT_OBJECT_0;
}

}  // namespace

class MciWin::Impl {
 public:
  ~Impl() {
    if (thread_ != nullptr) {
      LetGo();
      WaitForSingleObject(thread_, kEndLimit_ms);
      CloseHandle(thread_);
    }
    for (const HANDLE thread : hanging_) CloseHandle(thread);
  }

  Reply Send(const std::string& command, unsigned reply_length) {
    if (!HasThread()) return Failed();
    if (command.starts_with("open ")) alias_ = AliasIn(command);
    orders_->command = ForThisThread(command);
    if (orders_->command.empty()) return {};
    orders_->reply_length = reply_length;
    SetEvent(orders_->given);
    const DWORD limit_ms = command.starts_with("save ") ? kLongestSave_ms : kLongestCommand_ms;
    if (WaitForSingleObject(orders_->done, limit_ms) == WAIT_OBJECT_0) {
      return std::move(orders_->reply);
    }
    GiveUp();
    return Failed();
  }

 private:
  static Reply Failed() { return {MCIERR_HARDWARE, {}}; }

  bool HasThread() {
    if (thread_ != nullptr) return true;
    std::erase_if(hanging_, [](HANDLE thread) {
      const bool over = IsOver(thread);
      if (over) CloseHandle(thread);
      return over;
    });
    if (hanging_.size() >= kMostHanging) return false;
    sign_ = given_up == 0 ? "" : std::to_string(given_up);
    orders_ = std::make_shared<Orders>();
    if (orders_->given == nullptr || orders_->done == nullptr) return false;
    auto argument = std::make_unique<std::shared_ptr<Orders>>(orders_);
    thread_ = CreateThread(nullptr, 0, CarryOut, argument.get(), 0, nullptr);
    if (thread_ != nullptr) (void)argument.release();
    return thread_ != nullptr;
  }

  void LetGo() {
    orders_->end = true;
    SetEvent(orders_->given);
  }

  void GiveUp() {
    LetGo();
    hanging_.push_back(std::exchange(thread_, nullptr));
    ++given_up;
    alias_.clear();
  }

  static std::string::size_type AliasAt(const std::string& command) {
    constexpr std::string_view kBefore = " Alias ";
    const std::size_t at = command.find(kBefore);
    return at == std::string::npos ? command.size() : at + kBefore.size();
  }
  static std::string AliasIn(const std::string& command) {
    return command.substr(AliasAt(command));
  }

  // "": there is nothing to do.
  [[nodiscard]] std::string ForThisThread(const std::string& command) const {
    if (given_up == 0) return command;
    if (command == "close all") return alias_.empty() ? "" : "close " + alias_ + sign_;
    const std::size_t begin =
        command.starts_with("open ") ? AliasAt(command) : command.find(' ') + 1;
    std::string own = command;
    return own.insert(std::min(command.find(' ', begin), command.size()), sign_);
  }

  std::shared_ptr<Orders> orders_;
  HANDLE thread_ = nullptr;
  std::vector<HANDLE> hanging_;
  std::string sign_;   // makes an alias of this thread another one than those that hang
  std::string alias_;  // as the caller named it; "" before the first "open"
};

MciWin::MciWin() : impl_(std::make_unique<Impl>()) {}
MciWin::~MciWin() = default;

Mci::Reply MciWin::Send(const std::string& command, unsigned reply_length) {
  return impl_->Send(command, reply_length);
}

std::string MciWin::ErrorText(unsigned error) {
  std::array<char, kErrorTextLength> buffer{};
  if (mciGetErrorStringA(error, buffer.data(), kErrorTextLength) == 0) return {};
  return {buffer.data(), strnlen(buffer.data(), buffer.size())};
}

}  // namespace corvane
