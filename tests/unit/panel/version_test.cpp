// The version stands in one header, and once more where nothing can include it.
#include "panel/version.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace corvane {

namespace {

TEST(Version, OfTheManifestIsThatOfTheProgram) {
  std::ifstream file("src/app/corvane.manifest");
  ASSERT_TRUE(file.is_open());
  const std::string manifest((std::istreambuf_iterator<char>(file)), {});
  EXPECT_NE(manifest.find("name=\"Corvane\" version=\"" CORVANE_VERSION ".0\""), std::string::npos);
}

TEST(Version, IsTheSameAsTextAndAsNumbers) {
  std::string text;
  for (const int number : {CORVANE_VERSION_NUMBERS}) text += std::to_string(number) + ".";
  EXPECT_EQ(text, CORVANE_VERSION ".0.");
}

}  // namespace

}  // namespace corvane
