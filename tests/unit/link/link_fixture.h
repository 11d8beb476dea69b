// The link on the simulated desktop before anything has happened: SDR# with its two plug-ins and an
// open Network Info window, nothing found yet, Net Remote switched off.
#pragma once

#include <string>
#include <vector>

#include "link_world.h"

namespace corvane::test {

// What class names begin with, and how the stand-in's end.
inline constexpr const char* kWindow = "WindowsForms10.Window.8.app.0.141b42a_r8_ad1";
inline constexpr const char* kButton = "WindowsForms10.BUTTON.app.0.141b42a_r8_ad1";
inline constexpr const char* kStatic = "WindowsForms10.STATIC.app.0.141b42a_r8_ad1";
inline constexpr const char* kEdit = "WindowsForms10.EDIT.app.0.141b42a_r8_ad1";

inline constexpr const char* kOk = "{\"Result\":\"OK\"}\r\n";

class LinkTest : public ::testing::Test, protected LinkWorld {
 protected:
  using Message = sim::SimWindowOps::Message;

  explicit LinkTest(bool patient = false)
      : LinkWorld(LinkOptions{WithInfo(), {}, /*loaded=*/false, patient}) {
    flags.mblnFormLoaded = true;
  }

  void Discover() { discovery.DiscoverSdrWindows(Discovery::Log::kWhole); }
  // Found, Net Remote on, connected, the greeting read; nothing is set up or logged.
  void Connect() {
    Discover();
    while (!flags.NetRemoteConnected) remote.CheckNetRemoteConnection();
    form.lstStatusLog.Clear();
    desktop.socket().ForgetSent();
    sim().ForgetMessages();
  }
  // The server does not answer by itself any more.
  void Mute() { desktop.Do("reply drop count=all"); }
  // The server's bytes arrive and are handled.
  void Receive(const std::string& bytes) {
    desktop.wire().SendToAll(bytes);
    loop.AdvanceMs(2);
  }

  [[nodiscard]] sim::SimWindowOps& sim() { return desktop.windows(); }
  [[nodiscard]] standin::WindowTree& tree() { return desktop.model().tree(); }
  [[nodiscard]] const standin::SdrWindows::Ids& ids() const { return desktop.ids(); }
  [[nodiscard]] WindowHandle At(SdrRole role) const { return context.handles[role]; }
  using LinkWorld::At;
  standin::WindowId Add(standin::WindowId parent, const std::string& class_name,
                        const std::string& text = {}) {
    const bool button = class_name.find("BUTTON") != std::string::npos;
    const bool edit = class_name.find("EDIT") != std::string::npos;
    const auto kind = parent == 0 ? standin::Kind::kFrame
                      : button    ? standin::Kind::kButton
                      : edit      ? standin::Kind::kMultiLine
                                  : standin::Kind::kLabel;
    return tree().Add(parent, {kind, class_name, text, {100, 100, 80, 20}, true});
  }
  void ShowNetwork(const std::string& mcc, const std::string& mnc, const std::string& la) {
    tree().SetText(ids().mcc, "MCC:" + mcc);
    tree().SetText(ids().mnc, "MNC:" + mnc);
    tree().SetText(ids().la, "LA:" + la);
  }

  [[nodiscard]] std::vector<std::string> StatusLog() const { return form.lstStatusLog.items(); }
  [[nodiscard]] std::vector<std::string> CallLog() const { return form.lstCallLog.items(); }
  [[nodiscard]] bool LastStatusLineShown() const {
    return form.lstStatusLog.count() > 0 &&
           form.lstStatusLog.list_index() == form.lstStatusLog.count() - 1;
  }
  [[nodiscard]] std::string Now() const { return NowText(clock); }

 private:
  static standin::Options WithInfo() {
    standin::Options options;
    options.info_open = true;
    return options;
  }
};

}  // namespace corvane::test
