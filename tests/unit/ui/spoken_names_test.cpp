// Every control has a name for a screen reader, and one that stays.
#include "ui/spoken_names.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "sim/no_sink.h"
#include "ui/editor_layout.h"
#include "ui/main_layout.h"

namespace corvane {

namespace {

void ExpectNames(const WindowTable& table) {
  std::map<std::string, std::string> used;
  for (const ControlRow& row : table.controls) {
    const char* spoken = SpokenName(row.id);
    const std::string name = spoken != nullptr ? spoken : row.control.caption.get();
    EXPECT_NE(name, "") << row.control.name();
    // A caption may be that of a box's label, or of the page that a tab opens, as well.
    if (spoken == nullptr) continue;
    const auto [first, is_new] = used.emplace(name, row.control.name());
    EXPECT_TRUE(is_new) << name << " is " << first->second << ", too";
  }
}

TEST(SpokenNames, EveryControlOfBothWindowsHasOneOfItsOwn) {
  sim::NoSink sink;
  Form1 form(sink);
  Dialog dialog(sink);
  ExpectNames(MainWindowTable(form));
  ExpectNames(EditorWindowTable(dialog));
}

TEST(SpokenNames, TheListsSayWhatTheyList) {
  EXPECT_STREQ(SpokenName(ControlId::lstCallLog), "Call log");
  EXPECT_STREQ(SpokenName(ControlId::lstCurrentSSI_Users), "Talkers of this call");
  EXPECT_STREQ(SpokenName(ControlId::lstStatusLog), "Status log");
  EXPECT_STREQ(SpokenName(ControlId::lstRecOnlyGSSI), "Groups to record");
}

TEST(SpokenNames, WhatHasItsNameInItsCaptionIsCalledByThat) {
  EXPECT_EQ(SpokenName(ControlId::cmdStartAll), nullptr);
  EXPECT_EQ(SpokenName(ControlId::chkCreateEventLog), nullptr);
}

}  // namespace

}  // namespace corvane
