// Simulated boxes.
#include "sim/sim_prompts.h"

namespace corvane::sim {

void SimPrompts::ShowBox(const std::string& text, const std::string& title, BoxIcon icon) {
  const Box box{text, title, icon};
  boxes_.push_back(box);
  ++open_now_;
  if (while_open_) while_open_(box);
  if (open_ms_ > 0) loop_.AdvanceMs(open_ms_);
  --open_now_;
}

void SimPrompts::EndProgram() {
  ++times_ended_;
  loop_.Stop();
  if (on_end_) on_end_();
}

}  // namespace corvane::sim
