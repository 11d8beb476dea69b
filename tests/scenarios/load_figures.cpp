// From the log of the stand-in, which has every line and every command with its time.
#include "scenarios/load_figures.h"

#include "base/number_text.h"
#include "scenarios/world.h"

namespace corvane::sim {

namespace {

constexpr const char* kBase = "base 800000000\n";
constexpr std::int64_t kBaseHz = 800'000'000;
constexpr std::int64_t kBeginMs = 10'000;  // the link is up by then
constexpr std::int64_t kMeasuredMs = 600'000;

}  // namespace

load::Figures MeasureUnderLoad(double lines_per_s, bool repeats) {
  const load::Traffic traffic = load::MakeTraffic(lines_per_s, repeats, kBeginMs, kMeasuredMs);
  WorldOptions options;
  options.scenario = kBase + traffic.scenario;
  World world(options);
  const std::int64_t made_ms = world.loop.TickMs();
  world.BringUp();
  world.Run(load::EndMs(kBeginMs, kMeasuredMs) - (world.loop.TickMs() - made_ms));
  std::vector<load::LoggedLine> log;
  for (const standin::LogEntry& entry : world.desktop->model().log().entries()) {
    log.push_back({entry.ms, entry.kind, entry.detail});
  }
  return load::FiguresOf(log, lines_per_s, traffic.calls, kBaseHz);
}

std::int64_t MeasureCatchingUp(int lines) {
  WorldOptions options;
  options.scenario = kBase;
  World world(options);
  world.BringUp();
  for (int line = 0; line < lines; ++line) {
    world.Do("line \"SSI:4711 D_MM of radio " + Decimal(line) + "\"");
  }
  const std::int64_t begin = world.loop.TickMs();
  world.Do("call id=77 group=9001 party=5010 carrier=2610 slot=2");
  const bool followed =
      world.RunUntil([&world] { return world.Following(); }, 2000 + 100 * std::int64_t{lines});
  return followed ? world.loop.TickMs() - begin : -1;
}

}  // namespace corvane::sim
