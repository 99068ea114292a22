#include "support/last_words.hpp"

#include <gtest/gtest.h>

namespace {

// Below the limit that ctest is given, so that the reason is seen.
constexpr double kLongestTest = 280;

} // namespace

int main(int argc, char ** argv) {
  testing::InitGoogleTest(&argc, argv);
  support::printStackOnCrash();
  support::startWatchdog(kLongestTest);
  return RUN_ALL_TESTS();
}
