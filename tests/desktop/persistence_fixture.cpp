// Starting, ending, boxes, and reading what was stored.
#include "desktop/persistence_fixture.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <stdexcept>

#include "app/start_load.h"
#include "base/files_win.h"
#include "base/wall_clock_win.h"
#include "desktop/failure_picture.h"
#include "panel/form1.h"
#include "panel/presets.h"
#include "sim/no_sink.h"
#include "sim/sim_loop.h"
#include "sim/sim_prompts.h"
#include "store/labels.h"
#include "store/rec_only_list.h"
#include "store/saved_lists.h"
#include "store/settings.h"
#include "ui/main_layout.h"

namespace corvane::desktop {

namespace {

constexpr unsigned kEndedByItself = 0;

// In the order of their tabs.
constexpr std::array kPages = {ControlId::fraPresets, ControlId::fraRecordingOptions,
                               ControlId::fraOptions, ControlId::fraLoggingOptions,
                               ControlId::fraCheckboxDetection};

}  // namespace

std::string CheckoutFile(const std::string& path) {
  const std::filesystem::path file = std::filesystem::path("tests") / path;
  if (!std::filesystem::exists(file)) {
    throw std::runtime_error(file.string() +
                             " is not there; the checkout has to be the "
                             "current folder");
  }
  return ReadWholeFile(file);
}

void ProgramCopy::Launch() {
  process_.reset();
  process_ = Process::Start(folder_.Path() / "Corvane.exe", {}, folder_.Path());
  if (process_ == nullptr) throw std::runtime_error("Corvane could not be started");
}

WindowHandle ProgramCopy::Window() const {
  if (process_ == nullptr) return 0;
  for (const WindowHandle window : TopLevelWindows(process_->Id())) {
    if (ClassOf(window) == kMainWindowClass && Visible(window)) return window;
  }
  return 0;
}

WindowHandle ProgramCopy::Box() const {
  return process_ == nullptr ? 0 : FindMessageBox(process_->Id());
}

std::vector<std::string> ProgramCopy::StatusLog() const {
  return ItemsOf(Control(ControlId::lstStatusLog));
}

bool ProgramCopy::InStatusLog(std::string_view part) const {
  const std::vector<std::string> lines = StatusLog();
  return std::any_of(lines.begin(), lines.end(), [part](const std::string& line) {
    return line.find(part) != std::string::npos;
  });
}

FolderContent ContentOf(const ProgramFolder& folder) {
  FolderContent content;
  for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
    const std::string name = entry.path().filename().string();
    if (!entry.is_regular_file() || name == "Corvane.exe") continue;
    content.emplace_back(name, ReadWholeFile(entry.path()));
  }
  std::sort(content.begin(), content.end());
  return content;
}

ReadFiles ReadAsAStartDoes(const std::filesystem::path& folder) {
  ReadFiles read;
  const std::string path = folder.string();
  FilesWin files;
  WallClockWin clock;
  sim::SimLoop loop;
  sim::SimPrompts prompts(loop);
  sim::NoSink sink;
  Form1 form(sink);
  Presets presets;
  ProgramFlags flags;
  GssiTable groups;
  SsiTable subscribers;
  NetworkNames names;
  StartErrors errors(files, prompts, path);
  corvane::SettingsFile settings(files, prompts, clock, flags, form, presets, errors, path);
  RecOnlyList rec_only(files, clock, form, path);
  LabelFiles labels(files, prompts, form, names, path);
  GroupList group_list(files, form, groups, path);
  SubscriberList subscriber_list(files, clock, form, subscribers, path);
  if (settings.ReadSettings() != Load::kEnded) {
    (void)LoadAllLists(rec_only, labels, group_list, subscriber_list, errors);
  }
  for (const auto& box : prompts.boxes()) read.boxes.push_back(box.text);
  if (!read.boxes.empty()) return read;
  read.settings = DecodeSettings(ReadWholeFile(folder / "corvane_simple.dat"), {});
  read.groups.assign(groups.begin(), groups.end());
  read.subscribers.assign(subscribers.begin(), subscribers.end());
  read.rec_only = form.lstRecOnlyGSSI.items();
  return read;
}

ShownBox FileAccessBox(int number) {
  return {"Error",
          "Possible file access error.\r\nMake sure any required files are not opened.\r\n"
          "Error: [" +
              std::to_string(number) + "]\r\nAborting.",
          ShownIcon::kError, 1};
}

ShownBox VersionChangeBox() {
  return {"Error",
          "Settings file version change.\r\nPlease restart to re-create\r\n"
          "You will need to reconfigure options\r\nAborting.",
          ShownIcon::kError, 1};
}

