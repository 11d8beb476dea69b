// Table lookups by hashed identity.
#include "store/tables.h"

#include <algorithm>
#include <limits>

#include "base/text.h"

namespace corvane {

namespace {

constexpr std::uint32_t Network(std::int32_t mcc, std::int32_t mnc) {
  return (static_cast<std::uint32_t>(mcc) << 16U) | (static_cast<std::uint32_t>(mnc) & 0xFFFFU);
}

constexpr bool FitsRecord(std::int32_t code) {
  return code >= std::numeric_limits<std::int16_t>::min() &&
         code <= std::numeric_limits<std::int16_t>::max();
}

constexpr std::uint64_t GroupKey(std::int32_t mcc, std::int32_t mnc, std::int32_t gssi) {
  return (std::uint64_t{Network(mcc, mnc)} << 32U) | static_cast<std::uint32_t>(gssi);
}

}  // namespace

std::string FixedLabel::trimmed() const {
  return std::string(Trim(padded()));
}

std::optional<std::size_t> GssiTable::Find(std::int32_t mcc, std::int32_t mnc,
                                           std::int32_t gssi) const {
  if (!FitsRecord(mcc) || !FitsRecord(mnc)) return std::nullopt;
  const auto found = first_.find(GroupKey(mcc, mnc, gssi));
  if (found == first_.end()) return std::nullopt;
  return found->second;
}

std::size_t GssiTable::Append(const GssiRecord& record) {
  const std::size_t index = records_.Append(record);
  first_.try_emplace(GroupKey(record.Mcc, record.Mnc, record.Gssi),
                     static_cast<std::uint32_t>(index));
  return index;
}

void GssiTable::Reset() {
  records_.Reset();
  first_.clear();
}

void GssiTable::Reserve(std::size_t records) {
  records_.Reserve(records);
  first_.reserve(records);
}

std::size_t SsiTable::KeyHash::operator()(const Key& key) const {
  std::uint64_t mixed = (std::uint64_t{key.network} << 32U) ^ static_cast<std::uint32_t>(key.ssi);
  mixed ^= std::uint64_t{static_cast<std::uint32_t>(key.gssi)} * 0x9E3779B97F4A7C15ULL;
  mixed ^= mixed >> 29U;
  mixed *= 0xBF58476D1CE4E5B9ULL;
  return static_cast<std::size_t>(mixed ^ (mixed >> 32U));
}

std::optional<std::size_t> SsiTable::Find(std::int32_t mcc, std::int32_t mnc, std::int32_t gssi,
                                          std::int32_t ssi) const {
  if (!FitsRecord(mcc) || !FitsRecord(mnc)) return std::nullopt;
  const auto found = first_.find(Key{Network(mcc, mnc), gssi, ssi});
  if (found == first_.end()) return std::nullopt;
  return found->second;
}

std::size_t SsiTable::Append(const SsiRecord& record) {
  const std::size_t index = records_.Append(record);
  first_.try_emplace(Key{Network(record.Mcc, record.Mnc), record.LastGssi, record.Ssi},
                     static_cast<std::uint32_t>(index));
  return index;
}

void SsiTable::Reset() {
  records_.Reset();
  first_.clear();
}

void SsiTable::Reserve(std::size_t records) {
  records_.Reserve(records);
  first_.reserve(records);
}

void CallCounts::Count(std::int32_t gssi, std::int32_t calls) {
  const auto found = index_.find(gssi);
  if (found == index_.end()) {
    index_.emplace(gssi, static_cast<std::uint32_t>(records_.Append({gssi, calls})));
    return;
  }
  std::int32_t& sum = records_[found->second].Calls;
  const std::int64_t wide = std::int64_t{sum} + calls;
  constexpr std::int64_t kLowest = std::numeric_limits<std::int32_t>::min();
  constexpr std::int64_t kHighest = std::numeric_limits<std::int32_t>::max();
  sum = static_cast<std::int32_t>(std::clamp(wide, kLowest, kHighest));
}

void CallCounts::Reset() {
  records_.Reset();
  index_.clear();
}

}  // namespace corvane
