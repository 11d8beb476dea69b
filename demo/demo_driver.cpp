// The demonstration: starts the stand-in and Corvane, operates their windows as a user would, and
// tells what happens as it happens.
//
// demo_driver --folder PROGRAM_FOLDER --scenario FILE --pictures FOLDER [--calls N] [--keep-open]
// PROGRAM_FOLDER holds Corvane.exe with its label files. Ends with 0 when N calls were followed to
// their end and a recording was left.
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/number_text.h"
#include "demo/demo_account.h"
#include "desktop/harness/corvane_program.h"
#include "desktop/harness/standin_program.h"
#include "desktop/harness/wait.h"

namespace corvane::desktop {
namespace {

constexpr int kCallsByDefault = 3;
constexpr int kNextCallLimit_ms = 120'000;
constexpr std::size_t kWavHeaderBytes = 44;
constexpr int kRecordedBytesPerSecond = 44'100;
constexpr int kDrawn_ms = 300;
// Where Corvane's window is put: below the stand-in's, where the screen is large enough.
constexpr int kCorvaneLeft = 300;
constexpr int kCorvaneTop = 760;

struct Arguments {
  std::filesystem::path folder;
  std::filesystem::path scenario;
  std::filesystem::path pictures;
  int calls = kCallsByDefault;
  bool keep_open = false;
};

Arguments Read(const std::vector<std::string>& words) {
  Arguments arguments;
  for (std::size_t index = 0; index < words.size(); ++index) {
    const std::string& name = words[index];
    if (name == "--keep-open") {
      arguments.keep_open = true;
      continue;
    }
    if (index + 1 == words.size()) throw std::runtime_error(name + " needs a value");
    const std::string& value = words[++index];
    if (name == "--folder")
      arguments.folder = value;
    else if (name == "--scenario")
      arguments.scenario = value;
    else if (name == "--pictures")
      arguments.pictures = value;
    else if (name == "--calls")
      arguments.calls = ParseDecimal<int>(value).value_or(0);
    else
      throw std::runtime_error("unknown option " + name);
  }
  if (arguments.folder.empty() || arguments.scenario.empty() || arguments.pictures.empty() ||
      arguments.calls < 1) {
    throw std::runtime_error("--folder, --scenario and --pictures are needed");
  }
  return arguments;
}

// One line with the time since the beginning in front.
void Tell(const std::string& text) {
  static const auto begin = std::chrono::steady_clock::now();
  const std::chrono::duration<double> since = std::chrono::steady_clock::now() - begin;
  std::printf("%6.1f s  %s\n", since.count(), text.c_str());
  std::fflush(stdout);
}

struct PageOfSettings {
  ControlId tab;
  ControlId frame;
  const char* picture;
  std::optional<ControlId> told_later;  // a label that fills a moment after the page shows
};
constexpr PageOfSettings kPages[] = {
    {ControlId::cmdSettingTab_0, ControlId::fraPresets, "page-presets", {}},
    {ControlId::cmdSettingTab_1, ControlId::fraRecordingOptions, "page-recording-options", {}},
    {ControlId::cmdSettingTab_2, ControlId::fraOptions, "page-options", {}},
    {ControlId::cmdSettingTab_3, ControlId::fraLoggingOptions, "page-logging-options", {}},
    {ControlId::cmdSettingTab_4, ControlId::fraCheckboxDetection, "page-checkbox-detection",
     ControlId::lblTetraPanelExpanded},
};

class Demo {
 public:
  explicit Demo(Arguments arguments)
      : arguments_(std::move(arguments)),
        corvane_(arguments_.folder),
        sdr_(arguments_.folder),
        account_(Tell) {}

  bool Run() {
    StartPrograms();
    TakePictures("before");
    FollowCalls();
    PictureCall();
    TakePictures("after");
    CaptureSdrPosition();
    TakePagePictures();
    if (arguments_.keep_open) WaitForTheUser();
    return CloseAndTellRecordings();
  }

