// A program that is run with all its output in a file.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace corvane::desktop {

// Runs `command`, a whole command line, in this program's folder. Its exit code; nullopt when it
// could not be started, or was ended because it took longer than `limit_s`.
[[nodiscard]] std::optional<unsigned> RunLogged(const std::string& command,
                                                const std::filesystem::path& log, int limit_s);

}  // namespace corvane::desktop
