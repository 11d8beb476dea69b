// The standard streams under Linux.
#include <unistd.h>

#include "tools/terminal.h"

namespace corvane::tools {

void UseLanguageOfSystem() {}

void MakeStreamsBinary() {}

bool OutputIsTerminal() {
  return isatty(STDOUT_FILENO) == 1;
}

bool ErrorOutputIsTerminal() {
  return isatty(STDERR_FILENO) == 1;
}

}  // namespace corvane::tools
