// What a parser and its reader see of each other while a line is read.

#include "parsertext.hpp"
#include "text/readers/listreader.hpp"

#include "support/memory/allocation.hpp"

#include <functional>
#include <ostream>

using SV::String;
using Strings = std::vector<std::string>;

namespace {

/// Appends its lines to what it is given.
class AppendingReader : public ListReader {
public:
  using ListReader::ListReader;
  bool GetLine(String & line) override {
    String read;
    bool const result = ListReader::GetLine(read);
    line += read;
    return result;
  }
};

/// At the end of its lines it fails and does something to the line.
class LastWords : public ListReader {
public:
  using Leave = std::function<void(String & line)>;
  LastWords(Strings lines, Record & record, Leave leave)
      : ListReader(std::move(lines), record), leave_(std::move(leave)) {}
  bool GetLine(String & line) override {
    bool const result = ListReader::GetLine(line);
    if (!result)
      leave_(line);
    return result;
  }

private:
  Leave const leave_;
};

/// Records the lines that it is given, and what its parser shows while it is asked.
class WatchingReader : public ListReader {
public:
  using ListReader::ListReader;
  bool GetLine(String & line) override {
    given.push_back(bytesOf(line));
    seen.push_back("line: " + shown());
    return ListReader::GetLine(line);
  }
  std::int64_t GetCurrentOffset() const override {
    seen.push_back("offset: " + shown());
    return ListReader::GetCurrentOffset();
  }

  KivTextParser const * parser = nullptr;
  Strings given;
  mutable Strings seen;

private:
  std::string shown() const {
    return parser != nullptr ? "[" + spaces(*parser) + "] " + lookAhead(*parser) : "(being made)";
  }
};

class Watched {
public:
  explicit Watched(Strings lines) : reader_(new WatchingReader(std::move(lines), record_)), parser(reader_, 0) {
    reader_->parser = &parser;
    reader_->given.clear();
    reader_->seen.clear();
  }
  Strings const & given() const { return reader_->given; }
  Strings const & seen() const { return reader_->seen; }

private:
  ListReader::Record record_;
  WatchingReader * reader_;

public:
  KivTextParser parser;
};

} // namespace

TEST(ParserSource, ThatAppendsToTheLineGivesEachTokenOnce) {
  ListReader::Record record;
  KivTextParser parser(new AppendingReader({"a b\n", "c d\n"}, record), 0);
  EXPECT_EQ(tokensOf(parser), (Strings{"a", "b", "c", "d"}));
}

// The line feed that is left of the first line is then part of the second.
TEST(ParserSource, ThatAppendsToTheLineLengthensItByWhatWasLeft) {
  ListReader::Record record;
  KivTextParser parser(new AppendingReader({"a b\n", "c d\n", "e\n"}, record), 0);
  EXPECT_EQ(next(parser), "a");
  EXPECT_EQ(next(parser), "b");
  EXPECT_EQ(lookAhead(parser), "c");
  EXPECT_EQ(spaces(parser), "\n\n");
  EXPECT_EQ(parser.GetCurrentLineOffset(), 4);
  EXPECT_EQ(next(parser), "c");
  EXPECT_EQ(next(parser), "d");
  EXPECT_EQ(parser.GetCurrentLineOffset(), 4 + 5);
}

TEST(ParserSource, ThatAppendsToTheLineIsSearchedWithItByGetUntil) {
  ListReader::Record record;
  KivTextParser parser(new AppendingReader({"a b\n", "c;d\n"}, record), 0);
  EXPECT_EQ(next(parser), "a");
  String text;
  parser.GetUntil(';', text, true, '\\');
  EXPECT_EQ(text, " b\n b\nc");
  EXPECT_EQ(next(parser), "d");
}

TEST(ParserSource, IsGivenWhatIsLeftOfTheLine) {
  Watched watched({"a b\n", "c \n", "d e\n", "f g\n", "h"});
  EXPECT_EQ(next(watched.parser), "a");
  EXPECT_EQ(next(watched.parser), "b");
  EXPECT_EQ(next(watched.parser), "c");
  watched.parser.SkipLine();
  String text;
  watched.parser.GetUntil('h', text, false, '\\');
  EXPECT_EQ(text, "f g\n");
  EXPECT_EQ(watched.given(), (Strings{"\n", " \n", "", "f g\n"}));
  EXPECT_EQ(next(watched.parser), "h");
  EXPECT_EQ(watched.given().back(), "");
}

// What a reader leaves in the line when it fails counts as the line.
TEST(ParserSource, ThatFailsLeavesItsLineInTheOffsets) {
  ListReader::Record record;
  KivTextParser parser(new LastWords({"a\n"}, record, [](String & line) { line = "left over\n"; }), 0);
  EXPECT_EQ(next(parser), "a");
  EXPECT_FALSE(parser.IsOkay());
  EXPECT_EQ(parser.GetCurrentLineOffset(), 2);
  EXPECT_EQ(next(parser), "(end)");
}

