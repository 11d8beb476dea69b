// What the cases about files share: a folder with Corvane.exe in it, the program started again and
// again there, its message boxes, and the files read by the project's own readers afterwards.
// Golden files are looked for below the current folder, which has to be the checkout.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/harness/foreign_windows.h"
#include "desktop/harness/message_box.h"
#include "desktop/harness/process.h"
#include "desktop/harness/program_folder.h"
#include "desktop/harness/wait.h"
#include "store/settings.h"
#include "store/tables.h"
#include "ui/control_ids.h"

namespace corvane::desktop {

// How a failed comparison shows a box.
void PrintTo(const ShownBox& box, std::ostream* stream);

// A file under tests/; fails the case when it is not there.
[[nodiscard]] std::string CheckoutFile(const std::string& path);

// A list of groups as a user left it and as the program saves it.
inline const std::string kUnsorted = "70;262;1;B;0;True\r\n5;262;1;A;0;False\r\n";
inline const std::string kSorted = "5;262;1;A;0;False\r\n70;262;1;B;0;True\r\n";

// One folder with the program in it.
class ProgramCopy {
 public:
  [[nodiscard]] ProgramFolder& Folder() { return folder_; }
  [[nodiscard]] const ProgramFolder& Folder() const { return folder_; }
  [[nodiscard]] Process& TheProcess() { return *process_; }
  [[nodiscard]] bool Running() const { return process_ != nullptr && process_->Running(); }

  // Starts the program and waits for nothing.
  void Launch();
  void Kill() { process_.reset(); }
  // The main window once it is shown; 0 before.
  [[nodiscard]] WindowHandle Window() const;
  [[nodiscard]] WindowHandle Box() const;
  [[nodiscard]] WindowHandle Control(ControlId id) const { return Child(Window(), Number(id)); }
  [[nodiscard]] std::vector<std::string> StatusLog() const;
  [[nodiscard]] bool InStatusLog(std::string_view part) const;

 private:
  ProgramFolder folder_;
  std::unique_ptr<Process> process_;
};

// Whole contents of the files in a folder, by name. Corvane.exe and subfolders left out.
using FolderContent = std::vector<std::pair<std::string, std::string>>;
[[nodiscard]] FolderContent ContentOf(const ProgramFolder& folder);

// What the project's own readers make of the files in a folder: the settings file and the lists,
// read as a start does it, in the process of the test.
struct ReadFiles {
  std::vector<std::string> boxes;  // a start would show them; empty: everything loads
  SettingsRecord settings;
  std::vector<GssiRecord> groups;
  std::vector<SsiRecord> subscribers;
  std::vector<std::string> rec_only;
};
[[nodiscard]] ReadFiles ReadAsAStartDoes(const std::filesystem::path& folder);

// The text of the box that ends a start over error `number`.
[[nodiscard]] ShownBox FileAccessBox(int number);
[[nodiscard]] ShownBox VersionChangeBox();
[[nodiscard]] ShownBox CorruptBox();
[[nodiscard]] ShownBox RenamedBox();
// "Error saving SSI list." and its like.
[[nodiscard]] ShownBox SavingErrorBox(const std::string& text);

class PersistenceTest : public ::testing::Test {
 protected:
  // On failure: a picture of the screen.
  void TearDown() override;

  [[nodiscard]] ProgramCopy& Program() { return program_; }
  [[nodiscard]] ProgramFolder& Folder() { return program_.Folder(); }
  [[nodiscard]] WindowHandle Control(ControlId id) const { return program_.Control(id); }

  void Await(std::string_view what, const std::function<bool()>& state) const;
  // Starts the program and waits for its window; a message box fails the case.
  void Start() { Start(program_); }
  void Start(ProgramCopy& program) const;
  // Closes the window and waits for the end of the program, which comes by itself with code 0.
  void CloseAndWait() { CloseAndWait(program_); }
  void CloseAndWait(ProgramCopy& program) const;
  void StartAndClose();
  void AwaitEnd(ProgramCopy& program) const;
  // Waits for the next box, compares it, answers it and waits until it is gone.
  void ExpectBox(const ShownBox& expected);
  // The next box as it is, once it is painted.
  [[nodiscard]] ShownBox AwaitBox();
  // A start that shows these boxes one after the other, ends by itself after the last one, and
  // shows neither its window nor any other box.
  void ExpectStartEnds(const std::vector<ShownBox>& boxes);

  // As a user: shows the page, then clicks, types or chooses. Each waits until it has been seen.
  void ShowPage(ControlId tab);
  void TypeInto(ControlId box, std::string_view text);  // without leaving the box
  void LeaveTheBox();                                   // the focus goes to the call log
  // All that was clicked, typed and chosen before was handled: clicks that came behind it were. The
  // keyboard leaves the box it was in. A file that is replaced is looked at after this, never while
  // it may be: as long as anybody has the old one open it is not replaced.
  void AwaitHandled();

 private:
  ProgramCopy program_;
};

}  // namespace corvane::desktop
