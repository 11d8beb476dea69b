// Everything the program needs of its surroundings, as references to the seams.
#pragma once

#include <string>

#include "base/files.h"
#include "base/loop.h"
#include "base/prompts.h"
#include "base/wall_clock.h"
#include "link/socket.h"
#include "link/window_ops.h"
#include "panel/control_sink.h"
#include "record/mci.h"

namespace corvane {

struct Platform {
  Loop& loop;
  WallClock& clock;
  ControlSink& sink;
  WindowOps& windows;
  Socket& socket;
  Files& files;
  Mci& mci;
  Prompts& prompts;
  std::string program_folder;  // without "\" at its end
};

}  // namespace corvane
