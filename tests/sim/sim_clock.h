// A wall clock that goes with the loop's clock until the test sets it apart.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/loop.h"
#include "base/wall_clock.h"

namespace corvane::sim {

class SimClock : public WallClock {
 public:
  // 15 November 2026, 14:23:05, at the loop's present moment.
  explicit SimClock(const Loop& loop);

  [[nodiscard]] DateTime Now() const override;
  [[nodiscard]] std::string GeneralDate(const DateTime& time) const override;
  [[nodiscard]] std::optional<DateTime> ParseGeneralDate(std::string_view text) const override;

  // Sets the clock, as a user does. `time` is valid.
  void Set(const DateTime& time);
  // Moves it either way, as the end of summer time does.
  void MoveSeconds(std::int64_t seconds) { base_seconds_ += seconds; }

  // Other regional settings. What `write` gives `read` must take back.
  void SetFormat(std::function<std::string(const DateTime&)> write,
                 std::function<std::optional<DateTime>(std::string_view)> read);

 private:
  const Loop& loop_;
  std::int64_t base_tick_ms_;
  std::int64_t base_seconds_;
  // The latest second that was asked for: as a rule the next one asks for the same.
  mutable std::int64_t told_seconds_;
  mutable DateTime told_;
  std::function<std::string(const DateTime&)> write_ = FixedGeneralDate;
  std::function<std::optional<DateTime>(std::string_view)> read_ = ParseFixedGeneralDate;
};

}  // namespace corvane::sim
