// corvane-tools.exe beside a Corvane that follows and records calls: what it finds, and that it
// stands in nobody's way.
#include <chrono>
#include <cstdio>

#include "base/text.h"
#include "desktop/recording_test.h"

namespace corvane::desktop {
namespace {

namespace fs = std::filesystem;

constexpr int kVoiceTicks = 3;
constexpr const char* kNamedGroups = "9001;262;42;Fire north;0;True\r\n";

class CompanionTest : public RecordingTest {
 protected:
  // What it writes lies beside Corvane's folder.
  CompanionTest() : RecordingTest("corvane") {}

  [[nodiscard]] fs::path Beside(const std::string& name) { return Folder().Outer() / name; }

  void StartTools(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--folder", Folder().Path().string()});
    tools_ = Process::Start(FinishedProgram("corvane-tools.exe"), arguments, Folder().Outer(),
                            Beside("said.txt"));
    ASSERT_NE(tools_, nullptr);
  }
  [[nodiscard]] std::string Said() { return ReadWholeFile(Beside("said.txt")); }
  void AwaitSaid(std::string_view part) {
    Await("\"" + std::string(part) + "\" from corvane-tools",
          [&] { return Contains(Said(), part); });
  }
  void ExpectItGoesOn() {
    EXPECT_TRUE(tools_->Running())
        << "it ended with " << tools_->ExitCode().value_or(0) << ": " << Said();
  }
  // As its user does; every list is saved then.
  void CloseCorvane() {
    Close(Corvane().Window());
    EXPECT_EQ(Corvane().TheProcess().WaitForExit(kGenerousLimit_ms), 0u);
    EXPECT_EQ(Corvane().OpenMessageBox(), "");
    EXPECT_TRUE(Contains(Folder().Read("TETRA_GSSI.txt"), "9001;262;42;Fire north;"));
    EXPECT_TRUE(Folder().Has("corvane_simple.dat"));
  }

