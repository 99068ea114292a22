#include "support/data/random.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <exception>

namespace support {
namespace {

char const * seedOfTheRun() { return std::getenv("KIVARA_TEST_SEED"); }

unsigned seedFor(unsigned own) {
  constexpr unsigned spread = 2654435761u; // neighbours of either number lead far apart
  char const * const text = seedOfTheRun();
  return text == nullptr ? own : (static_cast<unsigned>(std::strtoul(text, nullptr, 10)) ^ own * spread) * spread;
}

void print(unsigned own) {
  if (char const * const text = seedOfTheRun())
    std::fprintf(stderr, "random test %u; the same again: KIVARA_TEST_SEED=%s\n", own, text);
  else
    std::fprintf(stderr, "random test with its own seed %u\n", own);
  std::fflush(stderr);
}

} // namespace

template <class Engine> RandomOf<Engine>::RandomOf(unsigned own) : Engine(seedFor(own)), own_(own) {
  if (seedOfTheRun() != nullptr)
    print(own);
}

template <class Engine> RandomOf<Engine>::~RandomOf() {
  if (testing::Test::HasFailure() || std::uncaught_exceptions() > 0)
    print(own_);
}

template class RandomOf<std::mt19937>;
template class RandomOf<std::mt19937_64>;

} // namespace support
