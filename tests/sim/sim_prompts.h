// Message boxes that are written down and answered when the test wants it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "base/prompts.h"
#include "sim/sim_loop.h"

namespace corvane::sim {

class SimPrompts : public Prompts {
 public:
  struct Box {
    std::string text;
    std::string title;
    BoxIcon icon = BoxIcon::kNone;
    bool operator==(const Box&) const = default;
  };

  explicit SimPrompts(SimLoop& loop) : loop_(loop) {}

  // Open for as long as was set, with events running on the loop.
  void ShowBox(const std::string& text, const std::string& title, BoxIcon icon) override;
  // Stops the loop, so that nothing of the program is dispatched any more.
  void EndProgram() override;

  // How long each box stays open on the loop's clock; 0, as at first, answers it at once.
  void SetOpenMs(std::int64_t ms) { open_ms_ = ms; }
  // Is called while a box is open, before the time that it stays open passes.
  void SetWhileOpen(std::function<void(const Box&)> hook) { while_open_ = std::move(hook); }
  // Is called by EndProgram.
  void SetOnEnd(std::function<void()> hook) { on_end_ = std::move(hook); }

  // Every box so far, oldest first; those shown after the end are there too, as a fault to find.
  [[nodiscard]] const std::vector<Box>& boxes() const { return boxes_; }
  [[nodiscard]] int open_now() const { return open_now_; }
  [[nodiscard]] bool ended() const { return times_ended_ > 0; }
  [[nodiscard]] int times_ended() const { return times_ended_; }

 private:
  SimLoop& loop_;
  std::int64_t open_ms_ = 0;
  std::function<void(const Box&)> while_open_;
  std::function<void()> on_end_;
  std::vector<Box> boxes_;
  int open_now_ = 0;
  int times_ended_ = 0;
};

}  // namespace corvane::sim
