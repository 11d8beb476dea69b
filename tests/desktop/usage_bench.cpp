// What Corvane takes of the machine it shares with the receiver: from its start to its window and
// to the first line read, memory, and the processor while it waits, looks on and follows a call.
// Beside each stands the same of the stand-in for SDR#, a program that does next to nothing. A
// measurement: the only thing that can fail is a program that does not get so far.
//
// usage_bench [SECONDS]   of each measurement of the processor
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

#include "desktop/harness/corvane_program.h"
#include "desktop/harness/program_folder.h"
#include "desktop/harness/standin_program.h"
#include "desktop/harness/wait.h"

namespace corvane::desktop {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kSeconds = 10;
constexpr int kLookAgain_ms = 1;

int MsOf(const std::function<bool()>& work) {
  const auto begin = Clock::now();
  if (!work()) return -1;
  return static_cast<int>(
      std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin).count());
}

struct Programs {
  ProgramFolder folder;
  StandinProgram sdr{folder.Path()};
  CorvaneProgram corvane{folder.Path()};
};

// Nobody looks at their windows meanwhile: that would cost them time.
void MeasureProcessor(Programs& programs, const char* when, int seconds) {
  const Process& corvane = programs.corvane.TheProcess();
  const Process& sdr = programs.sdr.TheProcess();
  const std::int64_t corvane_before = corvane.TheUse().processor_us;
  const std::int64_t sdr_before = sdr.TheUse().processor_us;
  (void)WaitFor([] { return false; }, seconds * 1000, 1000);
  const auto per_second = [seconds](std::int64_t us) {
    return static_cast<double>(us) / 1000.0 / seconds;
  };
  std::printf("processor %s: %.1f ms a second (the stand-in: %.1f)\n", when,
              per_second(corvane.TheUse().processor_us - corvane_before),
              per_second(sdr.TheUse().processor_us - sdr_before));
}

bool Measure(int seconds) {
  Programs programs;
  CorvaneProgram& corvane = programs.corvane;
  StandinProgram& sdr = programs.sdr;
  programs.folder.Write("corvane_simple.dat", SettingsFile({}));
  const int sdr_ms = MsOf([&] { return sdr.Start(); });
  const int corvane_ms = MsOf([&] { return corvane.Start(); });
  if (sdr_ms < 0 || corvane_ms < 0) return false;
  std::printf("start to window: %d ms (the stand-in: %d)\n", corvane_ms, sdr_ms);
  MeasureProcessor(programs, "before \"Start\"", seconds);

  Click(corvane.Control(ControlId::cmdStartAll));
  const auto shown = [&] { return !corvane.Caption(ControlId::lblNetworkInfo).empty(); };
  const int ready_ms = MsOf([&] { return WaitFor(shown, kGenerousLimit_ms, kLookAgain_ms); });
  if (ready_ms < 0) return false;
  std::printf("\"Start\" to the network shown: %d ms\n", ready_ms);
  MeasureProcessor(programs, "on the control channel", seconds);

  const auto followed = [&] { return corvane.Caption(ControlId::lblCallID) == "7"; };
  if (!sdr.Do("call id=7 group=9001 party=5010 carrier=2610 slot=2") || !WaitFor(followed)) {
    return false;
  }
  MeasureProcessor(programs, "in a call", seconds);

  std::printf("memory of its own: %zu KiB (the stand-in: %zu)\n",
              corvane.TheProcess().TheUse().private_kib, sdr.TheProcess().TheUse().private_kib);
  return true;
}

}  // namespace
}  // namespace corvane::desktop

int main(int argc, char** argv) {
  const int seconds = argc > 1 ? std::atoi(argv[1]) : 0;
  if (corvane::desktop::Measure(seconds > 0 ? seconds : corvane::desktop::kSeconds)) return 0;
  std::puts("the programs did not get so far");
  return 1;
}
