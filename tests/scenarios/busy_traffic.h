// An hour of a busy network as signalling lines, made up from a seed: the same on every machine.
// Knows nothing of the program that reads them. Portable.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace corvane::busy {

enum class What {
  kSetup,
  kGranted,
  kCeased,
  kRelease,
  kDisconnect,
  kOther,  // lines that end or begin nothing, damaged ones included
  kLogModeOn,
  kLogModeOff,
};

struct Event {
  std::int64_t ms = 0;  // since the traffic began
  What what = What::kOther;
  std::string line;  // "" for the user's events
  int id = -1;       // -1: the line carries no Call ID
  int group = 0;
  int party = 0;
  int carrier = 0;
  int slot = 0;
  std::string status;  // of a setup: "Transmission Granted"
  bool individual = false;
  bool encrypted = false;
};

// Behind the last event: what still runs has timed out by then.
inline constexpr std::int64_t kQuietEndMs = 40'000;

struct TrafficOptions {
  std::uint32_t seed = 1;
  int minutes = 60;
  bool log_mode = false;  // begins with LOG mode
  bool switches = false;  // LOG mode is switched on in mid-call, and off again, twice
  bool lost_releases =
      false;  // now and then a release is not seen; half a minute of silence follows
};

// Times lie at least 300 ms apart and not close to the end of a second.
[[nodiscard]] std::vector<Event> MakeTraffic(const TrafficOptions& options);

// The two hours that are compared with reviewed files, and when each begins, in seconds after
// midnight: both pass the next midnight.
[[nodiscard]] TrafficOptions LogModeHour();
[[nodiscard]] TrafficOptions FollowingHour();
inline constexpr std::int64_t kLogModeBegin_s = 23 * 3600 + 25 * 60;
inline constexpr std::int64_t kFollowingBegin_s = 23 * 3600 + 34 * 60;

inline constexpr int kLockedOutGroup = 9004;

// The lists that the program begins with: labels, a locked-out group, a labelled subscriber.
inline constexpr const char* kGroupList =
    "9001;262;42;Fire & rescue;0;True\r\n"
    "9002;262;42;K\xF6ln S\xFC"
    "d;0;True\r\n"
    "9004;262;42;Not for me;0;False\r\n";
inline constexpr const char* kSubscriberList = "5010;9001;262;42;Engine 1;2025-11-20 10:11:12\r\n";

}  // namespace corvane::busy
