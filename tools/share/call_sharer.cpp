// The steps of sharing a call, in their order.
#include "tools/share/call_sharer.h"

#include <utility>

#include "archive/path_text.h"
#include "base/number_text.h"
#include "tools/share/sidecar.h"

namespace corvane::tools {

std::string CallSharer::Open() {
  std::string wrong = outbox_.Open();
  if (wrong.empty() && outbox_.damaged_notes() > 0) {
    Tell(Decimal(outbox_.damaged_notes()) + " lines of " + NarrowName(outbox_.notes()) +
         " are damaged: calls whose notes are lost and whose files are gone may be shared again");
  }
  return wrong;
}

void CallSharer::SetFolder(std::filesystem::path program_folder) {
  around_ = Surroundings(std::move(program_folder));
}

std::string CallSharer::Share(SharedCall call) {
  around_.Complete(call.call);
  SidecarFacts facts;
  facts.begin_utc = UtcOf(call.begin);
  facts.frequency_hz = around_.FrequencyOf(call.call);
  facts.system = options_.system;
  std::string wrong = outbox_.Share(call, SidecarJson(call, facts));
  if (!wrong.empty()) return wrong;
  ++count_;
  const std::string json = NarrowName(outbox_.SidecarOf(call));
  hooks_.Start(NarrowName(outbox_.RecordingOf(call)), json);
  console_.out.Write(json + "\n");
  return console_.out.Flush() ? "" : "the output could not be written";
}

void CallSharer::TellFailedHooks() {
  for (const std::string& line : hooks_.Failed()) Tell(line);
}

bool CallSharer::FlushOutput() {
  const bool out = console_.out.Flush();
  return console_.err.Flush() && out;
}

}  // namespace corvane::tools
