#include "link/discovery.h"

#include "link_fixture.h"
#include "panel/logs.h"

namespace corvane::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

constexpr auto kQuiet = Discovery::Log::kQuietRepeats;

class DiscoveryTest : public LinkTest {
 protected:
  // No window of SDR# is there.
  void RemoveSdr() { desktop.Do("die"); }
  // A window with only what a case puts into it, in its order.
  standin::WindowId AddBareSdr(const std::string& title = "SDR# v1") {
    return Add(0, kWindow, title);
  }
};

TEST_F(DiscoveryTest, FindsEveryWindowByItsRole) {
  Discover();
  const auto& windows_of_sdr = ids();
  const std::pair<SdrRole, standin::WindowId> expected[] = {
      {SdrRole::kMainWindow, windows_of_sdr.main},
      {SdrRole::kNetRemoteHeader, windows_of_sdr.net_remote_header},
      {SdrRole::kNetworkButton, windows_of_sdr.network},
      {SdrRole::kPortBox, windows_of_sdr.port},
      {SdrRole::kTetraHeader, windows_of_sdr.tetra_header},
      {SdrRole::kDemodulatorBox, windows_of_sdr.demodulator},
      {SdrRole::kAutoBox, windows_of_sdr.automatic},
      {SdrRole::kTimeslot1, windows_of_sdr.timeslots[0]},
      {SdrRole::kTimeslot2, windows_of_sdr.timeslots[1]},
      {SdrRole::kTimeslot3, windows_of_sdr.timeslots[2]},
      {SdrRole::kTimeslot4, windows_of_sdr.timeslots[3]},
      {SdrRole::kNetInfoButton, windows_of_sdr.net_info},
      {SdrRole::kNetworkInfoWindow, windows_of_sdr.info_window},
      {SdrRole::kNetworkInfoEdit, windows_of_sdr.info_box},
      {SdrRole::kMccLabel, windows_of_sdr.mcc},
      {SdrRole::kMncLabel, windows_of_sdr.mnc},
      {SdrRole::kLaLabel, windows_of_sdr.la}};
  for (const auto& [role, id] : expected) {
    ASSERT_NE(id, 0u);
    EXPECT_EQ(At(role), Handle(id)) << static_cast<int>(role);
  }
}

TEST_F(DiscoveryTest, RolesStandAtTheirIndexesAndTimeslotsFollowEachOther) {
  EXPECT_EQ(static_cast<int>(SdrRole::kMainWindow), 0);
  EXPECT_EQ(static_cast<int>(SdrRole::kNetRemoteHeader), 2);
  EXPECT_EQ(static_cast<int>(SdrRole::kTetraHeader), 5);
  EXPECT_EQ(static_cast<int>(SdrRole::kNetInfoButton), 12);
  EXPECT_EQ(static_cast<int>(SdrRole::kLaLabel), 17);
  EXPECT_EQ(context.handles.CountSet(SdrRole::kMainWindow, SdrRole::kLaLabel), 0);
  Discover();
  EXPECT_EQ(context.handles.CountSet(SdrRole::kMainWindow, SdrRole::kLaLabel), 17);
  EXPECT_EQ(context.handles.CountSet(SdrRole::kDemodulatorBox, SdrRole::kTimeslot4), 6);
  for (int slot = 1; slot <= 4; ++slot) {
    EXPECT_EQ(context.handles.Timeslot(slot),
              Handle(ids().timeslots[static_cast<std::size_t>(slot) - 1]));
  }
  for (const int slot : {-1, 0, 5}) EXPECT_EQ(context.handles.Timeslot(slot), 0u);
}

TEST_F(DiscoveryTest, LogsItsStepsInTheirOrderAndSwitchesNetRemoteOn) {
  Discover();
  EXPECT_THAT(StatusLog(),
              ElementsAre("SDR# is running", "SDR# is running with the two required plug-ins",
                          "Found all 'Net Remote' buttons and editboxes.",
                          "Found all 'TETRA Demodulator' buttons.", "'Network Info' window open",
                          "All hwnd found - Ready to start", ""));
  EXPECT_TRUE(flags.NetRemoteLinkUp);
  EXPECT_EQ(tree().Find(ids().port)->text, "3383");
  EXPECT_TRUE(desktop.model().server().listening());
  EXPECT_EQ(Presses(ids().network), 1);
  EXPECT_EQ(Presses(ids().net_info), 0);
}

