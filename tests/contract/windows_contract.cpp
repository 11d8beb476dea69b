// WindowOps on another program's windows: what is found, read and done there, and that neither a
// hanging nor an ended program holds this one up.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "contract/factories.h"

namespace corvane::contract {
namespace {

constexpr WindowHandle kNoSuchWindow = 0x7FFFFF0;

class WindowsContract : public ::testing::Test {
 protected:
  std::vector<WindowHandle> TopLevel() {
    std::vector<WindowHandle> found;
    windows_.EnumTopLevel([&](WindowHandle window) {
      found.push_back(window);
      return true;
    });
    return found;
  }
  std::vector<WindowHandle> Children(WindowHandle parent) {
    std::vector<WindowHandle> found;
    windows_.EnumChildren(parent, [&](WindowHandle window) {
      found.push_back(window);
      return true;
    });
    return found;
  }
  static bool Has(const std::vector<WindowHandle>& windows, WindowHandle window) {
    return std::ranges::find(windows, window) != windows.end();
  }
  std::string Line(std::int32_t index) {
    const Answer<std::string> line = windows_.Line(world_->edit(), index);
    EXPECT_TRUE(line.answered());
    return line.value;
  }
  void PutLines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += (text.empty() ? "" : "\r\n") + line;
    ASSERT_EQ(windows_.SetText(world_->edit(), text), Reply::kAnswered);
  }
  bool SeenInBox(WindowHandle window) {
    ScreenRect box;
    return windows_.GetRect(world_->check_box(), box) &&
           windows_.IsSeenAt(window, box.left + 7, box.top + 7);
  }
  std::int32_t ColourInBox() {
    ScreenRect box;
    EXPECT_TRUE(windows_.GetRect(world_->check_box(), box));
    return windows_.ScreenPixel(world_->check_box(), box.left + 7, box.top + 7);
  }
  // The colour that was seen before, and is seen after.
  std::int32_t CoverCheckBox(WindowsUnderTest::Cover by) {
    windows_.SetForeground(world_->top());
    EXPECT_TRUE(Until([&] { return SeenInBox(world_->check_box()); }));
    const std::int32_t colour = ColourInBox();
    world_->CoverCheckBox(by);
    return colour;
  }
  bool Until(const std::function<bool()>& done) { return world_->idle().IdleUntil(done); }
  // How long `call` takes, in milliseconds.
  std::int64_t Duration(const std::function<void()>& call) {
    const std::int64_t begin = world_->idle().loop().TickMs();
    call();
    return world_->idle().loop().TickMs() - begin;
  }

