// Hands commands to a thread and waits for it within the limits.
#include "record/mci_win.h"

#include <mmsystem.h>

#include <array>
#include <atomic>
#include <cstring>
#include <utility>

#include "base/number_text.h"
#include "record/wave_repairs_win.h"

namespace corvane {

namespace {

constexpr unsigned kErrorTextLength = 1024;
constexpr DWORD kEndLimit_ms = 1000;
// Each hanging command keeps a thread. With so many of them there is no more recording.
constexpr std::size_t kMostHanging = 16;

bool IsOver(HANDLE thread) {
  return WaitForSingleObject(thread, 0) == WAIT_OBJECT_0;
}

Mci::Reply Failed() {
  return {MCIERR_HARDWARE, {}};
}

}  // namespace

// One thread's commands, one at a time. Shared with the thread, which may outlast its owner.
struct MciWin::Orders {
  explicit Orders(std::string alias_of_device) : alias(std::move(alias_of_device)) {}
  Orders(const Orders&) = delete;
  Orders& operator=(const Orders&) = delete;
  ~Orders() {
    CloseHandle(given);
    CloseHandle(done);
  }

  const HANDLE given = CreateEventA(nullptr, FALSE, FALSE, nullptr);
  const HANDLE done = CreateEventA(nullptr, FALSE, FALSE, nullptr);
  const std::string alias;
  std::atomic<bool> end = false;
  MciCommand command = MciCommand::CloseAll();  // these three belong to the thread
  unsigned reply_length = 0;                    // from `given` to `done`
  Reply reply;
};

DWORD WINAPI MciWin::CarryOut(void* argument) {
  const std::unique_ptr<std::shared_ptr<Orders>> owned(
      static_cast<std::shared_ptr<Orders>*>(argument));
  Orders& orders = **owned;
  RepairedWaveDevice device(orders.alias);
  for (;;) {
    if (WaitForSingleObject(orders.given, INFINITE) != WAIT_OBJECT_0 || orders.end) return 0;
    orders.reply = device.Send(orders.command, orders.reply_length);
    SetEvent(orders.done);
  }
}

MciWin::~MciWin() {
  if (thread_ != nullptr) {
    LetGo();
    WaitForSingleObject(thread_, kEndLimit_ms);
    CloseHandle(thread_);
  }
  for (const HANDLE thread : hanging_) CloseHandle(thread);
}

Mci::Reply MciWin::Send(const MciCommand& command, unsigned reply_length) {
  if (under_way_until_ms_) static_cast<void>(Await());
  if (!HasThread()) return Failed();
  // The system's own "close all" would wait for the devices that hang.
  const bool only_own = command.verb == MciCommand::Verb::kCloseAll && given_up_ > 0;
  if (only_own && !opened_) return {};
  Order(only_own ? MciCommand::Close() : command, reply_length);
  const bool saves = command.verb == MciCommand::Verb::kSave;
  if (auto reply = WaitFor(Limit(saves ? kLongestSave_ms : kLongestCommand_ms))) return *reply;
  GiveUp();
  return Failed();
}

std::optional<Mci::Reply> MciWin::Begin(const MciCommand& command, unsigned reply_length) {
  if (!HasThread()) return Failed();
  const bool first = !std::exchange(recorded_before_, true);
  Order(command, reply_length);
  if (auto reply = WaitFor(kMoment_ms)) return reply;
  const DWORD limit_ms = Limit(first ? kLongestFirstRecord_ms : kLongestCommand_ms);
  under_way_until_ms_ = GetTickCount64() + limit_ms - kMoment_ms;
  return std::nullopt;
}

std::optional<Mci::Reply> MciWin::Answer() {
  if (!under_way_until_ms_) return Failed();
  auto reply = WaitFor(0);
  if (!reply && GetTickCount64() < *under_way_until_ms_) return std::nullopt;
  under_way_until_ms_.reset();
  if (reply) return reply;
  GiveUp();
  return Failed();
}

Mci::Reply MciWin::Await() {
  const ULONGLONG now_ms = GetTickCount64();
  if (!under_way_until_ms_) return Failed();
  const ULONGLONG left_ms = *under_way_until_ms_ > now_ms ? *under_way_until_ms_ - now_ms : 0;
  under_way_until_ms_.reset();
  const DWORD longest_ms = Limit(kLongestCommand_ms);
  if (auto reply = WaitFor(left_ms < longest_ms ? static_cast<DWORD>(left_ms) : longest_ms)) {
    return *reply;
  }
  GiveUp();
  return Failed();
}

void MciWin::Order(const MciCommand& command, unsigned reply_length) {
  orders_->command = command;
  orders_->reply_length = reply_length;
  if (command.verb == MciCommand::Verb::kOpen) opened_ = true;
  SetEvent(orders_->given);
}

std::optional<Mci::Reply> MciWin::WaitFor(DWORD limit_ms) {
  if (WaitForSingleObject(orders_->done, limit_ms) != WAIT_OBJECT_0) return std::nullopt;
  return std::move(orders_->reply);
}

DWORD MciWin::Limit(DWORD limit_ms) const {
  return hurried_ && limit_ms > kLongestInHurry_ms ? kLongestInHurry_ms : limit_ms;
}

bool MciWin::HasThread() {
  if (thread_ != nullptr) return true;
  std::erase_if(hanging_, [](HANDLE thread) {
    const bool over = IsOver(thread);
    if (over) CloseHandle(thread);
    return over;
  });
  if (hanging_.size() >= kMostHanging) return false;
  // The system keeps the alias of a device that hangs.
  std::string alias(MciCommand::kAlias);
  if (given_up_ > 0) alias += Decimal(given_up_);
  orders_ = std::make_shared<Orders>(std::move(alias));
  if (orders_->given == nullptr || orders_->done == nullptr) return false;
  auto argument = std::make_unique<std::shared_ptr<Orders>>(orders_);
  thread_ = CreateThread(nullptr, 0, CarryOut, argument.get(), 0, nullptr);
  if (thread_ != nullptr) static_cast<void>(argument.release());
  return thread_ != nullptr;
}

void MciWin::LetGo() {
  orders_->end = true;
  SetEvent(orders_->given);
}

void MciWin::GiveUp() {
  LetGo();
  hanging_.push_back(std::exchange(thread_, nullptr));
  ++given_up_;
  opened_ = false;
}

std::string MciWin::ErrorText(unsigned error) {
  std::array<char, kErrorTextLength> buffer{};
  if (mciGetErrorStringA(error, buffer.data(), kErrorTextLength) == 0) return {};
  return {buffer.data(), strnlen(buffer.data(), buffer.size())};
}

}  // namespace corvane