TEST_F(DiscoveryTest, WritesThePortBeforeItPressesNetwork) {
  Discover();
  const auto& messages = sim().messages();
  ASSERT_GE(messages.size(), 2u);
  EXPECT_EQ(messages[messages.size() - 2], (Message{Handle(ids().port), Kind::kSetText, "3383"}));
  EXPECT_EQ(messages.back(), (Message{Handle(ids().network), Kind::kPress}));
}

TEST_F(DiscoveryTest, WithoutSdrLogsEveryFailureAndSendsNothing) {
  RemoveSdr();
  desktop.AddForeignWindow("Notepad", "SDR# v1.0", {0, 0, 100, 100});
  flags.NetRemoteLinkUp = true;
  Discover();
  EXPECT_THAT(StatusLog(), ElementsAre("SDR# is NOT running with the two required plug-ins",
                                       "Did not find 'Net Remote' buttons and/or or editboxes.",
                                       "Not all 'TETRA Demodulator' buttons found. [0]",
                                       "Opening 'Network Info' window, then rescanning.",
                                       "No 'Network Info' editbox found. This not good."));
  EXPECT_FALSE(flags.NetRemoteLinkUp);
  EXPECT_TRUE(sim().messages().empty()) << "a foreign window was sent a message";
}

TEST_F(DiscoveryTest, OnlyWindowsOfAFittingClassAreAskedForTheirText) {
  const auto other = desktop.AddForeignWindow("Notepad", "SDR# v1.0", {0, 0, 100, 100});
  const auto alike = desktop.AddForeignWindow(kWindow, "Another", {0, 0, 100, 100});
  Discover();
  EXPECT_EQ(Sent(other, Kind::kText), 0);
  EXPECT_EQ(Sent(alike, Kind::kText), 2) << "as SDR# and as Network Info";
  EXPECT_EQ(Sent(ids().tetra_content, Kind::kText), 0);
  EXPECT_EQ(Sent(ids().port, Kind::kText), 0);
  EXPECT_EQ(Sent(ids().info_box, Kind::kText), 0);
}

TEST_F(DiscoveryTest, TheMainWindowNeedsItsClassAndTheStartOfItsTitle) {
  for (const char* title : {"My SDR# v1", "SDR# settings", "SDR#", "sdr# v1", ""}) {
    tree().SetText(ids().main, title);
    Discover();
    EXPECT_EQ(At(SdrRole::kMainWindow), 0u) << title;
  }
  RemoveSdr();
  Add(0, "WindowsForms10.Window.20.app.0.1", "SDR# v1");
  Discover();
  EXPECT_EQ(At(SdrRole::kMainWindow), 0u);
  const auto found = Add(0, "Xy WindowsForms10.Window.8.app.0.2bf8098_r7_ad1", "SDR# v1");
  Discover();
  EXPECT_EQ(At(SdrRole::kMainWindow), Handle(found));
}

TEST_F(DiscoveryTest, TheFirstOfSeveralSdrWindowsIsTaken) {
  const auto topmost = Add(0, kWindow, "SDR# v2");
  Discover();
  EXPECT_EQ(At(SdrRole::kMainWindow), Handle(topmost));
}

TEST_F(DiscoveryTest, HeaderTextsAreComparedWhole) {
  tree().SetText(ids().net_remote_header, "Net Remote");
  Discover();
  EXPECT_THAT(StatusLog(), Contains("SDR# is NOT running with the two required plug-ins"));
  EXPECT_FALSE(flags.NetRemoteLinkUp);
}

TEST_F(DiscoveryTest, WithoutOnePlugInThereIsNoLink) {
  tree().Destroy(ids().net_remote_panel);
  Discover();
  EXPECT_THAT(StatusLog(),
              ElementsAre("SDR# is running", "SDR# is NOT running with the two required plug-ins",
                          "Did not find 'Net Remote' buttons and/or or editboxes.",
                          "Found all 'TETRA Demodulator' buttons.", "'Network Info' window open"));
  EXPECT_FALSE(flags.NetRemoteLinkUp);
  for (const Message& message : sim().messages()) EXPECT_EQ(message.sent, Kind::kText);
}

