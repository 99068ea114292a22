#include "systemerror.hpp"

#include "support/data/system_text.hpp"

#include <gtest/gtest.h>

TEST(ServiceSystemError, IsItsNumberWithTheSystemsText) {
  std::string const text = support::systemText(ERROR_ACCESS_DENIED);
  ASSERT_NE(text, "");
  EXPECT_EQ(service::systemError(ERROR_ACCESS_DENIED).c_str(), "system error 5 (" + text + ")");
}

TEST(ServiceSystemError, WithoutATextIsItsNumber) {
  ASSERT_EQ(support::systemText(999999), "");
  EXPECT_STREQ(service::systemError(999999).c_str(), "system error 999999");
}
