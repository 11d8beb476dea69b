// Runs of corvane-tools on files in a folder of their own.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tools/command.h"

namespace corvane::tools {

class ToolsTest : public ::testing::Test {
 protected:
  ToolsTest() {
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    folder_ = std::filesystem::path(::testing::TempDir()) /
              (std::string("corvane-tools-") + test->test_suite_name() + "-" + test->name());
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
  }
  ~ToolsTest() override { std::filesystem::remove_all(folder_); }

  [[nodiscard]] std::string Path(const std::string& name) const {
    return (folder_ / name).string();
  }
  // Gives the path.
  std::string Put(const std::string& name, std::string_view content) const {
    std::filesystem::create_directories((folder_ / name).parent_path());
    std::ofstream(folder_ / name, std::ios::binary) << content;
    return Path(name);
  }
  [[nodiscard]] std::string Content(const std::string& name) const {
    std::ifstream stream(folder_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

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

 private:
  std::filesystem::path folder_;
};

}  // namespace corvane::tools
