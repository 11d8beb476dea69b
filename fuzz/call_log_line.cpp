// A double click on any line of the call log; lines carry text from the air.
#include "fuzz/fuzzing.h"
#include "ui/editor_entry.h"

namespace corvane {
namespace {

void Check(const std::string& line) {
  using fuzzing::Require;
  const auto party = FindParty(line);
  if (!party) return;
  Require(party->gssi == 0 || party->ssi == 0, "a line names a group or a subscriber");
  Require(FindParty(line) == party, "reading has no memory");
}

}  // namespace
}  // namespace corvane

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  corvane::Check(corvane::fuzzing::Text(data, size));
  return 0;
}
