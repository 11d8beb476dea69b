// Sets SDR# up for call following, once after each connection.
#pragma once

#include <string>

#include "link/link_context.h"
#include "link/net_remote.h"
#include "link/network_info_window.h"
#include "panel/presets.h"

namespace corvane {

class SdrSetup {
 public:
  SdrSetup(LinkContext& context, NetRemote& net_remote, NetworkInfoWindow& network_info,
           const Presets& presets)
      : context_(context),
        net_remote_(net_remote),
        network_info_(network_info),
        presets_(presets) {}

  // Positions SDR#, tunes it to the park carrier, has it play and sets the plug-in's check boxes;
  // about two seconds. True, with mblnSetupDone set, when it went through; false, and nothing
  // further done, as soon as the program shuts down or the socket is not connected. Lets events
  // run.
  [[nodiscard]] bool Run();

 private:
  [[nodiscard]] bool MustStop() const;
  [[nodiscard]] bool Pause(int ms);
  [[nodiscard]] bool AwaitReply();
  [[nodiscard]] bool Set(const std::string& method, const std::string& value);
  [[nodiscard]] bool Tune();
  [[nodiscard]] bool Play();
  [[nodiscard]] bool ShowSdr();
  [[nodiscard]] bool SetCheckBoxes();

  LinkContext& context_;
  NetRemote& net_remote_;
  NetworkInfoWindow& network_info_;
  const Presets& presets_;
};

}  // namespace corvane
