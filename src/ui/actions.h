// What the main window's handlers ask of the rest of the program. The window itself decides what a
// click means for its own controls; everything that reaches beyond them goes through here.
#pragma once

#include <cstdint>

namespace corvane {

class Actions {
 public:
  virtual ~Actions() = default;

  // "Start" was pressed: arms the poll cycle. Comes once.
  virtual void StartLink() = 0;
  // "Call" was clicked. May let events run.
  virtual void ManualRelease() = 0;
  // "CC Park" was double-clicked, whatever the state of the link. May let events run.
  virtual void ParkOnControlChannel() = 0;
  // Holds the group on screen (nothing when there is none), or releases the held one.
  virtual void ToggleGroupHold() = 0;
  // The LOG mode box became checked or unchecked; it shows its new state already. May let events
  // run.
  virtual void LogModeSwitched(bool checked) = 0;

  // The position label was double-clicked: takes over where SDR# stands.
  virtual void CaptureSdrPosition() = 0;
  virtual void SampleCheckedColour() = 0;
  virtual void SampleUnCheckedColour() = 0;

  virtual void SaveSettings() = 0;
  // Enter in txtRecOnlyGSSI; the text is in the box.
  virtual void AddRecOnlyGssi() = 0;
  // Double click in lstRecOnlyGSSI; an item is selected.
  virtual void RemoveRecOnlyGssi() = 0;

  // Shows the G/SSI editor, creating it if needed. The hand-over values are set.
  virtual void ShowEditor() = 0;

  // The user closes the main window. Saves, then destroys it; never refused. Lets events run.
  virtual void CloseRequested() = 0;
  // The system ends the session: as CloseRequested, but everything is saved on return.
  virtual void SessionEnding() = 0;

  // The network in reach as numbers, 0 when not known.
  [[nodiscard]] virtual std::int32_t mcc() const = 0;
  [[nodiscard]] virtual std::int32_t mnc() const = 0;
};

}  // namespace corvane
