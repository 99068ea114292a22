#include "ui/boxes/boxtext.hpp"

#include "support/data/random.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

using kivara::WrappedText;
using kivara::wrapText;

namespace {

/// Narrow, middle and broad characters, in pixels.
class Letters : public kivara::TextMeasure {
public:
  long widthOf(std::string_view text) override {
    ++measures;
    characters += static_cast<long>(text.size());
    long width = 0;
    for (char const c : text)
      width += c == ' ' ? 4 : (c == 'i' ? 3 : (c == 'w' ? 14 : 10));
    return width;
  }

  long measures = 0;
  long characters = 0;
};

struct Lines {
  std::string text;
  long lines;
  long width;
};

bool operator==(Lines const & a, Lines const & b) {
  return a.text == b.text && a.lines == b.lines && a.width == b.width;
}

std::ostream & operator<<(std::ostream & out, Lines const & lines) {
  return out << testing::PrintToString(lines.text) << ", " << lines.lines << " lines, " << lines.width << " wide";
}

Lines wrapped(std::string const & text, long maxWidth) {
  Letters letters;
  WrappedText const result = wrapText(text.c_str(), maxWidth, letters);
  return {result.text.c_str(), result.lines, result.width};
}

TEST(BoxText, ThatIsEmptyHasNoLineAndNoWidth) { EXPECT_EQ(wrapped("", 100), (Lines{"", 0, 0})); }

TEST(BoxText, LosesTheNewlinesAtItsEndAndKeepsEmptyLinesWithin) {
  EXPECT_EQ(wrapped("aa\n\nb\n\n\n", 100), (Lines{"aa\n\nb", 3, 20}));
  EXPECT_EQ(wrapped("\n\n", 100), (Lines{"", 0, 0}));
  EXPECT_EQ(wrapped("\na", 100), (Lines{"\na", 2, 10}));
}

TEST(BoxText, HasSpacesForTabs) { EXPECT_EQ(wrapped("a\tb\t", 100), (Lines{"a b ", 1, 28})); }

TEST(BoxText, EndsAtItsFirstNul) {
  Letters letters;
  WrappedText const result = wrapText(SV::String("ab\0\ncd", 6), 100, letters);
  EXPECT_STREQ(result.text.c_str(), "ab");
  EXPECT_EQ(result.lines, 1);
}

TEST(BoxText, ThatFitsToThePixelIsNotBroken) {
  EXPECT_EQ(wrapped("aaaa bbbb", 84), (Lines{"aaaa bbbb", 1, 84}));
  EXPECT_EQ(wrapped("aaaa bbbb", 83), (Lines{"aaaa\nbbbb", 2, 44}));
}

TEST(BoxText, IsBrokenAfterTheLastSpaceThatFitsWithIt) {
  EXPECT_EQ(wrapped("aa bb cc", 48), (Lines{"aa bb\ncc", 2, 48}));
  EXPECT_EQ(wrapped("aa bb cc", 47), (Lines{"aa\nbb cc", 2, 44})) << "the space at the end has to fit too";
}

TEST(BoxText, HasAWordThatIsTooLongOnALineOfItsOwn) {
  EXPECT_EQ(wrapped("wwwwwwwwww", 50), (Lines{"wwwwwwwwww", 1, 140}));
  EXPECT_EQ(wrapped("a wwwwwwwwww b", 50), (Lines{"a\nwwwwwwwwww b", 2, 154}));
}

TEST(BoxText, BreaksALongLineThatItHasTwiceInTheFirstPlaceBothTimes) {
  EXPECT_EQ(wrapped("aaaa bbbb\naaaa bbbb", 60), (Lines{"aaaa\nbbbb\naaaa bbbb", 4, 44}));
}

TEST(BoxText, BreaksWhereALineStandsWithinAnEarlierOne) {
  // The second line fits into the first one from its start: that one is broken once more, and the second one stays.
  EXPECT_EQ(wrapped("iiii bbbb iiii\nbbbb iiii", 52), (Lines{"iiii\nbbbb\niiii\nbbbb iiii", 5, 44}));
}

TEST(BoxText, OfAThousandLinesKeepsThem) {
  std::string text;
  for (int i = 0; i < 1000; ++i)
    text += "line\n";
  Lines const result = wrapped(text, 50);
  EXPECT_EQ(result.lines, 1000);
  EXPECT_EQ(result.text.size(), text.size() - 1);
}

/// The rules step by step, with every space of a line measured from its end.
Lines wrappedStepByStep(std::string original, long maxWidth) {
  original.erase(original.find_last_not_of('\n') + 1);
  std::string text = original;
  Letters letters;
  long lines = text.empty() ? 0 : 1 + static_cast<long>(std::count(text.begin(), text.end(), '\n'));
  long width = 0;
  for (long index = 0; index < lines; ++index) {
    std::size_t start = 0;
    for (long passed = 0; passed < index && start <= text.size(); ++passed)
      start = std::min(text.find('\n', start), text.size()) + 1;
    std::string const line = start <= text.size() ? text.substr(start, text.find('\n', start) - start) : "";
    long counted = letters.widthOf(line);
    for (std::size_t i = line.size(); counted > maxWidth && i-- > 0;)
      if (line[i] == ' ' && letters.widthOf(line.substr(0, i + 1)) <= maxWidth) {
        text[original.find(line) + i] = '\n';
        ++lines;
        counted = letters.widthOf(line.substr(0, i + 1));
        break;
      }
    width = std::max(width, counted);
  }
  return {text, lines, width};
}

TEST(BoxText, OfAnyKindIsThatOfTheRulesStepByStep) {
  support::Random random(21);
  for (std::size_t round = 0; round < support::times(4000); ++round) {
    std::string text;
    std::size_t const length = random() % 60;
    char const * const letters = round % 2 == 0 ? "aiw  \n" : "ab     ";
    for (std::size_t i = 0; i < length; ++i)
      text += letters[random() % (round % 2 == 0 ? 6 : 7)];
    long const maxWidth = 5 + static_cast<long>(random() % 120);
    ASSERT_EQ(wrapped(text, maxWidth), wrappedStepByStep(text, maxWidth)) << testing::PrintToString(text) << maxWidth;
  }
}

/// Words of which no passage stands twice.
std::string manyWords(std::size_t length) {
  std::string text;
  for (unsigned number = 0; text.size() < length; ++number)
    text += "w" + std::to_string(number * 2654435761u) + ' ';
  return text;
}

TEST(BoxText, OfOneLongLineIsThatOfTheRulesToo) {
  std::string const text = manyWords(6000);
  EXPECT_EQ(wrapped(text, 960), wrappedStepByStep(text, 960));
}

TEST(BoxText, OfAHundredKilobytesTakesAFewMeasuresForEachLine) {
  std::string const text = manyWords(100'000);
  Letters letters;
  WrappedText const result = wrapText(text.c_str(), 960, letters);
  EXPECT_GT(result.lines, 1000);
  EXPECT_LT(letters.measures, 8 * result.lines);
  EXPECT_LT(letters.characters, 2000 * result.lines) << "no measure begins a new walk through the rest of the text";
}

} // namespace
