#include "link/discovery.h"

#include "link_fixture.h"
#include "panel/logs.h"

namespace corvane::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr auto kWhole = Discovery::Log::kWhole;
constexpr auto kQuiet = Discovery::Log::kQuietRepeats;

class DiscoveryTest : public LinkTest {
 protected:
  void AddAll() {
    AddSdr();
    AddNetworkInfo();
  }
  void Discover() { discovery.DiscoverSdrWindows(kWhole); }
  WindowHandle At(SdrRole role) { return context.handles[role]; }
  int Presses(WindowHandle button) { return windows.CountOf(button, kBmClick); }

  Discovery discovery{context};
};

TEST_F(DiscoveryTest, FindsEveryWindowByItsRole) {
  AddAll();
  Discover();
  EXPECT_EQ(At(SdrRole::kMainWindow), kSdr);
  EXPECT_EQ(At(SdrRole::kNetRemoteHeader), kNetHeader);
  EXPECT_EQ(At(SdrRole::kNetworkButton), kNetwork);
  EXPECT_EQ(At(SdrRole::kPortBox), kPort);
  EXPECT_EQ(At(SdrRole::kTetraHeader), kTetraHeader);
  EXPECT_EQ(At(SdrRole::kDemodulatorBox), kDemodulator);
  EXPECT_EQ(At(SdrRole::kAutoBox), kAuto);
  for (WindowHandle slot = 0; slot < 4; ++slot) {
    EXPECT_EQ(context.handles.Timeslot(static_cast<int>(slot) + 1), kSlot1 + slot);
  }
  EXPECT_EQ(At(SdrRole::kNetInfoButton), kNetInfo);
  EXPECT_EQ(At(SdrRole::kNetworkInfoWindow), kInfoWindow);
  EXPECT_EQ(At(SdrRole::kNetworkInfoEdit), kInfoEdit);
  EXPECT_EQ(At(SdrRole::kMccLabel), kMcc);
  EXPECT_EQ(At(SdrRole::kMncLabel), kMnc);
  EXPECT_EQ(At(SdrRole::kLaLabel), kLa);
}

TEST_F(DiscoveryTest, LogsItsStepsInTheirOrderAndSwitchesNetRemoteOn) {
  AddAll();
  Discover();
  EXPECT_THAT(StatusLog(),
              ElementsAre("SDR# is running", "SDR# is running with the two required plug-ins",
                          "Found all 'Net Remote' buttons and editboxes.",
                          "Found all 'TETRA Demodulator' buttons.", "'Network Info' window open",
                          "All hwnd found - Ready to start", ""));
  EXPECT_TRUE(flags.NetRemoteLinkUp);
  EXPECT_EQ(windows.At(kPort).text, "3383");
  EXPECT_EQ(Presses(kNetwork), 1);
  EXPECT_EQ(Presses(kNetInfo), 0);
}

TEST_F(DiscoveryTest, WritesThePortBeforeItPressesNetwork) {
  AddAll();
  Discover();
  ASSERT_GE(windows.messages.size(), 2u);
  const auto& last = windows.messages.back();
  const auto& before = windows.messages[windows.messages.size() - 2];
  EXPECT_EQ(before, (FakeWindows::Message{kPort, 12, 0, 0, "3383"}));
  EXPECT_EQ(last, (FakeWindows::Message{kNetwork, 245, 0, 0, ""}));
}

TEST_F(DiscoveryTest, WithoutSdrLogsEveryFailureAndSendsNothing) {
  windows.Add(kForeign, 0, "Notepad", "SDR# v1.0");
  flags.NetRemoteLinkUp = true;
  Discover();
  EXPECT_THAT(StatusLog(), ElementsAre("SDR# is NOT running with the two required plug-ins",
                                       "Did not find 'Net Remote' buttons and/or or editboxes.",
                                       "Not all 'TETRA Demodulator' buttons found. [0]",
                                       "Opening 'Network Info' window, then rescanning.",
                                       "No 'Network Info' editbox found. This not good."));
  EXPECT_FALSE(flags.NetRemoteLinkUp);
  EXPECT_TRUE(windows.messages.empty()) << "a foreign window was sent a message";
  EXPECT_FALSE(windows.null_parent_asked);
}

