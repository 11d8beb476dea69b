// A disk that becomes full while calls are followed, recorded and logged: each kind of file is
// reported once, following goes on, and all of it works again when there is room.
#include <gtest/gtest.h>

#include "base/text.h"
#include "scenarios/world.h"

namespace corvane::sim {
namespace {

constexpr const char* kDay = "\\Daily\\20261115";

class FullDisk : public ::testing::Test {
 protected:
  void SetUp() override {
    world_.BringUp();
    world_.user().Click(world_.form().optRecordMode[1]);
    world_.user().Click(world_.form().chkCreateEventLog);
    world_.user().Click(world_.form().chkCreateCcVcLog);
  }
  void Call(int id) {
    world_.Do("call id=" + std::to_string(id) + " group=9001 party=50" + std::to_string(id) +
              " carrier=2610 slot=1 for=3");
    ASSERT_TRUE(world_.RunUntil([this] { return world_.Following(); }, 2000));
    ASSERT_TRUE(world_.RunUntil([this] { return !world_.Following() && world_.Parked(); }, 6000));
    world_.Run(500);
  }
  [[nodiscard]] int Recordings(const std::string& ending) {
    int found = 0;
    for (const std::string& name :
         world_.files.List(std::string(World::kProgramFolder) + kDay + "\\Record")) {
      const auto content =
          world_.files.Content(std::string(World::kProgramFolder) + kDay + "\\Record\\" + name);
      found += name.ends_with(ending) && content && content->size() > 44 ? 1 : 0;
    }
    return found;
  }

  World world_{{.scenario = "base 800000000\n"}};
};

TEST_F(FullDisk, StopsNothingButWritingAndIsReportedOnce) {
  Call(10);
  EXPECT_EQ(Recordings("_10_9001.wav"), 1);

  world_.files.SetRoom(0);
  Call(11);
  Call(12);
  EXPECT_EQ(world_.CountCallLog("VC D-Released"), 3) << "following goes on";
  EXPECT_EQ(world_.CountStatusLog("Error writing TETRA_cc.log ["), 1);
  EXPECT_EQ(world_.CountStatusLog("Error writing TETRA_event.log ["), 1);
  EXPECT_EQ(world_.CountStatusLog(" Error (save)"), 2) << "each recording is reported";
  EXPECT_EQ(Recordings("_11_9001.wav") + Recordings("_12_9001.wav"), 0);
  EXPECT_FALSE(world_.mci.recording());

  world_.files.SetRoom(std::nullopt);
  Call(13);
  EXPECT_EQ(Recordings("_13_9001.wav"), 1);
  const std::string events = world_.FileText(std::string(kDay) + "\\TETRA_event.log");
  for (const char* id : {"10", "11", "12", "13"}) {
    EXPECT_TRUE(Contains(events, std::string("Call ID: ") + id + " - VC D-Released"))
        << "what could not be written is written later: " << id;
  }
  EXPECT_TRUE(Contains(world_.FileText(std::string(kDay) + "\\TETRA_cc.log"), "Call ID:13 "));

  world_.files.SetRoom(0);
  Call(14);
  EXPECT_EQ(world_.CountStatusLog("Error writing TETRA_cc.log ["), 2) << "a second time full";
}

}  // namespace
}  // namespace corvane::sim
