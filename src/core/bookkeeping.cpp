// Lookups and additions within the current network.
#include "core/bookkeeping.h"

namespace corvane {

namespace {
std::int16_t RecordCode(std::int32_t code) {
  return static_cast<std::int16_t>(code);  // identity texts never exceed 32767
}
}  // namespace

std::size_t Bookkeeping::AddGroup(std::int32_t gssi, std::string_view label) {
  GssiRecord record;
  record.Gssi = gssi;
  record.Mcc = RecordCode(network_.mcc());
  record.Mnc = RecordCode(network_.mnc());
  record.Label = label;
  record.Follow = true;
  return groups_.Append(record);
}

std::size_t Bookkeeping::FindGroupIndex(std::int32_t gssi) {
  const auto found = groups_.Find(network_.mcc(), network_.mnc(), gssi);
  return found ? *found : AddGroup(gssi, "");
}

void Bookkeeping::CheckGroup(std::int32_t gssi) {
  if (!groups_.Find(network_.mcc(), network_.mnc(), gssi)) AddGroup(gssi, "Individual");
}

std::string Bookkeeping::LookupSsiLabel(std::int32_t ssi, std::int32_t gssi) {
  const auto found = subscribers_.Find(network_.mcc(), network_.mnc(), gssi, ssi);
  if (!found) return {};
  const SsiRecord& record = subscribers_[*found];
  call_.ShowLastSeen(clock_.GeneralDate(record.LastSeen));
  return record.Label.trimmed();
}

void Bookkeeping::StoreCallSubscribers() {
  const auto gssi = call_.shown_group();
  if (!gssi) return;
  const DateTime now = clock_.Now();
  for (const std::int32_t ssi : call_.heard()) {
    if (const auto found = subscribers_.Find(network_.mcc(), network_.mnc(), *gssi, ssi)) {
      subscribers_.SetLastSeen(*found, now);
      continue;
    }
    SsiRecord record;
    record.Ssi = ssi;
    record.LastGssi = *gssi;
    record.Mcc = RecordCode(network_.mcc());
    record.Mnc = RecordCode(network_.mnc());
    record.LastSeen = now;
    subscribers_.Append(record);
  }
}

}  // namespace corvane
