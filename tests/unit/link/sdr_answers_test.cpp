#include "link/sdr_answers.h"

#include "link_fixture.h"

namespace corvane::test {
namespace {

using Asked = PatientWindows::Asked;

class SdrAnswersTest : public LinkTest {
 protected:
  SdrAnswersTest() { answers.SetSdr(Handle(ids().main)); }
  void Hear(Reply reply, Asked asked = Asked::kOther) {
    answers.OnReply(Handle(ids().info_box), asked, reply);
  }
  [[nodiscard]] std::string Silent() const { return "SDR# does not answer - " + Now(); }
  [[nodiscard]] std::string Again() const { return "SDR# answers again - " + Now(); }
  const std::string kRefuses =
      "SDR# runs with administrator rights - start this program in the same way";

  SdrAnswers& answers = context.answers;
};

TEST_F(SdrAnswersTest, SilenceIsSaidOnceAndItsEndOnce) {
  Hear(Reply::kAnswered);
  EXPECT_TRUE(StatusLog().empty());
  for (int i = 0; i < 3; ++i) Hear(Reply::kNoAnswer);
  EXPECT_EQ(StatusLog(), std::vector<std::string>{Silent()});
  EXPECT_TRUE(LastStatusLineShown());
  Hear(Reply::kGone);
  EXPECT_EQ(StatusLog().size(), 1u);
  for (int i = 0; i < 3; ++i) Hear(Reply::kAnswered, Asked::kText);
  EXPECT_EQ(StatusLog(), (std::vector<std::string>{Silent(), Again()}));
}

TEST_F(SdrAnswersTest, ARefusalIsOverWithTheFirstAnswerThatIsNoText) {
  for (int i = 0; i < 3; ++i) {
    Hear(Reply::kRefused);
    Hear(Reply::kAnswered, Asked::kText);
    Hear(Reply::kNoAnswer, Asked::kText);
  }
  EXPECT_EQ(StatusLog(), std::vector<std::string>{kRefuses});
  Hear(Reply::kAnswered);
  EXPECT_EQ(StatusLog(), (std::vector<std::string>{kRefuses, Again()}));
}

TEST_F(SdrAnswersTest, ARefusalAfterASilenceIsNamed) {
  Hear(Reply::kNoAnswer);
  Hear(Reply::kRefused);
  EXPECT_EQ(StatusLog(), (std::vector<std::string>{Silent(), kRefuses}));
}

TEST_F(SdrAnswersTest, WhatOtherProgramsAnswerIsNotSaid) {
  desktop.Do("stranger hang 1000");
  answers.OnReply(Handle(tree().top_level().front()), Asked::kText, Reply::kNoAnswer);
  answers.OnReply(sim().OwnMainWindow(), Asked::kOther, Reply::kRefused);
  answers.OnReply(0, Asked::kOther, Reply::kNoAnswer);
  EXPECT_TRUE(StatusLog().empty());
}

}  // namespace
}  // namespace corvane::test
