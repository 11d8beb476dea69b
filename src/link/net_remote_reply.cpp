// Splits a reply and says what it is.
#include "link/net_remote_reply.h"

#include <algorithm>
#include <vector>

#include "base/text.h"

namespace corvane {

namespace {

constexpr std::string_view kEndOfLine = "\r\n";

// What stands between the first ":" and the second, as it stands; nullopt without a ":".
std::optional<std::string_view> AfterColon(std::string_view pair) {
  const std::size_t colon = pair.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const std::string_view rest = pair.substr(colon + 1);
  return rest.substr(0, rest.find(':'));
}

std::string_view BeforeColon(std::string_view pair) {
  return pair.substr(0, pair.find(':'));
}

// The first line without quotes and without what encloses it.
std::string Reduce(std::string_view received) {
  received = received.substr(0, received.find(kEndOfLine));
  std::string text(received);
  std::erase(text, '"');
  if (text.size() < 2) return text;
  return text.substr(1, text.size() - 2);
}

using Pairs = std::vector<std::string>;

void ReadGreeting(const Pairs& pairs, std::string_view word, NetRemoteReply& reply) {
  if (pairs.size() < 2) return;
  const auto version = AfterColon(pairs[1]);
  if (!version) return;
  reply.kind = ReplyKind::kGreeting;
  reply.greeting.append(word).append(" v").append(Trim(*version));
}

void ReadState(ReplyKind kind, std::string_view value, NetRemoteReply& reply) {
  const auto state = ReadBoolean(value);
  if (!state) return;
  reply.kind = kind;
  reply.value = *state;
}

void ReadSuccess(const Pairs& pairs, NetRemoteReply& reply) {
  if (pairs.size() == 1) {
    reply.kind = ReplyKind::kAcknowledged;
    return;
  }
  if (pairs.size() < 3) return;
  const auto method = AfterColon(pairs[1]);
  const auto value = AfterColon(pairs[2]);
  if (!method || !value) return;
  const std::string_view name = Trim(*method);
  if (name == "AudioIsMuted") {
    ReadState(ReplyKind::kAudioIsMuted, *value, reply);
  } else if (name == "IsPlaying") {
    ReadState(ReplyKind::kIsPlaying, *value, reply);
  } else {
    reply.kind = ReplyKind::kUnexpected;
  }
}

void ReadError(const Pairs& pairs, NetRemoteReply& reply) {
  reply.kind = ReplyKind::kError;
  if (pairs.size() < 2) return;
  const auto type = AfterColon(pairs[1]);
  if (!type) return;
  reply.can_report = true;
  const std::string start = std::string(*type) + " in";
  if (pairs.size() == 3) reply.error_line = start + pairs[2];
  if (pairs.size() == 4) reply.error_line = start + pairs[3];
  if (pairs.size() == 5) reply.error_line = start + pairs[3] + " invalid" + pairs[4];
}

}  // namespace

NetRemoteReply ReadNetRemoteReply(std::string_view received) {
  received = received.substr(0, kLongestReply);
  NetRemoteReply reply;
  reply.text = Reduce(received);
  const std::size_t end = std::min(received.find(kEndOfLine), received.size());
  reply.error_dropped = Contains(received.substr(end), "Error");
  const Pairs pairs = Split(reply.text, ',');
  const auto first_value = AfterColon(pairs[0]);
  const std::string_view key = Trim(BeforeColon(pairs[0]));
  reply.is_result = key == "Result";
  if (!first_value) return reply;
  const std::string_view word = Trim(*first_value);
  if (key == "Name") {
    ReadGreeting(pairs, word, reply);
  } else if (!reply.is_result) {
    return reply;
  } else if (word == "OK") {
    ReadSuccess(pairs, reply);
  } else if (word == "Error") {
    ReadError(pairs, reply);
  } else {
    reply.kind = ReplyKind::kUnexpected;
  }
  return reply;
}

std::optional<bool> ReadBoolean(std::string_view text) {
  text = Trim(text);
  if (SameWord(text, "true")) return true;
  if (SameWord(text, "false")) return false;
  if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
  bool digits = false;
  bool point = false;
  bool value = false;
  for (const char c : text) {
    if (c == '.' && !point) {
      point = true;
    } else if (c >= '0' && c <= '9') {
      digits = true;
      value = value || c != '0';
    } else {
      return std::nullopt;
    }
  }
  if (!digits) return std::nullopt;
  return value;
}

}  // namespace corvane
