// The main window as state: one struct per frame, named as the controls are named.
//
// Captions, tool tips and starting states are those of the window's design; everything else about
// its look (order, places, sizes, fonts) belongs to the window's layout.
#pragma once

#include <array>

#include "panel/controls.h"
#include "panel/version.h"

namespace corvane {

// Titles of the window.
inline constexpr char kTitle[] = "Corvane v" CORVANE_VERSION "s";
inline constexpr char kCompactTitle[] = "Corva v" CORVANE_VERSION "s";

// Complete rows of the call log, and its rows with the one more that is partly in view: a log shown
// to its end has its top index at count - 22 right after a line was added, which is what the scroll
// rule tests.
inline constexpr int kCallLogFullRows = 21;
inline constexpr int kCallLogRows = kCallLogFullRows + 1;
inline constexpr int kStatusLogFullRows = 4;
inline constexpr int kUserListFullRows = 4;
inline constexpr int kRecOnlyFullRows = 8;

// The whole of fraCallDetails.
struct CallDetails {
  explicit CallDetails(ControlSink& sink);

  Frame fraCallDetails;
  Label lblGroupHold;  // tag: held group; fore colour kHoldOrange while holding
  Label lblGroupNumber;
  Label lblGSSI_label;
  Label Label12;  // "TX SSI:"
  Label lblCurrentSSI;
  Label lblSSI_label;
  Label lblLastSeenCaption;  // "Last seen:"
  Label lblSsiLastSeen;
  Label Label17;  // "Call ID:"
  Label lblCallID;
  Label Label11;  // "Timeslot:"
  Label lblTimeSlotNumber;
  Label Label8;  // "Carrier:"
  Label lblCarrierNumber;
  ListBox lstCurrentSSI_Users;  // each item a plain decimal SSI
  Label lblCountdownCaption;    // what the next counts
  Label lblTimeoutCountdown;
  Label lblNetworkInfo;
  Label lblManualD_Release;
  Shape ShapeBusy_state;  // fill: call followed; border: recording
};

struct LinkPanel {
  explicit LinkPanel(ControlSink& sink);

  Frame fraWinsock;
  Button cmdStartAll;
  ListBox lstStatusLog;
  Shape ShapeWinsock_state;  // green while Net Remote is connected
  Label Label15;             // "VC SDR# Connected"
};

struct PresetsPage {
  explicit PresetsPage(ControlSink& sink);

  Frame fraPresets;
  Label lblVcVolume;  // "VC Volume"
  TextBox txtVcVolume;
  Label lblCalcBaseFreq;                   // "Base frequency"
  ComboBox cboBaseFrequency;               // "100 MHz" to "900 MHz"
  Label lblOffset;                         // "Offset"
  std::array<OptionButton, 4> optOffsets;  // 0, +6.25, -6.25, +12.5 kHz
  Label lblCallTimeout;                    // "Call Timeout"
  TextBox txtTimeout;                      // seconds
  Label lblChangeToCcFrequency;            // "CC Park"; double click parks
  TextBox txtParkCarrier;                  // carrier number
};

struct RecordingPage {
  explicit RecordingPage(ControlSink& sink);

  Frame fraRecordingOptions;
  std::array<OptionButton, 3> optRecordMode;  // off, all, selected groups
  TextBox txtRecOnlyGSSI;
  ListBox lstRecOnlyGSSI;  // each item one GSSI as it was typed or read
  CheckBox chkDeleteForcedCallEndFile;
};

struct OptionsPage {
  explicit OptionsPage(ControlSink& sink);

  Frame fraOptions;
  CheckBox chkPositionSDRsharps;
  Label lblPositionSdrSharpCC;  // left,top,right,bottom
  CheckBox chkIgnorePriority;
  CheckBox chkSuppressLockoutMessages;
  CheckBox chkSuppressSomePduMessages;
};

struct LoggingPage {
  explicit LoggingPage(ControlSink& sink);

  Frame fraLoggingOptions;
  CheckBox chkCreateCcVcLog;
  CheckBox chkCreateEventLog;
  CheckBox chkCreateCallActivityCvsFile;
};

struct CheckboxPage {
  explicit CheckboxPage(ControlSink& sink);

  Frame fraCheckboxDetection;
  Button cmdSetUnCheckedValue;
  Button cmdSetCheckedValue;
  Label lblUnCheckedValue;
  Label lblCheckedValue;
  Label lblValidateState;
  Label lblTetraPanelExpanded;
};

struct MainMenu {
  explicit MainMenu(ControlSink& sink);

  MenuItem mnuOptions;  // "Tools"
  MenuItem mnuGSSIEditor;
  MenuItem mnuCompactMode;
  MenuItem mnuMCClabel;  // "MCC: ?"
  // What else only the mouse could reach.
  MenuItem mnuEditShown;        // the group and talker on screen, in the editor
  MenuItem mnuEndCall;          // as lblManualD_Release
  MenuItem mnuParkOnCC;         // as lblChangeToCcFrequency
  MenuItem mnuCapturePosition;  // as lblPositionSdrSharpCC
};

// The main window. Every control is reached by its own name through the inherited frames.
struct Form1 : Window,
               CallDetails,
               LinkPanel,
               PresetsPage,
               RecordingPage,
               OptionsPage,
               LoggingPage,
               CheckboxPage,
               MainMenu {
  explicit Form1(ControlSink& sink);

  ListBox lstCallLog;
  std::array<Button, 5> cmdSettingTab;
};

// The record-only box and list can be used while selected groups are recorded, and not otherwise.
void EnableRecOnlyControls(Form1& form);

// The list that the focus comes back to: the call log, or in compact mode, where that is not seen,
// the list of talkers.
[[nodiscard]] const ListBox& HomeOf(const Form1& form);

// Gives the focus to `control`, or to HomeOf when it cannot take it (hidden or disabled, itself or
// with its frame, or not seen in compact mode).
void SetFocus(Form1& form, const Control& control);

}  // namespace corvane
