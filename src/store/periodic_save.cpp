// The periodic save.
#include "store/periodic_save.h"

#include "base/number_text.h"
#include "panel/logs.h"

namespace corvane {

namespace {
constexpr std::int16_t kTicksBeforeSave = 9;
}

PeriodicSave::PeriodicSave(Timer& tmrSaveTimed, const ProgramFlags& flags, const WallClock& clock,
                           Form1& form, SubscriberList& subscribers, GroupList& groups,
                           CallActivity& activity, SettingsFile& settings)
    : tmrSaveTimed_(tmrSaveTimed),
      flags_(flags),
      clock_(clock),
      form_(form),
      subscribers_(subscribers),
      groups_(groups),
      activity_(activity),
      settings_(settings) {}

void PeriodicSave::OnTick() {
  tmrSaveTimed_.SetEnabled(false);
  if (flags_.mblnShuttingDown) return;
  if (SaveTickCount != kTicksBeforeSave) {
    ++SaveTickCount;
    tmrSaveTimed_.SetEnabled(true);
    return;
  }
  const std::int32_t subscribers = subscribers_.SaveSsiList();
  Report({"Saved SSI list (", "No SSIs to save to SSI list ", "Error saving SSI list. - "},
         subscribers, subscribers_.table().empty());
  const std::int32_t groups = groups_.SaveGssiList();
  Report({"Saved GSSI list (", "No GSSIs to save to GSSI list ", "Error saving GSSI list. - "},
         groups, groups_.table().empty());
  const std::int32_t activity = activity_.SaveCallActivity();
  Report({"Saved GSSI with Call Activity (", "No Call Activity to save ",
          "Error saving Call Activity CVS. - "},
         activity, activity_.CallActivityTable.empty());
  settings_.SaveSettings();
  SaveTickCount = 0;
  tmrSaveTimed_.SetEnabled(true);
}

// A result of 0 also comes of a single record, so the table says whether there was anything.
void PeriodicSave::Report(const Texts& texts, std::int32_t result, bool empty) {
  std::string text = texts.failed;
  if (empty) {
    text = texts.nothing;
  } else if (result != -1) {
    text = texts.saved + Decimal(result) + ") ";
  }
  AddStatusLineInView(form_, text + NowText(clock_));
}

}  // namespace corvane