ShownBox CorruptBox() {
  return {"Corvane", "Settings file appears corrupt, has been deleted. Please restart.",
          ShownIcon::kNone, 1};
}

ShownBox RenamedBox() {
  return {"Notice",
          "This version changes file name for network label file.\r\n"
          "'TETRA_network.txt' renamed to 'TETRA_mnc.txt'",
          ShownIcon::kError, 1};
}

ShownBox SavingErrorBox(const std::string& text) {
  return {"Error", text, ShownIcon::kError, 1};
}

void PrintTo(const ShownBox& box, std::ostream* stream) {
  *stream << "\"" << box.title << "\": \"" << box.text << "\", icon " << static_cast<int>(box.icon)
          << ", " << box.buttons << " button(s)";
}

void PersistenceTest::TearDown() {
  if (HasFailure()) SaveFailurePicture();
}

void PersistenceTest::Await(std::string_view what, const std::function<bool()>& state) const {
  if (WaitFor(state)) return;
  throw std::runtime_error("waited in vain for " + std::string(what));
}

void PersistenceTest::Start(ProgramCopy& program) const {
  program.Launch();
  Await("the window",
        [&] { return program.Window() != 0 || program.Box() != 0 || !program.Running(); });
  if (program.Box() != 0) {
    throw std::runtime_error("a box at the start: " + DescribeMessageBox(program.Box()));
  }
  if (!program.Running()) throw std::runtime_error("Corvane ended at its start");
}

void PersistenceTest::AwaitEnd(ProgramCopy& program) const {
  const auto code = program.TheProcess().WaitForExit(kGenerousLimit_ms);
  if (!code) throw std::runtime_error("Corvane did not end");
  EXPECT_EQ(*code, kEndedByItself);
}

void PersistenceTest::CloseAndWait(ProgramCopy& program) const {
  Close(program.Window());
  AwaitEnd(program);
}

void PersistenceTest::StartAndClose() {
  Start();
  CloseAndWait();
}

ShownBox PersistenceTest::AwaitBox() {
  ShownBox seen;
  const bool shown = WaitFor([&] {
    const auto now = LookAtBox(program_.Box());
    if (!now || now->text.empty() || now->icon == ShownIcon::kUnknown) return false;
    seen = *now;
    return true;
  });
  if (shown) return seen;
  throw std::runtime_error(std::string("waited in vain for a message box: Corvane ") +
                           (program_.Running() ? "runs" : "has ended") +
                           (program_.Window() != 0 ? ", its window is there" : "") +
                           (program_.Box() != 0 ? ", a box is not whole" : ""));
}

void PersistenceTest::ExpectBox(const ShownBox& expected) {
  EXPECT_EQ(AwaitBox(), expected);
  const WindowHandle box = program_.Box();
  AnswerBox(box);
  Await("the answered box to go", [&] { return !Alive(box) || !program_.Running(); });
}

void PersistenceTest::ExpectStartEnds(const std::vector<ShownBox>& boxes) {
  program_.Launch();
  for (const ShownBox& box : boxes) {
    ExpectBox(box);
    EXPECT_EQ(program_.Window(), 0U);
  }
  bool another = false;
  Await("the end of the program", [&] {
    another = another || program_.Box() != 0 || program_.Window() != 0;
    return another || !program_.Running();
  });
  EXPECT_FALSE(another) << "one more box, or the window: " << DescribeMessageBox(program_.Box());
  if (!another) AwaitEnd(program_);
}

void PersistenceTest::ShowPage(ControlId tab) {
  Click(Control(tab));
  const ControlId page =
      kPages.at(static_cast<std::size_t>(Number(tab) - Number(ControlId::cmdSettingTab_0)));
  Await("the page", [&] { return Visible(Control(page)); });
}

void PersistenceTest::AwaitHandled() {
  std::size_t shown = 0;
  while (shown + 1 < kPages.size() && !Visible(Control(kPages[shown]))) ++shown;
  for (const std::size_t page : {(shown + 1) % kPages.size(), shown}) {
    ShowPage(static_cast<ControlId>(Number(ControlId::cmdSettingTab_0) + static_cast<int>(page)));
  }
}

void PersistenceTest::TypeInto(ControlId box, std::string_view text) {
  const WindowHandle edit = Control(box);
  Type(edit, text);
  Await("the typed text", [&] { return TextOf(edit) == text; });
}

void PersistenceTest::LeaveTheBox() {
  MouseClick(Control(ControlId::lstCallLog));
}

}  // namespace corvane::desktop
