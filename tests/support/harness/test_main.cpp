#include "support/harness/process_guard.hpp"

#include <gtest/gtest.h>

int main(int argc, char ** argv) {
  support::ProcessGuard const guard;
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
