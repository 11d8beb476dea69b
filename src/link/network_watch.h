// Follows which network the plug-in decodes: reads MCC, MNC and LA, reports a change or the loss of
// the network, and has the poll step run while there is one.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/call_follower.h"
#include "core/ports.h"
#include "core/scanner.h"
#include "link/discovery.h"
#include "link/link_context.h"
#include "store/labels.h"
#include "store/tables.h"

namespace corvane {

// The number that a label shows behind `prefix`, in plain decimal without leading zeros; "0" when
// that is not all digits or above 32767.
[[nodiscard]] std::string IdentityNumber(std::string_view text, std::string_view prefix);

class NetworkWatch {
 public:
  // Cycles without a network that are passed over.
  static constexpr std::int32_t kToleratedCycles = 200;

  NetworkWatch(LinkContext& context, Discovery& discovery, NetworkIdentity& network,
               const NetworkNames& names, const GssiTable& groups, CallFollower& follower,
               Scanner& scanner)
      : context_(context),
        discovery_(discovery),
        network_(network),
        names_(names),
        groups_(groups),
        follower_(follower),
        scanner_(scanner) {}

  // One step per cycle. Lets events run.
  void Step();

  // The next network counts as a new one.
  void Forget() { NetworkKey.clear(); }

  std::string NetworkKey;           // MCC, MNC and LA last seen, joined without separator
  std::int32_t NoNetworkCount = 0;  // cycles in a row without a network

 private:
  [[nodiscard]] bool ReadIdentity();
  [[nodiscard]] bool MatchesKey() const;
  void TakeKey();
  void ReportNetwork();
  void ReportNoNetwork();
  [[nodiscard]] std::string LocationAreaSuffix() const;
  void ShowCountry();
  void ShowNetworkTip(const std::string& suffix);
  void CountGroups();

  LinkContext& context_;
  Discovery& discovery_;
  NetworkIdentity& network_;
  const NetworkNames& names_;
  const GssiTable& groups_;
  CallFollower& follower_;
  Scanner& scanner_;
};

}  // namespace corvane
