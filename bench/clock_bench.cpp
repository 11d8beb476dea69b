// What the whole program's times become on a clock of 15.6 ms, which is Windows' own: on the
// virtual clock, so the figures are the same on every machine. docs/windows.md has them.
#include <cstdio>

#include "scenarios/clock_figures.h"

int main() {
  using namespace corvane::sim;
  const ClockFigures fine = MeasureOnClock(false);
  const ClockFigures coarse = MeasureOnClock(true);
  std::printf("%d calls, on the virtual clock\n%s", fine.calls, ClockTable(fine, coarse).c_str());
  return fine.followed == fine.calls && coarse.followed == coarse.calls ? 0 : 1;
}
