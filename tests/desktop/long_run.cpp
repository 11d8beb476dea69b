// Busy traffic in the real program for as long as wanted: what it has of the system, every few
// seconds, as comma-separated values. Every call is recorded and every log written.
//
// long_run [MINUTES]
//
// Ends with 1 when something grows after the first minutes, or when the program stops following.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "desktop/harness/corvane_program.h"
#include "desktop/harness/program_folder.h"
#include "desktop/harness/standin_program.h"
#include "desktop/harness/wait.h"

namespace corvane::desktop {
namespace {

constexpr int kMinutes = 30;
constexpr int kSample_ms = 5000;
constexpr int kSamplesPerMinute = 60'000 / kSample_ms;
// Caches of the system fill, and the two lists that keep a thousand lines.
constexpr int kSettledAfterMinutes = 10;
constexpr std::size_t kSpareKib = 1024;
constexpr unsigned kSpareObjects = 20;
constexpr std::int16_t kRecordEveryGroup = 1;

constexpr const char* kTraffic =
    "traffic calls-per-hour=900 groups=9001-9012 parties=5010-5060 carriers=2610,2611,2612 "
    "length=2-8 individual=5 encrypted=5 queued=5 not-granted=5 missed=3 disconnected=3";
constexpr const char* kNoise = "noise per-hour=18000";

struct Sample {
  Process::Use use;
  std::size_t windows = 0;
};

template <typename Value>
Value Most(const std::vector<Sample>& samples, std::size_t from, std::size_t to,
           Value (*of)(const Sample&)) {
  Value most{};
  for (std::size_t i = from; i < to; ++i) most = std::max(most, of(samples[i]));
  return most;
}

bool Grows(const char* what, std::size_t before, std::size_t after, std::size_t spare) {
  if (after <= before + spare) return false;
  std::fprintf(stderr, "%s: %zu at most in the minutes before, %zu in the last ones\n", what,
               before, after);
  return true;
}

// The first minutes after all has settled against the last ones.
bool IsFlat(const std::vector<Sample>& samples) {
  const std::size_t settled = kSettledAfterMinutes * kSamplesPerMinute;
  const std::size_t span = (samples.size() - std::min(samples.size(), settled)) / 3;
  if (span == 0) return true;  // too short to tell
  const std::size_t first = settled;
  const std::size_t last = samples.size() - span;
  const auto grows = [&](const char* what, std::size_t (*of)(const Sample&), std::size_t spare) {
    return Grows(what, Most(samples, first, first + span, of),
                 Most(samples, last, samples.size(), of), spare);
  };
  bool any = grows(
      "memory", [](const Sample& s) { return s.use.private_kib; }, kSpareKib);
  any |= grows(
      "handles", [](const Sample& s) { return std::size_t{s.use.handles}; }, kSpareObjects);
  any |= grows(
      "GDI objects", [](const Sample& s) { return std::size_t{s.use.gdi_objects}; }, kSpareObjects);
  any |= grows(
      "USER objects", [](const Sample& s) { return std::size_t{s.use.user_objects}; },
      kSpareObjects);
  any |= grows(
      "windows", [](const Sample& s) { return s.windows; }, 0);
  return !any;
}

int Run(int minutes) {
  ProgramFolder folder;
  StandinProgram sdr{folder.Path()};
  CorvaneProgram corvane{folder.Path()};
  Settings settings;
  settings.create_cc_vc_log = true;
  settings.create_event_log = true;
  settings.record_mode_index = kRecordEveryGroup;
  folder.Write("corvane_simple.dat", SettingsFile(settings));
  if (!sdr.Start() || !corvane.Start()) return 2;
  Click(corvane.Control(ControlId::cmdStartAll));
  const auto shown = [&] { return !corvane.Caption(ControlId::lblNetworkInfo).empty(); };
  if (!WaitFor(shown) || !sdr.Do(kTraffic) || !sdr.Do(kNoise)) return 2;

  std::printf(
      "seconds,memory_kib,handles,gdi_objects,user_objects,windows,processor_ms_per_s,"
      "recordings\n");
  std::vector<Sample> samples;
  const Process& process = corvane.TheProcess();
  std::int64_t processor_us = process.TheUse().processor_us;
  for (int sample = 1; sample <= minutes * kSamplesPerMinute; ++sample) {
    (void)WaitFor([] { return false; }, kSample_ms, kSample_ms);
    if (!corvane.Running()) {
      std::fprintf(stderr, "the program has ended\n");
      return 1;
    }
    const Process::Use use = process.TheUse();
    samples.push_back({use, TopLevelWindows(process.Id()).size()});
    std::printf("%d,%zu,%u,%u,%u,%zu,%.1f,%zu\n", sample * kSample_ms / 1000, use.private_kib,
                use.handles, use.gdi_objects, use.user_objects, samples.back().windows,
                static_cast<double>(use.processor_us - processor_us) / kSample_ms,
                folder.Find(".wav").size());
    std::fflush(stdout);
    processor_us = use.processor_us;
  }

  // Every quarter of a minute a call that may be followed is on the air at the latest.
  const std::size_t recordings = folder.Find(".wav").size();
  if (recordings < static_cast<std::size_t>(minutes) * 2) {
    std::fprintf(stderr, "%zu calls were recorded in %d minutes\n", recordings, minutes);
    return 1;
  }
  if (!corvane.OpenMessageBox().empty()) {
    std::fprintf(stderr, "a box: %s\n", corvane.OpenMessageBox().c_str());
    return 1;
  }
  if (!IsFlat(samples)) return 1;
  std::fprintf(stderr, "nothing grows\n");
  return 0;
}

}  // namespace
}  // namespace corvane::desktop

int main(int argc, char** argv) {
  const int minutes = argc > 1 ? std::atoi(argv[1]) : 0;
  return corvane::desktop::Run(minutes > 0 ? minutes : corvane::desktop::kMinutes);
}