TEST_F(DiscoveryTest, TheMainWindowNeedsItsClassAndTheStartOfItsTitle) {
  AddAll();
  for (const char* title : {"My SDR# v1", "SDR# settings", "SDR#", "sdr# v1"}) {
    windows.At(kSdr).text = title;
    Discover();
    EXPECT_EQ(At(SdrRole::kMainWindow), 0u) << title;
  }
  windows.At(kSdr).text = "SDR# v1";
  windows.At(kSdr).class_name = "WindowsForms10.Window.20.app.0.1";
  Discover();
  EXPECT_EQ(At(SdrRole::kMainWindow), 0u);
  windows.At(kSdr).class_name = "Xy WindowsForms10.Window.8.app.0.2bf8098_r7_ad1";
  Discover();
  EXPECT_EQ(At(SdrRole::kMainWindow), kSdr);
}

TEST_F(DiscoveryTest, OtherBuildsHaveOtherClassSuffixes) {
  AddAll();
  for (const WindowHandle handle : {kNetHeader, kTetraHeader, kMcc, kMnc, kLa}) {
    windows.At(handle).class_name = "WindowsForms10.STATIC.app.0.2bf8098_r7_ad1";
  }
  for (const WindowHandle handle : {kNetwork, kDemodulator, kAuto, kNetInfo}) {
    windows.At(handle).class_name = "WindowsForms10.BUTTON.app.0.2bf8098_r7_ad1";
  }
  windows.At(kPort).class_name = "WindowsForms10.EDIT.app.0.";
  Discover();
  EXPECT_TRUE(flags.NetRemoteLinkUp);
  EXPECT_THAT(StatusLog(), Contains("Found all 'TETRA Demodulator' buttons."));
  EXPECT_EQ(At(SdrRole::kMccLabel), kMcc);
}

TEST_F(DiscoveryTest, TheFirstOfSeveralSdrWindowsIsTaken) {
  windows.Add(50, 0, kWindow, "SDR# v2");
  AddAll();
  Discover();
  EXPECT_EQ(At(SdrRole::kMainWindow), 50u);
}

TEST_F(DiscoveryTest, HeaderTextsAreComparedWhole) {
  AddAll();
  windows.At(kNetHeader).text = "Net Remote";
  Discover();
  EXPECT_THAT(StatusLog(), Contains("SDR# is NOT running with the two required plug-ins"));
  EXPECT_FALSE(flags.NetRemoteLinkUp);
}

TEST_F(DiscoveryTest, WithoutOnePlugInThereIsNoLink) {
  AddAll();
  windows.Destroy(kNetPanel);
  Discover();
  EXPECT_THAT(StatusLog(),
              ElementsAre("SDR# is running", "SDR# is NOT running with the two required plug-ins",
                          "Did not find 'Net Remote' buttons and/or or editboxes.",
                          "Found all 'TETRA Demodulator' buttons.", "'Network Info' window open"));
  EXPECT_FALSE(flags.NetRemoteLinkUp);
  EXPECT_FALSE(windows.null_parent_asked);
  EXPECT_EQ(windows.CountOf(kPort, kWmSetText), 0);
}

TEST_F(DiscoveryTest, WithoutTheNetworkButtonOrThePortBoxThereIsNoLink) {
  AddAll();
  windows.At(kNetwork).text = "Networks";
  Discover();
  EXPECT_FALSE(flags.NetRemoteLinkUp);
  EXPECT_THAT(StatusLog(), Contains("Did not find 'Net Remote' buttons and/or or editboxes."));
  windows.At(kNetwork).text = "Network";
  windows.Destroy(kPort);
  Discover();
  EXPECT_FALSE(flags.NetRemoteLinkUp);
}

TEST_F(DiscoveryTest, ALaterEditBoxOfTheNetRemotePanelWins) {
  AddAll();
  windows.Add(115, kNetPanel, kEdit, "second");
  windows.Add(116, kNetPanel, kButton, "Network");
  Discover();
  EXPECT_EQ(At(SdrRole::kPortBox), 115u);
  EXPECT_EQ(At(SdrRole::kNetworkButton), kNetwork);
}

