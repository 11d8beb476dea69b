// Finds SDR#'s windows and its plug-ins' controls on the desktop and switches Net Remote on.
//
// Nothing here is fatal: what is missing is logged and leaves its handle 0. No events run inside.
// The handle table is written here alone.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "link/link_context.h"

namespace corvane {

class Discovery {
 public:
  // A window of another program that was asked for its text and did not answer is passed over for
  // the run, with all others of that program, and not asked again before so long.
  static constexpr int kSecondLookMs = 30000;

  enum class Log {
    kWhole,         // every line of the run is logged
    kQuietRepeats,  // none, when the previous run's same lines still end the status log
  };

  explicit Discovery(LinkContext& context) : context_(context) {}

  // Fills the handle table afresh. Found all that is needed: writes the port, switches "Network" on
  // (see NetworkBox) and sets NetRemoteLinkUp; else NetRemoteLinkUp is False.
  void DiscoverSdrWindows(Log log);

  // Looks for an open Network Info window and its edit box alone: no press, no log line, the link
  // is not touched. Handles that are not found become 0. True when both were found.
  bool FindNetworkInfo();

  // Looks through the TETRA panel for those labels of MCC, MNC and LA whose handles are 0 or dead.
  // Does nothing when all three are alive. No log line.
  void FindMissingIdentityLabels();

 private:
  void Say(std::string line);
  void WriteLog(Log log);
  [[nodiscard]] std::string TextOfTopLevel(WindowHandle window);
  void FindMainWindow();
  void FindHeaders();
  void FindNetRemoteControls();
  void FindTetraControls();
  void OpenNetworkInfo();
  void FindNetworkInfoEdit();
  [[nodiscard]] bool FoundAllNeeded() const;
  [[nodiscard]] WindowHandle PanelOf(SdrRole header);
  [[nodiscard]] WindowHandle FindNetworkInfoWindow();

  LinkContext& context_;
  bool first_run_ = true;
  std::map<ProgramId, std::int64_t> passed_over_until_ms_;
  std::vector<std::string> lines_;     // of the present run
  std::vector<std::string> previous_;  // of the run before
};

}  // namespace corvane