  std::unique_ptr<Process> tools_;
};

class ShareBesideCorvane : public CompanionTest {
 protected:
  void StartShare() { StartTools({"share", "--follow", "--outbox", Beside("outbox").string()}); }
  [[nodiscard]] std::vector<fs::path> InOutbox(const std::string& ending) {
    std::vector<fs::path> found;
    std::error_code error;
    for (fs::recursive_directory_iterator entry(Beside("outbox"), error), end; entry != end;
         entry.increment(error)) {
      if (error) break;
      if (entry->path().string().ends_with(ending)) found.push_back(entry->path());
    }
    return found;
  }
  // Its sidecar, with a word about how long that took.
  std::string AwaitShared(const RecordedCall& call) {
    const auto begin = std::chrono::steady_clock::now();
    const std::string stem = "_" + std::to_string(call.id) + "_" + std::to_string(call.group);
    Await("call " + std::to_string(call.id) + " in the outbox",
          [&] { return !InOutbox(stem + ".json").empty(); });
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    std::printf("call %d was in the outbox %.2f s after Corvane had parked\n", call.id,
                took.count());
    EXPECT_EQ(InOutbox(stem + ".wav").size(), 1u);
    return ReadWholeFile(InOutbox(stem + ".json").front());
  }
};

TEST_F(ShareBesideCorvane, EachCallIsSharedOnceAndCorvaneIsNotHindered) {
  Folder().Write("TETRA_GSSI.txt", kNamedGroups);
  Settings settings;
  settings.create_event_log = true;
  BeginRecording(settings);
  StartShare();
  const RecordedCall first = RecordCall(301, 9001, kVoiceTicks);
  const std::string json = AwaitShared(first);
  for (const char* field : {"\"talkgroup\": 9001,", "\"talkgroup_tag\": \"Fire north\",",
                            "\"src\": 5010,", "\"freq\": 365262500,", "\"short_name\": \"262-42\",",
                            "\"carrier\": 2610,", "\"end_reason\": \"released\""}) {
    EXPECT_TRUE(Contains(json, field)) << field << "\n" << json;
  }
  EXPECT_EQ(ReadWholeFile(InOutbox("_301_9001.wav").front()),
            ReadWholeFile(Recordings("_301_9001.wav").front()));

  // The reader takes the files away; the program is killed, and begins again after the next call.
  tools_->Kill();
  fs::remove_all(Beside("outbox") / InOutbox(".json").front().parent_path());
  const RecordedCall second = RecordCall(302, 9001, kVoiceTicks);
  StartShare();
  AwaitShared(second);
  EXPECT_TRUE(InOutbox("_301_9001.json").empty()) << "what was shared before comes first";
  const RecordedCall third = RecordCall(303, 9001, kVoiceTicks);
  AwaitShared(third);
  EXPECT_EQ(InOutbox(".json").size(), 2u);
  EXPECT_EQ(InOutbox(".part").size(), 0u);

  EXPECT_EQ(Recordings().size(), 3u);
  EXPECT_EQ(Unnamed(), 0);
  for (const RecordedCall& call : {first, second, third}) ExpectHeard(call);
  CloseCorvane();
  ExpectItGoesOn();
}

class WatchBesideCorvane : public CompanionTest {};

TEST_F(WatchBesideCorvane, TellsSilenceAndLittleRoomStampsLinesAndKeepsCopies) {
  Folder().Write("TETRA_GSSI.txt", kNamedGroups);
  Settings settings;
  settings.create_event_log = true;
  settings.create_cc_vc_log = true;
  Begin(settings);
  StartTools({"watch", "--deaf", "2", "--room", "4000000000", "--stamps",
              Beside("stamps.txt").string(), "--copies", Beside("copies").string()});
  AwaitSaid("the disk runs low: ");
  AwaitSaid("deaf: nothing was received for ");
  int line = 0;
  Await("the end of the silence", [&] {
    Line("D_Status after the silence " + std::to_string(++line) + " ");
    return WaitFor([&] { return Contains(Said(), "something is received again"); }, 1'000);
  });
  Await("a stamped line", [&] {
    return Contains(ReadWholeFile(Beside("stamps.txt")), " D_Status after the silence 1");
  });
  const std::string stamps = ReadWholeFile(Beside("stamps.txt"));
  EXPECT_TRUE(stamps.starts_with("20") && stamps.substr(10, 1) == " ") << stamps.substr(0, 60);
  int copies = 0;
  for (const auto& entry : fs::directory_iterator(Beside("copies"))) {
    if (!entry.path().filename().string().starts_with("TETRA_GSSI_")) continue;
    ++copies;
    EXPECT_EQ(ReadWholeFile(entry.path()), kNamedGroups);
  }
  EXPECT_EQ(copies, 1);
  ExpectFollowsACall();
  CloseCorvane();
  ExpectItGoesOn();
}

class ListsBesideCorvane : public CompanionTest {
 protected:
  unsigned Import() {
    StartTools({"lists", "import", "op25", Beside("list.tsv").string(), "--write"});
    return tools_->WaitForExit(kGenerousLimit_ms).value_or(99);
  }
};

// Corvane would write over the new names.
TEST_F(ListsBesideCorvane, NamesAreWrittenOnlyWhenCorvaneIsClosed) {
  Folder().Write("TETRA_GSSI.txt", kNamedGroups);
  Folder().Write("../list.tsv", "9002\tSouth\n");
  Begin();
  EXPECT_EQ(Import(), 2u);
  EXPECT_TRUE(Contains(Said(), "Corvane runs in ")) << Said();
  EXPECT_EQ(Folder().Read("TETRA_GSSI.txt"), kNamedGroups);
  CloseCorvane();
  EXPECT_EQ(Import(), 0u) << Said();
  EXPECT_TRUE(Contains(Folder().Read("TETRA_GSSI.txt"), ";262;42;South;"));
}

}  // namespace
}  // namespace corvane::desktop
