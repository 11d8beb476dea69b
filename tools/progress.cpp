// The bar.
#include "tools/progress.h"

#include <algorithm>
#include <limits>
#include <string>

#include "base/number_text.h"

namespace corvane::tools {

namespace {
constexpr std::uint64_t kWidth = 50;
constexpr std::uint64_t kSteps = 100;
constexpr std::uint64_t kNever = std::numeric_limits<std::uint64_t>::max();
}  // namespace

Progress::Progress(Console& console, bool wanted, std::uint64_t in_all)
    : console_(console),
      in_all_(in_all),
      next_(wanted && console.err_is_terminal && in_all > 0 ? 0 : kNever) {}

void Progress::Draw(std::uint64_t done) {
  const std::uint64_t percent = std::min(kSteps, done * kSteps / in_all_);
  const std::uint64_t full = percent * kWidth / kSteps;
  console_.err.Write("\r[" + std::string(full, '#') + std::string(kWidth - full, '.') + "] " +
                     Decimal(percent) + " %");
  (void)console_.err.Flush();
  drawn_ = true;
  next_ = percent >= kSteps ? kNever : in_all_ * (percent + 1) / kSteps + 1;
}

void Progress::Clear() {
  next_ = kNever;
  if (drawn_) console_.err.Write("\r" + std::string(kWidth + 10, ' ') + "\r");
  drawn_ = false;
}

}  // namespace corvane::tools
