// Following a running Corvane: hours of it, midnight, runs that end anywhere, and what other
// programs do to the files meanwhile.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>

#include "base/number_text.h"
#include "tools/share/follower.h"
#include "unit/tools/share_fixture.h"

// AddressSanitizer's own count; without it there is none.
extern "C" __attribute__((weak)) std::size_t __sanitizer_get_current_allocated_bytes();

namespace corvane::tools {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr std::int64_t kMidnight = 1'794'787'200;  // between the 15th and the 16th

bool NoLinks(const fs::path&, const fs::path&) {
  return false;
}

std::size_t HeapInUse() {
  if (__sanitizer_get_current_allocated_bytes != nullptr) {
    return __sanitizer_get_current_allocated_bytes();
  }
  std::size_t pages = 0;
  std::size_t resident = 0;
  std::ifstream("/proc/self/statm") >> pages >> resident;
  return resident * 4096;
}

std::string Clock(std::int64_t second) {
  return IsoDate(TimeAt(second)).substr(11);
}

// Keeps the error output alone.
class NoOutput : public Output {
 protected:
  bool Put(std::string_view) override { return true; }
  bool PutAll() override { return true; }
};

class ShareFollowTest : public ShareTest {
 protected:
  ShareFollowTest() {
    options_.follow = true;
    options_.folder = Path("c");
    options_.outbox = Path("out");
  }
  // As when the program is started; what the one before knew is lost.
  void Begin(Outbox::Link link = Outbox::HardLink) {
    End();
    sharer_ = std::make_unique<CallSharer>(options_, console_, link);
    ASSERT_EQ(sharer_->Open(), "");
    follower_ = std::make_unique<Follower>(options_.folder, *sharer_);
  }
  void End() {
    follower_.reset();
    sharer_.reset();
  }
  // `second` counts from midnight between the two days.
  void LookAt(std::int64_t second) { ASSERT_EQ(follower_->Look(kMidnight + second), ""); }

  static std::string Day(std::int64_t second) { return FolderDate(TimeAt(kMidnight + second)); }
  void Event(std::int64_t second, const std::string& text) {
    const DateTime time = TimeAt(kMidnight + second);
    const std::string folder = Path("c/Daily/" + Day(second));
    fs::create_directories(folder + "/Record");
    std::ofstream(folder + "/TETRA_event.log", std::ios::binary | std::ios::app)
        << time.day << "/11/2026 " << Clock(kMidnight + second) << " - " << text << "\r\n";
  }
  void Setup(std::int64_t second, int id) {
    Event(second, "Call ID: " + Decimal(id) + " - On carrier: 2610 - Group: 9001 [Fire]");
    Event(second, "Call ID: " + Decimal(id) + " - Calling SSI: 5010 [Control]");
  }
  void Release(std::int64_t second, int id) {
    Event(second, "Call ID: " + Decimal(id) + " - VC D-Released");
  }
  static std::string NameOf(std::int64_t begin, int id) {
    std::string name = Clock(kMidnight + begin);
    std::erase(name, ':');
    return name + "_" + Decimal(id) + "_9001";
  }
  // As the recorder does it: the sound gets its name when it is whole, on the day of its end.
  void EndRecording(std::int64_t begin, std::int64_t end, int id, const std::string& sound) {
    const fs::path folder = Path("c/Daily/" + Day(end) + "/Record");
    fs::create_directories(folder);
    std::ofstream(folder / "newTmp.wav", std::ios::binary) << sound;
    fs::rename(folder / "newTmp.wav", folder / (NameOf(begin, id) + ".wav"));
  }
  [[nodiscard]] std::vector<std::string> InOutbox(const std::string& ending) const {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(Path("out"))) {
      const std::string name = entry.path().filename().string();
      if (name.ends_with(ending)) names.push_back(name);
    }
    std::ranges::sort(names);
    return names;
  }

  ShareOptions options_;
  NoOutput out_;
  StringOutput err_;
  Console console_{out_, err_};
  std::unique_ptr<CallSharer> sharer_;
  std::unique_ptr<Follower> follower_;
};

