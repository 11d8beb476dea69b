// The picture is of the whole screen: what covered a window is seen, too.
#include "desktop/failure_picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "desktop/harness/foreign_windows.h"

namespace corvane::desktop {

void SaveFailurePicture() {
  const char* folder = std::getenv("CORVANE_PICTURES");
  const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
  std::string name = std::string(test->test_suite_name()) + "." + test->name() + ".png";
  std::replace(name.begin(), name.end(), '/', '-');
  const std::filesystem::path file = std::filesystem::path(folder != nullptr ? folder : ".") / name;
  if (!SaveScreenshot(0, file)) ADD_FAILURE() << "no picture could be saved";
}

}  // namespace corvane::desktop
