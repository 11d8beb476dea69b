// Whatever one read of the Net Remote socket brings.
#include "link/net_remote_reply.h"

#include "fuzz/fuzzing.h"

namespace corvane {
namespace {

void Check(const std::string& received) {
  using fuzzing::Require;
  const NetRemoteReply reply = ReadNetRemoteReply(received);
  Require(reply.text.size() <= received.size(), "the text is a part of the read");
  Require(reply.text.size() <= kLongestReply, "no text is longer than what is looked at");
  Require(reply.text.find('"') == std::string::npos, "quotes are gone");
  Require(!reply.error_line || reply.kind == ReplyKind::kError, "only an error has a line");
  Require(reply.greeting.empty() || reply.kind == ReplyKind::kGreeting, "a greeting greets");
  const NetRemoteReply again = ReadNetRemoteReply(received);
  Require(again.kind == reply.kind && again.text == reply.text, "reading has no memory");
  static_cast<void>(ReadBoolean(received));
}

}  // namespace
}  // namespace corvane

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  corvane::Check(corvane::fuzzing::Text(data, size));
  return 0;
}
