// corvane-tools: the companion of Corvane for the command line.
#include <cstdio>

#include "tools/command.h"
#include "tools/output.h"
#include "tools/terminal.h"

int main(int count, char** values) {
  using namespace corvane::tools;
  UseLanguageOfSystem();
  MakeStreamsBinary();
  FileOutput out(stdout);
  FileOutput err(stderr);
  Console console{out, err, OutputIsTerminal(), ErrorOutputIsTerminal()};
  const Arguments arguments(values + (count > 0 ? 1 : 0), values + count);
  return static_cast<int>(RunTools(arguments, console));
}
