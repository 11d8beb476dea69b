// Files whose bytes are laid down, as they stand in the checkout.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace corvane {

// The content of a file under tests/; the test fails when it is not there.
inline std::string TestFile(const std::string& path) {
  std::ifstream file("tests/" + path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

inline std::string GoldenFile(const std::string& name) {
  return TestFile("golden/" + name);
}

}  // namespace corvane
