// Loading of all label and list files at start, after the settings.
#pragma once

#include "store/labels.h"
#include "store/rec_only_list.h"
#include "store/saved_lists.h"
#include "store/start_error.h"

namespace corvane {

// Runs the readers in their order; the first error ends the program after its box.
// Lets events run.
[[nodiscard]] Load LoadAllLists(RecOnlyList& rec_only, LabelFiles& labels, GroupList& groups,
                                SubscriberList& subscribers, StartErrors& errors);

}  // namespace corvane
