// What a client sends to the stand-in's Net Remote server in one read.
#include "fuzz/fuzzing.h"
#include "standin/net_remote_dialogue.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using corvane::fuzzing::Require;
  corvane::standin::Air air;
  corvane::standin::Receiver receiver(
      air, [] { return std::int64_t{0}; }, [] {});
  const std::string reply =
      corvane::standin::AnswerCommand(receiver, corvane::fuzzing::Text(data, size));
  Require(reply.ends_with("\r\n"), "every reply ends its line");
  Require(reply.find('\n') == reply.size() - 1, "a reply is one line");
  Require(reply.starts_with('{'), "a reply is an object");
  return 0;
}
