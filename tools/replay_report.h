// The results of a replay in the form that was asked for, and the summary.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>

#include "archive/replay.h"
#include "tools/output.h"
#include "tools/replay_options.h"

namespace corvane::tools {

class ReplayReport : public ReplaySink {
 public:
  // Groups beyond this many are counted together.
  static constexpr std::size_t kMostGroups = 65536;
  // The summary lists so many groups, those with the most setups.
  static constexpr std::size_t kListedGroups = 50;

  // `options` and `out` outlive this.
  ReplayReport(const ReplayOptions& options, Output& out);

  void Setup(const SetupRecord& record) override;
  void End(const EndRecord& record) override;

  // The figures; `following`: the last call had not ended.
  [[nodiscard]] std::string Summary(bool following) const;
  // Setups that the event log shows otherwise.
  [[nodiscard]] std::uint64_t contradictions() const { return contradictions_; }

 private:
  struct GroupTotal {
    std::uint64_t setups = 0;
    std::uint64_t followed = 0;
    std::uint64_t counted = 0;
    std::string label;
  };

  [[nodiscard]] bool IsShown(const SetupRecord& record) const;
  void Count(const SetupRecord& record);
  void WriteText(const SetupRecord& record);
  void WriteJson(const SetupRecord& record);
  void WriteCsv(const SetupRecord& record);
  void PutDetail(const SetupRecord& record, bool with_time);
  void PutPlace(std::uint64_t number, std::int64_t ms, LogStep::TimeFrom from);
  [[nodiscard]] std::string GroupLines() const;

  const ReplayOptions& options_;
  Output& out_;
  std::array<std::uint64_t, kSetupOutcomes> outcomes_{};
  std::map<CallEnd, std::uint64_t> ends_;
  std::map<std::int32_t, GroupTotal> groups_;
  GroupTotal other_groups_;
  std::uint64_t setups_ = 0;
  std::uint64_t shown_ = 0;
  std::uint64_t contradictions_ = 0;
  // Records come by the hundred thousand: each is put together in the same memory.
  std::string line_;
  std::string detail_;
  bool call_shown_ = false;  // the followed call is among what is shown
};

}  // namespace corvane::tools