TEST_F(ShareFollowTest, ACallGoesWithTheNextLookAfterItsEnd) {
  Begin();
  Setup(-100, 7);
  LookAt(-99);
  EXPECT_THAT(InOutbox(".json"), IsEmpty());
  Release(-90, 7);
  EndRecording(-99, -90, 7, Sound());
  LookAt(-90);
  EXPECT_THAT(InOutbox(".json"), ElementsAre(NameOf(-99, 7) + ".json"));
  EXPECT_THAT(Content("out/20261115/" + NameOf(-99, 7) + ".json"),
              HasSubstr("\"talkgroup_tag\": \"Fire\""));
}

// Begun on one day, it is filed under the next one, and half of its lines stand in either log.
TEST_F(ShareFollowTest, ACallAcrossMidnightKeepsItsTimeAndItsFacts) {
  std::string sound = Sound();
  const std::string second(4000, '\x10');
  for (int i = 0; i < 20; ++i) sound += second;
  sound.replace(40, 4,
                {static_cast<char>(84000 & 0xFF), static_cast<char>(84000 >> 8 & 0xFF),
                 static_cast<char>(84000 >> 16), '\0'});
  for (const bool restarted : {false, true}) {
    fs::remove_all(Path("c"));
    fs::remove_all(Path("out"));
    Begin();
    Event(-60, "MCC:262  MNC:42  LA:101");
    Setup(-10, 7);
    LookAt(-9);
    if (restarted) Begin();
    LookAt(1);
    Release(12, 7);
    EndRecording(-9, 12, 7, sound);
    LookAt(12);
    const std::string json = Content("out/20261116/" + NameOf(-9, 7) + ".json");
    EXPECT_THAT(json, HasSubstr("\"start_time\": " + Decimal(UtcOf(kMidnight - 9)) + ","));
    EXPECT_THAT(json, HasSubstr("\"call_length\": 21,"));
    EXPECT_THAT(json, HasSubstr("\"src\": 5010"));
    EXPECT_THAT(json, HasSubstr("\"short_name\": \"262-42\""));
    EXPECT_THAT(json, HasSubstr("\"end_reason\": \"released\""));
  }
  // The same when the day is over.
  fs::remove_all(Path("out"));
  const Run run = Tools({"share", Path("c/Daily/20261116"), "--outbox", Path("out")});
  ASSERT_EQ(run.code, ExitCode::kDone) << run.err;
  const std::string json = Content("out/20261116/" + NameOf(-9, 7) + ".json");
  EXPECT_THAT(json, HasSubstr("\"start_time\": " + Decimal(UtcOf(kMidnight - 9)) + ","));
  EXPECT_THAT(json, HasSubstr("\"src\": 5010"));
}

TEST_F(ShareFollowTest, TheLastCallOfADayIsNotForgottenAtMidnight) {
  Begin();
  LookAt(-5);
  Setup(-4, 7);
  EndRecording(-3, -1, 7, Sound());
  LookAt(1);
  EXPECT_THAT(InOutbox(".json"), IsEmpty()) << "its end may still come";
  Release(2, 7);
  LookAt(2);
  EXPECT_THAT(InOutbox(".json"), ElementsAre(NameOf(-3, 7) + ".json"));
  // A run that goes on where this one ended has the day before in mind as well.
  EndRecording(-2, -1, 8, Sound());
  Begin();
  LookAt(4);
  LookAt(7);
  EXPECT_THAT(InOutbox(".json"), ElementsAre(NameOf(-3, 7) + ".json", NameOf(-2, 8) + ".json"));
}

