// The simulated desktop as another program sees it.
#include "sim_desktop/sim_window_ops.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "sim/sim_loop.h"
#include "sim_desktop/sim_desktop.h"

namespace corvane::sim {
namespace {

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
      if (Ops().Text(window).value.starts_with(text)) found = window;
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
  EXPECT_EQ(Ops().Press(At(desktop_.ids().network)), Reply::kAnswered);
  EXPECT_TRUE(desktop_.model().server().listening());
  Ops().PressSelector(At(desktop_.ids().timeslots[3]));
  EXPECT_EQ(desktop_.model().receiver().state().slot, 4);
  Ops().Press(At(desktop_.ids().net_info));
  EXPECT_NE(FindTopLevel("Network Info"), 0u);
}

TEST_F(SimWindowOpsTest, ReadsAndWritesTexts) {
  const WindowHandle port = At(desktop_.ids().port);
  EXPECT_EQ(Ops().Text(port).value, "3383");
  Ops().SetText(port, "4000");
  EXPECT_EQ(Ops().Text(port).value, "4000");
}

TEST_F(SimWindowOpsTest, ReadsLinesOfTheNetworkInfoBox) {
  desktop_.Do("window network-info open");
  desktop_.Do("line \"first one\"");
  desktop_.Do("line \"second\"");
  const WindowHandle box = At(desktop_.ids().info_box);
  EXPECT_EQ(Ops().LineCount(box).value, 3);
  EXPECT_EQ(Ops().Line(box, 1).value, "second");
  EXPECT_EQ(Ops().Line(box, 0).value, "first one");
  EXPECT_EQ(Ops().Line(box, 9).value, "");
  Ops().SetText(box, "");
  EXPECT_EQ(Ops().LineCount(box).value, 1);
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
    EXPECT_EQ(Ops().Press(window), Reply::kGone);
    EXPECT_EQ(Ops().SetText(window, "x"), Reply::kGone);
    EXPECT_EQ(Ops().Text(window).reply, Reply::kGone);
    EXPECT_EQ(Ops().Line(window, 0).reply, Reply::kGone);
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
  EXPECT_TRUE(Ops().Text(At(desktop_.ids().port)).answered());
  EXPECT_EQ(loop_.TickMs() - start, 1000);
}

TEST_F(SimWindowOpsTest, GivesUpOnAHungWindowAndSoonDoesNotAskIt) {
  desktop_.Do("hang 60000");
  const std::int64_t start = loop_.TickMs();
  EXPECT_EQ(Ops().Text(At(desktop_.ids().port)).reply, Reply::kNoAnswer);
  EXPECT_EQ(loop_.TickMs() - start, SimWindowOps::kSendLimitMs);
  loop_.Sleep(4000);
  const std::int64_t later = loop_.TickMs();
  EXPECT_EQ(Ops().Text(At(desktop_.ids().main)).reply, Reply::kNoAnswer);
  EXPECT_EQ(loop_.TickMs(), later);
  EXPECT_TRUE(Ops().IsAlive(At(desktop_.ids().port)));
  EXPECT_TRUE(Ops().Text(At(desktop_.own_window())).answered());
}

TEST_F(SimWindowOpsTest, FailsSendsOnDemand) {
  Ops().FailNextSends(1);
  EXPECT_EQ(Ops().Press(At(desktop_.ids().network)), Reply::kNoAnswer);
  EXPECT_FALSE(desktop_.model().server().listening());
  EXPECT_EQ(Ops().Press(At(desktop_.ids().network)), Reply::kAnswered);
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
  Ops().Press(box);
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

TEST_F(SimWindowOpsTest, TellsWhetherABoxIsSeenByTheWindowsInTheTree) {
  ScreenRect rect;
  const WindowHandle box = At(desktop_.ids().demodulator);
  ASSERT_TRUE(Ops().GetRect(box, rect));
  const auto seen = [&](standin::WindowId id) {
    return Ops().IsSeenAt(At(id), rect.left + 7, rect.top + 7);
  };
  for (const standin::WindowId id :
       {desktop_.ids().demodulator, desktop_.ids().tetra_content, desktop_.ids().main}) {
    EXPECT_TRUE(seen(id));
  }
  EXPECT_FALSE(seen(desktop_.ids().automatic));
  EXPECT_FALSE(seen(desktop_.ids().info_window)) << "there is none";
  desktop_.Do("cover demodulator checked");
  EXPECT_FALSE(seen(desktop_.ids().demodulator));
  EXPECT_FALSE(seen(desktop_.ids().main));
  desktop_.Do("cover none");
  desktop_.Do("window main minimise");
  EXPECT_FALSE(seen(desktop_.ids().demodulator));
}

TEST_F(SimWindowOpsTest, SeesTheWorldAsItIsAtTheLoopsTime) {
  desktop_.Do("window network-info open");
  desktop_.Do("check demodulator on");
  desktop_.Do("set DetectorType WFM");
  desktop_.Do("play");
  desktop_.Do("call id=5 group=1 party=2 carrier=2610 slot=1 repeat=0.1");
  loop_.Sleep(1000);
  EXPECT_EQ(Ops().LineCount(At(desktop_.ids().info_box)).value, 12);
}

TEST(SimDesktopTest, RefusesAFaultyScenario) {
  SimLoop loop;
  EXPECT_THROW(SimDesktop(loop, {}, "fly"), std::invalid_argument);
  SimDesktop desktop(loop);
  EXPECT_THROW(desktop.Do("fly"), std::invalid_argument);
}

TEST_F(SimWindowOpsTest, WhatWasGivenUpInAHangIsCarriedOutAfterItInOrderWhenThatIsAsked) {
  for (const bool late : {false, true}) {
    Ops().SetActsLate(late);
    const auto& tree = desktop_.model().tree();
    const auto& ids = desktop_.ids();
    desktop_.Do("hang 7000");
    EXPECT_EQ(Ops().SetText(At(ids.port), "4000"), Reply::kNoAnswer);
    EXPECT_EQ(Ops().SetText(At(ids.port), "5000"), Reply::kNoAnswer);
    EXPECT_EQ(Ops().PressSelector(At(ids.timeslots[2])), Reply::kNoAnswer);
    EXPECT_EQ(tree.Find(ids.port)->text, "3383");
    loop_.AdvanceMs(7000);
    EXPECT_EQ(Ops().Text(At(ids.port)).value, late ? "5000" : "3383");
    EXPECT_EQ(desktop_.model().receiver().state().slot == 3, late);
  }
}

TEST_F(SimWindowOpsTest, AStrangerThatHangsIsAProgramOfItsOwn) {
  desktop_.Do("stranger hang 7000");
  const WindowHandle stranger = At(desktop_.model().tree().top_level().front());
  EXPECT_EQ(Ops().Text(stranger).reply, Reply::kNoAnswer);
  EXPECT_EQ(Ops().Title(stranger), standin::kStrangerTitle);
  EXPECT_NE(Ops().Program(stranger), Ops().Program(At(desktop_.ids().main)));
  EXPECT_TRUE(Ops().Text(At(desktop_.ids().main)).answered());
  loop_.AdvanceMs(7000);
  EXPECT_TRUE(Ops().Text(stranger).answered());
  desktop_.Do("stranger none");
  EXPECT_FALSE(Ops().IsAlive(stranger));
}

TEST_F(SimWindowOpsTest, AFrontThatIsKeptIsGivenToNobody) {
  desktop_.Do("front kept");
  EXPECT_EQ(Ops().SetForeground(At(desktop_.ids().main)), 0u);
  EXPECT_EQ(Ops().Foreground(), Ops().OwnMainWindow());
  desktop_.Do("front given");
  EXPECT_EQ(Ops().SetForeground(At(desktop_.ids().main)), 0u);
  EXPECT_EQ(Ops().Foreground(), At(desktop_.ids().main));
}

}  // namespace
}  // namespace corvane::sim
