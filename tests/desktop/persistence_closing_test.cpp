// What the closing of the real program saves, what it says when a file cannot be replaced, and how
// often the program can be started.
#include "desktop/harness/held_file.h"
#include "desktop/persistence_fixture.h"

namespace corvane::desktop {
namespace {

using enum ControlId;

class ClosingTest : public PersistenceTest {
 protected:
  // A start that has something to save in every file: the group list in order, an option ticked.
  void StartWithChanges() {
    Folder().Write("corvane_simple.dat", SettingsFile({}));
    Folder().Write("TETRA_GSSI.txt", kUnsorted);
    Folder().Write("TETRA_SSI.txt", "5010;70;262;1;Car;2026-11-15 14:23:05\r\n");
    Start();
    ShowPage(cmdSettingTab_2);
    Click(Control(chkIgnorePriority));
    Await("the tick", [this] { return Checked(Control(chkIgnorePriority)); });
  }
  void ExpectAllSaved() {
    EXPECT_EQ(Folder().Read("TETRA_GSSI.txt"), kSorted);
    EXPECT_EQ(ReadAsAStartDoes(Folder().Path()).subscribers.size(), 1U);
    EXPECT_EQ(Stored().IgnorePriority, 1);
  }
  [[nodiscard]] SettingsRecord Stored() {
    return DecodeSettings(Folder().Read("corvane_simple.dat"), {});
  }
  [[nodiscard]] std::filesystem::path File(const char* name) { return Folder().Path() / name; }
  void ExpectNothingUnfinished() {
    for (const auto& [name, content] : ContentOf(Folder())) {
      EXPECT_FALSE(name.ends_with(".new")) << name;
    }
  }
};

TEST_F(ClosingTest, ClosingTheWindowSavesEverything) {
  StartWithChanges();
  CloseAndWait();
  ExpectAllSaved();
}

TEST_F(ClosingTest, EndOfTheSessionSavesEverythingBeforeItIsAnswered) {
  StartWithChanges();
  EXPECT_TRUE(EndSession(Program().Window()));
  ExpectAllSaved();  // the system ends the program as soon as it has the answer
  AwaitEnd(Program());
}

TEST_F(ClosingTest, ListsThatCannotBeReplacedAreReportedOneByOneAndTheClosingGoesOn) {
  StartWithChanges();
  const std::string groups = Folder().Read("TETRA_GSSI.txt");
  const std::string subscribers = Folder().Read("TETRA_SSI.txt");
  {
    const HeldFile held_groups(File("TETRA_GSSI.txt"), HeldFile::Sharing::kReadOnly);
    const HeldFile held_subscribers(File("TETRA_SSI.txt"), HeldFile::Sharing::kReadOnly);
    Close(Program().Window());
    ExpectBox(SavingErrorBox("Error saving SSI list."));
    ExpectBox(SavingErrorBox("Error saving GSSI list."));
    AwaitEnd(Program());
  }
  EXPECT_EQ(Folder().Read("TETRA_GSSI.txt"), groups);
  EXPECT_EQ(Folder().Read("TETRA_SSI.txt"), subscribers);
  EXPECT_EQ(Stored().IgnorePriority, 1);
  ExpectNothingUnfinished();
}

TEST_F(ClosingTest, OneListThatCannotBeReplacedKeepsNoOtherFromBeingSaved) {
  StartWithChanges();
  {
    const HeldFile held(File("TETRA_SSI.txt"), HeldFile::Sharing::kNone);
    Close(Program().Window());
    ExpectBox(SavingErrorBox("Error saving SSI list."));
    AwaitEnd(Program());
  }
  ExpectAllSaved();
}

TEST_F(ClosingTest, ReadOnlyListIsReportedAndLeftAlone) {
  StartWithChanges();
  SetReadOnly(File("TETRA_GSSI.txt"), true);
  Close(Program().Window());
  ExpectBox(SavingErrorBox("Error saving GSSI list."));
  AwaitEnd(Program());
  SetReadOnly(File("TETRA_GSSI.txt"), false);
  EXPECT_EQ(Folder().Read("TETRA_GSSI.txt"), kUnsorted);
  ExpectNothingUnfinished();
}

// In the way of the new content stands something that cannot be written.
TEST_F(ClosingTest, FolderInTheWayOfTheNewFileIsReportedAndTheOldFileStays) {
  StartWithChanges();
  std::filesystem::create_directory(File("TETRA_GSSI.txt.new"));
  Close(Program().Window());
  ExpectBox(SavingErrorBox("Error saving GSSI list."));
  AwaitEnd(Program());
  EXPECT_EQ(Folder().Read("TETRA_GSSI.txt"), kUnsorted);
  EXPECT_EQ(Stored().IgnorePriority, 1);
}

TEST_F(ClosingTest, SettingsThatCannotBeReplacedAreNoReasonToAsk) {
  StartWithChanges();
  const std::string before = Folder().Read("corvane_simple.dat");
  {
    const HeldFile held(File("corvane_simple.dat"), HeldFile::Sharing::kReadOnly);
    CloseAndWait();
  }
  EXPECT_EQ(Folder().Read("corvane_simple.dat"), before);
  EXPECT_EQ(Folder().Read("TETRA_GSSI.txt"), kSorted);
  ExpectNothingUnfinished();
}

TEST_F(ClosingTest, SettingsThatCannotBeSavedWhileRunningAreALineInTheStatusLog) {
  StartWithChanges();
  const HeldFile held(File("corvane_simple.dat"), HeldFile::Sharing::kReadOnly);
  ShowPage(cmdSettingTab_0);
  TypeInto(txtTimeout, "9");
  LeaveTheBox();
  Await("the line", [this] { return Program().InStatusLog("Error saving settings [70] - "); });
  AwaitHandled();
  EXPECT_EQ(Program().Box(), 0U);
}

TEST_F(ClosingTest, RecordOnlyListThatCannotBeSavedIsALineInTheStatusLogAndKeepsItsChange) {
  Settings settings;
  settings.record_mode_index = 2;
  Folder().Write("corvane_simple.dat", SettingsFile(settings));
  Folder().Write("TETRA_rec_gssi.txt", "7\r\n");
  Start();
  {
    const HeldFile held(File("TETRA_rec_gssi.txt"), HeldFile::Sharing::kReadOnly);
    ShowPage(cmdSettingTab_1);
    TypeAndEnter(Control(txtRecOnlyGSSI), "8");
    Await("the line", [this] { return Program().InStatusLog("Error saving REC GSSI list. - "); });
    AwaitHandled();
    EXPECT_EQ(ItemsOf(Control(lstRecOnlyGSSI)), (std::vector<std::string>{"7", "8"}));
    EXPECT_EQ(TextOf(Control(txtRecOnlyGSSI)), "");
    EXPECT_EQ(Folder().Read("TETRA_rec_gssi.txt"), "7\r\n");
  }
  TypeAndEnter(Control(txtRecOnlyGSSI), "9");
  AwaitHandled();
  EXPECT_EQ(Folder().Read("TETRA_rec_gssi.txt"), "7\r\n8\r\n9\r\n");
}

TEST_F(ClosingTest, NothingHappensAnyMoreWhileABoxOfTheClosingIsOpen) {
  StartWithChanges();
  const HeldFile held(File("TETRA_SSI.txt"), HeldFile::Sharing::kReadOnly);
  const WindowHandle window = Program().Window();
  const WindowHandle option = Control(chkIgnorePriority);
  Close(window);
  (void)AwaitBox();
  const WindowHandle box = Program().Box();
  for (int again = 0; again < 3; ++again) Close(window);
  Click(option);
  Click(Control(cmdStartAll));
  EXPECT_TRUE(EndSession(window));
  SelectByPost(Control(lstStatusLog), 0);
  Await("the messages to be taken", [&] { return SelectedIn(Control(lstStatusLog)) == 0; });
  EXPECT_EQ(Program().Box(), box) << "another box";
  EXPECT_EQ(Folder().Read("TETRA_GSSI.txt"), kUnsorted) << "saved by the second closing";
  ExpectBox(SavingErrorBox("Error saving SSI list."));
  AwaitEnd(Program());
  EXPECT_EQ(Folder().Read("TETRA_GSSI.txt"), kSorted);
  EXPECT_EQ(Stored().IgnorePriority, 1) << "a click during the closing counted";
}

class SecondStartTest : public PersistenceTest {
 protected:
  // Starts the program once more from the same folder; it ends by itself.
  void StartAgainAndAwaitItsEnd() {
    const auto second = Process::Start(Folder().Path() / "Corvane.exe", {}, Folder().Path());
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(second->WaitForExit(kGenerousLimit_ms), std::optional<unsigned>(0));
  }
};

TEST_F(SecondStartTest, FromAnotherFolderRunsBesideTheFirst) {
  ProgramCopy other;
  Start();
  Start(other);
  EXPECT_TRUE(Program().Running());
  EXPECT_NE(Program().Window(), other.Window());
  CloseAndWait(other);
  EXPECT_TRUE(Program().Running());
  CloseAndWait();
}

TEST_F(SecondStartTest, FromTheSameFolderBringsTheFirstWindowToTheFront) {
  ProgramCopy other;
  Start();
  Start(other);
  BringToFront(other.Window());
  Await("the other window in front", [&] { return ForegroundWindow() == other.Window(); });
  // The first has to hear from the display that it lost the front: without a window manager Wine
  // would give the front up again on that word, whoever has it then.
  AwaitHandled();
  AwaitHandled();
  const FolderContent before = ContentOf(Folder());
  StartAgainAndAwaitItsEnd();
  Await("the first window in front", [&] { return ForegroundWindow() == Program().Window(); });
  EXPECT_TRUE(ContentOf(Folder()) == before) << "the second start wrote something";
  EXPECT_TRUE(Program().Running());
}

TEST_F(SecondStartTest, FromTheSameFolderRestoresAMinimisedWindow) {
  Start();
  const WindowPlace before = PlaceOf(Program().Window());
  Minimise(Program().Window());
  Await("the minimised window", [&] { return PlaceOf(Program().Window()) != before; });
  StartAgainAndAwaitItsEnd();
  Await("the restored window", [&] { return PlaceOf(Program().Window()) == before; });
}

TEST_F(SecondStartTest, IsAFirstOneAfterTheFirstWasKilled) {
  Start();
  Program().Kill();
  Start();
  CloseAndWait();
  Start();
  CloseAndWait();
}

}  // namespace
}  // namespace corvane::desktop
