#include "link/net_remote_reply.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(NetRemoteReplyTest, TheGreetingGivesNameAndVersion) {
  const auto reply =
      ReadNetRemoteReply("{\"Name\":\"Net Remote\",\"Version\":\"1.0.5282.28765\"}\r\n");
  EXPECT_EQ(reply.kind, ReplyKind::kGreeting);
  EXPECT_EQ(reply.greeting, "Net Remote v1.0.5282.28765");
  EXPECT_FALSE(reply.is_result);
}

TEST(NetRemoteReplyTest, AGreetingWithoutVersionIsIgnored) {
  EXPECT_EQ(ReadNetRemoteReply("{\"Name\":\"Net Remote\"}").kind, ReplyKind::kIgnored);
  EXPECT_EQ(ReadNetRemoteReply("{\"Name\":\"Net Remote\",\"x\"}").kind, ReplyKind::kIgnored);
}

TEST(NetRemoteReplyTest, OnlyTheFirstLineOfAReadCounts) {
  const auto reply = ReadNetRemoteReply(
      "{\"Result\":\"OK\"}\r\n{\"Result\":\"OK\",\"Method\":\"IsPlaying\",\"Value\":true}\r\n");
  EXPECT_EQ(reply.kind, ReplyKind::kAcknowledged);
  EXPECT_EQ(reply.text, "Result:OK");
}

TEST(NetRemoteReplyTest, ALineWithoutEndIsReadWhole) {
  EXPECT_EQ(ReadNetRemoteReply("{\"Result\":\"OK\"}").kind, ReplyKind::kAcknowledged);
  EXPECT_EQ(ReadNetRemoteReply("{\"Result\":\"OK\"}\n").text, "Result:OK}");
}

TEST(NetRemoteReplyTest, QuotesGoAndThenTheFirstAndLastCharacter) {
  EXPECT_EQ(ReadNetRemoteReply("{\"a\":\"b\"}").text, "a:b");
  EXPECT_EQ(ReadNetRemoteReply("xaby").text, "ab");
  EXPECT_EQ(ReadNetRemoteReply("\"{}\"").text, "");
}

TEST(NetRemoteReplyTest, FewerThanTwoCharactersAreReadAsTheyStand) {
  for (const char* tiny : {"", "x", "\"", "\"x\"", "\r\n", ":", ","}) {
    const auto reply = ReadNetRemoteReply(tiny);
    EXPECT_EQ(reply.kind, ReplyKind::kIgnored) << tiny;
    EXPECT_FALSE(reply.is_result) << tiny;
  }
  EXPECT_EQ(ReadNetRemoteReply("\"x\"").text, "x");
}

TEST(NetRemoteReplyTest, TheTwoStatesAreRead) {
  auto reply = ReadNetRemoteReply(R"({"Result":"OK","Method":"IsPlaying","Value":true})");
  EXPECT_EQ(reply.kind, ReplyKind::kIsPlaying);
  EXPECT_TRUE(reply.value);
  EXPECT_TRUE(reply.is_result);
  reply = ReadNetRemoteReply(R"({"Result":"OK","Method":"AudioIsMuted","Value":"False"})");
  EXPECT_EQ(reply.kind, ReplyKind::kAudioIsMuted);
  EXPECT_FALSE(reply.value);
}

TEST(NetRemoteReplyTest, BlanksAroundKeysWordsAndValuesDoNotMatter) {
  const auto reply =
      ReadNetRemoteReply(R"({ "Result" : "OK" , "Method" : "IsPlaying" , "Value" : TRUE })");
  EXPECT_EQ(reply.kind, ReplyKind::kIsPlaying);
  EXPECT_TRUE(reply.value);
  EXPECT_EQ(ReadNetRemoteReply(R"({"Name": "Net Remote" , "Version": " 1.0 "})").greeting,
            "Net Remote v1.0");
}

TEST(NetRemoteReplyTest, WordsAreComparedWithTheirCase) {
  EXPECT_EQ(ReadNetRemoteReply(R"({"result":"OK"})").kind, ReplyKind::kIgnored);
  EXPECT_EQ(ReadNetRemoteReply(R"({"Result":"ok"})").kind, ReplyKind::kUnexpected);
  EXPECT_EQ(ReadNetRemoteReply(R"({"Result":"error","a":"b"})").kind, ReplyKind::kUnexpected);
}

