// The main window by the user's own hands: pages, tips, menu, presets, the hold, quick edits and
// the call log, with pointer and keyboard, seen in windows and on the screen.
#include <algorithm>
#include <array>
#include <map>

#include "base/text.h"
#include "desktop/call_test.h"
#include "desktop/harness/screen_points.h"
#include "desktop/harness/user_input.h"

namespace corvane::desktop {
namespace {

using enum ControlId;

constexpr std::int32_t kShownTabGrey = 0xC0C0C0;
constexpr const char* kNoHoldTip = "Right click to hold a GSSI";
constexpr const char* kHoldTip = "Holding GSSI:  9001";
constexpr const char* kUnknownNetwork = "MCC must be valid before showing editor";
constexpr const char* kUsual = "Corvane v0.99.6s";
constexpr const char* kCompact = "Corva v0.99.6s";
constexpr int kCallLogFullRows = 21;

struct Page {
  ControlId tab;
  ControlId frame;
  std::string caption;
  std::map<ControlId, std::string> texts;
  std::map<ControlId, std::string> tips;
};

const std::vector<Page> kPages = {
    {cmdSettingTab_1,
     fraRecordingOptions,
     "Record options",
     {{chkDeleteForcedCallEndFile, "Delete forced ended call"},
      {optRecordMode_0, "Recording OFF"},
      {optRecordMode_1, "Record ALL calls"},
      {optRecordMode_2, "Record select GSSIs"}},
     {{txtRecOnlyGSSI, "Add a valid GSSI and press enter"},
      {lstRecOnlyGSSI, "Double click to remove GSSI"}}},
    {cmdSettingTab_2,
     fraOptions,
     "Options",
     {{chkPositionSDRsharps, "Position SDR#"},
      {lblPositionSdrSharpCC, ""},
      {chkIgnorePriority, "Ignore call priority"},
      {chkSuppressLockoutMessages, "Suppress lockout messages"},
      {chkSuppressSomePduMessages, "Suppress some PDU messages"}},
     {{chkPositionSDRsharps, "Restore SDR# to your favourite positions on startup or reset"},
      {lblPositionSdrSharpCC, "DBL Click to set CC SDR# position"}}},
    {cmdSettingTab_3,
     fraLoggingOptions,
     "Logging options",
     {{chkCreateCcVcLog, "Create CC VC log"},
      {chkCreateEventLog, "Create event log"},
      {chkCreateCallActivityCvsFile, "Create Call Activity CVS - NO CALLS"}},
     {{chkCreateCallActivityCvsFile, "No calls will be heard in LOGGING mode"}}},
    {cmdSettingTab_4,
     fraCheckboxDetection,
     "Checkbox detection",
     {{cmdSetUnCheckedValue, "Set unchecked"},
      {cmdSetCheckedValue, "Set checked"},
      {lblUnCheckedValue, "14934753"},
      {lblCheckedValue, "10580318"}},
     {}},
    {cmdSettingTab_0,
     fraPresets,
     "Presets",
     {{lblVcVolume, "VC Volume"},
      {lblCalcBaseFreq, "Base frequency"},
      {cboBaseFrequency, "300 MHz"},
      {lblOffset, "Offset"},
      {optOffsets_0, "0 KHz"},
      {optOffsets_1, "+6.25 KHz"},
      {optOffsets_2, "-6.25 KHz"},
      {optOffsets_3, "+12.5 KHz"},
      {lblCallTimeout, "Call Timeout"},
      {lblChangeToCcFrequency, "CC Park"}},
     {{txtVcVolume, "Volume for SDR# audio (effects record level)"},
      {cboBaseFrequency, "Select band of operation"},
      {txtTimeout, "Delay that timeslot is inactive before force ending a call. 1-30 seconds"},
      {txtParkCarrier, "Park on CC frequency"}}}};

class ByHandTest : public CallTest {
 protected:
  void StartAlone() {
    StartCorvane();
    TakeTheFront();
  }
  void BeginWithLists() {
    Folder().Write("TETRA_GSSI.txt",
                   "9001;262;42;North;3;True\r\n9002;262;42;South;0;True\r\n"
                   "9003;262;42;West;0;False\r\n");
    Folder().Write("TETRA_SSI.txt",
                   "5010;9001;262;42;Alpha;2026-11-14 10:11:12\r\n"
                   "5011;9001;262;42;Beta;2026-11-14 10:11:13\r\n");
    Begin();
    TakeTheFront();
  }
  [[nodiscard]] WindowHandle At(ControlId id) { return Corvane().Control(id); }
  [[nodiscard]] bool HasFocus(ControlId id) { return FocusIn(Corvane().Window()) == At(id); }
  void AwaitFocus(ControlId id) {
    Await("the focus on " + std::to_string(Number(id)), [&] { return HasFocus(id); });
  }
  void AwaitTip(ControlId over, const std::string& tip) {
    HandMoveOver(At(over));
    Await("the tip \"" + tip + "\"",
          [&] { return SeenToolTip(Corvane().TheProcess().Id()) == tip; });
  }
  [[nodiscard]] bool Holds() { return PixelsOf(At(lblGroupHold), kOrange) > 0; }
  void AwaitHold(bool held) {
    Await(held ? "the hold" : "the hold's end", [&] { return Holds() == held; });
  }
  // Replaces what stands in a box of numbers, and leaves it.
  void TypeAndLeave(ControlId box, const std::string& text) {
    HandClick(At(box));
    AwaitFocus(box);
    HandKey(kHomeKey);
    HandKey(kEndKey, kShiftKey);
    HandKey(kDeleteKey);
    HandType(text);
    HandKey(kTabKey);
    Await("the box left", [&] { return !HasFocus(box); });
  }

