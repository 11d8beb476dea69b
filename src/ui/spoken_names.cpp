// The names, window by window.
#include "ui/spoken_names.h"

#include <algorithm>
#include <iterator>

namespace corvane {

namespace {

struct Name {
  ControlId id;
  const char* text;
};

constexpr Name kNames[] = {
    {ControlId::fraWinsock, "Link to SDR#"},
    {ControlId::lstStatusLog, "Status log"},
    {ControlId::ShapeWinsock_state, "Connection indicator"},
    {ControlId::lblGroupNumber, "Group number"},
    {ControlId::lblGSSI_label, "Group label"},
    {ControlId::lblCurrentSSI, "Subscriber who talks"},
    {ControlId::lblSSI_label, "Label of the subscriber who talks"},
    {ControlId::lblSsiLastSeen, "Last time the subscriber was seen"},
    {ControlId::lblCallID, "Call ID"},
    {ControlId::lblTimeSlotNumber, "Timeslot"},
    {ControlId::lblCarrierNumber, "Carrier"},
    {ControlId::lstCurrentSSI_Users, "Talkers of this call"},
    {ControlId::lblTimeoutCountdown, "Countdown to the end of the call"},
    {ControlId::lblNetworkInfo, "Network in reach"},
    {ControlId::lblManualD_Release, "End the call"},
    {ControlId::ShapeBusy_state, "Call indicator"},
    {ControlId::lstCallLog, "Call log"},
    {ControlId::txtVcVolume, "VC Volume"},
    {ControlId::cboBaseFrequency, "Base frequency"},
    {ControlId::txtTimeout, "Call Timeout"},
    {ControlId::txtParkCarrier, "CC Park carrier"},
    {ControlId::txtRecOnlyGSSI, "Group to add"},
    {ControlId::lstRecOnlyGSSI, "Groups to record"},
    {ControlId::lblPositionSdrSharpCC, "Stored position of SDR#"},
    {ControlId::lblUnCheckedValue, "Colour of an unchecked box"},
    {ControlId::lblCheckedValue, "Colour of a checked box"},
    {ControlId::lblValidateState, "State of the Demodulator box"},
    {ControlId::lblTetraPanelExpanded, "Whether the boxes are visible"},
    {ControlId::cboCountry, "Country"},
    {ControlId::cboNetworks, "Network"},
    {ControlId::Frame4, "Groups of the network"},
    {ControlId::lstGSSI_Lockouts, "Groups, ticked when followed"},
    {ControlId::lstGssiBlank, "No groups yet"},
    {ControlId::txtGssiLabel, "Label of the group"},
    {ControlId::cboGSSIPriority, "Priority"},
    {ControlId::cmdUpdateGSSI, "Update the group"},
    {ControlId::Label1, "Group of the subscribers"},
    {ControlId::List1, "Subscribers seen in the group"},
    {ControlId::lstSsiBlank, "No subscribers yet"},
    {ControlId::txtSSI_labelEdit, "Label of the subscriber"},
    {ControlId::lblLastSeen, "Subscriber last seen"},
};

}  // namespace

const char* SpokenName(ControlId id) {
  const auto* found = std::find_if(std::begin(kNames), std::end(kNames),
                                   [id](const Name& name) { return name.id == id; });
  return found == std::end(kNames) ? nullptr : found->text;
}

}  // namespace corvane
