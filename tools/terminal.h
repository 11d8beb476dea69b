// What only the system knows of the standard streams.
#pragma once

namespace corvane::tools {

// Bytes pass the standard streams as they are, without translation of line ends.
void MakeStreamsBinary();

[[nodiscard]] bool OutputIsTerminal();
[[nodiscard]] bool ErrorOutputIsTerminal();

}  // namespace corvane::tools