TEST_F(DiscoveryTest, MissingTetraButtonsAreCountedButDoNotPreventTheLink) {
  AddAll();
  windows.At(kSlot1).text = "Slot 1";
  windows.At(kNetInfo).text = "Info";
  windows.Destroy(kAuto);
  Discover();
  EXPECT_EQ(At(SdrRole::kTimeslot1), 0u);
  EXPECT_EQ(At(SdrRole::kAutoBox), kSlot1) << "the next box that nothing else is called";
  EXPECT_THAT(StatusLog(), Contains("Not all 'TETRA Demodulator' buttons found. [5]"));
  EXPECT_TRUE(flags.NetRemoteLinkUp);
}

TEST_F(DiscoveryTest, ThePanelOfTheHeaderIsSearchedNotTheWholeOfSdr) {
  AddAll();
  windows.Add(140, kSdr, kButton, "Timeslot 1");
  windows.Destroy(kSlot1);
  Discover();
  EXPECT_EQ(At(SdrRole::kTimeslot1), 0u);
}

TEST_F(DiscoveryTest, TheAutoBoxIsFoundByItsCaptionWhereverItStands) {
  AddAll();
  windows.Destroy(kAuto);
  windows.Add(141, kTetraPanel, kButton, "Display");
  windows.Add(142, kTetraPanel, kButton, "Auto");
  Discover();
  EXPECT_EQ(At(SdrRole::kAutoBox), 142u);
}

TEST_F(DiscoveryTest, ABoxUnderAnotherCaptionIsTheNextAfterDemodulator) {
  windows.Add(kSdr, 0, kWindow, "SDR# v1");
  windows.Add(kTetraPanel, kSdr, kWindow);
  windows.Add(kTetraHeader, kTetraPanel, kStatic, "TETRA Demodulator *");
  windows.Add(150, kTetraPanel, kButton, "Before");
  windows.Add(kDemodulator, kTetraPanel, kButton, "Demodulator");
  windows.Add(kSlot1, kTetraPanel, kButton, "Timeslot 1");
  windows.Add(151, kTetraPanel, kButton, "Automatik");
  windows.Add(152, kTetraPanel, kButton, "Other");
  Discover();
  EXPECT_EQ(At(SdrRole::kAutoBox), 151u);
}

TEST_F(DiscoveryTest, AClosedNetworkInfoIsOpenedByOnePressAndFoundOnTheSecondPass) {
  AddSdr();
  Discover();
  EXPECT_EQ(Presses(kNetInfo), 1);
  EXPECT_EQ(At(SdrRole::kNetworkInfoEdit), kInfoEdit);
  EXPECT_THAT(StatusLog(),
              ElementsAre("SDR# is running", "SDR# is running with the two required plug-ins",
                          "Found all 'Net Remote' buttons and editboxes.",
                          "Found all 'TETRA Demodulator' buttons.",
                          "Opening 'Network Info' window, then rescanning.",
                          "'Network Info' window open", "All hwnd found - Ready to start", ""));
}

TEST_F(DiscoveryTest, ANetworkInfoThatDoesNotOpenLeavesTheLinkDown) {
  AddSdr();
  windows.At(kNetInfo).on_click = nullptr;
  Discover();
  EXPECT_EQ(StatusLog().back(), "No 'Network Info' editbox found. This not good.");
  EXPECT_THAT(StatusLog(), Not(Contains("'Network Info' window open")));
  EXPECT_FALSE(flags.NetRemoteLinkUp);
  EXPECT_EQ(Presses(kNetwork), 0);
}

TEST_F(DiscoveryTest, ANetworkInfoWithoutEditBoxLeavesTheLinkDown) {
  AddAll();
  windows.Destroy(kInfoEdit);
  Discover();
  EXPECT_EQ(StatusLog().back(), "No 'Network Info' editbox found. This not good.");
  EXPECT_FALSE(flags.NetRemoteLinkUp);
}

TEST_F(DiscoveryTest, NetworkInfoNeedsItsClassAndItsWholeTitle) {
  windows.Add(kForeign, 0, "Notepad", "Network Info");
  windows.Add(91, 0, kWindow, "Network Info - copy");
  AddAll();
  Discover();
  EXPECT_EQ(At(SdrRole::kNetworkInfoWindow), kInfoWindow);
}

TEST_F(DiscoveryTest, StaleHandlesAreClearedWhenSdrIsGone) {
  AddAll();
  Discover();
  windows.Destroy(kSdr);
  windows.Destroy(kInfoWindow);
  Discover();
  EXPECT_EQ(context.handles.CountSet(SdrRole::kMainWindow, SdrRole::kLaLabel), 0);
  EXPECT_FALSE(flags.NetRemoteLinkUp);
}