// Two calls a second around midnight, a reader that takes them away, and a program that ends again
// and again. CORVANE_SHARED_CALLS makes hours of the half hour.
TEST_F(ShareFollowTest, TwoCallsASecondForLong) {
  const char* const wished = std::getenv("CORVANE_SHARED_CALLS");
  const int calls = ParseDecimal<int>(wished == nullptr ? "3600" : wished).value_or(0) / 4 * 4;
  ASSERT_GE(calls, 3600);
  constexpr int kStep = 20;
  const int base = calls * 5 / 8 / kStep * kStep;
  // A call costs its name for as long as its day is looked at, and nothing else.
  constexpr std::size_t kBytesACall = 400;
  // 50 ms of sound.
  std::string sound = Sound().substr(0, 44 + 200);
  sound.replace(40, 2, {static_cast<char>(200), '\0'});
  std::map<std::string, int> taken;
  int left = 0;
  const auto take = [&](bool all) {
    for (const auto& day : fs::directory_iterator(Path("out"))) {
      if (!day.is_directory()) continue;
      std::vector<fs::path> files;
      for (const auto& entry : fs::directory_iterator(day.path())) files.push_back(entry.path());
      for (const fs::path& file : files) {
        ASSERT_NE(file.extension(), ".part");
        if (file.extension() != ".json") continue;
        fs::path wav = file;
        wav.replace_extension(".wav");
        ASSERT_EQ(fs::file_size(wav), sound.size());
        std::ifstream stream(file, std::ios::binary);
        const std::string json{std::istreambuf_iterator<char>(stream), {}};
        ASSERT_TRUE(json.starts_with("{\n") && json.ends_with("\n}\n")) << file;
        ASSERT_THAT(json, HasSubstr("\"src\": 5010"));
        if (!all && ++left % 3 == 0) continue;
        ++taken[file.stem().string()];
        fs::remove(file);
        fs::remove(wav);
      }
    }
  };
  Begin();
  std::size_t heap = 0;
  for (int call = 0; call < calls; call += kStep) {
    const std::int64_t now = -calls / 4 + (call + kStep) / 2;
    for (int at = call; at < std::min(call + kStep, calls); ++at) {
      const std::int64_t second = -calls / 4 + at / 2;
      Setup(second, at % 30000 + 1);
      Release(second, at % 30000 + 1);
      EndRecording(second, second, at % 30000 + 1, sound);
    }
    LookAt(now);
    if (call % (47 * kStep) == 0) Begin();
    if (call % (13 * kStep) == 0) take(false);
    // A run that has just begun knows the day before, too, until the next midnight.
    if (call == base) heap = HeapInUse();
  }
  const std::size_t grown = HeapInUse() - std::min(heap, HeapInUse());
  LookAt(calls / 4 + 3);
  take(true);
  EXPECT_EQ(taken.size(), static_cast<std::size_t>(calls)) << "none is lost";
  for (const auto& [name, times] : taken) EXPECT_EQ(times, 1) << name;
  EXPECT_LT(grown, kBytesACall * static_cast<std::size_t>(calls - base));
  EXPECT_EQ(err_.text(), "");
}

TEST_F(ShareFollowTest, WhereNothingCanBeLinkedItIsCopied) {
  Begin(NoLinks);
  Event(0, "");
  EndRecording(0, 1, 7, Sound());
  LookAt(1);
  LookAt(4);
  const std::string name = "20261116/" + NameOf(0, 7);
  EXPECT_EQ(Content("out/" + name + ".wav"), Sound());
  EXPECT_EQ(fs::hard_link_count(Path("out/" + name + ".wav")), 1U);
  EXPECT_THAT(InOutbox(".json"), ElementsAre(NameOf(0, 7) + ".json"));
  EXPECT_THAT(InOutbox(".part"), IsEmpty());
}

TEST_F(ShareFollowTest, ACopyThatCannotBeMadeLeavesNothingBehind) {
  const SharedCall call = Call();
  Outbox outbox(Path("out"), NoLinks);
  ASSERT_EQ(outbox.Open(), "");
  fs::create_directories(Path("out/20261115/" + std::string(kWav) + ".part/x"));
  EXPECT_THAT(outbox.Share(call, "{}"), HasSubstr("cannot be written"));
  EXPECT_THAT(InOutbox(".json"), IsEmpty());
  EXPECT_FALSE(fs::exists(Path("out/20261115/" + std::string(kWav))));
  fs::remove_all(Path("out/20261115"));
  EXPECT_EQ(outbox.Share(call, "{}"), "");
}

TEST_F(ShareFollowTest, ARecordingThatGoesMeanwhileEndsNothing) {
  // Somebody renames it after it was found.
  Begin([](const fs::path& file, const fs::path&) {
    if (file.filename() == "000000_7_9001.wav") fs::remove(file);
    return false;
  });
  EndRecording(0, 1, 7, Sound());
  EndRecording(2, 3, 8, Sound());
  LookAt(3);
  LookAt(6);
  EXPECT_THAT(InOutbox(".json"), ElementsAre(NameOf(2, 8) + ".json"));
  EXPECT_EQ(err_.text(), "20261116/000000_7_9001.wav is gone\n");
}