TEST_F(DiscoveryTest, WithoutTheNetworkButtonOrThePortBoxThereIsNoLink) {
  tree().SetText(ids().network, "Networks");
  Discover();
  EXPECT_FALSE(flags.NetRemoteLinkUp);
  EXPECT_THAT(StatusLog(), Contains("Did not find 'Net Remote' buttons and/or or editboxes."));
  tree().SetText(ids().network, "Network");
  tree().Destroy(ids().port);
  Discover();
  EXPECT_FALSE(flags.NetRemoteLinkUp);
}

TEST_F(DiscoveryTest, ALaterEditBoxOfTheNetRemotePanelWinsAndTheFirstNetworkButton) {
  const auto later = Add(ids().net_remote_content, kEdit, "second");
  Add(ids().net_remote_content, kButton, "Network");
  Discover();
  EXPECT_EQ(At(SdrRole::kPortBox), Handle(later));
  EXPECT_EQ(At(SdrRole::kNetworkButton), Handle(ids().network));
}

TEST_F(DiscoveryTest, MissingTetraButtonsAreCountedButDoNotPreventTheLink) {
  tree().SetText(ids().timeslots[0], "Slot 1");
  tree().SetText(ids().net_info, "Info");
  tree().Destroy(ids().automatic);
  Discover();
  EXPECT_EQ(At(SdrRole::kTimeslot1), 0u);
  EXPECT_EQ(At(SdrRole::kAutoBox), Handle(ids().timeslots[0]))
      << "the next box that nothing else is called";
  EXPECT_THAT(StatusLog(), Contains("Not all 'TETRA Demodulator' buttons found. [5]"));
  EXPECT_TRUE(flags.NetRemoteLinkUp);
}

TEST_F(DiscoveryTest, ThePanelOfTheHeaderIsSearchedNotTheWholeOfSdr) {
  Add(ids().main, kButton, "Timeslot 1");
  tree().Destroy(ids().timeslots[0]);
  Discover();
  EXPECT_EQ(At(SdrRole::kTimeslot1), 0u);
}

TEST_F(DiscoveryTest, TheAutoBoxIsFoundByItsCaptionWhereverItStands) {
  tree().Destroy(ids().automatic);
  Add(ids().tetra_content, kButton, "Display");
  const auto automatic = Add(ids().tetra_content, kButton, "Auto");
  Discover();
  EXPECT_EQ(At(SdrRole::kAutoBox), Handle(automatic));
}

TEST_F(DiscoveryTest, ABoxUnderAnotherCaptionIsTheNextAfterDemodulator) {
  RemoveSdr();
  const auto panel = Add(AddBareSdr(), kWindow);
  Add(panel, kStatic, "TETRA Demodulator *");
  Add(panel, kButton, "Before");
  Add(panel, kButton, "Demodulator");
  Add(panel, kButton, "Timeslot 1");
  const auto next = Add(panel, kButton, "Automatik");
  Add(panel, kButton, "Other");
  Discover();
  EXPECT_EQ(At(SdrRole::kAutoBox), Handle(next));
}

TEST_F(DiscoveryTest, AClosedNetworkInfoIsOpenedByOnePressAndFoundOnTheSecondPass) {
  desktop.Do("window network-info close");
  Discover();
  EXPECT_EQ(Presses(ids().net_info), 1);
  EXPECT_NE(ids().info_box, 0u);
  EXPECT_EQ(At(SdrRole::kNetworkInfoEdit), Handle(ids().info_box));
  EXPECT_THAT(StatusLog(),
              ElementsAre("SDR# is running", "SDR# is running with the two required plug-ins",
                          "Found all 'Net Remote' buttons and editboxes.",
                          "Found all 'TETRA Demodulator' buttons.",
                          "Opening 'Network Info' window, then rescanning.",
                          "'Network Info' window open", "All hwnd found - Ready to start", ""));
}

TEST_F(DiscoveryTest, ANetworkInfoThatDoesNotOpenLeavesTheLinkDown) {
  desktop.Do("window network-info close");
  tree().OnPress(ids().net_info, nullptr);
  Discover();
  EXPECT_EQ(StatusLog().back(), "No 'Network Info' editbox found. This not good.");
  EXPECT_THAT(StatusLog(), Not(Contains("'Network Info' window open")));
  EXPECT_FALSE(flags.NetRemoteLinkUp);
  EXPECT_EQ(Presses(ids().network), 0);
}

