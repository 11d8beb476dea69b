// The names, window by window.
#include "ui/spoken_names.h"

namespace corvane {

const char* SpokenName(ControlId id) {
  switch (id) {
    case ControlId::fraWinsock:
      return "Link to SDR#";
    case ControlId::lstStatusLog:
      return "Status log";
    case ControlId::ShapeWinsock_state:
      return "Connection indicator";
    case ControlId::lblGroupNumber:
      return "Group number";
    case ControlId::lblGSSI_label:
      return "Group label";
    case ControlId::lblCurrentSSI:
      return "Subscriber who talks";
    case ControlId::lblSSI_label:
      return "Label of the subscriber who talks";
    case ControlId::lblSsiLastSeen:
      return "Last time the subscriber was seen";
    case ControlId::lblCallID:
      return "Call ID";
    case ControlId::lblTimeSlotNumber:
      return "Timeslot";
    case ControlId::lblCarrierNumber:
      return "Carrier";
    case ControlId::lstCurrentSSI_Users:
      return "Talkers of this call";
    case ControlId::lblTimeoutCountdown:
      return "Countdown to the end of the call";
    case ControlId::lblNetworkInfo:
      return "Network in reach";
    case ControlId::lblManualD_Release:
      return "End the call";
    case ControlId::ShapeBusy_state:
      return "Call indicator";
    case ControlId::lstCallLog:
      return "Call log";
    case ControlId::txtVcVolume:
      return "VC Volume";
    case ControlId::cboBaseFrequency:
      return "Base frequency";
    case ControlId::txtTimeout:
      return "Call Timeout";
    case ControlId::txtParkCarrier:
      return "CC Park carrier";
    case ControlId::txtRecOnlyGSSI:
      return "Group to add";
    case ControlId::lstRecOnlyGSSI:
      return "Groups to record";
    case ControlId::lblPositionSdrSharpCC:
      return "Stored position of SDR#";
    case ControlId::lblUnCheckedValue:
      return "Colour of an unchecked box";
    case ControlId::lblCheckedValue:
      return "Colour of a checked box";
    case ControlId::lblValidateState:
      return "State of the Demodulator box";
    case ControlId::lblTetraPanelExpanded:
      return "Whether the boxes are visible";
    case ControlId::cboCountry:
      return "Country";
    case ControlId::cboNetworks:
      return "Network";
    case ControlId::Frame4:
      return "Groups of the network";
    case ControlId::lstGSSI_Lockouts:
      return "Groups, ticked when followed";
    case ControlId::lstGssiBlank:
      return "No groups yet";
    case ControlId::txtGssiLabel:
      return "Label of the group";
    case ControlId::cboGSSIPriority:
      return "Priority";
    case ControlId::cmdUpdateGSSI:
      return "Update the group";
    case ControlId::Label1:
      return "Group of the subscribers";
    case ControlId::List1:
      return "Subscribers seen in the group";
    case ControlId::lstSsiBlank:
      return "No subscribers yet";
    case ControlId::txtSSI_labelEdit:
      return "Label of the subscriber";
    case ControlId::lblLastSeen:
      return "Subscriber last seen";
    default:
      return nullptr;
  }
}

}  // namespace corvane
