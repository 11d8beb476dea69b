// What is noticed of a running Corvane.
#include <gmock/gmock.h>

#include <map>

#include "archive/instant.h"
#include "tools/watch/watcher.h"
#include "unit/tools/tools_fixture.h"

namespace corvane::tools {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class WatchTest : public ToolsTest {
 protected:
  static constexpr std::uint64_t kPlenty = 50'000'000'000;

  Watcher::Seen LookAt(Watcher& watcher, const std::string& time,
                       std::uint64_t room = kPlenty) const {
    return watcher.Look(SecondsOf(*ParseIsoDate("2026-11-15 " + time)), room);
  }
  void Log(const std::string& name, const std::string& line) {
    logs_[name] += line;
    Put("Daily/20261115/" + name, logs_[name]);
  }

  std::map<std::string, std::string> logs_;
};

TEST_F(WatchTest, OnlyNewAndCompleteLinesAreStamped) {
  Log("TETRA_cc.log", "old\r\n");
  Watcher watcher(Path("."), {});
  EXPECT_THAT(LookAt(watcher, "14:00:00").lines, IsEmpty());
  Log("TETRA_cc.log", "one \r\ntw");
  EXPECT_THAT(LookAt(watcher, "14:00:01").lines, ElementsAre("one "));
  Log("TETRA_cc.log", "o\r\n");
  EXPECT_THAT(LookAt(watcher, "14:00:02").lines, ElementsAre("two"));
  EXPECT_THAT(LookAt(watcher, "14:00:03").lines, IsEmpty());
}

TEST_F(WatchTest, DeafWhileParkedAlone) {
  Watcher watcher(Path("."), {60, 0, ""});
  EXPECT_THAT(LookAt(watcher, "14:00:00").notices, IsEmpty());
  EXPECT_THAT(LookAt(watcher, "14:00:59").notices, IsEmpty());
  EXPECT_THAT(LookAt(watcher, "14:01:00").notices,
              ElementsAre("deaf: nothing was received for 60 s"));
  EXPECT_THAT(LookAt(watcher, "14:05:00").notices, IsEmpty()) << "once";
  Log("TETRA_cc.log", "line\r\n");
  EXPECT_THAT(LookAt(watcher, "14:06:00").notices, ElementsAre("something is received again"));
  Log("TETRA_event.log", "15/11/2026 14:06:10 - Call ID: 7 - On carrier: 2610 - Group: 9001 \r\n");
  Log("TETRA_event.log", "15/11/2026 14:06:10 - Call ID: 7 - Calling SSI: 5010\r\n");
  EXPECT_THAT(LookAt(watcher, "14:06:10").notices, IsEmpty());
  EXPECT_THAT(LookAt(watcher, "14:09:00").notices, IsEmpty()) << "a call is followed";
  Log("TETRA_event.log", "15/11/2026 14:09:01 - Call ID: 7 - VC D-Released\r\n");
  EXPECT_THAT(LookAt(watcher, "14:09:01").notices, IsEmpty());
  EXPECT_THAT(LookAt(watcher, "14:10:00").notices,
              ElementsAre("deaf: nothing was received for 60 s"));
}

TEST_F(WatchTest, ADiskThatRunsLowIsToldOnce) {
  Watcher watcher(Path("."), {0, 1000, ""});
  EXPECT_THAT(LookAt(watcher, "14:00:00", 1'000'000'000).notices, IsEmpty());
  EXPECT_THAT(LookAt(watcher, "14:00:01", 999'999'999).notices,
              ElementsAre("the disk runs low: 999 MB are left"));
  EXPECT_THAT(LookAt(watcher, "14:00:02", 1'050'000'000).notices, IsEmpty());
  EXPECT_THAT(LookAt(watcher, "14:00:03", 900'000'000).notices, IsEmpty());
  EXPECT_THAT(LookAt(watcher, "14:00:04", 1'100'000'000).notices, IsEmpty());
  EXPECT_THAT(LookAt(watcher, "14:00:05", 0).notices,
              ElementsAre("the disk runs low: 0 MB are left"));
}

TEST_F(WatchTest, ACopyOfEachListForEachDay) {
  Put("TETRA_GSSI.txt", "first");
  Watcher watcher(Path("."), {0, 0, Path("copies")});
  EXPECT_THAT(LookAt(watcher, "14:00:00").notices, IsEmpty());
  Put("TETRA_GSSI.txt", "second");
  EXPECT_THAT(LookAt(watcher, "14:00:01").notices, IsEmpty());
  EXPECT_EQ(Content("copies/TETRA_GSSI_20261115.txt"), "first");
  EXPECT_THAT(watcher.Look(SecondsOf({2026, 11, 16}), kPlenty).notices, IsEmpty());
  EXPECT_EQ(Content("copies/TETRA_GSSI_20261116.txt"), "second");
  Put("file", "");
  Watcher failing(Path("."), {0, 0, Path("file")});
  EXPECT_THAT(LookAt(failing, "14:00:00").notices,
              ElementsAre("no copy of TETRA_GSSI.txt could be kept"));
  EXPECT_THAT(LookAt(failing, "14:00:01").notices, IsEmpty()) << "once";
}

TEST_F(WatchTest, WrongUsageIsTold) {
  const Arguments wrong[] = {{"watch", "x"},
                             {"watch", "--deaf", "-1"},
                             {"watch", "--room", "x"},
                             {"watch", "--exec", "\""},
                             {"watch", "--folder", Path("."), "--notify"},
                             {"watch", "--folder", Path("none")},
                             {"watch", "--folder", Path("."), "--stamps", Path("TETRA_cc.log")}};
  for (const Arguments& arguments : wrong) {
    const Run run = Tools(arguments);
    EXPECT_EQ(run.code, ExitCode::kFailed) << arguments.back();
    EXPECT_THAT(run.err, HasSubstr("corvane-tools watch: ")) << arguments.back();
  }
}

}  // namespace
}  // namespace corvane::tools
