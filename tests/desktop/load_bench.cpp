// How soon the finished program follows a call while the network sends that many other lines a
// second, with real windows and a real connection; beside it what queueing theory expects. A
// measurement: the only thing that can fail is a program that follows nothing at all.
//
// load_bench [SECONDS [LINES_PER_S...]]   seconds at each rate
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "desktop/harness/corvane_program.h"
#include "desktop/harness/program_folder.h"
#include "desktop/harness/standin_program.h"
#include "desktop/harness/wait.h"
#include "scenarios/load_traffic.h"

namespace corvane::desktop {
namespace {

constexpr int kSeconds = 60;
constexpr std::int64_t kBegin_ms = 10'000;     // after the stand-in's start; the link is up by then
constexpr std::int64_t kBaseHz = 300'000'000;  // as the stand-in and the settings have it

load::Figures Measure(double lines_per_s, int seconds) {
  const ProgramFolder folder;
  StandinProgram sdr(folder.Path());
  CorvaneProgram corvane(folder.Path());
  folder.Write("corvane_simple.dat", SettingsFile({}));
  const std::int64_t measured_ms = std::int64_t{1000} * seconds;
  const load::Traffic traffic = load::MakeTraffic(lines_per_s, false, kBegin_ms, measured_ms);
  const auto began = std::chrono::steady_clock::now();
  if (!sdr.Start({}, traffic.scenario) || !corvane.Start()) return {};
  Click(corvane.Control(ControlId::cmdStartAll));
  const auto ready = [&] { return !corvane.Caption(ControlId::lblNetworkInfo).empty(); };
  if (!WaitFor(ready, static_cast<int>(kBegin_ms))) return {};

  // Nobody looks at their windows meanwhile: that would cost them time.
  const auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now() - began);
  (void)WaitFor([] { return false; },
                static_cast<int>(load::EndMs(kBegin_ms, measured_ms) - passed.count()), 1000);
  std::vector<load::LoggedLine> log;
  for (const LogLine& line : sdr.Log()) log.push_back({line.ms, line.kind, line.detail});
  return load::FiguresOf(log, lines_per_s, traffic.calls, kBaseHz);
}

}  // namespace
}  // namespace corvane::desktop

int main(int argc, char** argv) {
  using corvane::load::Figures;
  const int seconds = argc > 1 ? std::atoi(argv[1]) : corvane::desktop::kSeconds;
  std::vector<double> rates;
  for (int i = 2; i < argc; ++i) rates.push_back(std::atof(argv[i]));
  if (rates.empty()) rates = {1, 4, 8, 12, 15, 17, 20};
  std::vector<Figures> all;
  int followed = 0;
  for (const double rate : rates) {
    all.push_back(corvane::desktop::Measure(rate, seconds));
    followed += all.back().followed;
  }
  std::printf("%s", corvane::load::Table(all, {}).c_str());
  if (followed > 0) return 0;
  std::puts("no call was followed");
  return 1;
}
