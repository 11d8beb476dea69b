// What only the system knows of the standard streams.
#pragma once

namespace corvane::tools {

// Texts are read in the language of the system: without this no letter but those of ASCII would be
// the same in arguments and in names of files.
void UseLanguageOfSystem();

// Bytes pass the standard streams as they are, without translation of line ends.
void MakeStreamsBinary();

[[nodiscard]] bool OutputIsTerminal();
[[nodiscard]] bool ErrorOutputIsTerminal();

}  // namespace corvane::tools
