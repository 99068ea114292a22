#pragma once
/// \file
/// Random tests that can be repeated.
///
///     support::Random random(7);
///     for (std::size_t i = 0; i < support::times(3000); ++i)
///       ASSERT_TRUE(survives(randomText(random))) << i;

#include <cstddef>
#include <cstdlib>
#include <random>

namespace support {

/// A generator that begins with the test's own seed, so that each run tries the same. With KIVARA_TEST_SEED in the
/// environment, a number, it begins with another one made of both, so that the tests of one run still differ from each
/// other. What a failed test has to be repeated with is printed when the generator ends; a seed from the environment
/// also when it begins, since a crash leaves no time for it later.
template <class Engine> class RandomOf : public Engine {
public:
  explicit RandomOf(unsigned own);
  ~RandomOf();
  RandomOf(RandomOf const &) = delete;
  RandomOf & operator=(RandomOf const &) = delete;

private:
  unsigned own_;
};

using Random = RandomOf<std::mt19937>;
using Random64 = RandomOf<std::mt19937_64>;

/// How often a random test does what it does \p usual times: as often, or KIVARA_TEST_TIMES times that.
inline std::size_t times(std::size_t usual) {
  char const * const text = std::getenv("KIVARA_TEST_TIMES");
  return text == nullptr ? usual : usual * std::strtoul(text, nullptr, 10);
}

} // namespace support
