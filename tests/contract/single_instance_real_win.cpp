// One program per folder: what a second start finds.
#include <gtest/gtest.h>

#include <windows.h>

#include "app/single_instance_win.h"

namespace corvane::contract {
namespace {

const std::string kFolder = "C:\\Corvane of this test";

TEST(SingleInstanceWin, TheSecondStartFromAFolderIsNotTheFirst) {
  {
    const SingleInstance first(kFolder);
    EXPECT_TRUE(first.is_first());
    EXPECT_FALSE(SingleInstance("c:\\corvane OF THIS TEST").is_first());
    EXPECT_TRUE(SingleInstance(kFolder + " 2").is_first());
  }
  EXPECT_TRUE(SingleInstance(kFolder).is_first());
}

// What a program with administrator rights makes may not be opened by one without.
TEST(SingleInstanceWin, AClaimThatMayNotBeOpenedIsAClaim) {
  ACL nobody{};
  SECURITY_DESCRIPTOR descriptor{};
  ASSERT_TRUE(InitializeAcl(&nobody, sizeof nobody, ACL_REVISION));
  ASSERT_TRUE(InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION));
  ASSERT_TRUE(SetSecurityDescriptorDacl(&descriptor, TRUE, &nobody, FALSE));
  SECURITY_ATTRIBUTES attributes{sizeof attributes, &descriptor, FALSE};
  const HANDLE claim = CreateMutexA(&attributes, FALSE, SingleInstance::ClaimName(kFolder).c_str());
  ASSERT_NE(claim, nullptr);
  SetLastError(ERROR_SUCCESS);
  ASSERT_EQ(CreateMutexA(nullptr, FALSE, SingleInstance::ClaimName(kFolder).c_str()), nullptr);
  ASSERT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
  {
    SingleInstance second(kFolder);
    EXPECT_FALSE(second.is_first());
    second.BringFirstToFront();
  }
  CloseHandle(claim);
  EXPECT_TRUE(SingleInstance(kFolder).is_first());
}

}  // namespace
}  // namespace corvane::contract
