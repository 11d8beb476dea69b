// The simulated desktop as another program sees it.
#include "sim_desktop/sim_window_ops.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "sim/sim_loop.h"
#include "sim_desktop/sim_desktop.h"

namespace corvane::sim {
namespace {

constexpr std::intptr_t kPointInSelector = 852006;  // x 38, y 13

class SimWindowOpsTest : public ::testing::Test {
 protected:
  SimWindowOpsTest() {
    loop_.SetOutside([this] { desktop_.CatchUp(); }, [this] { return desktop_.NextDueMs(); });
  }
  SimWindowOps& Ops() { return desktop_.windows(); }
  WindowHandle At(standin::WindowId id) { return desktop_.Handle(id); }
  WindowHandle FindTopLevel(const std::string& text) {
    WindowHandle found = 0;
    Ops().EnumTopLevel([&](WindowHandle window) {
      if (Ops().GetText(window, 100).text.starts_with(text)) found = window;
      return found == 0;
    });
    return found;
  }

  SimLoop loop_;
  SimDesktop desktop_{loop_};
};

TEST_F(SimWindowOpsTest, EnumeratesTopLevelWindowsFrontFirstUntilToldToStop) {
  std::vector<WindowHandle> seen;
  Ops().EnumTopLevel([&](WindowHandle window) {
    seen.push_back(window);
    return true;
  });
  EXPECT_EQ(seen, (std::vector<WindowHandle>{At(desktop_.own_window()), At(desktop_.ids().main)}));
  int visits = 0;
  Ops().EnumTopLevel([&](WindowHandle) { return ++visits < 1; });
  EXPECT_EQ(visits, 1);
}

TEST_F(SimWindowOpsTest, EnumeratesAllDescendants) {
  std::set<WindowHandle> seen;
  Ops().EnumChildren(At(desktop_.ids().main), [&](WindowHandle window) {
    seen.insert(window);
    return true;
  });
  EXPECT_TRUE(seen.contains(At(desktop_.ids().demodulator)));
  EXPECT_TRUE(seen.contains(At(desktop_.ids().port)));
  EXPECT_FALSE(seen.contains(At(desktop_.ids().main)));
  Ops().EnumChildren(0, [](WindowHandle) {
    ADD_FAILURE();
    return true;
  });
}

TEST_F(SimWindowOpsTest, PressesButtonsAndSelectorsByMessages) {
  EXPECT_TRUE(Ops().Send(At(desktop_.ids().network), kBmClick, 0, 0).answered);
  EXPECT_TRUE(desktop_.model().server().listening());
  Ops().Send(At(desktop_.ids().timeslots[3]), kWmLButtonDown, 1, kPointInSelector);
  EXPECT_EQ(desktop_.model().receiver().state().slot, 4);
  Ops().Send(At(desktop_.ids().net_info), kBmClick, 0, 0);
  EXPECT_NE(FindTopLevel("Network Info"), 0u);
}

TEST_F(SimWindowOpsTest, ReadsAndWritesTexts) {
  const WindowHandle port = At(desktop_.ids().port);
  EXPECT_EQ(Ops().Send(port, kWmGetTextLength, 0, 0).value, 4);
  EXPECT_EQ(Ops().GetText(port, 5).text, "3383");
  EXPECT_EQ(Ops().GetText(port, 3).text, "33");
  EXPECT_EQ(Ops().GetText(port, 0).text, "");
  Ops().SetText(port, "4000");
  EXPECT_EQ(Ops().GetText(port, 50).text, "4000");
}

TEST_F(SimWindowOpsTest, ReadsLinesOfTheNetworkInfoBox) {
  desktop_.Do("window network-info open");
  desktop_.Do("line \"first one\"");
  desktop_.Do("line \"second\"");
  const WindowHandle box = At(desktop_.ids().info_box);
  EXPECT_EQ(Ops().Send(box, kEmGetLineCount, 0, 0).value, 3);
  const std::intptr_t index = Ops().Send(box, kEmLineIndex, 1, 0).value;
  EXPECT_EQ(index, 11);
  EXPECT_EQ(Ops().Send(box, kEmLineLength, static_cast<std::uintptr_t>(index), 0).value, 6);
  EXPECT_EQ(Ops().GetLine(box, 1, 64).text, "second");
  EXPECT_EQ(Ops().GetLine(box, 0, 5).text, "first");
  EXPECT_EQ(Ops().GetLine(box, 9, 64).text, "");
  Ops().SetText(box, "");
  EXPECT_EQ(Ops().Send(box, kEmGetLineCount, 0, 0).value, 1);
}

TEST_F(SimWindowOpsTest, GivesEmptyAnswersAboutWindowsThatAreGone) {
  const WindowHandle main = At(desktop_.ids().main);
  const WindowHandle box = At(desktop_.ids().demodulator);
  desktop_.Do("die");
  for (const WindowHandle window : {main, box, WindowHandle{0}, WindowHandle{12345}}) {
    Placement placement;
    ScreenRect rect;
    EXPECT_FALSE(Ops().IsAlive(window));
    EXPECT_FALSE(Ops().IsVisible(window));
    EXPECT_EQ(Ops().ClassName(window), "");
    EXPECT_EQ(Ops().Parent(window), 0u);
    EXPECT_FALSE(Ops().Send(window, kBmClick, 0, 0).answered);
    EXPECT_FALSE(Ops().SetText(window, "x").answered);
    EXPECT_FALSE(Ops().GetText(window, 50).answered);
    EXPECT_FALSE(Ops().GetLine(window, 0, 64).answered);
    EXPECT_FALSE(Ops().GetPlacement(window, placement));
    EXPECT_FALSE(Ops().GetRect(window, rect));
    Ops().SetPlacement(window, placement);
    Ops().SetForeground(window);
  }
  EXPECT_TRUE(Ops().foregrounds().empty());
}

TEST_F(SimWindowOpsTest, GivesNewHandlesAfterARestart) {
  const WindowHandle before = At(desktop_.ids().main);
  desktop_.Do("die");
  desktop_.Do("revive");
  EXPECT_NE(At(desktop_.ids().main), before);
  EXPECT_FALSE(Ops().IsAlive(before));
  EXPECT_EQ(FindTopLevel("SDR# v"), At(desktop_.ids().main));
}

TEST_F(SimWindowOpsTest, WaitsForAHungWindowWithinTheLimit) {
  desktop_.Do("hang 1000");
  const std::int64_t start = loop_.TickMs();
  EXPECT_TRUE(Ops().GetText(At(desktop_.ids().port), 50).answered);
  EXPECT_EQ(loop_.TickMs() - start, 1000);
}

TEST_F(SimWindowOpsTest, GivesUpOnAHungWindowAndSoonDoesNotAskIt) {
  desktop_.Do("hang 60000");
  const std::int64_t start = loop_.TickMs();
  EXPECT_FALSE(Ops().Send(At(desktop_.ids().port), kWmGetTextLength, 0, 0).answered);
  EXPECT_EQ(loop_.TickMs() - start, SimWindowOps::kSendLimitMs);
  loop_.Sleep(4000);
  const std::int64_t later = loop_.TickMs();
  EXPECT_FALSE(Ops().GetText(At(desktop_.ids().main), 50).answered);
  EXPECT_EQ(loop_.TickMs(), later);
  EXPECT_TRUE(Ops().IsAlive(At(desktop_.ids().port)));
  EXPECT_TRUE(Ops().GetText(At(desktop_.own_window()), 50).answered);
}

TEST_F(SimWindowOpsTest, FailsSendsOnDemand) {
  Ops().FailNextSends(1);
  EXPECT_FALSE(Ops().Send(At(desktop_.ids().network), kBmClick, 0, 0).answered);
  EXPECT_FALSE(desktop_.model().server().listening());
  EXPECT_TRUE(Ops().Send(At(desktop_.ids().network), kBmClick, 0, 0).answered);
}

TEST_F(SimWindowOpsTest, MinimisesRestoresAndMovesByPlacement) {
  const WindowHandle main = At(desktop_.ids().main);
  Placement placement;
  ASSERT_TRUE(Ops().GetPlacement(main, placement));
  EXPECT_EQ(placement.show_state, kShowNormal);
  const ScreenRect before = placement.normal_position;
  placement.show_state = kShowMinimised;
  Ops().SetPlacement(main, placement);
  ASSERT_TRUE(Ops().GetPlacement(main, placement));
  EXPECT_EQ(placement.show_state, 2u);
  EXPECT_EQ(placement.normal_position, before);
  EXPECT_TRUE(Ops().IsVisible(main));
  ScreenRect rect;
  ASSERT_TRUE(Ops().GetRect(main, rect));
  EXPECT_LT(rect.left, -30000);
  placement.show_state = kShowNormal;
  placement.normal_position = {1, 2, 801, 602};
  Ops().SetPlacement(main, placement);
  ASSERT_TRUE(Ops().GetRect(main, rect));
  EXPECT_EQ(rect, placement.normal_position);
}

TEST_F(SimWindowOpsTest, ShowsTheColoursOfTheCheckBoxesUnlessCovered) {
  ScreenRect rect;
  const WindowHandle box = At(desktop_.ids().demodulator);
  ASSERT_TRUE(Ops().GetRect(box, rect));
  const auto pixel = [&] { return Ops().ScreenPixel(box, rect.left + 7, rect.top + 7); };
  EXPECT_EQ(pixel(), 14934753);
  Ops().Send(box, kBmClick, 0, 0);
  EXPECT_EQ(pixel(), 10580318);
  const standin::WindowId cover =
      desktop_.AddForeignWindow("Other", "Other", {rect.left - 5, rect.top - 5, 50, 50});
  EXPECT_NE(pixel(), 10580318);
  Ops().SetForeground(At(desktop_.ids().main));
  EXPECT_EQ(pixel(), 10580318);
  EXPECT_EQ(Ops().foregrounds(), std::vector<WindowHandle>{At(desktop_.ids().main)});
  desktop_.model().tree().Destroy(cover);
  desktop_.Do("panel tetra collapse");
  EXPECT_NE(pixel(), 10580318);
  EXPECT_EQ(Ops().ScreenPixel(box, -5, -5), -1);
}

TEST_F(SimWindowOpsTest, SeesTheWorldAsItIsAtTheLoopsTime) {
  desktop_.Do("window network-info open");
  desktop_.Do("check demodulator on");
  desktop_.Do("set DetectorType WFM");
  desktop_.Do("play");
  desktop_.Do("call id=5 group=1 party=2 carrier=2610 slot=1 repeat=0.1");
  loop_.Sleep(1000);
  EXPECT_EQ(Ops().Send(At(desktop_.ids().info_box), kEmGetLineCount, 0, 0).value, 12);
}

TEST(SimDesktopTest, RefusesAFaultyScenario) {
  SimLoop loop;
  EXPECT_THROW(SimDesktop(loop, {}, "fly"), std::invalid_argument);
  SimDesktop desktop(loop);
  EXPECT_THROW(desktop.Do("fly"), std::invalid_argument);
}

}  // namespace
}  // namespace corvane::sim