TEST_F(ShareFollowTest, ASecondRunIsTurnedAway) {
  Begin();
  EndRecording(0, 1, 7, Sound());
  const Arguments again = {"share", Path("c/Daily/20261116"), "--outbox", Path("out")};
  const Run second = Tools(again);
  EXPECT_EQ(second.code, ExitCode::kFailed);
  EXPECT_THAT(second.err, HasSubstr("is the outbox of another run of share"));
  EXPECT_THAT(InOutbox(".json"), IsEmpty());
  LookAt(4);
  LookAt(7);
  EXPECT_THAT(InOutbox(".json"), ElementsAre("000000_7_9001.json")) << "the first one goes on";
  End();
  EXPECT_THAT(Tools(again).err, HasSubstr("0 calls shared, 1 before"));
}

TEST_F(ShareFollowTest, ANameThatTheUserAddsToIsNoNewCall) {
  Begin();
  EndRecording(0, 1, 7, Sound());
  LookAt(1);
  LookAt(4);
  const std::string record = Path("c/Daily/20261116/Record/");
  fs::rename(record + "000000_7_9001.wav", record + "000000_7_9001 the fire.wav");
  LookAt(5);
  LookAt(8);
  Begin();
  LookAt(9);
  LookAt(12);
  EXPECT_THAT(InOutbox(".json"), ElementsAre("000000_7_9001.json"));
  End();
  const Run run = Tools({"share", Path("c/Daily/20261116"), "--outbox", Path("out")});
  EXPECT_THAT(run.err, HasSubstr("0 calls shared, 1 before"));
}

// A link to nothing: to be seen in the folder, but not to be opened yet.
TEST_F(ShareFollowTest, ARecordingThatCannotBeOpenedIsWaitedFor) {
  Begin();
  Event(0, "");
  const std::string file = Path("c/Daily/20261116/Record/000000_7_9001.wav");
  fs::create_symlink(Path("later.wav"), file);
  LookAt(1);
  LookAt(30);
  EXPECT_EQ(err_.text(), "");
  LookAt(61);
  LookAt(90);
  EXPECT_EQ(err_.text(), "20261116/000000_7_9001.wav cannot be opened\n") << "once";
  Put("later.wav", Sound());
  LookAt(91);
  EXPECT_THAT(InOutbox(".json"), ElementsAre("000000_7_9001.json"));
}

TEST_F(ShareFollowTest, DamagedNotesAreToldAndWhatIsThereIsKnown) {
  Begin();
  for (const int id : {7, 8, 9}) EndRecording(id, id + 1, id, Sound());
  LookAt(20);
  LookAt(23);
  ASSERT_EQ(InOutbox(".json").size(), 3U);
  // The reader has taken one away; what was noted last was lost with the power.
  fs::remove(Path("out/20261116/000007_7_9001.json"));
  const std::string whole = Content("out/shared.txt");
  Put("out/shared.txt", whole.substr(0, whole.find("begun 20261116/000008")) +
                            std::string(40, '\0') + "\nbegun \n\xFF\xFE\x01 done\n");
  Begin();
  EXPECT_THAT(err_.text(), HasSubstr("3 lines of " + Path("out/shared.txt") + " are damaged"));
  const auto before = fs::last_write_time(Path("out/20261116/000008_8_9001.json"));
  LookAt(24);
  LookAt(27);
  EXPECT_THAT(InOutbox(".json"), ElementsAre("000008_8_9001.json", "000009_9_9001.json"));
  EXPECT_EQ(fs::last_write_time(Path("out/20261116/000008_8_9001.json")), before);
}

TEST_F(ShareFollowTest, ListsThatAreBeingReplacedStayAsTheyWere) {
  Put("c/TETRA_GSSI.txt", "9001;262;42;Fire north;0;True\r\n");
  Begin();
  LookAt(0);
  fs::remove(Path("c/TETRA_GSSI.txt"));
  Put("c/TETRA_GSSI.txt", "9001;262\r\n");
  LookAt(Follower::kListsAgeS);
  EndRecording(60, 61, 7, Sound());
  LookAt(62);
  LookAt(65);
  EXPECT_THAT(Content("out/20261116/000100_7_9001.json"), HasSubstr("\"Fire north\""));
  EXPECT_THAT(Content("out/20261116/000100_7_9001.json"), Not(HasSubstr("\"-\",\n  \"freqList")));
}

}  // namespace
}  // namespace corvane::tools