TEST_F(DiscoveryTest, ANetworkInfoWithoutEditBoxLeavesTheLinkDown) {
  tree().Destroy(ids().info_box);
  Discover();
  EXPECT_EQ(StatusLog().back(), "No 'Network Info' editbox found. This not good.");
  EXPECT_FALSE(flags.NetRemoteLinkUp);
}

TEST_F(DiscoveryTest, NetworkInfoNeedsItsClassAndItsWholeTitle) {
  Add(0, "Notepad", "Network Info");
  Add(0, kWindow, "Network Info - copy");
  Discover();
  EXPECT_EQ(At(SdrRole::kNetworkInfoWindow), Handle(ids().info_window));
}

TEST_F(DiscoveryTest, StaleHandlesAreClearedWhenSdrIsGone) {
  Discover();
  RemoveSdr();
  Discover();
  EXPECT_EQ(context.handles.CountSet(SdrRole::kMainWindow, SdrRole::kLaLabel), 0);
  EXPECT_FALSE(flags.NetRemoteLinkUp);
}

TEST_F(DiscoveryTest, AHungSdrIsNotFoundAndNothingIsPressed) {
  desktop.Do("hang 60000");
  Discover();
  EXPECT_FALSE(flags.NetRemoteLinkUp);
  EXPECT_EQ(Presses(ids().network), 0);
}

TEST_F(DiscoveryTest, AButtonThatDoesNotTellItsCaptionIsNotTakenForTheAutoBox) {
  tree().Destroy(ids().automatic);
  sim().SetSilent(Handle(ids().timeslots[0]), true);
  Discover();
  const WindowHandle box = At(SdrRole::kAutoBox);
  ASSERT_NE(box, 0u);
  EXPECT_EQ(tree().Find(sim::SimWindowOps::IdOf(box))->text, "Call Info");
}

// --- The quiet rule ---

TEST_F(DiscoveryTest, ARepetitionAddsNoLines) {
  RemoveSdr();
  Discover();
  const auto shown = StatusLog();
  for (int i = 0; i < 100; ++i) discovery.DiscoverSdrWindows(kQuiet);
  EXPECT_EQ(StatusLog(), shown);
}

TEST_F(DiscoveryTest, ARepetitionThatIsToBeLoggedWholeIs) {
  RemoveSdr();
  Discover();
  const auto lines = StatusLog().size();
  Discover();
  EXPECT_EQ(StatusLog().size(), 2 * lines);
}

TEST_F(DiscoveryTest, ADifferentRunIsLoggedWhole) {
  RemoveSdr();
  Discover();
  const auto before = StatusLog().size();
  AddBareSdr();
  discovery.DiscoverSdrWindows(kQuiet);
  EXPECT_EQ(StatusLog().size(), before + 6);
  EXPECT_EQ(StatusLog()[before], "SDR# is running");
}

TEST_F(DiscoveryTest, ARunWhoseLinesEndTheLogOnlyAsThePartOfALongerRunIsLoggedWhole) {
  RemoveSdr();
  const auto bare = AddBareSdr();
  Discover();
  const auto before = StatusLog().size();
  tree().Destroy(bare);
  discovery.DiscoverSdrWindows(kQuiet);
  EXPECT_EQ(StatusLog().size(), before + 5);
}

TEST_F(DiscoveryTest, ARepetitionAfterAnotherLineIsLoggedWhole) {
  RemoveSdr();
  Discover();
  AddStatusLine(form, "Is 'Net Remote' enabled in SDR#?");
  const auto before = StatusLog().size();
  discovery.DiscoverSdrWindows(kQuiet);
  EXPECT_EQ(StatusLog().size(), before + 5);
}

TEST_F(DiscoveryTest, ARepetitionAfterTheLogWasWipedIsLoggedWhole) {
  RemoveSdr();
  Discover();
  form.lstStatusLog.Clear();
  discovery.DiscoverSdrWindows(kQuiet);
  EXPECT_EQ(StatusLog().size(), 5u);
}

TEST_F(DiscoveryTest, TheStatusLogStaysBounded) {
  RemoveSdr();
  for (int i = 0; i < 1000; ++i) Discover();
  EXPECT_LE(StatusLog().size(), 1001u);
}

// --- Labels of the network that show their text late ---

