// What call following finds around it in a replay: a link that carries everything out at once, a
// clock that the log moves, and nothing to write to.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "archive/instant.h"
#include "archive/utf8.h"
#include "base/files.h"
#include "base/loop.h"
#include "base/wall_clock.h"
#include "core/ports.h"
#include "panel/control_sink.h"
#include "record/mci.h"

namespace corvane::tools {

// Time passes when the replay says so. Nothing is ever posted, and nobody makes a timer.
class ReplayLoop : public Loop {
 public:
  [[nodiscard]] std::int64_t TickMs() const override { return now_ms; }
  [[nodiscard]] std::unique_ptr<Timer> MakeTimer(int, std::function<void()>) override {
    return nullptr;
  }
  void Post(EventSource, std::function<void()>) override {}
  // SDR# is tuned before the next line comes.
  void Sleep(int) override {}
  void DoEvents() override {}
  void WaitForSocketEvents(int) override {}

  std::int64_t now_ms = 0;
};

class ReplayClock : public WallClock {
 public:
  explicit ReplayClock(const ReplayLoop& loop) : loop_(loop) {}
  [[nodiscard]] DateTime Now() const override {
    const std::int64_t second = loop_.now_ms / 1000;
    if (second != second_) {
      second_ = second;
      now_ = TimeAt(second);
    }
    return now_;
  }
  // For lists that nobody reads.
  [[nodiscard]] std::string GeneralDate(const DateTime&) const override { return {}; }
  [[nodiscard]] std::optional<DateTime> ParseGeneralDate(std::string_view text) const override {
    const auto time = ParseFixedGeneralDate(text);
    return time ? time : ParseIsoDate(text);
  }

 private:
  const ReplayLoop& loop_;
  mutable std::int64_t second_ = -1;
  mutable DateTime now_;
};

// Takes every file that is written, and keeps none.
class NoFiles : public Files {
 public:
  [[nodiscard]] bool Exists(const std::string&) override { return true; }
  [[nodiscard]] bool IsDirectory(const std::string&) override { return true; }
  [[nodiscard]] bool IsReadOnly(const std::string&) override { return false; }
  [[nodiscard]] FileError MakeDirectory(const std::string&) override { return kFileOk; }
  [[nodiscard]] FileError Delete(const std::string&) override { return kFileOk; }
  [[nodiscard]] FileError Rename(const std::string&, const std::string&) override {
    return kFileOk;
  }
  [[nodiscard]] FileError MoveOver(const std::string&, const std::string&) override {
    return kFileOk;
  }
  [[nodiscard]] FileError ReadAll(const std::string&, std::string& content) override {
    content.clear();
    return kFileNotFound;
  }
  [[nodiscard]] FileError ReadPart(const std::string&, std::uint64_t, std::size_t,
                                   std::string& content) override {
    content.clear();
    return kFileNotFound;
  }
  [[nodiscard]] FileError WriteAll(const std::string&, std::string_view) override {
    return kFileOk;
  }
  [[nodiscard]] FileError Append(const std::string&, std::string_view) override { return kFileOk; }
  [[nodiscard]] FileError Patch(const std::string&, std::uint32_t, std::string_view) override {
    return kFileOk;
  }
  [[nodiscard]] std::string FromUtf8(std::string_view text) override { return Ansi(text); }
};

class NoMci : public Mci {
 public:
  Reply Send(const MciCommand&, unsigned) override { return {}; }
  [[nodiscard]] std::optional<Reply> Begin(const MciCommand&, unsigned) override { return Reply{}; }
  [[nodiscard]] std::optional<Reply> Answer() override { return std::nullopt; }
  Reply Await() override { return {}; }
  void Hurry() override {}
  [[nodiscard]] std::string ErrorText(unsigned) override { return {}; }
};

class NoWindow : public ControlSink {
 public:
  void Changed(const Control&, Field) override {}
  void ListChanged(ListBox&, ListChange, std::size_t) override {}
  void FocusWanted(const Control&) override {}
};

class ReplayLink : public SdrLink {
 public:
  void SendNetRemoteSet(const std::string&, const std::string&) override {}
  void SendNetRemoteGet(const std::string&) override {}
  [[nodiscard]] bool CommandUnderWay() const override { return false; }
  void AwaitAnswer() override {}
  [[nodiscard]] bool SocketConnected() const override { return true; }
  void PressTimeslot(int) override {}
};

// The lines of a replay do not come out of a box.
class NoBox : public NetworkInfoBox {
 public:
  [[nodiscard]] std::uintptr_t Identity() const override { return 0; }
  [[nodiscard]] std::int32_t LineCount() override { return 0; }
  [[nodiscard]] std::optional<std::string> Line(std::int32_t) override { return std::string(); }
  void Clear() override {}
};

}  // namespace corvane::tools
