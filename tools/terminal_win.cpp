// The standard streams under Windows.
#include <fcntl.h>
#include <io.h>

#include <clocale>
#include <cstdio>
#include <initializer_list>

#include "tools/terminal.h"

namespace corvane::tools {

void UseLanguageOfSystem() {
  std::setlocale(LC_CTYPE, "");
}

void MakeStreamsBinary() {
  for (std::FILE* stream : {stdin, stdout, stderr}) {
    // Fails where the stream is closed; whatever is written to it then fails too.
    (void)_setmode(_fileno(stream), _O_BINARY);
  }
}

bool OutputIsTerminal() {
  return _isatty(_fileno(stdout)) != 0;
}

bool ErrorOutputIsTerminal() {
  return _isatty(_fileno(stderr)) != 0;
}

}  // namespace corvane::tools