  [[nodiscard]] WindowHandle Editor() { return Corvane().EditorWindow(); }
  [[nodiscard]] std::string EditorText(ControlId id) { return TextOf(Child(Editor(), Number(id))); }
  void AwaitEditorOn(const std::string& group, const std::string& subscriber) {
    Await("the editor on \"" + group + "\" and \"" + subscriber + "\"", [&] {
      return Editor() != 0 && Visible(Editor()) &&
             !Visible(Child(Editor(), Number(lstGssiBlank))) && EditorText(txtGssiLabel) == group &&
             EditorText(txtSSI_labelEdit) == subscriber;
    });
  }
  void CloseEditorByEscape() {
    Await("the editor in front", [&] { return ForegroundWindow() == Editor(); });
    HandKey(kEscapeKey);
    Await("the editor's end", [&] { return Editor() == 0; });
    TakeTheFront();
  }
  [[nodiscard]] int CallLine(std::string_view part) {
    const std::vector<std::string> lines = Corvane().CallLogAsShown();
    const auto line = std::find_if(lines.begin(), lines.end(), [part](const std::string& text) {
      return Contains(text, part);
    });
    if (line == lines.end()) throw std::runtime_error("no line with " + std::string(part));
    return static_cast<int>(line - lines.begin());
  }
  [[nodiscard]] int Refusals() { return CountContaining(Corvane().StatusLog(), kUnknownNetwork); }
  void ListLines(int count, const std::string& name) {
    for (int line = 1; line <= count; ++line) {
      Line("D_Status " + name + " " + std::to_string(line) + " ");
    }
    AwaitInCallLog("D_Status " + name + " " + std::to_string(count) + " ");
  }
  [[nodiscard]] int CallLogCount() { return static_cast<int>(Corvane().CallLogAsShown().size()); }
};

TEST_F(ByHandTest, TabsShowTheirPagesWithTextsAndTips) {
  StartAlone();
  for (const Page& page : kPages) {
    SCOPED_TRACE(page.caption);
    HandClick(At(page.tab));
    Await("the page", [&] { return Visible(At(page.frame)); });
    AwaitFocus(lstCallLog);
    EXPECT_EQ(TextOf(At(page.frame)), page.caption);
    for (const Page& other : kPages) {
      EXPECT_EQ(Visible(At(other.frame)), other.tab == page.tab) << other.caption;
      const std::int32_t colour = other.tab == page.tab ? kShownTabGrey : ButtonFaceColour();
      Await("the tabs' colours", [&] { return GroundOf(At(other.tab)) == colour; });
    }
    for (const auto& [id, text] : page.texts) {
      EXPECT_TRUE(Visible(At(id))) << Number(id);
      EXPECT_EQ(TextOf(At(id)), text) << Number(id);
    }
    for (const auto& [id, tip] : page.tips) AwaitTip(id, tip);
  }
  // The tab of the page that is shown only takes the focus away.
  HandClick(At(txtVcVolume));
  AwaitFocus(txtVcVolume);
  HandClick(At(cmdSettingTab_0));
  AwaitFocus(lstCallLog);
  EXPECT_TRUE(Visible(At(fraPresets)));
  AwaitTip(lblGroupHold, kNoHoldTip);
  AwaitTip(lblSsiLastSeen, "SSI: Last time seen");
  AwaitTip(lblTimeoutCountdown, "Value = (TimeOut Seconds / 300mS)");
  AwaitTip(lstCurrentSSI_Users, "List of current SSIs seen during this call");
  AwaitTip(lblNetworkInfo, "Current MNC,LA");
  AwaitTip(lblManualD_Release, "Click to end call");

  EXPECT_NE(GroundOf(At(cmdStartAll)), ButtonFaceColour());
  HandClick(At(cmdStartAll));
  Await("\"Start\" disabled", [&] { return !Enabled(At(cmdStartAll)); });
  Await("its colour", [&] { return GroundOf(At(cmdStartAll)) == ButtonFaceColour(); });
}

TEST_F(ByHandTest, TheMenuMakesTheWindowCompactAndOpensTheEditorBesideIt) {
  StartAlone();
  const WindowPlace usual = PlaceOf(Corvane().Window());
  const WindowPlace details = PlaceOf(At(fraCallDetails));
  const WindowPlace log = PlaceOf(At(lstCallLog));
  EXPECT_EQ(TextOf(Corvane().Window()), kUsual);
  EXPECT_EQ(usual.width, 830);
  EXPECT_EQ(usual.height, 408);
  HandClick(At(txtTimeout));
  AwaitFocus(txtTimeout);
  ChooseFromTools(kToolsCompact);
  const WindowPlace compact{usual.left, usual.top, 246, 296};
  Await("the compact window", [&] { return PlaceOf(Corvane().Window()) == compact; });
  EXPECT_EQ(TextOf(Corvane().Window()), kCompact);
  EXPECT_EQ(PlaceOf(At(fraCallDetails)).left, details.left);
  EXPECT_EQ(details.top - PlaceOf(At(fraCallDetails)).top, 112);
  for (const ControlId unseen : {fraWinsock, cmdStartAll, lstStatusLog, lstCallLog, fraPresets,
                                 txtTimeout, cmdSettingTab_0, cmdSettingTab_4}) {
    EXPECT_FALSE(Visible(At(unseen))) << Number(unseen);
  }
  AwaitFocus(lstCurrentSSI_Users);
  HandKey(kTabKey);
  HandKey(kTabKey, kShiftKey);

  // By keys alone: into the menu, down to the second line, Enter.
  HandKey(kAltKey);
  HandKey(kDownKey);
  HandKey(kDownKey);
  HandKey(kReturnKey);
  Await("the usual window", [&] { return PlaceOf(Corvane().Window()) == usual; });
  Await("its call log", [&] { return Visible(At(lstCallLog)); });
  EXPECT_EQ(TextOf(Corvane().Window()), kUsual);
  EXPECT_EQ(PlaceOf(At(fraCallDetails)), details);
  EXPECT_EQ(PlaceOf(At(lstCallLog)), log);
  EXPECT_TRUE(HasFocus(lstCurrentSSI_Users)) << "the tab key had nowhere else to go";

  ChooseFromTools(kToolsEditor);
  Await("the editor", [&] { return Editor() != 0 && Visible(Editor()); });
  EXPECT_EQ(TextOf(Editor()), "G/SSI Editor (List snapshot)");
  // The main window stays usable.
  HandClick(At(cmdSettingTab_3));
  Await("the page", [&] { return Visible(At(fraLoggingOptions)); });
  HandClick(At(chkCreateEventLog));
  Await("the tick", [&] { return Checked(At(chkCreateEventLog)); });
  EXPECT_TRUE(Visible(Editor()));
  HandKey(kF4Key, kAltKey);
  Await("the end", [&] { return !Corvane().Running(); });
  EXPECT_EQ(Corvane().TheProcess().ExitCode(), 0U);
}

TEST_F(ByHandTest, PresetsAreTypedCheckedAndTunedTo) {
  Begin();
  TakeTheFront();
  TypeAndLeave(txtParkCarrier, "2x6a10");
  EXPECT_EQ(TextOf(At(txtParkCarrier)), "2610");
  for (const char* refused : {"4000", "1234567", ""}) {
    TypeAndLeave(txtParkCarrier, refused);
    Await("2610 again", [&] { return TextOf(At(txtParkCarrier)) == "2610"; });
  }
  for (const char* refused : {"24", "61", ""}) {
    TypeAndLeave(txtVcVolume, refused);
    Await("47 again", [&] { return TextOf(At(txtVcVolume)) == "47"; });
  }
  // The key filter knows only of typing.
  HandClick(At(txtParkCarrier));
  AwaitFocus(txtParkCarrier);
  HandKey(kEndKey);
  ASSERT_TRUE(HandPaste("x"));
  Await("what was pasted", [&] { return TextOf(At(txtParkCarrier)) == "2610x"; });
  HandKey(kReturnKey);
  AwaitFocus(lstStatusLog);
  EXPECT_EQ(TextOf(At(txtParkCarrier)), "2610");
  HandClick(At(txtParkCarrier));
  HandKey(kEndKey);
  HandKey(kBackspaceKey);
  Await("a digit less", [&] { return TextOf(At(txtParkCarrier)) == "261"; });
  HandType("1");
  HandKey(kReturnKey);
  AwaitFocus(lstStatusLog);

  const std::string stored = Folder().Read("corvane_simple.dat");
  TypeAndLeave(txtVcVolume, "60");
  Await("the settings to be saved", [&] { return Folder().Read("corvane_simple.dat") != stored; });

  const std::map<ControlId, long long> offsets = {
      {optOffsets_0, 0}, {optOffsets_1, 6'250}, {optOffsets_2, -6'250}, {optOffsets_3, 12'500}};
  const auto expect_parked_at = [this](long long frequency) {
    const std::size_t mark = Mark();
    HandDoubleClick(At(lblChangeToCcFrequency));
    ExpectCommands(
        mark, {SetCommand("Frequency", std::to_string(frequency)), SetCommand("AudioGain", "25")});
  };
  for (const auto& [option, offset] : offsets) {
    HandClick(At(option));
    Await("the offset", [&] { return Checked(At(option)); });
    expect_parked_at(2611 * 25'000LL + 300'000'000 + offset);
  }
  HandClick(At(cboBaseFrequency));
  Await("the open list", [&] { return ComboIsOpen(At(cboBaseFrequency)); });
  HandKey(kEndKey);
  HandKey(kUpKey);
  HandKey(kReturnKey);
  Await("the band", [&] { return TextOf(At(cboBaseFrequency)) == "800 MHz"; });
  TypeAndLeave(txtParkCarrier, "2604");
  expect_parked_at(865'112'500);
}

TEST_F(ByHandTest, TheHoldIsToggledByPointerAndBySpaceBarInEachList) {
  BeginWithLists();
  HandClick(At(lblGroupHold));  // no group is on screen
  AwaitHandsHandled();
  EXPECT_FALSE(Holds());
  Do("call id=7 group=9001 party=5010 carrier=2610 slot=2");
  AwaitFollowing(7);
  HandClick(At(lblGroupHold), MouseButton::kRight);
  HandClick(At(lblGroupHold), MouseButton::kMiddle);
  AwaitHandsHandled();
  EXPECT_FALSE(Holds());
  HandClick(At(lblGroupHold));
  AwaitHold(true);
  AwaitTip(lblGroupHold, kHoldTip);
  AwaitTip(lblGroupNumber, kHoldTip);
  HandClick(At(lblGroupHold));
  AwaitHold(false);
  AwaitTip(lblManualD_Release, "Click to end call");
  AwaitTip(lblGroupHold, kNoHoldTip);

  HandClick(At(lstStatusLog));
  for (const ControlId list : {lstStatusLog, lstCurrentSSI_Users, lstCallLog}) {
    AwaitFocus(list);
    HandKey(kSpaceKey);
    AwaitHold(true);
    HandKey('X');
    HandKey(kSpaceKey);
    AwaitHold(false);
    HandKey(kTabKey);
  }

  // The pointer alone brings the keys to the call log, while the window is in front.
  for (const ControlId over : {lblCallID, lstCallLog}) {
    TypeAndLeave(txtTimeout, "6");
    HandClick(At(txtTimeout));
    AwaitFocus(txtTimeout);
    HandMoveOver(At(over));
    AwaitFocus(lstCallLog);
  }
  HandClick(At(txtTimeout));
  AwaitFocus(txtTimeout);
  BringToFront(Sdr().Window());
  Await("SDR# in front", [&] { return ForegroundWindow() == Sdr().Window(); });
  HandMoveOver(At(lblCallID));
  HandMoveOver(At(txtTimeout));
  Do("release id=7");
  AwaitParked();
  SetUpUntilFollowed(8, 9001, 2610, 2);
  TakeTheFront();
  AwaitFocus(txtTimeout);

  HandMoveOver(At(lstCallLog));
  AwaitFocus(lstCallLog);
  HandKey(kSpaceKey);
  AwaitHold(true);
  Do("release id=8");
  AwaitParked();
  const std::size_t mark = Mark();
  Do("call id=9 group=9002 party=5020 carrier=2610 slot=2 for=2");
  ExpectNothingFollowed(mark);
  EXPECT_TRUE(Holds());
  HandKey(kSpaceKey);
  AwaitHold(false);
  SetUpUntilFollowed(10, 9002, 2611, 2);
  HandKey(kSpaceKey);
  AwaitHold(true);
  Sdr().Kill();
  AwaitHold(false);
}

TEST_F(ByHandTest, DoubleClicksAndQuickEditsOpenTheEditorOnWhatTheyMean) {
  BeginWithLists();
  Do("call id=6 group=9003 party=5010 carrier=2610 slot=2 for=1");
  AwaitInCallLog("lockout found GSSI: 9003");
  Do("call id=7 group=9001 party=5010 carrier=2610 slot=2");
  AwaitFollowing(7);
  Do("speak id=7 party=5011");
  AwaitInCallLog("D-TX-Granted SSI: 5011");

  HandDoubleClickLine(At(lstCallLog), CallLine(" - Group: 9001"));
  AwaitEditorOn("North", "");
  CloseEditorByEscape();
  HandDoubleClickLine(At(lstCallLog), CallLine("lockout found GSSI: 9003"));
  AwaitEditorOn("West", "");
  CloseEditorByEscape();
  for (const char* subscriber : {"Calling SSI: 5010", "D-TX-Granted SSI: 5011"}) {
    HandDoubleClickLine(At(lstCallLog), CallLine(subscriber));
    AwaitEditorOn("", "");  // a subscriber's line names no group to list it under
    EXPECT_EQ(EditorText(Label1), "Seen SSI for GSSI (0)");
    CloseEditorByEscape();
  }
  HandClickLine(At(lstCallLog), CallLine(" - Group: 9001"));
  HandKey(kReturnKey);
  AwaitEditorOn("North", "");
  CloseEditorByEscape();
  HandDoubleClickLine(At(lstCallLog), CallLine("D_Status"));
  AwaitHandsHandled();
  EXPECT_EQ(Editor(), 0U);

  HandClick(At(lblGroupNumber), MouseButton::kRight);
  AwaitEditorOn("North", "Beta");
  CloseEditorByEscape();
  HandClick(At(lblCurrentSSI));
  AwaitEditorOn("North", "Beta");
  CloseEditorByEscape();
  HandClickLine(At(lstCurrentSSI_Users), 0);
  AwaitEditorOn("North", "Alpha");
  CloseEditorByEscape();
  HandKey(kF2Key);
  AwaitEditorOn("North", "Beta");
  CloseEditorByEscape();
  EXPECT_EQ(Refusals(), 0);

  Do("network none");
  Await("the unknown network", [&] {
    HandClick(At(lblGroupNumber));
    if (Editor() == 0) return Refusals() > 0;
    CloseEditorByEscape();
    return false;
  });
  const int refused = Refusals();
  HandClick(At(lblCurrentSSI));
  HandDoubleClickLine(At(lstCallLog), CallLine(" - Group: 9001"));
  Await("the refusals", [&] { return Refusals() == refused + 2; });
  EXPECT_EQ(Editor(), 0U);
  Do("network 262 42 101");
  Do("release id=7");
  AwaitParked();
  HandClick(At(lblGroupNumber));  // nothing is on screen
  AwaitHandsHandled();
  EXPECT_EQ(Refusals(), refused + 2);
}

TEST_F(ByHandTest, TheCallLogFollowsUnlessItWasScrolledUp) {
  Begin();
  TakeTheFront();
  ListLines(30, "first");
  const auto is_at_end = [&] {
    return TopIndexOf(At(lstCallLog)) == CallLogCount() - kCallLogFullRows;
  };
  Await("its end", is_at_end);
  HandClickLine(At(lstCallLog), TopIndexOf(At(lstCallLog)) + 2);
  HandKey(kPageUpKey);
  Await("it scrolled up", [&] { return !is_at_end(); });
  HandKey(kHomeKey);
  Await("its beginning", [&] { return TopIndexOf(At(lstCallLog)) == 0; });
  ListLines(5, "second");
  EXPECT_EQ(TopIndexOf(At(lstCallLog)), 0);
  HandKey(kEndKey);
  Await("its end", is_at_end);
  ListLines(5, "third");
  Await("its end", is_at_end);
}

}  // namespace
}  // namespace corvane::desktop
