// Lines and entries of the editor.
#include "ui/editor_lines.h"

#include <set>

#include "base/number_text.h"

namespace corvane {

namespace {

constexpr std::string_view kSeparator = " - ";

// The number, with the label that the file has for `key`.
ComboBox::Entry MakeEntry(std::int32_t code, const LabelLines& labels, const std::string& key) {
  ComboBox::Entry entry{Decimal(code), code};
  if (!labels.loaded) return entry;
  const std::optional<std::string> label = labels.Find(key);
  if (label && !label->empty()) entry.text += std::string(kSeparator) + *label;
  return entry;
}

}  // namespace

std::string GroupLine(const GssiRecord& record) {
  return Decimal(record.Gssi) + " - " + Decimal(record.Priority) + " - " + record.Label.trimmed();
}

std::string SubscriberLine(const SsiRecord& record) {
  return Decimal(record.Ssi) + " - " + std::string(record.Label.padded());
}

std::optional<std::int32_t> NumberOfLine(std::string_view line) {
  return ParseDecimal<std::int32_t>(line.substr(0, line.find(kSeparator)));
}

std::vector<ComboBox::Entry> CountryEntries(const GssiTable& groups, const SsiTable& subscribers,
                                            const NetworkIdentity& in_reach,
                                            const NetworkNames& names) {
  std::set<std::int32_t> codes;
  if (in_reach.mcc() != 0) codes.insert(in_reach.mcc());
  for (const GssiRecord& record : groups) codes.insert(record.Mcc);
  for (const SsiRecord& record : subscribers) codes.insert(record.Mcc);
  std::vector<ComboBox::Entry> entries;
  entries.reserve(codes.size());
  for (const std::int32_t code : codes) {
    entries.push_back(MakeEntry(code, names.CountryLabels, Decimal(code)));
  }
  return entries;
}

std::vector<ComboBox::Entry> NetworkEntries(std::int32_t mcc, const GssiTable& groups,
                                            const SsiTable& subscribers,
                                            const NetworkIdentity& in_reach,
                                            const NetworkNames& names) {
  std::set<std::int32_t> codes;
  if (in_reach.mcc() == mcc && in_reach.mnc() != 0) codes.insert(in_reach.mnc());
  for (const GssiRecord& record : groups) {
    if (record.Mcc == mcc) codes.insert(record.Mnc);
  }
  for (const SsiRecord& record : subscribers) {
    if (record.Mcc == mcc) codes.insert(record.Mnc);
  }
  std::vector<ComboBox::Entry> entries;
  entries.reserve(codes.size());
  for (const std::int32_t code : codes) {
    entries.push_back(MakeEntry(code, names.NetworkLabels, Decimal(mcc) + ";" + Decimal(code)));
  }
  return entries;
}

}  // namespace corvane
