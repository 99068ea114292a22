// The text parser beside its model, over random texts, operations and seeks.

#include "parser_pair.hpp"
#include "support/data/random.hpp"

namespace {

/// Lines of up to \p longest characters, of those that the parser treats differently.
std::string randomText(std::mt19937 & random, std::size_t lines, std::size_t longest) {
  static constexpr char kChars[] = "aab1 \t\"\\,;(+-._\0\xE4\xA0";
  static char const * const kEnds[] = {"\n", "\n", "\r\n", "\r", "\n\n", "\n\r"};
  std::string text;
  while (lines-- > 0) {
    for (std::size_t length = random() % (longest + 1); length-- > 0;)
      text += kChars[random() % (sizeof kChars - 1)];
    text += kEnds[random() % std::size(kEnds)];
  }
  text.resize(text.size() - std::min<std::size_t>(text.size(), random() % 3));
  return text;
}

void compare(unsigned seed, std::size_t rounds, std::size_t mostLines, std::size_t longest, int steps) {
  support::Random random(seed);
  for (std::size_t round = 0; round < support::times(rounds); ++round) {
    ParserPair pair(randomText(random, random() % (mostLines + 1), longest), random() % 2 == 0);
    for (int step = 0; step < steps; ++step)
      ASSERT_TRUE(pair.step(random)) << "round " << round << ", step " << step;
  }
}

} // namespace

TEST(TextParserModel, SmallTexts) { compare(1, 4000, 5, 12, 60); }

TEST(TextParserModel, TextsOfManyShortLines) { compare(2, 60, 3000, 15, 2000); }

TEST(TextParserModel, TextsOfLongLines) { compare(3, 60, 8, 8000, 2000); }
