// The list of subscribers in "\TETRA_SSI.txt".
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

class SubscriberList {
 public:
  // `program_folder` without a "\" at its end.
  SubscriberList(Files& files, const WallClock& clock, Form1& form, SsiTable& table,
                 std::string program_folder);

  // As GroupList::Load.
  [[nodiscard]] ErrorNumber Load();

  // As GroupList::SaveGssiList.
  [[nodiscard]] std::int32_t SaveSsiList();

  [[nodiscard]] const SsiTable& table() const { return table_; }

 private:
  Files& files_;
  const WallClock& clock_;
  Form1& form_;
  SsiTable& table_;
  std::string path_;
};

// Fills `table` with the content's lines, ordered by country, network and group; subscribers of one
// group keep the order of the lines. On an error the table is empty.
[[nodiscard]] ErrorNumber ParseSubscriberList(std::string_view content, const WallClock& clock,
                                              SsiTable& table);

// The lines of the table in its order, with the labels as they stand in it.
[[nodiscard]] std::string SubscriberListText(const SsiTable& table, const WallClock& clock);

}  // namespace corvane
