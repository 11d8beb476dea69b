// Scripted runs of the whole program, compared line by line with reviewed traces.
//
// CORVANE_WRITE_TRACES=1 writes the traces anew; look at the difference before committing it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "base/text.h"
#include "scenarios/script.h"

namespace corvane::sim {
namespace {

class TraceTest : public ::testing::TestWithParam<std::string> {};

TEST_P(TraceTest, TheRunGoesAsReviewed) {
  const Script script = ReadScript(GetParam());
  World world(script.options);
  const std::int64_t start = world.loop.TickMs();
  ASSERT_TRUE(world.Load());
  world.Start();
  for (const UserStep& step : script.steps) {
    world.Run(std::max<std::int64_t>(0, start + step.ms - world.loop.TickMs()));
    Carry(world, step);
  }
  world.Run(std::max<std::int64_t>(0, start + script.run_ms - world.loop.TickMs()));

  const std::filesystem::path expected = kRuns / (GetParam() + ".trace");
  if (std::getenv("CORVANE_WRITE_TRACES") != nullptr) {
    std::ofstream(expected, std::ios::binary) << world.TraceText();
    FAIL() << "trace written, not compared: " << expected;
  }
  EXPECT_EQ(FileLines(world.TraceText()), FileLines(ReadFile(expected)));
}

INSTANTIATE_TEST_SUITE_P(Runs, TraceTest, ::testing::ValuesIn(AllRuns()),
                         [](const auto& run) { return run.param; });

}  // namespace
}  // namespace corvane::sim