TEST_F(DiscoveryTest, LabelsThatAreEmptyAtDiscoveryAreFoundLater) {
  for (const auto label : {ids().mcc, ids().mnc, ids().la}) tree().SetText(label, "");
  Discover();
  EXPECT_TRUE(flags.NetRemoteLinkUp);
  EXPECT_EQ(At(SdrRole::kMccLabel), 0u);
  discovery.FindMissingIdentityLabels();
  EXPECT_EQ(At(SdrRole::kMccLabel), 0u);

  const auto shown = StatusLog();
  tree().SetText(ids().mcc, "MCC:262");
  discovery.FindMissingIdentityLabels();
  EXPECT_EQ(At(SdrRole::kMccLabel), Handle(ids().mcc));
  EXPECT_EQ(At(SdrRole::kMncLabel), 0u);
  ShowNetwork("262", "1", "100");
  discovery.FindMissingIdentityLabels();
  EXPECT_EQ(At(SdrRole::kMncLabel), Handle(ids().mnc));
  EXPECT_EQ(At(SdrRole::kLaLabel), Handle(ids().la));
  EXPECT_EQ(StatusLog(), shown);
}

TEST_F(DiscoveryTest, LabelsThatAreFoundAreLeftAloneWhateverTheyShow) {
  tree().SetText(ids().la, "");
  Discover();
  tree().SetText(ids().mcc, "LA:5");  // a known label is not taken for another one
  discovery.FindMissingIdentityLabels();
  EXPECT_EQ(At(SdrRole::kMccLabel), Handle(ids().mcc));
  EXPECT_EQ(At(SdrRole::kLaLabel), 0u);
}

TEST_F(DiscoveryTest, NoMessageIsSentWhenAllLabelsAreThere) {
  Discover();
  sim().ForgetMessages();
  discovery.FindMissingIdentityLabels();
  EXPECT_TRUE(sim().messages().empty());
}

TEST_F(DiscoveryTest, ALabelThatWasReplacedIsFoundAgain) {
  Discover();
  tree().Destroy(ids().mcc);
  const auto label = Add(ids().tetra_content, kStatic, "MCC:263");
  discovery.FindMissingIdentityLabels();
  EXPECT_EQ(At(SdrRole::kMccLabel), Handle(label));
}

TEST_F(DiscoveryTest, MissingLabelsOfAPanelThatIsGoneAreZeroWithoutASearch) {
  Discover();
  RemoveSdr();
  sim().ForgetMessages();
  discovery.FindMissingIdentityLabels();
  EXPECT_EQ(At(SdrRole::kMccLabel), 0u);
  EXPECT_TRUE(sim().messages().empty());
}

// --- Finding Network Info again ---

TEST_F(DiscoveryTest, FindsAReplacedNetworkInfoWithoutPressOrLine) {
  Discover();
  const auto shown = StatusLog();
  desktop.Do("window network-info close");
  sim().ForgetMessages();
  EXPECT_FALSE(discovery.FindNetworkInfo());
  EXPECT_EQ(At(SdrRole::kNetworkInfoEdit), 0u);
  desktop.Do("window network-info open");
  EXPECT_TRUE(discovery.FindNetworkInfo());
  EXPECT_EQ(At(SdrRole::kNetworkInfoWindow), Handle(ids().info_window));
  EXPECT_EQ(At(SdrRole::kNetworkInfoEdit), Handle(ids().info_box));
  EXPECT_EQ(StatusLog(), shown);
  EXPECT_EQ(Presses(ids().net_info) + Presses(ids().network), 0);
  EXPECT_TRUE(flags.NetRemoteLinkUp);
}

TEST_F(DiscoveryTest, OfHeadersAndButtonsOfOneCaptionTheFirstIsTaken) {
  tree().SetText(ids().tetra_header, "another plug-in *");
  Add(ids().main, kStatic, "Net Remote *");
  Add(ids().tetra_content, kButton, "Auto");
  Discover();
  EXPECT_EQ(At(SdrRole::kNetRemoteHeader), Handle(ids().net_remote_header));
  tree().SetText(ids().tetra_header, "TETRA Demodulator *");
  Discover();
  EXPECT_EQ(At(SdrRole::kAutoBox), Handle(ids().automatic));
}

TEST_F(DiscoveryTest, OtherControlsOfNetworkInfoAreNoBoxToRead) {
  Add(ids().info_window, kButton, "Clear");
  Discover();
  EXPECT_EQ(At(SdrRole::kNetworkInfoEdit), Handle(ids().info_box));
}

}  // namespace
}  // namespace corvane::test