TEST(NetRemoteReplyTest, EveryOtherMethodIsUnexpected) {
  for (const char* method : {"Frequency", "AudioGain", "IsSquelchOpen", "Nonsense", ""}) {
    const auto reply = ReadNetRemoteReply(std::string(R"({"Result":"OK","Method":")") + method +
                                          R"(","Value":365112500})");
    EXPECT_EQ(reply.kind, ReplyKind::kUnexpected) << method;
    EXPECT_TRUE(reply.is_result);
  }
}

TEST(NetRemoteReplyTest, ASuccessWithAMissingPairIsIgnoredButIsAnAnswer) {
  for (const char* text :
       {R"({"Result":"OK","Method":"IsPlaying"})", R"({"Result":"OK","Method","Value":true})",
        R"({"Result":"OK","Method":"Frequency","Value"})", R"({"Result"})",
        R"({"Result":"OK","Method":"IsPlaying","Value":maybe})"}) {
    const auto reply = ReadNetRemoteReply(text);
    EXPECT_EQ(reply.kind, ReplyKind::kIgnored) << text;
    EXPECT_TRUE(reply.is_result) << text;
  }
}

TEST(NetRemoteReplyTest, AValueEndsAtItsSecondColon) {
  EXPECT_EQ(ReadNetRemoteReply(R"({"Name":"A:B","Version":"1:2"})").greeting, "A v1");
}

TEST(NetRemoteReplyTest, AnErrorsLineDependsOnTheNumberOfPairs) {
  auto reply =
      ReadNetRemoteReply(R"({"Result":"Error","Type":"Value error","Message":"Greater than 60"})");
  EXPECT_EQ(reply.kind, ReplyKind::kError);
  EXPECT_TRUE(reply.is_result);
  EXPECT_TRUE(reply.can_report);
  EXPECT_EQ(reply.error_line, "Value error inMessage:Greater than 60");

  reply = ReadNetRemoteReply(R"({"Result":"Error","Type":"Value error","A":"b","C":"d"})");
  EXPECT_EQ(reply.error_line, "Value error inC:d");

  reply = ReadNetRemoteReply(R"({"Result":"Error","Type":"Value error","A":"b","C":"d","E":"f"})");
  EXPECT_EQ(reply.error_line, "Value error inC:d invalidE:f");
}

TEST(NetRemoteReplyTest, CommasInAMessageMakeMorePairs) {
  const auto reply = ReadNetRemoteReply(
      R"({"Result":"Error","Type":"Value error","Message":"Expected one of NFM, AM"})");
  EXPECT_EQ(reply.error_line, "Value error in AM");
}

TEST(NetRemoteReplyTest, OtherNumbersOfPairsHaveNoLineButAReport) {
  auto reply = ReadNetRemoteReply(R"({"Result":"Error","Type":"Syntax error"})");
  EXPECT_TRUE(reply.can_report);
  EXPECT_EQ(reply.error_line, std::nullopt);
  reply = ReadNetRemoteReply(R"({"Result":"Error","Type":"x",a,b,c,d})");
  EXPECT_TRUE(reply.can_report);
  EXPECT_EQ(reply.error_line, std::nullopt);
}

TEST(NetRemoteReplyTest, AnErrorWithoutAUsableSecondPairCannotBeReported) {
  for (const char* text : {R"({"Result":"Error"})", R"({"Result":"Error","Type"})"}) {
    const auto reply = ReadNetRemoteReply(text);
    EXPECT_EQ(reply.kind, ReplyKind::kError) << text;
    EXPECT_FALSE(reply.can_report) << text;
  }
}

TEST(NetRemoteReplyTest, WhatIsBehindTheLimitIsNotLookedAt) {
  EXPECT_LE(ReadNetRemoteReply(std::string(1000000, ',')).text.size(), kLongestReply);
}

TEST(NetRemoteReplyTest, BytesOfAnyKindAreSurvived) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes.push_back(static_cast<char>(i));
  EXPECT_EQ(ReadNetRemoteReply(bytes).kind, ReplyKind::kIgnored);
  EXPECT_EQ(ReadNetRemoteReply(std::string_view("{\0}", 3)).kind, ReplyKind::kIgnored);
}

TEST(NetRemoteReplyTest, BooleansAreWordsOrNumbers) {
  for (const char* text : {"True", "true", "TRUE", "1", "-1", "0.5", " 2 ", "+3", "007"}) {
    EXPECT_EQ(ReadBoolean(text), true) << text;
  }
  for (const char* text : {"False", "false", "FALSE", "0", "-0", "0.0", " 0 "}) {
    EXPECT_EQ(ReadBoolean(text), false) << text;
  }
  for (const char* text : {"", " ", "yes", "Truex", "1x", "-", ".", "1.2.3", "--1"}) {
    EXPECT_EQ(ReadBoolean(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace corvane
