// How long the G/SSI editor takes to stand filled on the screen, with few and with many groups and
// subscribers. A measurement: the only thing that can fail is an editor that does not come.
//
// editor_bench [OPENINGS]
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "desktop/ui_window/editor_fixture.h"

namespace corvane::ui_test {
namespace {

constexpr int kOpenings = 10;
constexpr int kExpected_ms = 300;
// The lists are filled at the first tick of this timer.
constexpr int kTick_ms = 100;

bool Measure(int known, int openings) {
  LoopWin loop;
  FormWindow window(loop);
  EditorTables tables(known, known);
  std::vector<std::int64_t> opened_ms;
  for (int opening = 0; opening < openings; ++opening) {
    tables.hand_over.EditorPreselect = true;
    const std::int64_t begin = loop.TickMs();
    OpenEditor editor(loop, window, tables);
    if (!editor.made || !AwaitFilled(loop, editor)) return false;
    if (Send(ChildOf(window.handle(), ControlId::lstGSSI_Lockouts), LB_GETCOUNT) != known) {
      return false;
    }
    opened_ms.push_back(loop.TickMs() - begin);
  }
  std::sort(opened_ms.begin(), opened_ms.end());
  std::printf(
      "%6d groups, %6d subscribers: median %4d ms, longest %4d ms (expected at most %d; "
      "the timer alone: %d)\n",
      known, known, static_cast<int>(opened_ms[opened_ms.size() / 2]),
      static_cast<int>(opened_ms.back()), kExpected_ms, kTick_ms);
  return true;
}

}  // namespace
}  // namespace corvane::ui_test

int main(int argc, char** argv) {
  using namespace corvane::ui_test;
  const int openings = argc > 1 ? std::max(1, std::atoi(argv[1])) : kOpenings;
  for (const int known : {10, 1000, 10000}) {
    if (!Measure(known, openings)) {
      std::puts("the editor did not come");
      return 1;
    }
  }
  return 0;
}
