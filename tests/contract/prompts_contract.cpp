// Prompts: what the user sees, what goes on behind an open box, and that the end is the end.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "contract/factories.h"

namespace corvane::contract {
namespace {

TEST(PromptsContract, ABoxShowsItsTextTitleAndIcon) {
  const auto world = MakePrompts();
  world->AnswerAfter(100);
  world->prompts().ShowBox("Settings file appears corrupt, has been deleted. Please restart.",
                           "Corvane", BoxIcon::kNone);
  world->AnswerAfter(100);
  world->prompts().ShowBox("Possible file access error.\r\nError: [70]\r\nAborting.", "Error",
                           BoxIcon::kCritical);
  const auto seen = world->seen();
  ASSERT_EQ(seen.size(), 2U);
  EXPECT_EQ(seen[0].title, "Corvane");
  EXPECT_EQ(seen[0].text, "Settings file appears corrupt, has been deleted. Please restart.");
  EXPECT_EQ(seen[0].icon, BoxIcon::kNone);
  EXPECT_EQ(seen[1].title, "Error");
  EXPECT_EQ(seen[1].text, "Possible file access error.\r\nError: [70]\r\nAborting.");
  EXPECT_EQ(seen[1].icon, BoxIcon::kCritical);
}

TEST(PromptsContract, EventsRunWhileABoxIsOpen) {
  const auto world = MakePrompts();
  int ticks = 0;
  bool posted = false;
  // The third tick answers it; without that it is open for long.
  const auto timer = world->loop().MakeTimer(20, [&] {
    if (++ticks == 3) world->AnswerAfter(1);
  });
  timer->SetEnabled(true);
  world->loop().Post(EventSource::kUser, [&] { posted = true; });
  world->AnswerAfter(kPatienceMs);
  world->prompts().ShowBox("text", "title", BoxIcon::kNone);
  EXPECT_GE(ticks, 3);
  EXPECT_TRUE(posted);
}

TEST(PromptsContract, ABoxMayOpenOverAnother) {
  const auto world = MakePrompts();
  bool opened = false;
  world->loop().Post(EventSource::kUser, [&] {
    world->AnswerAfter(50);
    world->prompts().ShowBox("inner", "title", BoxIcon::kNone);
    opened = true;
    world->AnswerAfter(50);
  });
  world->AnswerAfter(500);
  world->prompts().ShowBox("outer", "title", BoxIcon::kNone);
  EXPECT_TRUE(opened);
  EXPECT_EQ(world->seen().size(), 2U);
}

TEST(PromptsContract, NothingIsDispatchedAfterTheEnd) {
  EXPECT_EQ(MakePrompts()->EventsAfterEnd(), 0);
}

}  // namespace
}  // namespace corvane::contract
