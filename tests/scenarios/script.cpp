// Reads scripts, and does what the user of one does.
#include "scenarios/script.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "base/text.h"
#include "ui/editor_layout.h"
#include "ui/main_layout.h"

namespace corvane::sim {

namespace {

constexpr std::string_view kEditor = "Dialog.";

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
    words >> seconds >> step.verb >> step.control;
    std::getline(words >> std::ws, step.argument);
    step.ms = static_cast<std::int64_t>(seconds * 1000);
    script.steps.push_back(step);
  } else if (what == "run") {
    double seconds = 0;
    words >> seconds;
    script.run_ms = static_cast<std::int64_t>(seconds * 1000);
  } else {
    throw std::invalid_argument(script.name + ": " + line);
  }
}

Control* FindControl(const std::vector<Control*>& controls, const std::string& name) {
  for (Control* control : controls) {
    if (control->name() == name) return control;
  }
  return nullptr;
}

void Do(UserEvents& user, Control& control, const UserStep& step) {
  if (step.verb == "click") {
    user.Click(control);
  } else if (step.verb == "double") {
    user.DoubleClick(control);
  } else if (step.verb == "release") {
    user.MouseUp(control, kLeftButton, -1);
  } else if (step.verb == "select") {
    ListBox& list = As<ListBox>(control);
    const int line = std::stoi(step.argument);
    user.ListSelected(list, line, true);
    user.MouseUp(list, kLeftButton, line);
  } else if (step.verb == "lock") {
    user.MouseUp(control, kRightButton, std::stoi(step.argument));
  } else if (step.verb == "enter") {
    static_cast<void>(user.KeyPress(control, kEnterCode));
  } else if (step.verb == "type") {
    user.TextEdited(As<TextBox>(control), step.argument);
    user.LostFocus(control);
  } else {
    throw std::invalid_argument("no verb " + step.verb);
  }
}

}  // namespace

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::string> AllRuns() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(kRuns)) {
    if (entry.path().extension() == ".txt") names.push_back(entry.path().stem().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

Script ReadScript(const std::string& name) {
  Script script;
  script.name = name;
  script.options.scenario = ReadFile(kRuns / (name + ".txt"));
  for (const std::string& line : FileLines(script.options.scenario)) {
    if (line.starts_with("#") && line.size() > 1 && line[1] != ' ') ReadDirective(line, script);
  }
  if (script.run_ms <= 0) throw std::invalid_argument(name + " has no #run line");
  return script;
}

void Carry(World& world, const UserStep& step) {
  world.trace.push_back("          * " + step.verb + " " + step.control + " " + step.argument);
  if (step.control == "Form1") return world.user().CloseRequested();
  if (!step.control.starts_with(kEditor)) {
    Control* control = FindControl(MainWindowTable(world.form()).AllControls(), step.control);
    if (control == nullptr) throw std::invalid_argument("no control " + step.control);
    return Do(world.user(), *control, step);
  }
  // It may have closed by itself.
  Dialog* dialog = world.view().dialog;
  if (dialog == nullptr || world.editor == nullptr) return;
  Control* control =
      FindControl(EditorWindowTable(*dialog).AllControls(), step.control.substr(kEditor.size()));
  if (control == nullptr) throw std::invalid_argument("no control " + step.control);
  world.editor->AnyInput();
  Do(*world.editor, *control, step);
}

}  // namespace corvane::sim
