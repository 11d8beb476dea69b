// The order of the readers.
#include "app/start_load.h"

namespace corvane {

Load LoadAllLists(RecOnlyList& rec_only, LabelFiles& labels, GroupList& groups,
                  SubscriberList& subscribers, StartErrors& errors) {
  ErrorNumber error = rec_only.Load();
  if (error == kNoError) error = labels.RenameOldNetworkFile();
  if (error == kNoError) error = labels.LoadNetworkLabels();
  if (error == kNoError) error = labels.LoadLocationAreaLabels();
  if (error == kNoError) error = labels.LoadCountryLabels();
  if (error == kNoError) error = groups.Load();
  if (error == kNoError) error = subscribers.Load();
  return errors.Handle(error, subscribers.why_not());
}

}  // namespace corvane
