// The wall clock seam: what date and time the user's desktop shows, and how it writes them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/date_time.h"

namespace corvane {

class WallClock {
 public:
  virtual ~WallClock() = default;

  // Local date and time. May jump either way (the user sets the clock, summer time ends).
  [[nodiscard]] virtual DateTime Now() const = 0;

  // Date, a blank, time, both always present, to the second, as the user's regional settings show
  // them. Bytes in the ANSI code page.
  [[nodiscard]] virtual std::string GeneralDate(const DateTime& time) const = 0;

  // Reads what GeneralDate writes under the same regional settings, and "yyyy-mm-dd hh:nn:ss".
  // nullopt when the text is neither.
  [[nodiscard]] virtual std::optional<DateTime> ParseGeneralDate(std::string_view text) const = 0;
};

// The present date and time as every log writes it.
[[nodiscard]] inline std::string NowText(const WallClock& clock) {
  return clock.GeneralDate(clock.Now());
}

}  // namespace corvane
