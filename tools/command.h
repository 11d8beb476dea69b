// What every command of corvane-tools is: a name, a line in the list, a page of help and a function
// that does it.
#pragma once

#include <string>
#include <vector>

#include "tools/output.h"

namespace corvane::tools {

// How a run ends, as the shell sees it. Nothing that failed ends with kDone.
enum class ExitCode {
  kDone = 0,
  kDiffers = 1,  // from what was expected
  kFailed = 2,   // wrong usage, unreadable input, output that could not be written
};

// Where a command writes, and what it may ask of the terminal.
struct Console {
  Output& out;
  Output& err;
  bool out_is_terminal = false;
  bool err_is_terminal = false;
};

using Arguments = std::vector<std::string>;

struct Command {
  const char* name;
  const char* summary;
  const char* help;
  ExitCode (*run)(const Arguments& arguments, Console& console);
};

// Dispatches `arguments`, which begin with the name of a command, and sees to it that everything
// was written: a run whose output was lost has failed.
[[nodiscard]] ExitCode RunTools(const Arguments& arguments, Console& console);

// "corvane-tools NAME: TEXT", on the error output. Gives kFailed.
ExitCode Fail(Console& console, const char* command, const std::string& text);

extern const Command kListsCommand;
extern const Command kReplayCommand;
extern const Command kReportCommand;
extern const Command kShareCommand;
extern const Command kWatchCommand;

}  // namespace corvane::tools
