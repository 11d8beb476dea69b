// Lookups and additions within the current network.
#include "core/bookkeeping.h"

#include "base/number_text.h"

namespace corvane {

namespace {
std::int16_t RecordCode(std::int32_t code) {
  return static_cast<std::int16_t>(code);  // identity texts never exceed 32767
}
}  // namespace

std::size_t Bookkeeping::FindGroupIndex(std::int32_t gssi) {
  const std::int32_t mcc = context_.network.mcc();
  const std::int32_t mnc = context_.network.mnc();
  if (const auto found = context_.groups.Find(mcc, mnc, gssi)) return *found;
  GssiRecord record;
  record.Gssi = gssi;
  record.Mcc = RecordCode(mcc);
  record.Mnc = RecordCode(mnc);
  record.Follow = true;
  return context_.groups.Append(record);
}

void Bookkeeping::CheckGroup(std::int32_t gssi) {
  const std::int32_t mcc = context_.network.mcc();
  const std::int32_t mnc = context_.network.mnc();
  if (context_.groups.Find(mcc, mnc, gssi)) return;
  GssiRecord record;
  record.Gssi = gssi;
  record.Mcc = RecordCode(mcc);
  record.Mnc = RecordCode(mnc);
  record.Label = std::string_view("Individual");
  record.Follow = true;
  context_.groups.Append(record);
}

std::string Bookkeeping::LookupSsiLabel(std::int32_t ssi, std::int32_t gssi) {
  const auto found =
      context_.subscribers.Find(context_.network.mcc(), context_.network.mnc(), gssi, ssi);
  if (!found) return {};
  const SsiRecord& record = context_.subscribers[*found];
  context_.form.lblSsiLastSeen.caption = context_.clock.GeneralDate(record.LastSeen);
  return record.Label.trimmed();
}

void Bookkeeping::StoreCallSubscribers() {
  const auto gssi = ParseShown<std::int32_t>(context_.form.lblGroupNumber.caption.get());
  if (!gssi) return;
  const std::int32_t mcc = context_.network.mcc();
  const std::int32_t mnc = context_.network.mnc();
  const DateTime now = context_.clock.Now();
  for (const std::string& item : context_.form.lstCurrentSSI_Users.items()) {
    const auto ssi = ParseShown<std::int32_t>(item);
    if (!ssi) continue;
    if (const auto found = context_.subscribers.Find(mcc, mnc, *gssi, *ssi)) {
      context_.subscribers.SetLastSeen(*found, now);
      continue;
    }
    SsiRecord record;
    record.Ssi = *ssi;
    record.LastGssi = *gssi;
    record.Mcc = RecordCode(mcc);
    record.Mnc = RecordCode(mnc);
    record.LastSeen = now;
    context_.subscribers.Append(record);
  }
}

}  // namespace corvane
