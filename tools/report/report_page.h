// A report as one page: what is shown, as compact columns inside the page that shows it. Knows
// nothing of how it looks; that stands in tools/report/page.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "archive/day_reader.h"
#include "archive/wav_file.h"
#include "tools/output.h"

namespace corvane::tools {

// Who was heard on the days before, as far as their event logs tell.
struct EarlierDaysHeard {
  std::size_t days = 0;  // that were read
  std::set<std::int32_t> groups;
  std::set<std::int32_t> radios;
};

// Of up to `most` day folders beside the first of `days` that are older than it.
[[nodiscard]] EarlierDaysHeard ReadEarlierDays(const std::vector<DayFolder>& days,
                                               std::size_t most);

class ReportPage {
 public:
  // A setup and what became of it.
  void Take(const SetupRecord& setup);

  // What the page is made of; all of it is there before Write.
  const std::vector<DayFolder>* days = nullptr;
  const DayResult* result = nullptr;
  const UserLists* lists = nullptr;            // may be none
  std::vector<std::optional<Waveform>> sound;  // as of SoundWork::Look
  EarlierDaysHeard known;
  std::filesystem::path folder;  // in which the page will lie

  void Write(Output& out);

 private:
  struct Missed {
    std::int64_t second = 0;
    SetupOutcome outcome = SetupOutcome::kMalformed;
    std::int32_t gssi = -1;
    std::int32_t party = -1;
    std::int32_t call_id = -1;
    std::int32_t carrier = -1;
    std::int32_t slot = -1;
    std::int32_t detail = 0;  // in details_
    std::int32_t sure = 0;    // 0: no time, 1: interpolated, 2: from the event log
  };

  [[nodiscard]] std::int32_t GroupOf(std::int32_t gssi, const std::string& label);
  [[nodiscard]] std::int32_t RadioOf(std::int32_t ssi, const std::string& label);
  void WriteDays(Output& out) const;
  void WriteCalls(Output& out);
  void WriteTalkers(Output& out);
  void WriteRecordings(Output& out) const;
  void WriteMissed(Output& out);
  void WriteNames(Output& out) const;

  std::array<std::uint64_t, kSetupOutcomes> outcomes_{};
  std::vector<Missed> missed_;
  std::map<std::string, std::int32_t> details_;
  struct Name {
    std::int32_t number = 0;
    std::string label;
  };
  std::vector<Name> groups_;
  std::vector<Name> radios_;
  std::map<std::int32_t, std::int32_t> group_places_;
  std::map<std::int32_t, std::int32_t> radio_places_;
};

}  // namespace corvane::tools
