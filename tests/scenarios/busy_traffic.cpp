// Calls that overlap, speakers that change, and everything else that a network sends.
#include "scenarios/busy_traffic.h"

#include <array>
#include <optional>

namespace corvane::busy {

namespace {

// The last Call ID before the network's counter starts anew, far enough above the first ones.
constexpr int kLastId = 190;
constexpr std::int64_t kLostCallSilenceMs = 36'000;

class Maker {
 public:
  explicit Maker(const TrafficOptions& options) : options_(options), state_(options.seed) {}

  std::vector<Event> Make() {
    const std::int64_t end_ms = std::int64_t{options_.minutes} * 60'000;
    const std::int64_t quarter_ms = end_ms / 4;
    int switches = 0;
    if (options_.log_mode) AddUser(What::kLogModeOn);
    while (now_ms_ < end_ms) {
      Step();
      if (options_.switches && switches < 3 && now_ms_ > quarter_ms * (switches + 1)) {
        // In mid-call, where it can: a call has just begun.
        if (switches % 2 == 0) Setup();
        AddUser(switches % 2 == 0 ? What::kLogModeOn : What::kLogModeOff);
        ++switches;
      }
    }
    return std::move(events_);
  }

 private:
  int Pick(int low, int high) {
    state_ = state_ * 1664525U + 1013904223U;
    return low + static_cast<int>((state_ >> 8) % static_cast<std::uint32_t>(high - low + 1));
  }

  void Wait() {
    now_ms_ += 300 * Pick(1, 9);
    if (now_ms_ % 1000 < 100 || now_ms_ % 1000 > 800) now_ms_ = now_ms_ / 1000 * 1000 + 1150;
  }

  void Add(Event event) {
    Wait();
    event.ms = now_ms_;
    events_.push_back(event);
    const int luck = Pick(1, 100);
    if (luck <= 8) {
      // The same line at once a second time.
      Wait();
      event.ms = now_ms_;
      events_.push_back(event);
    } else if (luck <= 12) {
      again_ = event;
    }
  }

  void AddUser(What what) {
    Wait();
    Event event;
    event.ms = now_ms_;
    event.what = what;
    events_.push_back(event);
  }

  void Step() {
    if (again_ && Pick(1, 3) == 1) {
      Event event = *again_;
      again_.reset();
      Wait();
      event.ms = now_ms_;
      events_.push_back(event);
      return;
    }
    const int luck = Pick(1, 100);
    if (calls_.size() < 3 && luck <= 35) {
      Setup();
    } else if (!calls_.empty() && luck <= 60) {
      Speak();
    } else if (!calls_.empty() && luck <= 80) {
      End();
    } else {
      Other();
    }
  }

  static std::string Head(const Event& call) { return "SSI:" + std::to_string(call.group) + " "; }
  static std::string Id(const Event& call) { return "Call ID:" + std::to_string(call.id) + " "; }

  void Setup() {
    id_ += Pick(1, 3);
    if (id_ > kLastId) id_ = Pick(1, 9);
    Event call;
    call.what = What::kSetup;
    call.id = id_;
    call.group = 9000 + Pick(1, 7);
    call.party = 5009 + Pick(1, 6);
    call.carrier = 2610 + Pick(0, 3);
    call.slot = Pick(1, 4);
    static const std::array<const char*, 8> kStatus = {"Granted",     "Granted", "Granted",
                                                       "Granted",     "Granted", "Request_queued",
                                                       "Not_granted", "Granted"};
    call.status = std::string("Transmission ") + kStatus.at(static_cast<std::size_t>(Pick(0, 7)));
    call.individual = Pick(1, 10) == 1;
    call.encrypted = Pick(1, 10) == 1;
    // A late repeat of an older call: not far enough back to be the counter's new start.
    if (Pick(1, 12) == 1 && call.id > 40) call.id -= Pick(5, 25);
    call.line =
        Head(call) + "D_Setup " + call.status + " " + Id(call) +
        "Basic_service:" + (call.individual ? "Individual" : "Point_to_multipoint") +
        " Party_SSI:" + std::to_string(call.party) + " TimeSlot:" + std::to_string(call.slot) +
        " Carrier:" + std::to_string(call.carrier) + " " + (call.encrypted ? "PDU encrypted " : "");
    Add(call);
    if (!call.individual && !call.encrypted && call.status != "Transmission Not_granted") {
      calls_.push_back(call);
    }
  }

