// Runs of corvane-tools on files in a folder of their own.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "tools/command.h"
#include "unit/archive/folder_fixture.h"

namespace corvane::tools {

class ToolsTest : public FolderTest {
 protected:
  struct Run {
    ExitCode code;
    std::string out;
    std::string err;
  };
  static Run Tools(const Arguments& arguments) {
    StringOutput out;
    StringOutput err;
    Console console{out, err};
    const ExitCode code = RunTools(arguments, console);
    return {code, out.text(), err.text()};
  }
  static std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
  }

  static std::string Setup(int gssi, int call_id, int slot = 2, int carrier = 2610) {
    return "SSI:" + std::to_string(gssi) +
           " D_Setup Transmission Granted Call ID:" + std::to_string(call_id) +
           " Basic_service:Point_to_multipoint Party_SSI:5010 TimeSlot:" + std::to_string(slot) +
           " Carrier:" + std::to_string(carrier) + " \r\n";
  }
  static std::string Event(const std::string& name, int gssi, int call_id) {
    return "SSI:" + std::to_string(gssi) + " " + name + " Call ID:" + std::to_string(call_id) +
           " \r\n";
  }
};

}  // namespace corvane::tools
