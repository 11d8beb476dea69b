// The call that the program is concerned with: what the network said of it, who was heard, how long
// it may stay silent. Whatever is written here shows in the main window at once, and nowhere else
// is a call brought to its controls or taken from them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "panel/form1.h"

namespace corvane {

// What a setup line says of a call.
struct Setup {
  std::int16_t call_id = 0;
  std::int32_t party = 0;  // SSI of the caller
  std::string status;      // as in "Transmission Granted"
  std::int32_t gssi = 0;
  std::int16_t timeslot = 0;
  std::int32_t carrier = 0;
};

class Call {
 public:
  enum class State {
    kNone,      // nothing is shown, or what a broken ending left behind
    kShown,     // in the window, but not heard: counted, or on its way to being followed
    kFollowed,  // SDR# is tuned to it
  };
  // How a call goes, which decides in which order the window lets go of it.
  enum class Clearing {
    kEnded,     // by itself: its number stays until SDR# is back on the control channel
    kDropped,   // by the user, or a setup that was not carried out
    kLinkLost,  // with the connection
  };

  explicit Call(Form1& form) : form_(form) {}

  [[nodiscard]] State state() const { return state_; }
  [[nodiscard]] bool FollowingCall() const { return state_ == State::kFollowed; }
  [[nodiscard]] std::int16_t FollowedCallId() const { return followed_call_id_; }
  [[nodiscard]] std::int16_t CurrentPriority() const { return current_priority_; }
  // The group in the window, whether its call is followed or only counted.
  [[nodiscard]] std::optional<std::int32_t> shown_group() const { return group_; }
  [[nodiscard]] std::optional<std::int32_t> followed_group() const;
  [[nodiscard]] std::optional<std::int32_t> talker() const { return talker_; }
  [[nodiscard]] std::optional<std::int32_t> carrier() const { return carrier_; }
  [[nodiscard]] std::optional<std::int16_t> timeslot() const { return timeslot_; }
  // Each SSI once, in the order in which they were heard.
  [[nodiscard]] const std::vector<std::int32_t>& heard() const { return heard_; }
  [[nodiscard]] bool RecordingActive() const { return recording_active_; }

  // LOG mode: number, place and group of a call that nobody hears.
  void ShowCounted(const Setup& setup);
  // The call is about to be followed.
  void Accept(const Setup& setup, const std::string& group_label, std::int16_t priority);
  // Followed from now on; `number` shows last of all.
  void BeginFollowing();
  void ShowNumber(std::int16_t call_id);
  // Not followed any more; what is shown stays until it is cleared.
  void EndFollowing();

  void ShowGroupLabel(const std::string& label);
  void ShowTalker(std::int32_t ssi);
  void ShowTalkerLabel(const std::string& label);
  void ShowLastSeen(const std::string& time);
  [[nodiscard]] bool HasHeard(std::int32_t ssi) const;
  void AddHeard(std::int32_t ssi);

  void Clear(Clearing how);
  void ClearNumber();
  // The busy shape: filled green while a call is followed.
  void ShowIdle();
  // The busy shape's border.
  void SetRecording(bool recording);

  // Watchdog ticks of silence left; 0 while the call is followed: timed out. Shown once a poll.
  std::int32_t CallTimeoutTicks = 0;

 private:
  void ShowPlace(const Setup& setup);

  Form1& form_;
  State state_ = State::kNone;
  std::int16_t followed_call_id_ = 0;
  std::int16_t current_priority_ = 0;  // of the followed group; kept, but nothing is decided by it
  std::optional<std::int32_t> group_;
  std::optional<std::int32_t> talker_;
  std::optional<std::int32_t> carrier_;
  std::optional<std::int16_t> timeslot_;
  std::vector<std::int32_t> heard_;
  bool recording_active_ = false;
};

}  // namespace corvane
