#include "base/newuuid.hpp"

#include <gtest/gtest.h>

#include <cctype>

namespace {

TEST(NewUuid, HasTheFormOfTheSystemInLowerCase) {
  SV::String const id = kivara::newUuid();
  ASSERT_EQ(id.Len(), 36);
  for (std::int32_t i = 0; i < id.Len(); ++i) {
    unsigned char const c = static_cast<unsigned char>(id.charAt(i));
    bool const isDash = i == 8 || i == 13 || i == 18 || i == 23;
    EXPECT_TRUE(isDash ? c == '-' : std::isxdigit(c) && !std::isupper(c)) << id.c_str();
  }
}

TEST(NewUuid, IsAnotherOneEachTime) { EXPECT_FALSE(kivara::newUuid() == kivara::newUuid()); }

} // namespace
