// Runs what was tested elsewhere on the machine of whoever has Windows, and writes one report.
//
// windows_check [FILTER]: report.txt and logs\ beside it. FILTER is GoogleTest's; with one the
// measurement is left out. Exit code 0: all was run and passed.
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "desktop/check/case_results.h"
#include "desktop/check/logged_run.h"
#include "desktop/check/system_facts.h"
#include "desktop/harness/process.h"
#include "desktop/harness/program_folder.h"

namespace corvane::desktop {
namespace {

struct Part {
  const char* program;
  // Cases that need what a usual machine has not, and why they are left out.
  const char* left_out;
  const char* reason;
  int limit_s;
};

constexpr const char* kNoDisk = "they need a disk of 16 MB";
constexpr const char* kNoDevice =
    "they need a disk of 16 MB, or a recording device that can be taken away or used up";

constexpr Part kParts[] = {
    {"contract_win", "", "", 900},
    {"contract_win_mci", "", "", 900},
    {"persistence_test", "*FullDisk*", kNoDisk, 3600},
    {"persistence_link_test", "", "", 900},
    {"desktop_test", "*FullDisk*:RecordingFaults.ADeviceThat*", kNoDevice, 5400},
};

std::string Now() {
  const std::time_t now = std::time(nullptr);
  char text[32];
  std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", std::localtime(&now));
  return text;
}

class Check {
 public:
  explicit Check(std::string filter)
      : filter_(std::move(filter)), folder_(OwnFolder()), report_(folder_ / "report.txt") {
    std::filesystem::create_directories(folder_ / "logs");
  }

  [[nodiscard]] bool Run() {
    Say("Corvane: check on this machine, begun " + Now());
    Say("");
    for (const std::string& fact : SystemFacts()) Say(fact);
    for (const Part& part : kParts) RunPart(part);
    if (filter_.empty()) Measure();
    Say("");
    Say("ended " + Now());
    Say(std::to_string(passed_) + " passed, " + std::to_string(failed_) + " failed");
    report_.close();
    return report_.good() && failed_ == 0 && passed_ > 0;
  }

 private:
  void Say(const std::string& line) {
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
    report_ << line << '\n' << std::flush;
  }
  void Fail(const std::string& what) {
    ++failed_;
    Say("  FAILED " + what);
  }
  [[nodiscard]] std::filesystem::path Log(const std::string& name) const {
    return folder_ / "logs" / (name + ".txt");
  }

  void RunPart(const Part& part) {
    const std::string name = part.program;
    Say("");
    Say(name);
    if (*part.left_out != '\0') {
      Say(std::string("  left out: ") + part.left_out + " - " + part.reason);
    }
    std::string command = "\"" + (folder_ / (name + ".exe")).string() +
                          "\" --gtest_filter=" + (filter_.empty() ? "*" : filter_);
    if (*part.left_out != '\0') command += std::string("-") + part.left_out;
    const auto code = RunLogged(command, Log(name), part.limit_s);
    const CaseResults results = ReadCaseResults(ReadWholeFile(Log(name)));
    passed_ += results.passed;
    Say("  " + std::to_string(results.passed) + " passed, " +
        std::to_string(results.failed.size()) + " failed");
    for (const std::string& failed : results.failed) Fail(failed);
    if (!code) {
      Fail("could not be run to its end");
    } else if (!results.whole && results.failed.empty()) {
      Fail("ended with code " + std::to_string(*code) + " before its cases did");
    } else if (*code != 0 && results.failed.empty()) {
      Fail("ended with code " + std::to_string(*code));
    }
  }

  void Measure() {
    Say("");
    Say("latency_bench");
    const std::string command = "\"" + (folder_ / "latency_bench.exe").string() + "\"";
    const auto code = RunLogged(command, Log("latency_bench"), 1800);
    std::ifstream figures(Log("latency_bench"));
    for (std::string line; std::getline(figures, line);) {
      while (line.ends_with('\r')) line.pop_back();
      Say("  " + line);
    }
    if (code != 0U) Fail("calls were missed, or it did not come to its end");
  }

  std::string filter_;
  std::filesystem::path folder_;
  std::ofstream report_;
  int passed_ = 0;
  int failed_ = 0;
};

}  // namespace
}  // namespace corvane::desktop

int main(int count, char** values) {
  return corvane::desktop::Check(count > 1 ? values[1] : "").Run() ? 0 : 1;
}