 private:
  void Look() { account_.Look(corvane_.CallLog(), sdr_.Log()); }

  void Await(const std::string& what, const std::function<bool()>& state,
             int limit_ms = kGenerousLimit_ms) {
    const bool came = WaitFor(
        [&] {
          Look();
          return state();
        },
        limit_ms);
    if (!came) throw std::runtime_error("waited in vain for " + what);
  }

  void StartPrograms() {
    if (!sdr_.Start({"--scenario", arguments_.scenario.string()})) {
      throw std::runtime_error("the stand-in for SDR# did not start");
    }
    Tell("a stand-in for SDR# is running: " + TextOf(sdr_.Window()));
    if (!corvane_.Start()) throw std::runtime_error("Corvane did not start");
    MoveWindowTo(corvane_.Window(), kCorvaneLeft, kCorvaneTop);
    Tell("Corvane is running; it says: " + Last(corvane_.StatusLog()));
    Tell("base frequency 300 MHz, recording of all calls and both logs switched on");
    ChooseInCombo(corvane_.Control(ControlId::cboBaseFrequency), 2);
    Click(corvane_.Control(ControlId::optRecordMode_1));
    Await("the record mode",
          [this] { return Checked(corvane_.Control(ControlId::optRecordMode_1)); });
    for (const ControlId log : {ControlId::chkCreateEventLog, ControlId::chkCreateCcVcLog}) {
      if (!Checked(corvane_.Control(log))) Click(corvane_.Control(log));
      Await("the log switched on", [&] { return Checked(corvane_.Control(log)); });
    }
    Tell("\"Start\" is pressed");
    Click(corvane_.Control(ControlId::cmdStartAll));
    Await("the network", [this] { return !corvane_.Caption(ControlId::lblNetworkInfo).empty(); });
  }

  void FollowCalls() {
    while (account_.calls_ended() < arguments_.calls) {
      const int ended = account_.calls_ended();
      Await(
          "the next call", [&] { return account_.calls_ended() > ended; }, kNextCallLimit_ms);
    }
  }

  // A call of its own, which lasts as long as the pictures take. It is followed once no other is.
  void PictureCall() {
    const auto say = [this](const std::string& command) {
      if (!sdr_.Do(command)) throw std::runtime_error("the stand-in refuses: " + command);
    };
    const auto shows = [this](ControlId id, const char* text) {
      Await(
          "the call to be pictured", [&] { return corvane_.Caption(id) == text; },
          kNextCallLimit_ms);
    };
    say("call id=1250 group=9001 party=5010 carrier=2610 slot=2 repeat=1");
    shows(ControlId::lblCallID, "1250");
    say("speak id=1250 party=5011");
    shows(ControlId::lblCurrentSSI, "5011");
    TakePictures("during");
    SwitchCompact(true);
    TakePicture(corvane_.Window(), "corvane-compact");
    Tell("picture taken of the compact window");
    SwitchCompact(false);
    PictureEditor();
    say("release id=1250");
    Await("its end", [this] { return corvane_.Caption(ControlId::lblCallID) != "1250"; });
  }

  // As a click on the group's number opens it.
  void PictureEditor() {
    MouseClick(corvane_.Control(ControlId::lblGroupNumber));
    const auto in = [this](ControlId id) { return Child(corvane_.EditorWindow(), Number(id)); };
    Await("the editor's lists", [&] {
      return corvane_.EditorWindow() != 0 && !ItemsOf(in(ControlId::List1)).empty() &&
             !Visible(in(ControlId::lstSsiBlank));
    });
    // Beside the main window's corner it would reach beyond the screen.
    MoveWindowTo(corvane_.EditorWindow(), kCorvaneLeft, 0);
    TakePicture(corvane_.EditorWindow(), "corvane-editor");
    Tell("picture taken of the editor");
    Close(corvane_.EditorWindow());
    Await("the editor closed", [this] { return corvane_.EditorWindow() == 0; });
  }

