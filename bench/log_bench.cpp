// What writing the logs adds to a poll step, on real files, and whether it grows with the files: a
// day of LOG mode writes well over a hundred thousand lines.
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include <benchmark/benchmark.h>

#include "bench/following_rig.h"
#include "bench/run.h"

namespace corvane {
namespace {

constexpr int kMeasuredLines = 2000;

// Appends to real files in a folder of its own, which goes with it.
class AppendedFiles : public rig::CountingFiles {
 public:
  AppendedFiles() {
    std::string name = (std::filesystem::temp_directory_path() / "corvane-bench").string();
    // Benchmarks run one after the other, programs perhaps not.
    for (int number = 0;; ++number) {
      folder_ = name + std::to_string(number);
      if (std::filesystem::create_directory(folder_)) return;
    }
  }
  ~AppendedFiles() override {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  [[nodiscard]] FileError Append(const std::string& path, std::string_view content) override {
    const std::string file_name = path.substr(path.rfind('\\') + 1);
    std::FILE* file = std::fopen((folder_ / file_name).c_str(), "ab");
    if (file == nullptr) return kPathAccess;
    const std::size_t written = std::fwrite(content.data(), 1, content.size(), file);
    const bool closed = std::fclose(file) == 0;
    if (written != content.size() || !closed) return kDiskFull;
    return rig::CountingFiles::Append(path, content);
  }

 private:
  std::filesystem::path folder_;
};

// Each goes into the call log.
std::string NextEvent(int number) {
  return "SSI:" + std::to_string(9000 + number % 40) + " D_Info Call ID:" + std::to_string(number) +
         " Carrier:2610 ";
}

// Calls with ever new IDs, so that LOG mode writes and counts each of them.
std::string NextCall(int number) {
  return "SSI:" + std::to_string(9000 + number % 40) +
         " D_Setup Transmission Granted Call ID:" + std::to_string(number % 30000) +
         " Basic_service:Point_to_multipoint Party_SSI:5010 TimeSlot:2 Carrier:2610 ";
}

enum class Logs { kNone, kAll };

void Poll(benchmark::State& state, Logs logs, bool log_mode) {
  AppendedFiles files;
  rig::Following following(&files);
  following.form.chkCreateCcVcLog.value = logs == Logs::kAll ? 1 : 0;
  following.form.chkCreateEventLog.value = logs == Logs::kAll ? 1 : 0;
  following.form.chkCreateCallActivityCvsFile.value = log_mode ? 1 : 0;
  const auto line = log_mode ? NextCall : NextEvent;
  int number = 0;
  while (number < state.range(0)) following.Poll(line(number++));
  files.writes = 0;
  for (auto _ : state) following.Poll(line(number++));
  state.counters["writes/line"] =
      benchmark::Counter(static_cast<double>(files.writes), benchmark::Counter::kAvgIterations);
  if (following.form.lstStatusLog.count() > 1) state.SkipWithError("a log could not be written");
  if (logs == Logs::kAll && files.writes == 0) state.SkipWithError("nothing was written");
}

void NoLogs(benchmark::State& state) {
  Poll(state, Logs::kNone, false);
}
void CcAndEventLog(benchmark::State& state) {
  Poll(state, Logs::kAll, false);
}
void AllLogsInLogMode(benchmark::State& state) {
  Poll(state, Logs::kAll, true);
}

// By lines written before.
void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(0)->Arg(10000)->Arg(100000)->Iterations(kMeasuredLines);
  benchmark->Unit(benchmark::kMicrosecond);
}

BENCHMARK(NoLogs)->Apply(Sizes);
BENCHMARK(CcAndEventLog)->Apply(Sizes);
BENCHMARK(AllLogsInLogMode)->Apply(Sizes);

}  // namespace
}  // namespace corvane

int main(int argc, char** argv) {
  return corvane::bench::Run(argc, argv, {{"CcAndEventLog", 4}, {"AllLogsInLogMode", 4}});
}
