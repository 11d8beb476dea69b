// Sets SDR# up for call following, once after each connection, and knows where the user wants its
// main window to be.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "link/link_context.h"
#include "link/net_remote.h"
#include "link/network_info.h"
#include "panel/presets.h"

namespace corvane {

// Reads "left,top,right,bottom"; nullopt for anything else.
[[nodiscard]] std::optional<ScreenRect> ParsePosition(std::string_view text);

// The double click on lblPositionSdrSharpCC: shows in it where SDR# is now, if SDR# is shown
// normally (neither minimised nor maximised).
void TakeSdrPosition(LinkContext& context);

class SdrSetup {
 public:
  SdrSetup(LinkContext& context, NetRemote& net_remote, NetworkInfo& network_info,
           const Presets& presets)
      : context_(context),
        net_remote_(net_remote),
        network_info_(network_info),
        presets_(presets) {}

  // Puts SDR# where the user wants it, tunes it to the park carrier, has it play and sets the
  // plug-in's check boxes; about two seconds. True, with mblnSetupDone set, when it went through;
  // false, and nothing further done, as soon as the program shuts down or the socket is not
  // connected. Lets events run.
  [[nodiscard]] bool Run();

  // One step per cycle after Run: where a box was pressed and gave no answer, its state is looked
  // at again as soon as SDR# answers, and it is pressed once more only if that is still the wrong
  // one. False like Run. Lets events run.
  [[nodiscard]] bool FinishCheckBoxes();

 private:
  void Position();
  [[nodiscard]] bool MustStop() const;
  [[nodiscard]] bool Pause(int ms);
  [[nodiscard]] bool Set(const std::string& method, const std::string& value);
  [[nodiscard]] bool Tune();
  [[nodiscard]] bool Play();
  [[nodiscard]] bool ShowSdr();
  [[nodiscard]] bool SetCheckBoxes();
  void Press(SdrRole box);

  LinkContext& context_;
  NetRemote& net_remote_;
  NetworkInfo& network_info_;
  const Presets& presets_;
  bool press_unanswered_ = false;
};

}  // namespace corvane
