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
  std::string Text(WindowHandle window) { return windows_.GetText(window, 256).text; }
  std::string Line(std::int32_t index) {
    const Answer first =
        windows_.Send(world_->edit(), kEmLineIndex, static_cast<std::uintptr_t>(index), 0);
    const Answer length =
        windows_.Send(world_->edit(), kEmLineLength, static_cast<std::uintptr_t>(first.value), 0);
    EXPECT_TRUE(first.answered && length.answered);
    const auto size = static_cast<std::size_t>(std::max<std::intptr_t>(length.value, 0));
    return windows_.GetLine(world_->edit(), index, 2 * size + 64).text.substr(0, size);
  }
  void PutLines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += (text.empty() ? "" : "\r\n") + line;
    ASSERT_TRUE(windows_.SetText(world_->edit(), text).answered);
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

TEST_F(WindowsContract, ReadsTextsWholeAndCutAtTheBuffer) {
  const std::string text = world_->top_text();
  EXPECT_EQ(windows_.Send(world_->top(), kWmGetTextLength, 0, 0).value,
            static_cast<std::intptr_t>(text.size()));
  const TextAnswer whole = windows_.GetText(world_->top(), text.size() + 1);
  EXPECT_TRUE(whole.answered);
  EXPECT_EQ(whole.text, text);
  EXPECT_EQ(whole.value, static_cast<std::intptr_t>(text.size()));
  const TextAnswer cut = windows_.GetText(world_->top(), 4);
  EXPECT_EQ(cut.text, text.substr(0, 3));
  EXPECT_EQ(cut.value, 3);
}

TEST_F(WindowsContract, WritesAndEmptiesTheTextOfAnEditBox) {
  EXPECT_TRUE(windows_.SetText(world_->edit(), "3383").answered);
  EXPECT_EQ(Text(world_->edit()), "3383");
  EXPECT_TRUE(windows_.SetText(world_->edit(), "").answered);
  EXPECT_EQ(Text(world_->edit()), "");
  EXPECT_EQ(windows_.Send(world_->edit(), kEmGetLineCount, 0, 0).value, 1);
}

TEST_F(WindowsContract, ReadsLinesOfEveryLengthWhole) {
  std::vector<std::string> lines;
  for (const std::size_t size : {3, 0, 1, 2, 31, 51, 52, 53, 64, 100, 200, 255, 256, 257, 700}) {
    std::string line;
    while (line.size() < size) line += static_cast<char>('a' + (line.size() + lines.size()) % 26);
    lines.push_back(line);
  }
  PutLines(lines);
  const Answer count = windows_.Send(world_->edit(), kEmGetLineCount, 0, 0);
  ASSERT_GE(count.value, static_cast<std::intptr_t>(lines.size()));
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_EQ(Line(static_cast<std::int32_t>(i)), lines[i]);
  }
}

TEST_F(WindowsContract, ALineThatIsNotThereIsEmpty) {
  PutLines({"only"});
  EXPECT_EQ(windows_.Send(world_->edit(), kEmLineIndex, 1000, 0).value, -1);
  const TextAnswer answer = windows_.GetLine(world_->edit(), 1000, 64);
  EXPECT_TRUE(answer.answered);
  EXPECT_EQ(answer.text, "");
}

TEST_F(WindowsContract, AClickTurnsTheCheckBoxOver) {
  const bool before = world_->Checked();
  EXPECT_TRUE(windows_.Send(world_->check_box(), kBmClick, 0, 0).answered);
  EXPECT_TRUE(Until([&] { return world_->Checked() != before; }));
  EXPECT_TRUE(windows_.Send(world_->check_box(), kBmClick, 0, 0).answered);
  EXPECT_TRUE(Until([&] { return world_->Checked() == before; }));
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

TEST_F(WindowsContract, BringsAWindowToTheFront) {
  windows_.SetForeground(world_->top());
  EXPECT_TRUE(Until([&] { return world_->IsInFront(); }));
}

TEST_F(WindowsContract, AHangingProgramDoesNotHoldThisOneUp) {
  constexpr std::int64_t kLimitMs = 2500;  // each call; the promise is 2 s
  Placement placement;
  ASSERT_TRUE(windows_.GetPlacement(world_->top(), placement));
  world_->Hang(20'000);
  Answer send;
  TextAnswer text;
  EXPECT_LE(Duration([&] { send = windows_.Send(world_->edit(), kEmGetLineCount, 0, 0); }),
            kLimitMs);
  EXPECT_FALSE(send.answered);
  EXPECT_LE(Duration([&] { send = windows_.SetText(world_->edit(), "text"); }), kLimitMs);
  EXPECT_FALSE(send.answered);
  EXPECT_LE(Duration([&] { send = windows_.Send(world_->check_box(), kBmClick, 0, 0); }), kLimitMs);
  EXPECT_FALSE(send.answered);
  EXPECT_LE(Duration([&] { text = windows_.GetText(world_->top(), 100); }), kLimitMs);
  EXPECT_FALSE(text.answered);
  EXPECT_EQ(text.text, "");
  EXPECT_LE(Duration([&] { text = windows_.GetLine(world_->edit(), 0, 64); }), kLimitMs);
  EXPECT_FALSE(text.answered);
  EXPECT_LE(Duration([&] { windows_.SetPlacement(world_->top(), placement); }), kLimitMs);
  EXPECT_LE(Duration([&] { windows_.SetForeground(world_->top()); }), kLimitMs);
  EXPECT_LE(Duration([&] { TopLevel(); }), kLimitMs);
  EXPECT_TRUE(windows_.IsAlive(world_->top()));
}

TEST_F(WindowsContract, AfterAHangTheProgramIsAskedAgain) {
  world_->Hang(4000);
  EXPECT_FALSE(windows_.Send(world_->edit(), kEmGetLineCount, 0, 0).answered);
  EXPECT_TRUE(Until([&] { return windows_.Send(world_->edit(), kEmGetLineCount, 0, 0).answered; }));
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
    EXPECT_FALSE(windows_.Send(window, kEmGetLineCount, 0, 0).answered);
    EXPECT_FALSE(windows_.SetText(window, "x").answered);
    EXPECT_FALSE(windows_.GetText(window, 100).answered);
    EXPECT_FALSE(windows_.GetLine(window, 0, 64).answered);
    Placement placement;
    ScreenRect rect;
    EXPECT_FALSE(windows_.GetPlacement(window, placement));
    EXPECT_FALSE(windows_.GetRect(window, rect));
    windows_.SetPlacement(window, placement);
    windows_.SetForeground(window);
    EXPECT_TRUE(Children(window).empty());
  }
  EXPECT_FALSE(Has(TopLevel(), top));
}

}  // namespace
}  // namespace corvane::contract
