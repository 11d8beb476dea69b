#include "archive/log_lines.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "unit/archive/folder_fixture.h"

namespace corvane::tools {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class LogLinesTest : public FolderTest {
 protected:
  std::vector<std::string> Read(std::string_view content) {
    EXPECT_TRUE(lines_.Open(Put("log", content)));
    std::vector<std::string> read;
    for (std::string_view line; lines_.Next(line);) read.emplace_back(line);
    EXPECT_FALSE(lines_.failed());
    EXPECT_EQ(lines_.number(), read.size());
    EXPECT_EQ(lines_.bytes_read(), content.size());
    EXPECT_EQ(lines_.bytes_in_all(), content.size());
    return read;
  }

  LogLines lines_;
};

TEST_F(LogLinesTest, AnEmptyFileHasNone) {
  EXPECT_THAT(Read(""), IsEmpty());
}

TEST_F(LogLinesTest, EveryEndOfALineAndNoneAtTheEnd) {
  EXPECT_THAT(Read("a\r\nb\n\n\r\nc d"), ElementsAre("a", "b", "", "", "c d"));
}

TEST_F(LogLinesTest, AnyBytes) {
  const std::string bytes("\0\xFF\x1A\r\xF6", 5);
  EXPECT_THAT(Read(bytes + "\n" + bytes), ElementsAre(bytes, bytes));
}

TEST_F(LogLinesTest, LinesThatCrossTheBufferAreWhole) {
  std::vector<std::string> written;
  std::string content;
  for (int i = 0; i < 40'000; ++i) {
    written.push_back(std::to_string(i) + std::string(static_cast<std::size_t>(i % 97), 'x'));
    content += written.back() + (i % 3 == 0 ? "\r\n" : "\n");
  }
  EXPECT_EQ(Read(content), written);
  EXPECT_EQ(lines_.cut(), 0U);
}

TEST_F(LogLinesTest, OfAVeryLongLineTheBeginning) {
  const std::string fits(LogLines::kLongestLine, 'a');
  const std::string longer(LogLines::kLongestLine + 1, 'b');
  const std::string longest(20 * LogLines::kLongestLine, 'c');
  EXPECT_THAT(Read(fits + "\r\n" + longer + "\n" + longest + "\nd\n" + longest),
              ElementsAre(fits, longer.substr(1), longest.substr(0, fits.size()), "d",
                          longest.substr(0, fits.size())));
  EXPECT_EQ(lines_.cut(), 3U);
}

// The lines of `content` by the definition: up to each LF, without a CR at the end, cut when long.
std::vector<std::string> SlowLines(const std::string& content) {
  std::vector<std::string> lines;
  for (std::size_t from = 0; from < content.size();) {
    const std::size_t lf = std::min(content.find('\n', from), content.size());
    std::string line = content.substr(from, lf - from);
    const bool is_long = line.size() > LogLines::kLongestLine + 1;
    if (!is_long && line.ends_with('\r')) line.pop_back();
    lines.push_back(line.substr(0, LogLines::kLongestLine));
    from = lf + 1;
  }
  return lines;
}

TEST_F(LogLinesTest, EachLineStandsBesideTheOneBeforeIt) {
  std::mt19937 random(20261115);
  const auto below = [&random](std::size_t end) { return std::size_t{random() % end}; };
  for (int round = 0; round < 40; ++round) {
    std::string content;
    std::string last;
    while (content.size() < 12 * LogLines::kLongestLine) {
      const std::size_t around = LogLines::kLongestLine - 3 + below(7);
      const std::size_t size = below(200) > 0 ? below(120) : below(2) > 0 ? around : 5 * around;
      if (below(3) > 0) last = std::string(size, "ab\r"[below(3)]);
      content += last + (below(4) > 0 ? "\r\n" : "\n");
    }
    if (below(2) > 0) content.pop_back();
    LogLines lines;
    ASSERT_TRUE(lines.Open(Put("log", content)));
    const std::vector<std::string> expected = SlowLines(content);
    std::string_view line;
    EXPECT_EQ(lines.previous(), "");
    for (std::size_t index = 0; index < expected.size(); ++index) {
      ASSERT_TRUE(lines.Next(line));
      ASSERT_EQ(line, expected[index]) << "line " << index;
      ASSERT_EQ(lines.previous(), index == 0 ? "" : expected[index - 1]) << "line " << index;
    }
    ASSERT_FALSE(lines.Next(line));
    ASSERT_FALSE(lines.failed());
    ASSERT_EQ(lines.bytes_read(), content.size());
  }
}

TEST_F(LogLinesTest, WhatIsNoFileCannotBeOpened) {
  EXPECT_FALSE(lines_.Open(Path("nothing")));
  EXPECT_FALSE(lines_.Open(Path("")));
}

}  // namespace
}  // namespace corvane::tools