  void Speak() {
    Event& call = calls_[static_cast<std::size_t>(Pick(0, static_cast<int>(calls_.size()) - 1))];
    Event event = call;
    if (Pick(1, 2) == 1) {
      event.what = What::kCeased;
      event.line = Head(call) + "D_TX_Ceased " + Id(call);
    } else {
      event.what = What::kGranted;
      event.party = call.party = 5009 + Pick(1, 6);
      event.line =
          Head(call) + "D_TX_Granted " + Id(call) +
          "Transmission_grant:Granted_to_another_user Party_SSI:" + std::to_string(event.party);
    }
    Add(event);
  }

  void End() {
    const auto at = static_cast<std::size_t>(Pick(0, static_cast<int>(calls_.size()) - 1));
    Event event = calls_[at];
    calls_.erase(calls_.begin() + static_cast<std::ptrdiff_t>(at));
    if (options_.lost_releases && Pick(1, 12) == 1) {
      // Whichever call is followed now, nothing is heard of it any more.
      calls_.clear();
      now_ms_ += kLostCallSilenceMs;
      return;
    }
    const bool disconnected = Pick(1, 4) == 1;
    event.what = disconnected ? What::kDisconnect : What::kRelease;
    event.line = Head(event) + (disconnected ? "D_Disconnect " : "D_Release ") + Id(event) +
                 (disconnected ? "" : "Disconnect_cause:User_requested ");
    Add(event);
  }

  void Other() {
    Event event;
    const std::string ssi = "SSI:" + std::to_string(5009 + Pick(1, 30)) + " ";
    const std::string number = std::to_string(Pick(1, 999));
    switch (Pick(1, 11)) {
      case 1:
        event.line = ssi + "D_SDS_Data Protocol_identifier:" + number + " ";
        break;
      case 2:
        event.line = ssi + "D_Status Pre_coded_status:" + number + " ";
        break;
      case 3:
        event.line = ssi + "D_Connect_Acknowledge Reference:" + number + " ";
        break;
      case 4:
        event.line = ssi + "D_Alert Reference:" + number + " ";
        break;
      case 5:
        event.line = ssi + "D_Info Reset_call_timeout:" + number + " ";
        break;
      case 6:
        event.line = ssi + "D_Wait Reference:" + number + " D_Facility ";
        break;
      case 7:
        event.line = ssi + "D_Call_Proceeding D_Call_Restore Reference:" + number + " ";
        break;
      case 8:
        event.line = ssi + "D_TX_Continue Reference:" + number + " ";
        break;
      case 9:
        event.line = "System_info LA:101 Frame:" + number;
        break;
      case 10:
        event.line = ssi + "PDU encrypted D_Status Frame:" + number;
        event.encrypted = true;
        break;
      default:
        event.line = ssi + "D_Setup Transmission Granted Basic_service: TimeSlot:" + number + " ";
        break;
    }
    Add(event);
  }

  TrafficOptions options_;
  std::uint32_t state_;
  std::int64_t now_ms_ = 0;
  int id_ = 150;
  std::vector<Event> calls_;
  std::vector<Event> events_;
  std::optional<Event> again_;
};

}  // namespace

TrafficOptions LogModeHour() {
  TrafficOptions options;
  options.seed = 11;
  options.log_mode = true;
  return options;
}

TrafficOptions FollowingHour() {
  TrafficOptions options;
  options.seed = 7;
  options.switches = true;
  options.lost_releases = true;
  return options;
}

std::vector<Event> MakeTraffic(const TrafficOptions& options) {
  return Maker(options).Make();
}

}  // namespace corvane::busy
