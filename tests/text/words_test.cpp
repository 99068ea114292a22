// The sample "words" over a text of more than a megabyte: every word, in its place.

#include "textfile.hpp"

#include "support/child_process.hpp"

#include <random>

namespace {

/// A text that is written sentence by sentence, beside the report that it has to give.
class Prose {
public:
  explicit Prose(unsigned seed) : random_(seed) {}

  void writeParagraphs(std::size_t mostCharacters) {
    while (text.size() < mostCharacters) {
      for (unsigned sentences = 2 + random_() % 6; sentences-- > 0;)
        sentence();
      lineEnd();
      for (unsigned blankLines = random_() % 3; blankLines-- > 0;)
        lineEnd();
      add(std::string(random_() % 3 * 2, ' '));
    }
  }

  std::string text;
  std::string report;

private:
  void add(std::string const & characters) { text += characters; }

  void lineEnd() {
    add(random_() % 3 != 0 ? "\r\n" : "\n");
    ++line_;
    lineStart_ = text.size();
  }

  void word() {
    static char const * const kWords[] = {"the",
                                          "process",
                                          "of",
                                          "an",
                                          "order",
                                          "begins",
                                          "when",
                                          "a",
                                          "customer",
                                          "signs",
                                          "well-known",
                                          "e.g",
                                          "step_two",
                                          "Department",
                                          "office",
                                          "Gesch\xE4"
                                          "ft",
                                          "answers",
                                          "within",
                                          "days",
                                          "responsibility"};
    char const * const word = kWords[random_() % std::size(kWords)];
    report += std::to_string(line_) + ':' + std::to_string(text.size() - lineStart_ + 1) + ' ' +
              std::to_string(text.size()) + ' ' + word + "\r\n";
    add(word);
  }

  void decoratedWord() {
    static char const * const kAround[][2] = {{"(", ")"}, {"\"", "\""}, {"'", "'"}, {"--", "--"},
                                              {"", ","},  {"", ";"},    {"", "..."}};
    auto const & around = kAround[random_() % std::size(kAround)];
    add(around[0]);
    word();
    add(around[1]);
  }

  void sentence() {
    for (unsigned words = 3 + random_() % 12; words-- > 0;) {
      if (random_() % 6 == 0)
        decoratedWord();
      else
        word();
      if (random_() % 20 == 0)
        add(" " + std::to_string(random_() % 2000) + ".5");
      if (words == 0)
        add(".");
      else if (text.size() - lineStart_ < 70)
        add(random_() % 30 == 0 ? "\t " : " ");
      else
        lineEnd();
    }
    add(" ");
  }

  std::mt19937 random_;
  std::int64_t line_ = 1;
  std::size_t lineStart_ = 0;
};

} // namespace

TEST(Words, ReportsEveryWordOfALongTextWithItsPlace) {
  Prose prose(12);
  prose.writeParagraphs(1'200'000);
  ASSERT_GT(prose.text.size(), std::size_t{1} << 20);
  auto const result = support::runProgram({.program = "words", .arguments = writeText(prose.text)});
  EXPECT_EQ(result.exitCode, 0u);
  ASSERT_EQ(result.output.size(), prose.report.size());
  EXPECT_TRUE(result.output == prose.report);
}

TEST(Words, TellsWhenTheFileCannotBeRead) {
  auto const result = support::runProgram({.program = "words", .arguments = "missing.txt"});
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_EQ(result.errors, "words: cannot read missing.txt\r\n");
}

TEST(Words, EmptyTextHasNoWords) {
  auto const result = support::runProgram({.program = "words", .arguments = writeText("")});
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_EQ(result.output, "");
}

TEST(Words, TellsHowItIsUsed) {
  auto const result = support::runProgram({.program = "words"});
  EXPECT_EQ(result.exitCode, 2u);
  EXPECT_EQ(result.errors, "usage: words FILE\r\n");
}
