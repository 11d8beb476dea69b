#include "archive/log_lines.h"

#include <gmock/gmock.h>

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

TEST_F(LogLinesTest, WhatIsNoFileCannotBeOpened) {
  EXPECT_FALSE(lines_.Open(Path("nothing")));
  EXPECT_FALSE(lines_.Open(Path("")));
}

}  // namespace
}  // namespace corvane::tools
