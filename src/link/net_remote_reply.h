// What Net Remote's replies mean. Pure functions over bytes that anybody may have sent.
//
// The reading is deliberately plain: quotes are dropped, pairs are split at every "," and keys from
// values at every ":". The protocol's messages are short and flat.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

// What is behind this many bytes of one read is not looked at.
inline constexpr std::size_t kLongestReply = 65536;

enum class ReplyKind {
  kIgnored,       // another first key, or a pair is missing
  kGreeting,      // `greeting` is set
  kAcknowledged,  // a Set or Exe was done
  kAudioIsMuted,  // `value` is set
  kIsPlaying,     // `value` is set
  kUnexpected,    // to be dumped
  kError,         // to be dumped and reported
};

struct NetRemoteReply {
  ReplyKind kind = ReplyKind::kIgnored;
  bool is_result = false;      // answers a command, whatever it says
  std::string text;            // first line of the read, without quotes and braces
  bool error_dropped = false;  // lines behind it in the same read, of which one tells of an error
  std::string greeting;        // "Net Remote v1.0.5282.28765"
  bool value = false;
  // kError: whether there is a second pair to report about, and the line made of the pairs; the
  // line is missing when their number is not 3, 4 or 5.
  bool can_report = false;
  std::optional<std::string> error_line;
};

// Reads what one read brought.
[[nodiscard]] NetRemoteReply ReadNetRemoteReply(std::string_view received);

// "True" and "False" in any case, or a number, which is true unless it is 0. Blanks around it are
// dropped. nullopt for anything else.
[[nodiscard]] std::optional<bool> ReadBoolean(std::string_view text);

}  // namespace corvane