struct Left {
  char const * text;
  Strings tokens;
  char const * what;
};
void PrintTo(Left const & left, std::ostream * out) { *out << left.what; }

class ParserSourceThatFails : public testing::TestWithParam<Left> {};

TEST_P(ParserSourceThatFails, LeavesALineThatSkipTokenMeets) {
  char const * const text = GetParam().text;
  LastWords::Leave const ways[] = {[text](String & line) { line = text; },
                                   [text](String & line) {
                                     line = String(); // so that the same block may be allocated again
                                     line = text;
                                   }};
  for (auto const & way : ways) {
    ListReader::Record record;
    KivTextParser parser(new LastWords({"a bb\n"}, record, way), 0);
    EXPECT_EQ(tokensOf(parser), (Strings{"a", "bb"}));
    EXPECT_FALSE(parser.IsOkay());
    parser.SkipToken();
    EXPECT_EQ(tokensOf(parser), GetParam().tokens);
  }
}

INSTANTIATE_TEST_SUITE_P(AText, ParserSourceThatFails,
                         testing::Values(Left{"c dd\n", {"c", "dd"}, "of the length of the line"},
                                         Left{"a bb\n", {"a", "bb"}, "that is the line once more"},
                                         Left{"c", {"c"}, "of the length of what was left"},
                                         Left{"c d ee\n", {"c", "d", "ee"}, "of the size class of the line"},
                                         Left{"far too long for a block of that size\n",
                                              {"far", "too", "long", "for", "a", "block", "of", "that", "size"},
                                              "of another size class"},
                                         Left{"\n", {}, "that was left"}, Left{"", {}, "without characters"}));

TEST(ParserSource, ThatAppendsAndFailsLeavesThatToSkipToken) {
  ListReader::Record record;
  KivTextParser parser(new LastWords({"a bb\n"}, record, [](String & line) { line += "c d\n"; }), 0);
  EXPECT_EQ(tokensOf(parser), (Strings{"a", "bb"}));
  EXPECT_EQ(parser.GetCurrentLineOffset(), 5);
  parser.SkipToken();
  EXPECT_EQ(spaces(parser), "\n"); // what was left of the line
  EXPECT_EQ(tokensOf(parser), (Strings{"c", "d"}));
}

TEST(ParserSource, ThatFailsAndLeavesTheLineAloneGivesNoTokenTwice) {
  ListReader::Record record;
  KivTextParser parser(new ListReader({"a b\n"}, record), 0);
  EXPECT_EQ(tokensOf(parser), (Strings{"a", "b"}));
  parser.SkipToken();
  EXPECT_EQ(tokensOf(parser), Strings{});
  EXPECT_EQ(spaces(parser), "\n"); // what was left of the line
}

TEST(ParserSource, SeesTheOldTokenAndTheWhiteSpaceGrow) {
  Watched watched({"a\n", " \n", "  b\n"});
  EXPECT_EQ(next(watched.parser), "a");
  EXPECT_EQ(watched.seen(), (Strings{"line: [\n] a", "line: [\n \n] a", "offset: [\n \n  ] a"}));
  EXPECT_EQ(lookAhead(watched.parser), "b");
  EXPECT_EQ(spaces(watched.parser), "\n \n  ");
}

TEST(ParserSource, SeesTheOldTokenWithinALineToo) {
  Watched watched({"a b c\n"});
  EXPECT_EQ(next(watched.parser), "a");
  watched.parser.SkipToken();
  EXPECT_EQ(watched.seen(), (Strings{"offset: [ ] a", "offset: [ ] b"}));
}

TEST(ParserSource, SeesTheOldTokenAtTheEndOfTheInputToo) {
  Watched watched({"a\n", "\n"});
  EXPECT_EQ(next(watched.parser), "a");
  EXPECT_EQ(watched.seen(), (Strings{"line: [\n] a", "line: [\n\n] a"}));
  EXPECT_EQ(lookAhead(watched.parser), "");
  EXPECT_EQ(spaces(watched.parser), "\n\n");
}

TEST(ParserSource, SeesNoTokenWhileGetUntilReads) {
  Watched watched({"a b\n", "c;\n"});
  String text;
  watched.parser.GetUntil(';', text, false, '\\');
  EXPECT_EQ(watched.seen(), (Strings{"line: [] ", "offset: [] "}));
}

TEST(ParserSource, OfManyBlankLinesIsReadInLinearTime) {
  ListReader::Record record;
  Strings lines(20'000, "\n");
  lines.front() = "a\n";
  KivTextParser parser(new ListReader(lines, record), 0);
  support::AllocationCount const count;
  EXPECT_EQ(next(parser), "a");
  EXPECT_LT(count.value(), 100u);
  EXPECT_EQ(spaces(parser), std::string(20'000, '\n'));
}
