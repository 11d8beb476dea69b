// Every option set through the real window is there again after a restart, and reaches the file
// when it has to.
#include <algorithm>
#include <map>

#include "desktop/persistence_fixture.h"
#include "ui/layout.h"

namespace corvane::desktop {
namespace {

using enum ControlId;

constexpr int kTwipsPerPixel = 15;

class SettingsTest : public PersistenceTest {
 protected:
  void Restart() {
    CloseAndWait();
    Start();
  }
  [[nodiscard]] SettingsRecord Stored() {
    return DecodeSettings(Folder().Read("corvane_simple.dat"), {});
  }
  // Clicks a check box or option button until it is seen to have the state.
  void Tick(ControlId button, bool ticked) {
    if (Checked(Control(button)) == ticked) return;
    Click(Control(button));
    Await("the click to be seen", [&] { return Checked(Control(button)) == ticked; });
  }
};

const std::map<ControlId, ControlId> kPageOfCheckBox = {
    {chkSuppressSomePduMessages, cmdSettingTab_2},
    {chkSuppressLockoutMessages, cmdSettingTab_2},
    {chkIgnorePriority, cmdSettingTab_2},
    {chkPositionSDRsharps, cmdSettingTab_2},
    {chkCreateCcVcLog, cmdSettingTab_3},
    {chkCreateEventLog, cmdSettingTab_3},
    {chkCreateCallActivityCvsFile, cmdSettingTab_3},
    {chkDeleteForcedCallEndFile, cmdSettingTab_1}};

TEST_F(SettingsTest, EachCheckBoxSurvivesARestartByItselfButTheDeleteOption) {
  Start();
  for (const auto& [box, page] : kPageOfCheckBox) {
    SCOPED_TRACE(Number(box));
    ShowPage(page);
    Tick(box, true);
    Restart();
    for (const auto& [other, its_page] : kPageOfCheckBox) {
      const bool kept = other == box && box != chkDeleteForcedCallEndFile;
      EXPECT_EQ(Checked(Control(other)), kept) << Number(other);
    }
    Tick(box, false);
  }
}

TEST_F(SettingsTest, DeleteOptionIsStoredThoughItAlwaysStartsOff) {
  Start();
  ShowPage(cmdSettingTab_1);
  Tick(chkDeleteForcedCallEndFile, true);
  CloseAndWait();
  EXPECT_EQ(Stored().DeleteForcedCallEndFile, 1);
  StartAndClose();
  EXPECT_EQ(Stored().DeleteForcedCallEndFile, 0);
}

TEST_F(SettingsTest, EachOffsetAndEachRecordModeSurvivesARestart) {
  const std::vector<ControlId> offsets = {optOffsets_0, optOffsets_1, optOffsets_2, optOffsets_3};
  const std::vector<ControlId> modes = {optRecordMode_0, optRecordMode_1, optRecordMode_2};
  Start();
  for (std::size_t round = 0; round < offsets.size(); ++round) {
    const ControlId mode = modes[round % modes.size()];
    ShowPage(cmdSettingTab_0);
    Tick(offsets[round], true);
    ShowPage(cmdSettingTab_1);
    Tick(mode, true);
    Restart();
    for (const ControlId other : offsets) {
      EXPECT_EQ(Checked(Control(other)), other == offsets[round]);
    }
    for (const ControlId other : modes) EXPECT_EQ(Checked(Control(other)), other == mode);
    for (const ControlId list : {txtRecOnlyGSSI, lstRecOnlyGSSI}) {
      EXPECT_EQ(Enabled(Control(list)), mode == optRecordMode_2);
    }
    EXPECT_EQ(Stored().OffsetIndex, static_cast<int>(round));
  }
}

TEST_F(SettingsTest, BoxesAndComboSurviveARestart) {
  Start();
  ShowPage(cmdSettingTab_0);
  TypeInto(txtTimeout, "12");
  TypeInto(txtVcVolume, "33");
  TypeInto(txtParkCarrier, "3999");
  ChooseInCombo(Control(cboBaseFrequency), 3);
  LeaveTheBox();
  Restart();
  EXPECT_EQ(TextOf(Control(txtTimeout)), "12");
  EXPECT_EQ(TextOf(Control(txtVcVolume)), "33");
  EXPECT_EQ(TextOf(Control(txtParkCarrier)), "3999");
  EXPECT_EQ(TextOf(Control(cboBaseFrequency)), "400 MHz");
  EXPECT_EQ(Stored().BaseFrequencyIndex, 3);
}

TEST_F(SettingsTest, CompactModeSurvivesARestart) {
  Start();
  const WindowPlace normal = PlaceOf(Program().Window());
  ChooseMenuItem(Program().Window(), Number(mnuCompactMode));
  Await("the compact window", [&] { return PlaceOf(Program().Window()) != normal; });
  const WindowPlace compact = PlaceOf(Program().Window());
  EXPECT_LT(compact.width, normal.width);
  EXPECT_LT(compact.height, normal.height);
  Restart();
  EXPECT_EQ(PlaceOf(Program().Window()), compact);
  EXPECT_FALSE(Visible(Control(fraWinsock)));
  ChooseMenuItem(Program().Window(), Number(mnuCompactMode));
  Await("the normal window", [&] { return PlaceOf(Program().Window()) == normal; });
  Restart();
  EXPECT_EQ(PlaceOf(Program().Window()).height, normal.height);
}

TEST_F(SettingsTest, WindowStandsWhereItWasClosed) {
  Start();
  MoveWindowTo(Program().Window(), 211, 137);
  Await("the move", [&] { return PlaceOf(Program().Window()).left == 211; });
  Restart();
  EXPECT_EQ(PlaceOf(Program().Window()).left, 211);
  EXPECT_EQ(PlaceOf(Program().Window()).top, 137);
  CloseAndWait();
  EXPECT_EQ(Stored().MainWindowLeft, 211 * kTwipsPerPixel);
  EXPECT_EQ(Stored().MainWindowTop, 137 * kTwipsPerPixel);
}

TEST_F(SettingsTest, WindowClosedWhileMinimisedStandsWhereItWasBefore) {
  Start();
  MoveWindowTo(Program().Window(), 150, 90);
  Await("the move", [&] { return PlaceOf(Program().Window()).left == 150; });
  const WindowPlace before = PlaceOf(Program().Window());
  Minimise(Program().Window());
  Await("the minimised window", [&] { return PlaceOf(Program().Window()) != before; });
  Restart();
  EXPECT_EQ(PlaceOf(Program().Window()), before);
}

TEST_F(SettingsTest, WindowStoredOffTheScreenIsMovedIntoView) {
  const WindowPlace screen = ScreenPlace();
  for (const auto& [left, top] :
       std::vector<std::pair<int, int>>{{100'000, 100},
                                        {-100'000, 100},
                                        {100, 100'000},
                                        {100, -100'000},
                                        {2'000'000'000, -2'000'000'000}}) {
    Settings settings;
    settings.main_window_left = left;
    settings.main_window_top = top;
    Folder().Write("corvane_simple.dat", SettingsFile(settings));
    Start();
    const WindowPlace place = PlaceOf(Program().Window());
    EXPECT_GE(place.top, screen.top) << left << ", " << top;
    EXPECT_LT(place.top, screen.top + screen.height) << left << ", " << top;
    EXPECT_LT(place.left, screen.left + screen.width) << left << ", " << top;
    EXPECT_GT(place.left + place.width, screen.left) << left << ", " << top;
    CloseAndWait();
    EXPECT_EQ(Stored().MainWindowLeft, place.left * kTwipsPerPixel);
    EXPECT_EQ(Stored().MainWindowTop, place.top * kTwipsPerPixel);
  }
}

TEST_F(SettingsTest, StoredSdrPositionAndColoursAreShownAndKept) {
  Settings settings;
  settings.sdr_position = "10,20,1034,788";
  settings.checked_colour = 1;
  settings.unchecked_colour = 16'777'215;
  Folder().Write("corvane_simple.dat", SettingsFile(settings));
  Start();
  EXPECT_EQ(TextOf(Control(lblPositionSdrSharpCC)), settings.sdr_position);
  EXPECT_EQ(TextOf(Control(lblCheckedValue)), "1");
  EXPECT_EQ(TextOf(Control(lblUnCheckedValue)), "16777215");
  CloseAndWait();
  EXPECT_EQ(Stored().PositionSdrSharpCC, settings.sdr_position);
  EXPECT_EQ(Stored().CheckedColour, 1);
}

TEST_F(SettingsTest, RestoredLogModeIsAnnouncedInTheCallLog) {
  Settings settings;
  settings.log_mode = true;
  Folder().Write("corvane_simple.dat", SettingsFile(settings));
  Start();
  const std::vector<std::string> log = ItemsOf(Control(lstCallLog));
  ASSERT_EQ(log.size(), 2U);
  EXPECT_EQ(log[0], "");
  EXPECT_TRUE(log[1].ends_with(" - LOG mode active - No calls will be heard")) << log[1];
}

TEST_F(SettingsTest, LeavingTimeoutOrVolumeSavesAtOnceAndLeavingTheParkCarrierDoesNot) {
  Folder().Write("corvane_simple.dat", SettingsFile({}));
  Start();
  ShowPage(cmdSettingTab_0);
  TypeInto(txtParkCarrier, "1234");
  LeaveTheBox();
  AwaitHandled();
  EXPECT_EQ(Stored().ParkCarrier, 2604);
  TypeInto(txtTimeout, "9");
  EXPECT_EQ(Stored().Timeout, 5) << "saved before the box was left";
  LeaveTheBox();
  AwaitHandled();
  EXPECT_EQ(Stored().Timeout, 9);
  EXPECT_EQ(Stored().ParkCarrier, 1234) << "a save holds every option";
  TypeInto(txtVcVolume, "60");
  LeaveTheBox();
  AwaitHandled();
  EXPECT_EQ(Stored().VcVolume, 60);
  Program().Kill();
  Start();
  EXPECT_EQ(TextOf(Control(txtTimeout)), "9");
  EXPECT_EQ(TextOf(Control(txtVcVolume)), "60");
}

TEST_F(SettingsTest, RefusedEntryIsNeitherSavedNorKept) {
  Folder().Write("corvane_simple.dat", SettingsFile({}));
  Start();
  ShowPage(cmdSettingTab_0);
  const auto before = Folder().Read("corvane_simple.dat");
  for (const char* entry : {"0", "31", "99999"}) {
    TypeInto(txtTimeout, entry);
    LeaveTheBox();
    AwaitHandled();
    EXPECT_EQ(TextOf(Control(txtTimeout)), "5");
  }
  EXPECT_EQ(Folder().Read("corvane_simple.dat"), before);
}

TEST_F(SettingsTest, BoxThatIsStillBeingEditedAtTheClosingDoesNotReachTheFile) {
  Folder().Write("corvane_simple.dat", SettingsFile({}));
  for (const char* entry : {"99999", "12", ""}) {
    Start();
    ShowPage(cmdSettingTab_0);
    TypeInto(txtTimeout, entry);
    CloseAndWait();
    EXPECT_EQ(Stored().Timeout, 5) << entry;
  }
}

TEST_F(SettingsTest, RecordOnlyListIsSavedAtEachChange) {
  Settings settings;
  settings.record_mode_index = 2;
  Folder().Write("corvane_simple.dat", SettingsFile(settings));
  Start();
  ShowPage(cmdSettingTab_1);
  const auto enter = [&](std::string_view text) {
    TypeAndEnter(Control(txtRecOnlyGSSI), text);
    AwaitHandled();
    EXPECT_GE(SelectedIn(Control(lstRecOnlyGSSI)), 0);
    EXPECT_EQ(TextOf(Control(txtRecOnlyGSSI)), "");
  };
  enter("9001");
  EXPECT_EQ(Folder().Read("TETRA_rec_gssi.txt"), "9001\r\n");
  enter("16777215");
  EXPECT_EQ(Folder().Read("TETRA_rec_gssi.txt"), "9001\r\n16777215\r\n");
  enter("9001");      // there already
  enter("16777216");  // too high
  EXPECT_EQ(ItemsOf(Control(lstRecOnlyGSSI)), (std::vector<std::string>{"9001", "16777215"}));
  DoubleClickItem(Control(lstRecOnlyGSSI), 0);
  AwaitHandled();
  EXPECT_EQ(Folder().Read("TETRA_rec_gssi.txt"), "16777215\r\n");
  Program().Kill();
  Start();
  EXPECT_EQ(ItemsOf(Control(lstRecOnlyGSSI)), (std::vector<std::string>{"16777215"}));
  ShowPage(cmdSettingTab_1);
  DoubleClickItem(Control(lstRecOnlyGSSI), 0);
  AwaitHandled();
  EXPECT_TRUE(Folder().Has("TETRA_rec_gssi.txt"));
  EXPECT_EQ(Folder().Read("TETRA_rec_gssi.txt"), "");
}

}  // namespace
}  // namespace corvane::desktop
