// The sample "words" over texts of more than a megabyte: every word, in its place.

#include "textfile.hpp"

#include "support/data/files.hpp"
#include "support/data/random.hpp"
#include "support/processes/child_process.hpp"

#include <algorithm>
#include <cctype>
#include <clocale>
#include <cstdlib>
#include <cstring>

namespace {

/// Writes a text, sentence by sentence, and the report that is expected for it.
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

  support::Random random_;
  std::int64_t line_ = 1;
  std::size_t lineStart_ = 0;
};

bool isLetter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }
bool isWordChar(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || (c != '\0' && std::strchr("+-._", c) != nullptr);
}

/// The report on a text whose lines end in a line feed, made byte by byte.
std::string reportOn(std::string const & text) {
  std::string report;
  std::size_t lineStart = 0;
  int line = 1;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '\n') {
      lineStart = at + 1;
      ++line;
    }
    std::size_t const start = at;
    while (at < text.size() && isWordChar(text[at]))
      ++at;
    if (at == start)
      continue;
    std::string const run = text.substr(start, at-- - start);
    auto const first = std::find_if(run.begin(), run.end(), isLetter);
    if (first == run.end())
      continue;
    std::size_t const offset = start + static_cast<std::size_t>(first - run.begin());
    report += std::to_string(line) + ':' + std::to_string(offset - lineStart + 1) + ' ' + std::to_string(offset) + ' ' +
              std::string(first, std::find_if(run.rbegin(), run.rend(), isLetter).base()) + "\r\n";
  }
  return report;
}

/// Some pages of this project, joined.
std::string ourPages() {
  std::string text;
  for (char const * const page : {"README.md", "docs/text.md", "docs/diagnostics.md", "docs/ciphers.md",
                                  "docs/frame.md", "docs/command-line.md", "docs/adding-a-module.md"}) {
    auto const bytes = support::readFile(std::string(KIVARA_SOURCE_FOLDER "/") + page);
    EXPECT_TRUE(bytes && bytes->ends_with('\n')) << page;
    text += bytes.value_or("");
  }
  return text;
}

/// What the sample reports on a long text. It goes into a file: Wine writes each line by itself, which takes seconds through a pipe.
std::string reportOfWords(std::string const & text) {
  std::string const words = '"' + support::binFolder() + "\\words.exe\" " + writeText(text) + " >report.txt";
  EXPECT_EQ(std::system(words.c_str()), 0);
  return support::readFile("report.txt").value_or("");
}

} // namespace

TEST(Words, ReportsEveryWordOfALongTextWithItsPlace) {
  Prose prose(12);
  prose.writeParagraphs(1'200'000);
  ASSERT_GT(prose.text.size(), std::size_t{1} << 20);
  std::string const report = reportOfWords(prose.text);
  ASSERT_EQ(report.size(), prose.report.size());
  EXPECT_TRUE(report == prose.report);
}

TEST(Words, ReportsEveryWordOfTheProjectsOwnPages) {
  ASSERT_TRUE(std::setlocale(LC_CTYPE, "")); // as the program does
  std::string const pages = ourPages();
  ASSERT_GT(pages.size(), 10'000u);
  std::string text;
  while (text.size() <= std::size_t{1} << 20)
    text += pages;
  std::string const expected = reportOn(text);
  std::string const report = reportOfWords(text);
  ASSERT_EQ(report.size(), expected.size());
  EXPECT_TRUE(report == expected);
}

TEST(Words, ByteOfValueZeroSeparatesWordsAndMovesNoColumn) {
  using namespace std::string_literals;
  std::string const text = "one \0 two\0\n  three\n\0\0four\n"s;
  auto const result = support::runProgram({.program = "words", .arguments = writeText(text)});
  EXPECT_EQ(result.output, "1:1 0 one\r\n1:7 6 two\r\n2:3 13 three\r\n3:3 21 four\r\n");
}

TEST(Words, SaysWhenTheFileCannotBeRead) {
  auto const result = support::runProgram({.program = "words", .arguments = "missing.txt"});
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_EQ(result.errors, "words: cannot read missing.txt\r\n");
}

TEST(Words, EmptyTextHasNoWords) {
  auto const result = support::runProgram({.program = "words", .arguments = writeText("")});
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_EQ(result.output, "");
}

TEST(Words, SaysHowItIsUsed) {
  auto const result = support::runProgram({.program = "words"});
  EXPECT_EQ(result.exitCode, 2u);
  EXPECT_EQ(result.errors, "usage: words FILE\r\n");
}
