// Windows as state: order, behaviours, what the screen shows.
#include "standin/window_tree.h"

#include <gtest/gtest.h>

namespace corvane::standin {
namespace {

class Witness : public WindowTree::Observer {
 public:
  void Created(const Window& window) override { told += "+" + window.text; }
  void Destroyed(WindowId id) override { told += "-" + std::to_string(id); }
  void Changed(const Window& window, Aspect) override { told += "~" + window.text; }
  void Appended(const Window&, std::string_view text) override { told += ">" + std::string(text); }
  void ItemAdded(const Window& window, bool dropped) override {
    told += (dropped ? "!" : "*") + window.items.back();
  }
  std::string told;
};

class WindowTreeTest : public ::testing::Test {
 protected:
  WindowId Frame(const std::string& text, Box box = {100, 100, 300, 200}) {
    return tree_.Add(0, {Kind::kFrame, "Frame", text, box, true});
  }
  WindowId Child(WindowId parent, Kind kind, const std::string& text, Box box = {10, 10, 100, 20}) {
    return tree_.Add(parent, {kind, "Control", text, box, true});
  }
  WindowTree tree_;
};

TEST_F(WindowTreeTest, KeepsTheNewestTopLevelWindowInFrontAndChildrenInOrder) {
  const WindowId a = Frame("a");
  const WindowId b = Frame("b");
  EXPECT_EQ(tree_.top_level(), (std::vector<WindowId>{b, a}));
  tree_.Raise(a);
  EXPECT_EQ(tree_.top_level(), (std::vector<WindowId>{a, b}));
  const WindowId panel = Child(a, Kind::kPanel, "");
  const WindowId inner = Child(panel, Kind::kLabel, "");
  const WindowId last = Child(a, Kind::kLabel, "");
  EXPECT_EQ(tree_.Descendants(a), (std::vector<WindowId>{panel, inner, last}));
  EXPECT_TRUE(tree_.Descendants(b).empty());
}

TEST_F(WindowTreeTest, DestroysDescendantsAndNeverGivesAnIdAgain) {
  const WindowId a = Frame("a");
  const WindowId child = Child(a, Kind::kPanel, "");
  tree_.Destroy(a);
  EXPECT_EQ(tree_.Find(a), nullptr);
  EXPECT_EQ(tree_.Find(child), nullptr);
  EXPECT_TRUE(tree_.top_level().empty());
  EXPECT_GT(Frame("b"), child);
  tree_.Destroy(a);
  tree_.Destroy(0);
}

TEST_F(WindowTreeTest, MakesNoChildOfAWindowThatIsGone) {
  EXPECT_EQ(Child(77, Kind::kLabel, "x"), 0u);
}

TEST_F(WindowTreeTest, TogglesACheckBoxBeforeItsAction) {
  const WindowId box = Child(Frame("a"), Kind::kDrawnCheckBox, "box");
  bool seen = false;
  tree_.OnPress(box, [&] { seen = tree_.Find(box)->checked; });
  EXPECT_TRUE(tree_.Press(box));
  EXPECT_TRUE(seen);
  EXPECT_TRUE(tree_.Press(box));
  EXPECT_FALSE(seen);
}

TEST_F(WindowTreeTest, PressesOnlyWhatCanBePressed) {
  const WindowId frame = Frame("a");
  EXPECT_FALSE(tree_.Press(frame));
  EXPECT_FALSE(tree_.Press(Child(frame, Kind::kLabel, "x")));
  EXPECT_FALSE(tree_.Press(0));
  EXPECT_TRUE(tree_.Press(Child(frame, Kind::kButton, "x")));
}

TEST_F(WindowTreeTest, LetsAnActionDestroyItsOwnWindow) {
  const WindowId frame = Frame("a");
  const WindowId button = Child(frame, Kind::kButton, "x");
  tree_.OnPress(button, [&] { tree_.Destroy(frame); });
  EXPECT_TRUE(tree_.Press(button));
  EXPECT_EQ(tree_.Find(button), nullptr);
}

TEST_F(WindowTreeTest, ReactsToAMouseDownInsideASelector) {
  const WindowId selector = Child(Frame("a"), Kind::kSelector, "x");
  int seen = -1;
  tree_.OnMouseDown(selector, [&](int x, int) { seen = x; });
  EXPECT_TRUE(tree_.MouseDown(selector, 38, 13));
  EXPECT_EQ(seen, 38);
  EXPECT_FALSE(tree_.MouseDown(selector, 100, 13));
  EXPECT_FALSE(tree_.MouseDown(selector, 38, -1));
  EXPECT_TRUE(tree_.Press(selector));
  EXPECT_EQ(seen, 0);
}

TEST_F(WindowTreeTest, HidesDescendantsWithTheirAncestor) {
  const WindowId frame = Frame("a");
  const WindowId panel = Child(frame, Kind::kPanel, "");
  const WindowId label = Child(panel, Kind::kLabel, "");
  EXPECT_TRUE(tree_.IsVisible(label));
  tree_.SetVisible(panel, false);
  EXPECT_FALSE(tree_.IsVisible(label));
  EXPECT_FALSE(tree_.IsVisible(0));
}

TEST_F(WindowTreeTest, ShowsACheckBoxInTheTwoColours) {
  const WindowId frame = Frame("a");
  const WindowId box = Child(Child(frame, Kind::kPanel, ""), Kind::kDrawnCheckBox, "box");
  const Box at = tree_.ScreenBox(box);
  EXPECT_EQ(at, (Box{100 + 8 + 20, 100 + 31 + 20, 100, 20}));
  EXPECT_EQ(tree_.PixelAt(at.left + 7, at.top + 7), kUncheckedColour);
  tree_.Press(box);
  EXPECT_EQ(tree_.PixelAt(at.left + 7, at.top + 7), kCheckedColour);
  tree_.SetPaint(box, Paint::kOther);
  EXPECT_EQ(tree_.PixelAt(at.left + 7, at.top + 7), kOtherColour);
  EXPECT_EQ(tree_.PixelAt(at.left + 30, at.top + 7), kWindowColour);
}

TEST_F(WindowTreeTest, ACheckBoxOnAScaledScreenIsLargerAndLooksOtherwise) {
  const WindowId frame = Frame("a");
  for (const auto& [scale, size] : {std::pair{100, 12}, {150, 18}, {200, 24}}) {
    WindowSpec wanted{Kind::kDrawnCheckBox, "BUTTON", "box", {20, 20, 100, 40}, true};
    wanted.scale = scale;
    const WindowId box = tree_.Add(frame, wanted);
    const Box at = tree_.ScreenBox(box);
    const Glyph glyph = GlyphAt(scale);
    EXPECT_EQ(glyph.last - glyph.first + 1, size);
    EXPECT_EQ(glyph.checked == kCheckedColour, scale == 100);
    EXPECT_EQ(glyph.unchecked == kUncheckedColour, scale == 100);
    EXPECT_NE(glyph.checked, glyph.unchecked);
    EXPECT_EQ(tree_.PixelAt(at.left + 7, at.top + 7), glyph.unchecked);
    EXPECT_EQ(tree_.PixelAt(at.left + glyph.last, at.top + glyph.last), glyph.unchecked);
    EXPECT_EQ(tree_.PixelAt(at.left + glyph.last + 1, at.top + 7), kWindowColour);
    tree_.Press(box);
    EXPECT_EQ(tree_.PixelAt(at.left + 7, at.top + 7), glyph.checked);
    tree_.SetVisible(box, false);
  }
}

TEST_F(WindowTreeTest, ShowsWhatCoversACheckBox) {
  const WindowId frame = Frame("a");
  const WindowId box = Child(frame, Kind::kDrawnCheckBox, "box");
  const Box at = tree_.ScreenBox(box);
  const WindowId cover = Frame("cover");
  EXPECT_EQ(tree_.PixelAt(at.left + 7, at.top + 7), kWindowColour);
  EXPECT_EQ(tree_.WindowAt(at.left + 7, at.top + 7), cover);
  tree_.SetShowState(cover, ShowState::kMinimised);
  EXPECT_EQ(tree_.PixelAt(at.left + 7, at.top + 7), kUncheckedColour);
  tree_.SetVisible(frame, false);
  EXPECT_EQ(tree_.PixelAt(at.left + 7, at.top + 7), kDesktopColour);
}

TEST_F(WindowTreeTest, ACoverStaysAboveAllOtherWindows) {
  const WindowId frame = Frame("a");
  const WindowId box = Child(frame, Kind::kDrawnCheckBox, "box");
  const Box at = tree_.ScreenBox(box);
  tree_.Cover(box, kCheckedColour);
  const WindowId cover = tree_.top_level().front();
  EXPECT_EQ(tree_.Find(cover)->over, box);
  EXPECT_EQ(tree_.Find(cover)->box, (Box{at.left - 4, at.top - 4, at.width + 8, at.height + 8}));
  const WindowId later = Frame("later");
  EXPECT_EQ(tree_.top_level(), (std::vector<WindowId>{cover, later, frame}));
  tree_.Raise(frame);
  EXPECT_EQ(tree_.top_level(), (std::vector<WindowId>{cover, frame, later}));
  tree_.Raise(cover);
  EXPECT_EQ(tree_.top_level(), (std::vector<WindowId>{cover, frame, later}));
  EXPECT_EQ(tree_.PixelAt(at.left + 7, at.top + 7), kCheckedColour);
  EXPECT_EQ(tree_.WindowAt(at.left + 7, at.top + 7), cover);
  tree_.Cover(box, kUncheckedColour);
  EXPECT_EQ(tree_.PixelAt(at.left + 7, at.top + 7), kUncheckedColour);
  tree_.Press(box);
  tree_.Uncover();
  EXPECT_EQ(tree_.top_level(), (std::vector<WindowId>{frame, later}));
  EXPECT_EQ(tree_.PixelAt(at.left + 7, at.top + 7), kCheckedColour);
  tree_.Cover(0, kCheckedColour);
  EXPECT_EQ(tree_.top_level().size(), 2u);
}

TEST_F(WindowTreeTest, AWindowIsWithinItselfAndAllThatIsAboveIt) {
  const WindowId frame = Frame("a");
  const WindowId panel = Child(frame, Kind::kPanel, "");
  const WindowId box = Child(panel, Kind::kLabel, "");
  for (const WindowId outer : {frame, panel, box}) EXPECT_TRUE(tree_.IsWithin(box, outer));
  EXPECT_FALSE(tree_.IsWithin(panel, box));
  EXPECT_FALSE(tree_.IsWithin(frame, Frame("b")));
  EXPECT_FALSE(tree_.IsWithin(box, 0));
  EXPECT_FALSE(tree_.IsWithin(0, 0));
}

TEST_F(WindowTreeTest, HasNoPixelsOutsideOfTheScreen) {
  EXPECT_EQ(tree_.PixelAt(-1, 5), -1);
  EXPECT_EQ(tree_.PixelAt(5, -1), -1);
  EXPECT_EQ(tree_.PixelAt(WindowTree::kScreenWidth, 5), -1);
  EXPECT_EQ(tree_.PixelAt(5, WindowTree::kScreenHeight), -1);
  EXPECT_EQ(tree_.PixelAt(5, 5), kDesktopColour);
}

TEST_F(WindowTreeTest, TellsTheMirrorOfEveryChangeOnce) {
  Witness witness;
  tree_.SetObserver(&witness);
  const WindowId frame = Frame("a");
  const WindowId list = Child(frame, Kind::kListBox, "l");
  const WindowId box = Child(frame, Kind::kMultiLine, "m");
  tree_.SetText(frame, "b");
  tree_.SetText(frame, "b");
  tree_.AppendText(box, "x", 100);
  tree_.AddItem(list, "1", 1);
  tree_.AddItem(list, "2", 1);
  tree_.Destroy(frame);
  EXPECT_EQ(witness.told, "+a+l+~b>x*1!2-2-3-1");
}

TEST_F(WindowTreeTest, HalvesAFullBox) {
  const WindowId box = Child(Frame("a"), Kind::kMultiLine, "");
  for (int i = 0; i < 6; ++i) tree_.AppendText(box, "aaaa\r\n", 30);
  EXPECT_EQ(tree_.Find(box)->lines.LineCount(), 3);
}

TEST(EditTextTest, HasOneLineWhenItIsEmpty) {
  const EditText text;
  EXPECT_EQ(text.LineCount(), 1);
  EXPECT_EQ(text.LineIndex(0), 0);
  EXPECT_EQ(text.LineIndex(1), -1);
  EXPECT_EQ(text.LineLength(0), 0);
  EXPECT_EQ(text.Line(0), "");
}

TEST(EditTextTest, KeepsAnUnfinishedLastLine) {
  EditText text;
  text.Append("one\r\ntwo\r\n");
  EXPECT_EQ(text.LineCount(), 3);
  EXPECT_EQ(text.Line(1), "two");
  EXPECT_EQ(text.Line(2), "");
  text.Append("thr");
  text.Append("ee\r\n");
  EXPECT_EQ(text.LineCount(), 4);
  EXPECT_EQ(text.Line(2), "three");
}

TEST(EditTextTest, FindsALineEndThatArrivesInTwoParts) {
  EditText text;
  text.Append("one\r");
  EXPECT_EQ(text.LineCount(), 1);
  text.Append("\ntwo");
  EXPECT_EQ(text.LineCount(), 2);
  EXPECT_EQ(text.Line(0), "one");
  EXPECT_EQ(text.Line(1), "two");
}

TEST(EditTextTest, AnswersAboutPositions) {
  EditText text;
  text.Append("one\r\nfour\r\n");
  EXPECT_EQ(text.LineIndex(1), 5);
  EXPECT_EQ(text.LineIndex(2), 11);
  EXPECT_EQ(text.LineIndex(-1), 11);  // the caret's line
  EXPECT_EQ(text.LineIndex(-2), -1);
  EXPECT_EQ(text.LineLength(5), 4);
  EXPECT_EQ(text.LineLength(7), 4);
  EXPECT_EQ(text.LineLength(11), 0);
  EXPECT_EQ(text.LineLength(12), 0);
  EXPECT_EQ(text.LineLength(-5), 0);
}

TEST(EditTextTest, DropsWholeLinesFromTheFront) {
  EditText text;
  text.Append("aaaa\r\nbbbb\r\ncccc\r\n");
  text.KeepLast(13);
  EXPECT_EQ(text.text(), "bbbb\r\ncccc\r\n");
  EXPECT_EQ(text.LineCount(), 3);
  text.KeepLast(100);
  EXPECT_EQ(text.LineCount(), 3);
}

TEST(EditTextTest, StartsAnewWhenItIsSet) {
  EditText text;
  text.Append("a\r\nb\r\n");
  text.Set("");
  EXPECT_EQ(text.LineCount(), 1);
  text.Set("x\r\ny");
  EXPECT_EQ(text.LineCount(), 2);
  EXPECT_EQ(text.LineIndex(-1), 0);
}

TEST(EditTextTest, WrapsBehindBlanksAndInsideLongWords) {
  EditText text;
  text.SetWrap(Wrap::kWords, 6);
  text.Set("aa bb cc\r\n\r\nlongword d\r\nend");
  const std::vector<std::pair<std::string, std::int32_t>> lines = {
      {"aa bb ", 0}, {"cc", 6}, {"", 10}, {"longwo", 12}, {"rd d", 18}, {"end", 24}};
  ASSERT_EQ(text.LineCount(), static_cast<std::int32_t>(lines.size()));
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_EQ(text.Line(static_cast<std::int32_t>(i)), lines[i].first);
    EXPECT_EQ(text.LineIndex(static_cast<std::int32_t>(i)), lines[i].second);
  }
  text.Append(" x y z");
  EXPECT_EQ(text.LineCount(), 7);
  EXPECT_EQ(text.Line(6), "y z");
  text.SetWrap(Wrap::kWords, 100);
  EXPECT_EQ(text.LineCount(), 4);
}

TEST(EditTextTest, ABlankAtABreakCanBelongToNeitherLine) {
  EditText text;
  text.SetWrap(Wrap::kSwallowing, 6);
  text.Set("aa bb cc\r\n");
  EXPECT_EQ(text.Line(0), "aa bb");
  EXPECT_EQ(text.LineIndex(1), 6);
}

TEST_F(WindowTreeTest, AnOwnedWindowStaysAboveItsOwnerAndIsHiddenWhileThatIsMinimised) {
  const WindowId owner = Frame("owner");
  WindowSpec wanted{Kind::kFrame, "Frame", "owned", {150, 150, 100, 100}};
  wanted.owner = owner;
  const WindowId owned = tree_.Add(0, wanted);
  tree_.Raise(owner);
  EXPECT_EQ(tree_.top_level(), (std::vector<WindowId>{owned, owner}));
  tree_.SetShowState(owner, ShowState::kMinimised);
  EXPECT_FALSE(tree_.IsVisible(owned));
  tree_.SetShowState(owner, ShowState::kNormal);
  EXPECT_TRUE(tree_.IsVisible(owned));
  tree_.SetVisible(owned, false);
  tree_.SetShowState(owner, ShowState::kMinimised);
  tree_.SetShowState(owner, ShowState::kNormal);
  EXPECT_FALSE(tree_.IsVisible(owned)) << "it was hidden before";
}

}  // namespace
}  // namespace corvane::standin