TEST_F(DiscoveryTest, AHungSdrIsNotFoundAndNothingIsPressed) {
  AddAll();
  windows.HangAll(true);
  Discover();
  EXPECT_FALSE(flags.NetRemoteLinkUp);
  EXPECT_EQ(Presses(kNetwork), 0);
}

TEST_F(DiscoveryTest, AButtonThatDoesNotTellItsCaptionIsNotTakenForTheAutoBox) {
  AddAll();
  windows.Destroy(kAuto);
  windows.At(kSlot1).hung = true;
  windows.Add(160, kTetraPanel, kButton, "Automatik");
  Discover();
  EXPECT_EQ(At(SdrRole::kAutoBox), 160u);
}

// --- Pressing "Network" ---

TEST_F(DiscoveryTest, DoesNotPressUnderALiveConnectionButWritesThePort) {
  AddAll();
  socket.state = SocketState::kConnected;
  Discover();
  EXPECT_EQ(Presses(kNetwork), 0);
  EXPECT_EQ(windows.At(kPort).text, "3383");
  EXPECT_TRUE(flags.NetRemoteLinkUp);
}

TEST_F(DiscoveryTest, PressesInEveryOtherStateOfTheSocket) {
  AddAll();
  int expected = 0;
  for (const SocketState state : {SocketState::kClosed, SocketState::kConnecting,
                                  SocketState::kClosing, SocketState::kError}) {
    socket.state = state;
    Discover();
    EXPECT_EQ(Presses(kNetwork), ++expected);
  }
}

TEST_F(DiscoveryTest, DoesNotPressAgainRightAfterTheRefusedConnectionPressedTheSameButton) {
  AddAll();
  context.pressed_after_refusal = kNetwork;
  Discover();
  EXPECT_EQ(Presses(kNetwork), 0);
  EXPECT_EQ(windows.At(kPort).text, "3383");
  EXPECT_TRUE(flags.NetRemoteLinkUp);
  Discover();
  EXPECT_EQ(Presses(kNetwork), 1) << "the press counts for one run alone";
}

TEST_F(DiscoveryTest, PressesTheButtonOfAnSdrThatWasStartedAnewSinceTheRefusal) {
  AddAll();
  context.pressed_after_refusal = kNetwork + 1000;
  Discover();
  EXPECT_EQ(Presses(kNetwork), 1);
}

// --- The quiet rule ---

TEST_F(DiscoveryTest, ARepetitionAddsNoLines) {
  Discover();
  const auto shown = StatusLog();
  for (int i = 0; i < 100; ++i) discovery.DiscoverSdrWindows(kQuiet);
  EXPECT_EQ(StatusLog(), shown);
}

TEST_F(DiscoveryTest, ARepetitionThatIsToBeLoggedWholeIs) {
  Discover();
  const auto lines = StatusLog().size();
  Discover();
  EXPECT_EQ(StatusLog().size(), 2 * lines);
}

TEST_F(DiscoveryTest, ADifferentRunIsLoggedWhole) {
  Discover();
  const auto before = StatusLog().size();
  windows.Add(kSdr, 0, kWindow, "SDR# v1");
  discovery.DiscoverSdrWindows(kQuiet);
  EXPECT_EQ(StatusLog().size(), before + 6);
  EXPECT_EQ(StatusLog()[before], "SDR# is running");
}

TEST_F(DiscoveryTest, ARunWhoseLinesEndTheLogOnlyAsThePartOfALongerRunIsLoggedWhole) {
  windows.Add(kSdr, 0, kWindow, "SDR# v1");
  Discover();
  const auto before = StatusLog().size();
  windows.Destroy(kSdr);
  discovery.DiscoverSdrWindows(kQuiet);
  EXPECT_EQ(StatusLog().size(), before + 5);
}

TEST_F(DiscoveryTest, ARepetitionAfterAnotherLineIsLoggedWhole) {
  Discover();
  AddStatusLine(form, "Is 'Net Remote' enabled in SDR#?");
  const auto before = StatusLog().size();
  discovery.DiscoverSdrWindows(kQuiet);
  EXPECT_EQ(StatusLog().size(), before + 5);
}

