// The wall clock of the system, its dates written by the user's regional settings.
#pragma once

#include <windows.h>

#include "base/wall_clock.h"

namespace corvane {

class WallClockWin : public WallClock {
 public:
  // By default the user's own settings.
  explicit WallClockWin(LCID locale = LOCALE_USER_DEFAULT) : locale_(locale) {}

  [[nodiscard]] DateTime Now() const override;

  // "yyyy-mm-dd hh:nn:ss" where the regional settings' own text would not read back as `time` (no
  // seconds in it, say); "" when `time` is not valid.
  [[nodiscard]] std::string GeneralDate(const DateTime& time) const override;

  // Also takes other texts that hold a date, as far as the system reads them: files may have been
  // written by hand or under other settings.
  [[nodiscard]] std::optional<DateTime> ParseGeneralDate(std::string_view text) const override;

 private:
  LCID locale_;
};

}  // namespace corvane
