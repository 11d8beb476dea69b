// The lists that the program learns, saves and loads again: groups in "\TETRA_GSSI.txt",
// subscribers in "\TETRA_SSI.txt".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/files.h"
#include "base/wall_clock.h"
#include "panel/form1.h"
#include "store/start_error.h"
#include "store/tables.h"

namespace corvane {

class GroupList {
 public:
  // `program_folder` without a "\" at its end.
  GroupList(Files& files, Form1& form, GssiTable& table, std::string program_folder);

  // Fills the table from the file and says in the status log how many were loaded. The number of
  // the first bad line or of a failed reading ends start-up.
  [[nodiscard]] ErrorNumber Load();

  // Replaces the file in one step. -1 on failure (the old file is whole), 0 with an empty table
  // (file untouched), otherwise the number of records minus 1. Blanks around labels and what a
  // label may not hold are lost in the table too.
  [[nodiscard]] std::int32_t SaveGssiList();

  [[nodiscard]] const GssiTable& table() const { return table_; }

 private:
  Files& files_;
  Form1& form_;
  GssiTable& table_;
  std::string path_;
};

class SubscriberList {
 public:
  // `program_folder` without a "\" at its end.
  SubscriberList(Files& files, const WallClock& clock, Form1& form, SsiTable& table,
                 std::string program_folder);

  // As GroupList::Load.
  [[nodiscard]] ErrorNumber Load();
  // After a Load that failed: words for the user when the cause is a date of other regional
  // settings, else "".
  [[nodiscard]] const std::string& why_not() const { return why_not_; }

  // As GroupList::SaveGssiList.
  [[nodiscard]] std::int32_t SaveSsiList();

  [[nodiscard]] const SsiTable& table() const { return table_; }

 private:
  Files& files_;
  const WallClock& clock_;
  Form1& form_;
  SsiTable& table_;
  std::string path_;
  std::string why_not_;
};

// Fill `table` with the content's lines, ordered by country, network and group; lines of one group
// keep their order. On an error the table is empty; `why_not` gets words as of SeenDates::WhyNot.
[[nodiscard]] ErrorNumber ParseGroupList(std::string_view content, GssiTable& table);
[[nodiscard]] ErrorNumber ParseSubscriberList(std::string_view content, const WallClock& clock,
                                              SsiTable& table, std::string* why_not = nullptr);

// The lines of the table in its order, with the labels as they stand in it.
[[nodiscard]] std::string GroupListText(const GssiTable& table);
[[nodiscard]] std::string SubscriberListText(const SsiTable& table, const WallClock& clock);

}  // namespace corvane