TEST_F(DiscoveryTest, ARepetitionAfterTheLogWasWipedIsLoggedWhole) {
  Discover();
  form.lstStatusLog.Clear();
  discovery.DiscoverSdrWindows(kQuiet);
  EXPECT_EQ(StatusLog().size(), 5u);
}

TEST_F(DiscoveryTest, TheStatusLogStaysBounded) {
  for (int i = 0; i < 1000; ++i) Discover();
  EXPECT_LE(StatusLog().size(), 1001u);
}

// --- Labels of the network that show their text late ---

TEST_F(DiscoveryTest, LabelsThatAreEmptyAtDiscoveryAreFoundLater) {
  AddAll();
  for (const WindowHandle label : {kMcc, kMnc, kLa}) windows.At(label).text.clear();
  Discover();
  EXPECT_TRUE(flags.NetRemoteLinkUp);
  EXPECT_EQ(At(SdrRole::kMccLabel), 0u);
  discovery.FindMissingIdentityLabels();
  EXPECT_EQ(At(SdrRole::kMccLabel), 0u);

  const auto shown = StatusLog();
  windows.At(kMcc).text = "MCC:262";
  discovery.FindMissingIdentityLabels();
  EXPECT_EQ(At(SdrRole::kMccLabel), kMcc);
  EXPECT_EQ(At(SdrRole::kMncLabel), 0u);
  windows.At(kMnc).text = "MNC:1";
  windows.At(kLa).text = "LA:100";
  discovery.FindMissingIdentityLabels();
  EXPECT_EQ(At(SdrRole::kMncLabel), kMnc);
  EXPECT_EQ(At(SdrRole::kLaLabel), kLa);
  EXPECT_EQ(StatusLog(), shown);
}

TEST_F(DiscoveryTest, LabelsThatAreFoundAreLeftAloneWhatevertheyShow) {
  AddAll();
  windows.At(kLa).text.clear();
  Discover();
  windows.At(kMcc).text = "LA:5";  // a known label is not taken for another one
  discovery.FindMissingIdentityLabels();
  EXPECT_EQ(At(SdrRole::kMccLabel), kMcc);
  EXPECT_EQ(At(SdrRole::kLaLabel), 0u);
}

TEST_F(DiscoveryTest, NoMessageIsSentWhenAllLabelsAreThere) {
  AddAll();
  Discover();
  windows.messages.clear();
  discovery.FindMissingIdentityLabels();
  EXPECT_TRUE(windows.messages.empty());
}

TEST_F(DiscoveryTest, ALabelThatWasReplacedIsFoundAgain) {
  AddAll();
  Discover();
  windows.Destroy(kMcc);
  windows.Add(170, kTetraPanel, kStatic, "MCC:263");
  discovery.FindMissingIdentityLabels();
  EXPECT_EQ(At(SdrRole::kMccLabel), 170u);
}

TEST_F(DiscoveryTest, MissingLabelsOfAPanelThatIsGoneAreZeroWithoutASearch) {
  AddAll();
  Discover();
  windows.Destroy(kSdr);
  discovery.FindMissingIdentityLabels();
  EXPECT_EQ(At(SdrRole::kMccLabel), 0u);
  EXPECT_FALSE(windows.null_parent_asked);
}

// --- Finding Network Info again ---

TEST_F(DiscoveryTest, FindsAReplacedNetworkInfoWithoutPressOrLine) {
  AddAll();
  Discover();
  const auto shown = StatusLog();
  windows.Destroy(kInfoWindow);
  windows.messages.clear();
  EXPECT_FALSE(discovery.FindNetworkInfo());
  EXPECT_EQ(At(SdrRole::kNetworkInfoEdit), 0u);
  windows.Add(210, 0, kWindow, "Network Info");
  windows.Add(211, 210, kEdit);
  EXPECT_TRUE(discovery.FindNetworkInfo());
  EXPECT_EQ(At(SdrRole::kNetworkInfoWindow), 210u);
  EXPECT_EQ(At(SdrRole::kNetworkInfoEdit), 211u);
  EXPECT_EQ(StatusLog(), shown);
  EXPECT_EQ(Presses(kNetInfo) + Presses(kNetwork), 0);
  EXPECT_TRUE(flags.NetRemoteLinkUp);
}

}  // namespace
}  // namespace corvane::test
