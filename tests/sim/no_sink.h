// A sink for what nobody looks at.
#pragma once

#include "panel/control_sink.h"

namespace corvane::sim {

class NoSink : public ControlSink {
 public:
  void Changed(const Control&, Field) override {}
  void ListChanged(ListBox&, ListChange, std::size_t) override {}
  void FocusWanted(const Control&) override {}
};

}  // namespace corvane::sim
