// The commands, and finding the one that is meant.
#include "tools/command.h"

#include <exception>

#include "panel/version.h"

namespace corvane::tools {

namespace {

constexpr const Command* kCommands[] = {&kReplayCommand, &kReportCommand, &kListsCommand,
                                        &kShareCommand, &kWatchCommand};

const Command* Find(const std::string& name) {
  for (const Command* command : kCommands) {
    if (name == command->name) return command;
  }
  return nullptr;
}

bool IsHelp(const std::string& argument) {
  return argument == "--help" || argument == "-h";
}

std::string Overview() {
  std::string text =
      "usage: corvane-tools COMMAND [FILE] [OPTION]...\n"
      "       corvane-tools COMMAND --help\n"
      "       corvane-tools --version\n\ncommands:\n";
  for (const Command* command : kCommands) {
    text += "  " + std::string(command->name) + "  " + command->summary + "\n";
  }
  return text;
}

ExitCode Dispatch(const Arguments& arguments, Console& console) {
  if (arguments.empty()) {
    console.err.Write(Overview());
    return ExitCode::kFailed;
  }
  const std::string& first = arguments.front();
  const bool asks = IsHelp(first) || first == "help";
  if (asks && arguments.size() == 1) {
    console.out.Write(Overview());
    return ExitCode::kDone;
  }
  if (first == "--version") {
    console.out.Write("corvane-tools " CORVANE_VERSION "\n");
    return ExitCode::kDone;
  }
  const Command* command = Find(asks ? arguments[1] : first);
  if (command == nullptr) {
    console.err.Write("corvane-tools: there is no command " + (asks ? arguments[1] : first) + "\n" +
                      Overview());
    return ExitCode::kFailed;
  }
  const Arguments rest(arguments.begin() + 1, arguments.end());
  bool help = asks;
  for (const std::string& argument : rest) help = help || IsHelp(argument);
  if (!help) return command->run(rest, console);
  console.out.Write(command->help);
  return ExitCode::kDone;
}

}  // namespace

ExitCode RunTools(const Arguments& arguments, Console& console) {
  ExitCode code = ExitCode::kFailed;
  try {
    code = Dispatch(arguments, console);
  } catch (const std::exception& error) {
    console.err.Write("corvane-tools: " + std::string(error.what()) + "\n");
  }
  if (!console.out.Flush()) {
    if (code == ExitCode::kDone) {
      console.err.Write("corvane-tools: the output could not be written\n");
    }
    code = ExitCode::kFailed;
  }
  return console.err.Flush() ? code : ExitCode::kFailed;
}

ExitCode Fail(Console& console, const char* command, const std::string& text) {
  console.err.Write("corvane-tools " + std::string(command) + ": " + text + "\n");
  return ExitCode::kFailed;
}

}  // namespace corvane::tools
