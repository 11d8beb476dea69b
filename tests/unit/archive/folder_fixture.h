// Files in a folder of the test's own, which goes with it.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace corvane::tools {

class FolderTest : public ::testing::Test {
 protected:
  FolderTest() {
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    folder_ = std::filesystem::path(::testing::TempDir()) /
              (std::string("corvane-") + test->test_suite_name() + "-" + test->name());
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
  }
  ~FolderTest() override { std::filesystem::remove_all(folder_); }

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

 private:
  std::filesystem::path folder_;
};

}  // namespace corvane::tools
