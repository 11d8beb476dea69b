// Scripted runs of the whole program, compared line by line with reviewed traces.
//
// A run is a scenario file of the stand-in under runs/ with lines for the user in between:
//   #option network-on | network-plain | labels-after-start
//   #file NAME CONTENT        a file beside the program, "\n" for a line end
//   #user SECONDS click|double|release CONTROL [ARGUMENT]
//   #run SECONDS              how long it lasts
// CORVANE_WRITE_TRACES=1 writes the traces anew; look at the difference before committing it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "base/text.h"
#include "scenarios/world.h"
#include "ui/main_layout.h"

namespace corvane::sim {
namespace {

const std::filesystem::path kRuns = "tests/scenarios/runs";

struct UserStep {
  std::int64_t ms = 0;
  std::string verb;
  std::string control;
  std::string argument;
};

struct Script {
  WorldOptions options;
  std::vector<UserStep> steps;
  std::int64_t run_ms = 0;
};

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void ReadDirective(const std::string& line, Script& script) {
  std::istringstream words(line.substr(1));
  std::string what;
  words >> what;
  if (what == "option") {
    std::string option;
    words >> option;
    if (option == "network-on") script.options.sdr.network_on = true;
    if (option == "network-plain") script.options.sdr.network_plain = true;
    if (option == "labels-after-start") script.options.sdr.labels_after_start = true;
  } else if (what == "file") {
    std::string name;
    std::string content;
    words >> name;
    std::getline(words >> std::ws, content);
    script.options.files.emplace_back("\\" + name, ReplaceAll(content, "\\n", "\r\n"));
  } else if (what == "user") {
    UserStep step;
    double seconds = 0;
    words >> seconds >> step.verb >> step.control >> step.argument;
    step.ms = static_cast<std::int64_t>(seconds * 1000);
    script.steps.push_back(step);
  } else if (what == "run") {
    double seconds = 0;
    words >> seconds;
    script.run_ms = static_cast<std::int64_t>(seconds * 1000);
  }
}

Script ReadScript(const std::filesystem::path& path) {
  Script script;
  script.options.scenario = ReadFile(path);
  for (const std::string& line : FileLines(script.options.scenario)) {
    if (line.starts_with("#") && line.size() > 1 && line[1] != ' ') ReadDirective(line, script);
  }
  return script;
}

Control* FindControl(Form1& form, const std::string& name) {
  for (Control* control : MainWindowTable(form).AllControls()) {
    if (control->name() == name) return control;
  }
  return nullptr;
}

void Carry(World& world, const UserStep& step) {
  world.trace.push_back("          * " + step.verb + " " + step.control + " " + step.argument);
  if (step.control == "Form1") return world.user().CloseRequested();
  Control* control = FindControl(world.form(), step.control);
  ASSERT_NE(control, nullptr) << step.control;
  if (step.verb == "click") {
    world.user().Click(*control);
  } else if (step.verb == "double") {
    world.user().DoubleClick(*control);
  } else if (step.verb == "release") {
    world.user().MouseUp(*control, kLeftButton, -1);
  } else if (step.verb == "type") {
    ASSERT_EQ(control->kind(), ControlKind::kTextBox);
    world.user().TextEdited(As<TextBox>(*control), step.argument);
    world.user().LostFocus(*control);
  } else {
    FAIL() << "unknown step " << step.verb;
  }
}

class TraceTest : public ::testing::TestWithParam<std::string> {};

TEST_P(TraceTest, TheRunGoesAsReviewed) {
  const Script script = ReadScript(kRuns / (GetParam() + ".txt"));
  ASSERT_GT(script.run_ms, 0) << "no #run line";
  World world(script.options);
  const std::int64_t start = world.loop.TickMs();
  ASSERT_TRUE(world.Load());
  world.Start();
  for (const UserStep& step : script.steps) {
    world.Run(std::max<std::int64_t>(0, start + step.ms - world.loop.TickMs()));
    Carry(world, step);
    if (HasFatalFailure()) return;
  }
  world.Run(std::max<std::int64_t>(0, start + script.run_ms - world.loop.TickMs()));

  const std::filesystem::path expected = kRuns / (GetParam() + ".trace");
  if (std::getenv("CORVANE_WRITE_TRACES") != nullptr) {
    std::ofstream(expected, std::ios::binary) << world.TraceText();
    FAIL() << "trace written, not compared: " << expected;
  }
  EXPECT_EQ(FileLines(world.TraceText()), FileLines(ReadFile(expected)));
}

std::vector<std::string> AllRuns() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(kRuns)) {
    if (entry.path().extension() == ".txt") names.push_back(entry.path().stem().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

INSTANTIATE_TEST_SUITE_P(Runs, TraceTest, ::testing::ValuesIn(AllRuns()),
                         [](const auto& run) { return run.param; });

}  // namespace
}  // namespace corvane::sim