  std::unique_ptr<WindowsUnderTest> world_ = MakeWindows();
  WindowOps& windows_ = world_->windows();
};

TEST_F(WindowsContract, FindsTopLevelWindowsAndTheirDescendants) {
  const auto top_level = TopLevel();
  EXPECT_TRUE(Has(top_level, world_->top()));
  EXPECT_FALSE(Has(top_level, world_->check_box()));
  const auto children = Children(world_->top());
  EXPECT_TRUE(Has(children, world_->check_box()));
  EXPECT_TRUE(Has(Children(world_->edit_top()), world_->edit()));
  EXPECT_FALSE(Has(children, world_->top()));
}

TEST_F(WindowsContract, EnumerationEndsWhenTheVisitorHasEnough) {
  int visits = 0;
  windows_.EnumTopLevel([&](WindowHandle) { return ++visits < 1; });
  EXPECT_EQ(visits, 1);
  visits = 0;
  windows_.EnumChildren(world_->top(), [&](WindowHandle) { return ++visits < 1; });
  EXPECT_EQ(visits, 1);
}

TEST_F(WindowsContract, WhatAVisitorThrowsReachesTheCaller) {
  EXPECT_THROW(
      windows_.EnumTopLevel([](WindowHandle) -> bool { throw std::runtime_error("visit"); }),
      std::runtime_error);
  EXPECT_THROW(windows_.EnumChildren(
                   world_->top(), [](WindowHandle) -> bool { throw std::runtime_error("visit"); }),
               std::runtime_error);
}

TEST_F(WindowsContract, NoWindowHasNoChildren) {
  EXPECT_TRUE(Children(0).empty());
  EXPECT_TRUE(Children(kNoSuchWindow).empty());
}

TEST_F(WindowsContract, ClassNamesAreReadUpToTheirLimit) {
  const std::string name = windows_.ClassName(world_->top());
  EXPECT_EQ(name, world_->top_class().substr(0, 49));
  EXPECT_NE(windows_.ClassName(world_->edit()), "");
}

TEST_F(WindowsContract, KnowsParentsAndWhatIsVisible) {
  WindowHandle above = windows_.Parent(world_->check_box());
  for (int level = 0; above != 0 && above != world_->top() && level < 10; ++level) {
    above = windows_.Parent(above);
  }
  EXPECT_EQ(above, world_->top());
  EXPECT_EQ(windows_.Parent(world_->top()), 0U);
  EXPECT_TRUE(windows_.IsAlive(world_->top()));
  EXPECT_TRUE(windows_.IsVisible(world_->top()));
}

TEST_F(WindowsContract, KnowsTheProgramOfAWindow) {
  const ProgramId program = windows_.Program(world_->top());
  EXPECT_NE(program, 0U);
  EXPECT_EQ(windows_.Program(world_->check_box()), program);
  const WindowHandle own = windows_.OwnMainWindow();
  if (own != 0) {
    EXPECT_NE(windows_.Program(own), program);
  }
}

TEST_F(WindowsContract, KnowsTheTitleOfAWindowThatHangs) {
  world_->Hang(4000);
  std::string title;
  EXPECT_LE(Duration([&] { title = windows_.Title(world_->top()); }), 250);
  EXPECT_EQ(title, world_->top_text());
  EXPECT_TRUE(Until([&] { return windows_.Text(world_->top()).answered(); }));
}

TEST_F(WindowsContract, SaysWhereLinesBegin) {
  PutLines({"four", "", "seven77"});
  for (const auto& [index, start] :
       std::vector<std::pair<int, int>>{{0, 0}, {1, 6}, {2, 8}, {1000, -1}, {-1, -1}}) {
    const Answer<std::int32_t> answer = windows_.LineStart(world_->edit(), index);
    EXPECT_EQ(answer.reply, Reply::kAnswered) << index;
    EXPECT_EQ(answer.value, start) << index;
  }
  EXPECT_FALSE(windows_.WrapsLines(world_->edit()));
}

TEST_F(WindowsContract, ReadsTextsWhole) {
  const Answer<std::string> text = windows_.Text(world_->top());
  EXPECT_EQ(text.reply, Reply::kAnswered);
  EXPECT_EQ(text.value, world_->top_text());
}

TEST_F(WindowsContract, WritesAndEmptiesTheTextOfAnEditBox) {
  EXPECT_EQ(windows_.SetText(world_->edit(), "3383"), Reply::kAnswered);
  EXPECT_EQ(windows_.Text(world_->edit()).value, "3383");
  EXPECT_EQ(windows_.SetText(world_->edit(), ""), Reply::kAnswered);
  EXPECT_EQ(windows_.Text(world_->edit()).value, kNoWindowText);
  EXPECT_EQ(windows_.LineCount(world_->edit()).value, 1);
}

TEST_F(WindowsContract, AnEndlessTextIsCutOff) {
  ASSERT_EQ(windows_.SetText(world_->edit(), std::string(100'000, 'x')), Reply::kAnswered);
  const Answer<std::string> text = windows_.Text(world_->edit());
  EXPECT_EQ(text.reply, Reply::kAnswered);
  EXPECT_EQ(text.value, std::string(WindowOps::kLongestText, 'x'));
}

TEST_F(WindowsContract, ReadsLinesOfEveryLengthWhole) {
  std::vector<std::string> lines;
  for (const std::size_t size :
       {3U, 0U, 1U, 2U, 31U, 51U, 52U, 53U, 64U, 100U, 200U, 255U, 256U, 257U, 700U}) {
    std::string line;
    while (line.size() < size) line += static_cast<char>('a' + (line.size() + lines.size()) % 26);
    lines.push_back(line);
  }
  PutLines(lines);
  const Answer<std::int32_t> count = windows_.LineCount(world_->edit());
  ASSERT_EQ(count.reply, Reply::kAnswered);
  ASSERT_GE(count.value, static_cast<std::int32_t>(lines.size()));
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_EQ(Line(static_cast<std::int32_t>(i)), lines[i]);
  }
}

TEST_F(WindowsContract, ALineThatIsNotThereIsEmpty) {
  PutLines({"only"});
  for (const std::int32_t index : {-1, 1, 1000}) EXPECT_EQ(Line(index), "") << index;
}

TEST_F(WindowsContract, APressTurnsTheCheckBoxOver) {
  const bool before = world_->Checked();
  EXPECT_EQ(windows_.Press(world_->check_box()), Reply::kAnswered);
  EXPECT_TRUE(Until([&] { return world_->Checked() != before; }));
  EXPECT_EQ(windows_.Press(world_->check_box()), Reply::kAnswered);
  EXPECT_TRUE(Until([&] { return world_->Checked() == before; }));
}

TEST_F(WindowsContract, PressesASelector) {
  EXPECT_EQ(windows_.PressSelector(world_->selector()), Reply::kAnswered);
  EXPECT_TRUE(Until([&] { return world_->SelectorPressed(); }));
}

TEST_F(WindowsContract, MovesAWindowByItsPlacement) {
  Placement placement;
  ASSERT_TRUE(windows_.GetPlacement(world_->top(), placement));
  ScreenRect before;
  ASSERT_TRUE(windows_.GetRect(world_->top(), before));
  EXPECT_EQ(placement.normal_position.right - placement.normal_position.left,
            before.right - before.left);
  placement.normal_position = {40, 60, 440, 360};
  placement.show_state = kShowNormal;
  windows_.SetPlacement(world_->top(), placement);
  EXPECT_TRUE(Until([&] {
    ScreenRect rect;
    return windows_.GetRect(world_->top(), rect) && rect == ScreenRect{40, 60, 440, 360};
  }));
}

TEST_F(WindowsContract, MinimisesAWindowAndPutsItBackWhereItWas) {
  Placement placement;
  ASSERT_TRUE(windows_.GetPlacement(world_->top(), placement));
  const ScreenRect place = placement.normal_position;
  placement.show_state = kShowMinimised;
  windows_.SetPlacement(world_->top(), placement);
  EXPECT_TRUE(Until([&] {
    Placement now;
    return windows_.GetPlacement(world_->top(), now) && now.show_state != kShowNormal;
  }));
  EXPECT_TRUE(windows_.IsAlive(world_->top()));
  placement.show_state = kShowNormal;
  windows_.SetPlacement(world_->top(), placement);
  EXPECT_TRUE(Until([&] {
    Placement now;
    return windows_.GetPlacement(world_->top(), now) && now.show_state == kShowNormal &&
           now.normal_position == place;
  }));
}

TEST_F(WindowsContract, ReadsThePixelsOfTheScreen) {
  const auto points = world_->PaintedPoints();
  ASSERT_GE(points.size(), 2U);
  for (const auto& point : points) {
    EXPECT_TRUE(Until([&] {
      return windows_.ScreenPixel(world_->check_box(), point.x, point.y) == point.colour;
    })) << point.colour;
  }
  EXPECT_EQ(windows_.ScreenPixel(world_->check_box(), -5000, -5000), -1);
}

TEST_F(WindowsContract, SeesAWindowWhereNothingLiesOverIt) {
  windows_.SetForeground(world_->top());
  ASSERT_TRUE(Until([&] { return SeenInBox(world_->check_box()); }));
  for (WindowHandle above = windows_.Parent(world_->check_box()); above != 0;
       above = windows_.Parent(above)) {
    EXPECT_TRUE(SeenInBox(above)) << "the box is a part of it";
  }
  EXPECT_FALSE(SeenInBox(world_->selector())) << "the window there lies beside it";
  ScreenRect top;
  ASSERT_TRUE(windows_.GetRect(world_->top(), top));
  for (const WindowHandle window : {world_->top(), world_->check_box()}) {
    EXPECT_TRUE(windows_.IsSeenAt(window, top.left + 150, top.top + 12)) << "top() itself is there";
    EXPECT_FALSE(windows_.IsSeenAt(window, top.right + 40, top.bottom + 40)) << "nothing of it";
    EXPECT_FALSE(windows_.IsSeenAt(window, -5000, -5000));
  }
}

TEST_F(WindowsContract, AWindowOfAnotherProgramIsSeenInstead) {
  const std::int32_t colour = CoverCheckBox(WindowsUnderTest::Cover::kOtherProgram);
  EXPECT_TRUE(Until([&] { return !SeenInBox(world_->check_box()); }));
  EXPECT_FALSE(SeenInBox(world_->top()));
  // It stays above, whatever comes to the front below it.
  windows_.SetForeground(world_->top());
  EXPECT_FALSE(SeenInBox(world_->check_box()));
  EXPECT_TRUE(Until([&] { return ColourInBox() == colour; })) << "its colour is no sign";
}

TEST_F(WindowsContract, AWindowOfTheSameProgramThatIsNoPartOfItIsSeenInstead) {
  const std::int32_t colour = CoverCheckBox(WindowsUnderTest::Cover::kOwnProgram);
  EXPECT_TRUE(Until([&] { return !SeenInBox(world_->check_box()); }));
  EXPECT_TRUE(SeenInBox(world_->top())) << "it is a part of that";
  EXPECT_TRUE(Until([&] { return ColourInBox() == colour; })) << "its colour is no sign";
}

TEST_F(WindowsContract, BringsAWindowToTheFront) {
  EXPECT_EQ(windows_.SetForeground(world_->top()), 0U);
  EXPECT_TRUE(Until([&] { return world_->IsInFront(); }));
  EXPECT_TRUE(Until([&] { return windows_.Foreground() == world_->top(); }));
}

TEST_F(WindowsContract, AHangingProgramDoesNotHoldThisOneUp) {
  constexpr std::int64_t kLimitMs = 2500;  // each call; the promise is 2 s
  Placement placement;
  ASSERT_TRUE(windows_.GetPlacement(world_->top(), placement));
  world_->Hang(20'000);
  Reply reply = Reply::kAnswered;
  const auto ask = [&](const std::function<Reply()>& question) {
    reply = Reply::kAnswered;
    EXPECT_LE(Duration([&] { reply = question(); }), kLimitMs);
    EXPECT_EQ(reply, Reply::kNoAnswer);
  };
  ask([&] { return windows_.LineCount(world_->edit()).reply; });
  ask([&] { return windows_.SetText(world_->edit(), "text"); });
  ask([&] { return windows_.Press(world_->check_box()); });
  ask([&] { return windows_.PressSelector(world_->selector()); });
  ask([&] { return windows_.Text(world_->top()).reply; });
  ask([&] { return windows_.Line(world_->edit(), 0).reply; });
  ask([&] { return windows_.LineStart(world_->edit(), 0).reply; });
  ask([&] { return windows_.SetPlacement(world_->top(), placement); });
  WindowHandle silent = 0;
  EXPECT_LE(Duration([&] { silent = windows_.SetForeground(world_->top()); }), kLimitMs);
  EXPECT_EQ(silent, world_->top());
  EXPECT_LE(Duration([&] { TopLevel(); }), kLimitMs);
  EXPECT_LE(Duration([&] { (void)SeenInBox(world_->check_box()); }), kLimitMs);
  EXPECT_TRUE(windows_.IsAlive(world_->top()));
}

TEST_F(WindowsContract, AfterAHangTheProgramIsAskedAgain) {
  world_->Hang(4000);
  EXPECT_EQ(windows_.LineCount(world_->edit()).reply, Reply::kNoAnswer);
  EXPECT_TRUE(Until([&] { return windows_.LineCount(world_->edit()).answered(); }));
}

TEST_F(WindowsContract, WindowsThatAreGoneGiveEmptyAnswers) {
  const WindowHandle top = world_->top();
  const WindowHandle edit = world_->edit();
  world_->End();
  ASSERT_TRUE(Until([&] { return !windows_.IsAlive(top); }));
  for (const WindowHandle window : {top, edit, kNoSuchWindow, WindowHandle{0}}) {
    EXPECT_FALSE(windows_.IsAlive(window));
    EXPECT_FALSE(windows_.IsVisible(window));
    EXPECT_EQ(windows_.ClassName(window), "");
    EXPECT_EQ(windows_.Parent(window), 0U);
    EXPECT_EQ(windows_.Program(window), 0U);
    EXPECT_EQ(windows_.Title(window), "");
    EXPECT_FALSE(windows_.WrapsLines(window));
    EXPECT_EQ(windows_.LineStart(window, 0).reply, Reply::kGone);
    EXPECT_EQ(windows_.LineCount(window).reply, Reply::kGone);
    EXPECT_EQ(windows_.SetText(window, "x"), Reply::kGone);
    EXPECT_EQ(windows_.Press(window), Reply::kGone);
    EXPECT_EQ(windows_.PressSelector(window), Reply::kGone);
    const Answer<std::string> text = windows_.Text(window);
    EXPECT_EQ(text.reply, Reply::kGone);
    EXPECT_EQ(text.value, "");
    const Answer<std::string> line = windows_.Line(window, 0);
    EXPECT_EQ(line.reply, Reply::kGone);
    EXPECT_EQ(line.value, "");
    Placement placement;
    ScreenRect rect;
    EXPECT_FALSE(windows_.GetPlacement(window, placement));
    EXPECT_FALSE(windows_.GetRect(window, rect));
    EXPECT_FALSE(windows_.IsSeenAt(window, 300, 200));
    EXPECT_EQ(windows_.SetPlacement(window, placement), Reply::kGone);
    EXPECT_EQ(windows_.SetForeground(window), 0U);
    EXPECT_TRUE(Children(window).empty());
  }
  EXPECT_FALSE(Has(TopLevel(), top));
}

}  // namespace
}  // namespace corvane::contract
