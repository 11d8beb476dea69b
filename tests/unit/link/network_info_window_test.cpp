#include "link/network_info_window.h"

#include "link_fixture.h"

namespace corvane::test {
namespace {

class NetworkInfoWindowTest : public LinkTest {
 protected:
  void SetUp() override {
    AddSdr();
    AddNetworkInfo();
    FillHandles();
    flags.NetRemoteLinkUp = true;
  }
  int Presses() { return windows.CountOf(kNetInfo, kBmClick); }
  void Cycle() {
    info.KeepOpen();
    loop.now_ms += 60;
  }

  Discovery discovery{context};
  NetworkInfoWindow info{context, discovery};
};

TEST_F(NetworkInfoWindowTest, AWindowShownNormallyIsMinimised) {
  windows.At(kInfoWindow).placement.normal_position = {1, 2, 3, 4};
  info.KeepOpen();
  ASSERT_EQ(windows.placements.size(), 1u);
  EXPECT_EQ(windows.placements[0].first, kInfoWindow);
  EXPECT_EQ(windows.placements[0].second.show_state, 6u);
  EXPECT_EQ(windows.placements[0].second.normal_position, (ScreenRect{1, 2, 3, 4}));
  EXPECT_EQ(Presses(), 0);
}

TEST_F(NetworkInfoWindowTest, EveryCycleMinimisesAgainWhatTheUserRestored) {
  Cycle();
  Cycle();
  EXPECT_EQ(windows.placements.size(), 1u);
  windows.At(kInfoWindow).placement.show_state = kShowNormal;
  Cycle();
  EXPECT_EQ(windows.placements.size(), 2u);
}

TEST_F(NetworkInfoWindowTest, AMaximisedOrHiddenWindowIsLeftInItsState) {
  for (const std::uint32_t state : {0u, 2u, 3u, 6u, 7u}) {
    windows.At(kInfoWindow).placement.show_state = state;
    info.KeepOpen();
  }
  EXPECT_TRUE(windows.placements.empty());
}

TEST_F(NetworkInfoWindowTest, AnInvisibleWindowHasItsButtonPressedOnceASecond) {
  windows.At(kInfoWindow).visible = false;
  for (int cycle = 0; cycle < 50; ++cycle) Cycle();  // 3 s
  EXPECT_EQ(Presses(), 3);
  EXPECT_EQ(windows.messages.front(), (FakeWindows::Message{kNetInfo, 245, 0, 0, ""}));
}

TEST_F(NetworkInfoWindowTest, AClosedWindowIsOpenedAndFoundAtOnceAndTheLinkStays) {
  windows.Destroy(kInfoWindow);
  windows.At(kNetInfo).on_click = [this] {
    windows.Add(310, 0, kWindow, "Network Info");
    windows.Add(311, 310, kEdit);
  };
  Cycle();
  EXPECT_EQ(Presses(), 1);
  EXPECT_EQ(context.handles[SdrRole::kNetworkInfoWindow], 310u);
  EXPECT_EQ(context.handles[SdrRole::kNetworkInfoEdit], 311u);
  EXPECT_TRUE(flags.NetRemoteLinkUp);
  EXPECT_TRUE(StatusLog().empty());
  for (int cycle = 0; cycle < 50; ++cycle) Cycle();
  EXPECT_EQ(Presses(), 1);
  EXPECT_EQ(windows.CountOf(kNetwork, kBmClick), 0);
}

TEST_F(NetworkInfoWindowTest, AWindowThatTheUserOpenedAgainIsTakenWithoutAPress) {
  windows.Destroy(kInfoWindow);
  windows.Add(310, 0, kWindow, "Network Info");
  windows.Add(311, 310, kEdit);
  Cycle();
  EXPECT_EQ(Presses(), 0);
  EXPECT_EQ(context.handles[SdrRole::kNetworkInfoEdit], 311u);
}

TEST_F(NetworkInfoWindowTest, AReplacedEditBoxOfTheSameWindowIsTaken) {
  windows.Destroy(kInfoEdit);
  windows.Add(320, kInfoWindow, kEdit);
  Cycle();
  EXPECT_EQ(Presses(), 0);
  EXPECT_EQ(context.handles[SdrRole::kNetworkInfoEdit], 320u);
}

TEST_F(NetworkInfoWindowTest, AWindowThatDoesNotComeBackIsAskedForOnceASecond) {
  windows.Destroy(kInfoWindow);
  windows.At(kNetInfo).on_click = nullptr;
  for (int cycle = 0; cycle < 50; ++cycle) Cycle();
  EXPECT_EQ(Presses(), 3);
  EXPECT_EQ(context.handles[SdrRole::kNetworkInfoEdit], 0u);
  AddNetworkInfo();
  Cycle();
  EXPECT_EQ(context.handles[SdrRole::kNetworkInfoEdit], kInfoEdit);
}

TEST_F(NetworkInfoWindowTest, WithSdrGoneNothingIsSent) {
  windows.Destroy(kInfoWindow);
  windows.Destroy(kSdr);
  context.handles.Clear();
  Cycle();
  EXPECT_TRUE(windows.messages.empty());
  EXPECT_TRUE(windows.placements.empty());
}

}  // namespace
}  // namespace corvane::test
