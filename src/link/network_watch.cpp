// Reading the identity labels and reporting what changed.
#include "link/network_watch.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "base/number_text.h"
#include "base/text.h"
#include "panel/logs.h"

namespace corvane {

namespace {

constexpr int kReadings = 3;  // in a row; the last one counts
constexpr const char* kNoNetworkTip = "Current MNC,LA";

struct IdentityLabel {
  SdrRole role;
  std::string_view prefix;
  std::string NetworkIdentity::*value;
};

constexpr IdentityLabel kIdentityLabels[] = {
    {SdrRole::kMccLabel, "MCC:", &NetworkIdentity::CurrentMcc},
    {SdrRole::kMncLabel, "MNC:", &NetworkIdentity::CurrentMnc},
    {SdrRole::kLaLabel, "LA:", &NetworkIdentity::CurrentLa},
};

}  // namespace

std::string IdentityNumber(std::string_view text, std::string_view prefix) {
  if (text.starts_with(prefix)) text.remove_prefix(prefix.size());
  text = Trim(text);
  if (text.starts_with('-')) return "0";
  return Decimal(ParseDecimal<std::int16_t>(text).value_or(0));
}

// False when a label of the last reading is there but did not tell its text: then neither a network
// nor its absence was seen, and what was known stays.
bool NetworkWatch::ReadIdentity() {
  discovery_.FindMissingIdentityLabels();
  std::array<Answer<std::string>, std::size(kIdentityLabels)> texts;
  for (int reading = 0; reading < kReadings; ++reading) {
    for (std::size_t i = 0; i < texts.size(); ++i) {
      texts[i] = context_.windows.Text(context_.handles[kIdentityLabels[i].role]);
    }
  }
  for (const Answer<std::string>& text : texts) {
    if (text.reply == Reply::kNoAnswer || text.reply == Reply::kRefused) return false;
  }
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const IdentityLabel& label = kIdentityLabels[i];
    network_.*label.value = IdentityNumber(texts[i].value, label.prefix);
  }
  return true;
}

bool NetworkWatch::MatchesKey() const {
  return NetworkKey == network_.CurrentMcc + network_.CurrentMnc + network_.CurrentLa;
}

void NetworkWatch::TakeKey() {
  NetworkKey = network_.CurrentMcc + network_.CurrentMnc + network_.CurrentLa;
}

void NetworkWatch::Step() {
  if (!ReadIdentity()) return;
  const bool has_country = network_.CurrentMcc != "0";
  const bool has_network = network_.CurrentMnc != "0";
  if (has_country || has_network || network_.CurrentLa != "0") {
    if (!has_country || !has_network) return;
    NoNetworkCount = 0;
    if (!MatchesKey()) ReportNetwork();
    if (!context_.flags.mblnShuttingDown) scanner_.ScanNetworkInfo();
    return;
  }
  if (MatchesKey()) return;
  if (NoNetworkCount != kToleratedCycles) {
    ++NoNetworkCount;
    return;
  }
  ReportNoNetwork();
}

void NetworkWatch::ReportNetwork() {
  TakeKey();
  Form1& form = context_.form;
  const std::string suffix = LocationAreaSuffix();
  const std::string mnc_and_la = "MNC:" + network_.CurrentMnc + "  LA:" + network_.CurrentLa;
  form.lblNetworkInfo.caption = mnc_and_la;
  ShowCountry();
  AddCallLine(
      form, NowText(context_.clock) + " - MCC:" + network_.CurrentMcc + "  " + mnc_and_la + suffix);
  AddCallLine(form, "");
  ShowNetworkTip(suffix);
  CountGroups();
}

std::string NetworkWatch::LocationAreaSuffix() const {
  if (!names_.LocationAreaLabels.loaded) return {};
  const std::string label =
      names_.LocationAreaLabels
          .Find(network_.CurrentMcc + ";" + network_.CurrentMnc + ";" + network_.CurrentLa)
          .value_or("");
  return label.empty() ? std::string{} : " " + Bracketed(label);
}

void NetworkWatch::ShowCountry() {
  if (!names_.CountryLabels.loaded) return;
  const std::string label = names_.CountryLabels.Find(network_.CurrentMcc).value_or("");
  context_.form.mnuMCClabel.caption = label.empty() ? std::string{} : "MCC: " + label;
}

void NetworkWatch::ShowNetworkTip(const std::string& suffix) {
  std::optional<std::string> label;
  if (names_.NetworkLabels.loaded) {
    label = names_.NetworkLabels.Find(network_.CurrentMcc + ";" + network_.CurrentMnc);
  }
  context_.form.lblNetworkInfo.tool_tip = label ? *label + suffix : std::string(kNoNetworkTip);
}

void NetworkWatch::CountGroups() {
  const std::int32_t mcc = network_.mcc();
  const std::int32_t mnc = network_.mnc();
  const auto count =
      std::count_if(groups_.begin(), groups_.end(), [mcc, mnc](const GssiRecord& group) {
        return group.Gssi != 0 && group.Mcc == mcc && group.Mnc == mnc;
      });
  AddStatusLineInView(context_.form, "GSSI for this MNC network: " + Decimal(count));
}

void NetworkWatch::ReportNoNetwork() {
  TakeKey();
  NoNetworkCount = 0;
  Form1& form = context_.form;
  form.lblNetworkInfo.caption = std::string{};
  form.lblNetworkInfo.tool_tip = std::string(kNoNetworkTip);
  form.mnuMCClabel.caption = std::string("MCC: ?");
  AddCallLine(form, NowText(context_.clock) + " - No MCC/MNC/LA seen");
  AddCallLine(form, "");
  AddStatusLine(form, "GSSI loaded for this MNC network: 0");
  if (follower_.FollowingCall()) follower_.ResetCallDisplay();
}

}  // namespace corvane
