// What the program learns and keeps: the records of groups, subscribers and counted calls, and
// their tables, with lookups that do not slow down as the tables grow. A lookup finds what a search
// from the first record would find.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/date_time.h"
#include "base/spare_table.h"

namespace corvane {

// 30 bytes in the ANSI code page, padded with blanks on the right; longer text is cut.
class FixedLabel {
 public:
  static constexpr std::size_t kSize = 30;

  FixedLabel() { bytes_.fill(' '); }
  FixedLabel(std::string_view text) {  // NOLINT: a label is assigned from text
    bytes_.fill(' ');
    text.copy(bytes_.data(), kSize);
  }
  // All 30 bytes.
  [[nodiscard]] std::string_view padded() const { return {bytes_.data(), kSize}; }
  // Without the blanks at both ends.
  [[nodiscard]] std::string trimmed() const;

 private:
  std::array<char, kSize> bytes_;
};

// One talk group of one network.
struct GssiRecord {
  std::int32_t Gssi = 0;  // 0 to 16777215
  std::int16_t Mcc = 0;
  std::int16_t Mnc = 0;
  FixedLabel Label;
  std::int16_t Priority = 0;
  bool Follow = false;  // false: locked out
};

// One subscriber in one group of one network.
struct SsiRecord {
  std::int32_t Ssi = 0;
  std::int32_t LastGssi = 0;
  std::int16_t Mcc = 0;
  std::int16_t Mnc = 0;
  FixedLabel Label;
  DateTime LastSeen;
};

// How many calls of one group were counted.
struct CallActivityRecord {
  std::int32_t Gssi = 0;
  std::int32_t Calls = 0;
};

class GssiTable {
 public:
  [[nodiscard]] std::size_t size() const { return records_.size(); }
  [[nodiscard]] bool empty() const { return records_.empty(); }
  [[nodiscard]] std::size_t highest_index() const { return records_.highest_index(); }
  [[nodiscard]] const GssiRecord& operator[](std::size_t index) const { return records_[index]; }
  [[nodiscard]] auto begin() const { return records_.begin(); }
  [[nodiscard]] auto end() const { return records_.end(); }

  // The record's fields that are not part of its identity may be changed.
  void SetLabel(std::size_t index, std::string_view label) { records_[index].Label = label; }
  void SetPriority(std::size_t index, std::int16_t priority) {
    records_[index].Priority = priority;
  }
  void SetFollow(std::size_t index, bool follow) { records_[index].Follow = follow; }

  // The first record with this identity.
  [[nodiscard]] std::optional<std::size_t> Find(std::int32_t mcc, std::int32_t mnc,
                                                std::int32_t gssi) const;
  std::size_t Append(const GssiRecord& record);
  void Reset();
  void Reserve(std::size_t records);

 private:
  SpareTable<GssiRecord> records_;
  std::unordered_map<std::uint64_t, std::uint32_t> first_;
};

class SsiTable {
 public:
  [[nodiscard]] std::size_t size() const { return records_.size(); }
  [[nodiscard]] bool empty() const { return records_.empty(); }
  [[nodiscard]] const SsiRecord& operator[](std::size_t index) const { return records_[index]; }
  [[nodiscard]] auto begin() const { return records_.begin(); }
  [[nodiscard]] auto end() const { return records_.end(); }

  void SetLabel(std::size_t index, std::string_view label) { records_[index].Label = label; }
  void SetLastSeen(std::size_t index, const DateTime& time) { records_[index].LastSeen = time; }

  // The first record with this identity.
  [[nodiscard]] std::optional<std::size_t> Find(std::int32_t mcc, std::int32_t mnc,
                                                std::int32_t gssi, std::int32_t ssi) const;
  std::size_t Append(const SsiRecord& record);
  void Reset();
  void Reserve(std::size_t records);

 private:
  struct Key {
    std::uint32_t network = 0;
    std::int32_t gssi = 0;
    std::int32_t ssi = 0;
    bool operator==(const Key&) const = default;
  };
  struct KeyHash {
    std::size_t operator()(const Key& key) const;
  };
  SpareTable<SsiRecord> records_;
  std::unordered_map<Key, std::uint32_t, KeyHash> first_;
};

// Calls per group. Each group has one record.
class CallCounts {
 public:
  [[nodiscard]] std::size_t size() const { return records_.size(); }
  [[nodiscard]] bool empty() const { return records_.empty(); }
  [[nodiscard]] const CallActivityRecord& operator[](std::size_t index) const {
    return records_[index];
  }
  [[nodiscard]] auto begin() const { return records_.begin(); }
  [[nodiscard]] auto end() const { return records_.end(); }

  // Adds `calls` to the group's record, making one if there is none. The count stops at the
  // highest 32-bit number.
  void Count(std::int32_t gssi, std::int32_t calls = 1);
  void Reset();

 private:
  SpareTable<CallActivityRecord> records_;
  std::unordered_map<std::int32_t, std::uint32_t> index_;
};

}  // namespace corvane