  void SwitchCompact(bool compact) {
    ChooseMenuItem(corvane_.Window(), Number(ControlId::mnuCompactMode));
    Await("the other size",
          [&] { return Visible(corvane_.Control(ControlId::fraWinsock)) != compact; });
  }

  // So that the page "Options" has something to show.
  void CaptureSdrPosition() {
    Click(corvane_.Control(ControlId::cmdSettingTab_2));
    Await("the page", [this] { return Visible(corvane_.Control(ControlId::fraOptions)); });
    DoubleClick(corvane_.Control(ControlId::lblPositionSdrSharpCC));
    Await("SDR#'s position",
          [this] { return !corvane_.Caption(ControlId::lblPositionSdrSharpCC).empty(); });
  }

  // Each settings page by itself.
  void TakePagePictures() {
    for (const PageOfSettings& page : kPages) {
      Click(corvane_.Control(page.tab));
      Await("the page", [&] { return Visible(corvane_.Control(page.frame)); });
      if (page.told_later) {
        Await("what the page tells", [&] { return !corvane_.Caption(*page.told_later).empty(); });
      }
      TakePicture(corvane_.Window(), page.picture, corvane_.Control(page.frame));
    }
    Click(corvane_.Control(kPages[0].tab));
    Tell("pictures taken of the settings pages");
  }

  void TakePictures(const std::string& when) {
    TakePicture(sdr_.Window(), "sdr-" + when);
    TakePicture(corvane_.Window(), "corvane-" + when);
    Tell("pictures taken " + when + " a call");
  }

  // Of the window, or of a part of it.
  void TakePicture(WindowHandle window, const std::string& name, WindowHandle part = 0) {
    BringToFront(window);
    Await("the window in front", [window] { return ForegroundWindow() == window; });
    // The screen follows a little later.
    (void)WaitFor([] { return false; }, kDrawn_ms);
    if (!SaveScreenshot(part != 0 ? part : window, arguments_.pictures / (name + ".png"))) {
      throw std::runtime_error("no picture " + name);
    }
  }

  void WaitForTheUser() {
    Tell("both windows stay open; close Corvane's to end");
    while (corvane_.Running()) {
      (void)WaitFor([this] { return !corvane_.Running(); }, kGenerousLimit_ms);
      Look();
    }
  }

  bool CloseAndTellRecordings() {
    if (corvane_.Running()) Close(corvane_.Window());
    const auto code = corvane_.TheProcess().WaitForExit(kGenerousLimit_ms);
    if (code != 0u) throw std::runtime_error("Corvane did not end well");
    Tell("Corvane is closed; lists and settings are saved");
    int recordings = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(arguments_.folder)) {
      if (entry.path().extension() != ".wav") continue;
      ++recordings;
      const auto bytes = entry.file_size();
      const auto seconds =
          bytes > kWavHeaderBytes ? (bytes - kWavHeaderBytes) / kRecordedBytesPerSecond : 0;
      Tell("recorded: " + entry.path().filename().string() + ", " + Decimal(seconds) + " s");
    }
    return recordings > 0;
  }

  static std::string Last(const std::vector<std::string>& lines) {
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
      if (!line->empty()) return *line;
    }
    return {};
  }

  Arguments arguments_;
  CorvaneProgram corvane_;
  StandinProgram sdr_;
  DemoAccount account_;
};

}  // namespace
}  // namespace corvane::desktop

int main(int argc, char** argv) {
  try {
    corvane::desktop::Demo demo(
        corvane::desktop::Read(std::vector<std::string>(argv + 1, argv + argc)));
    if (demo.Run()) return 0;
    std::puts("no recording was left");
  } catch (const std::exception& error) {
    std::printf("the demonstration failed: %s\n", error.what());
  }
  return 1;
}
