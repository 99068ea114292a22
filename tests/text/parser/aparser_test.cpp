#include "aparser.hpp"

#include "parsertext.hpp"
#include "text/readers/listreader.hpp"

#include "support/imports/import_spy.hpp"

#include <cctype>
#include <clocale>
#include <cstring>
#include <type_traits>

using SV::String;
using Tokens = std::vector<std::string>;

namespace {

constexpr int kCommaSeparates = 1;

Tokens tokensOf(std::string_view text, int commaFlag = kCommaSeparates) {
  KivTextParser parser(textOf(text), commaFlag);
  return tokensOf(parser);
}

template <class Parser>
concept ComparesACharacter = requires(Parser & parser) {
  parser.IsNext('a');
};
template <class Parser>
concept ComparesAText = requires(Parser & parser) {
  parser.IsNext("a");
};
template <class Parser>
concept ComparesWithoutCase = requires(Parser & parser) {
  parser.IsNexti("a");
};

} // namespace

TEST(TextParser, CutsTextIntoTokens) {
  struct Row {
    char const * text;
    int commaFlag;
    Tokens tokens;
  };
  Row const rows[] = {
      {"a,b", 1, {"a", ",", "b"}},
      {"a,b", 0, {"a,b"}},
      {"a,b", 2, {"a,b"}}, // only the lowest bit counts
      {"a,b", 3, {"a", ",", "b"}},
      {"a,b", -1, {"a", ",", "b"}},
      {",", 0, {","}},
      {"x=-1.5e3;", 1, {"x", "=", "-1.5e3", ";"}},
      {"a+b", 1, {"a+b"}},
      {"--", 1, {"--"}},
      {"_a.b", 1, {"_a.b"}},
      {"((", 1, {"(", "("}},
      {"(a)", 1, {"(", "a", ")"}},
      {"a\tb\vc\fd e", 1, {"a", "b", "c", "d", "e"}},
      {"\"a b\"", 1, {"\"", "a", "b", "\""}},
      {"", 1, {}},
      {" \n \n", 1, {}},
      {"a\r\nb\rc", 1, {"a", "b", "c"}},
  };
  for (auto const & row : rows)
    EXPECT_EQ(tokensOf(row.text, row.commaFlag), row.tokens) << row.text << " with flag " << row.commaFlag;
}

TEST(TextParser, EveryByteIsClassedByTheLocaleInForce) {
  for (char const * const locale : {"C", ".ACP"}) {
    ASSERT_TRUE(std::setlocale(LC_CTYPE, locale)) << locale;
    for (int byte = 1; byte < 256; ++byte) {
      if (byte == '\n' || byte == '\r')
        continue;
      char const c = static_cast<char>(byte);
      bool const word = std::isalnum(byte) != 0 || std::strchr("+-._", byte) != nullptr;
      Tokens const expected = std::isspace(byte) ? Tokens{"x", "y"}
                              : word             ? Tokens{{'x', c, 'y'}}
                                                 : Tokens{"x", {c}, "y"};
      ASSERT_EQ(tokensOf(std::string{'x', c, 'y', '\n'}), expected) << locale << ' ' << byte;
    }
  }
  std::setlocale(LC_CTYPE, "C");
}

TEST(TextParser, HasOneVirtualOperationAndCannotBeCopied) {
  EXPECT_TRUE((std::is_base_of_v<KivObject, KivTextParser>));
  EXPECT_TRUE(std::has_virtual_destructor_v<KivTextParser>);
  EXPECT_FALSE(std::is_copy_constructible_v<KivTextParser>);
}

// Overloads of callers depend on it.
TEST(TextParser, OnlyTheComparisonWithACharacterIsConst) {
  EXPECT_TRUE(ComparesACharacter<KivTextParser const>);
  EXPECT_FALSE(ComparesAText<KivTextParser const>);
  EXPECT_FALSE(ComparesWithoutCase<KivTextParser const>);
  EXPECT_TRUE(ComparesAText<KivTextParser>);
  EXPECT_TRUE(ComparesWithoutCase<KivTextParser>);
}

TEST(TextParser, CountIsALongAndPlacesHave64Bits) {
  KivTextParser const parser(nullptr, 0);
  EXPECT_TRUE((std::is_same_v<decltype(parser.GetTokenCount()), long>));
  EXPECT_EQ(sizeof(parser.GetTokenOffset()), 8u);
  EXPECT_EQ(sizeof(parser.GetLastLineNumber()), 8u);
}

TEST(TextParser, UnreadableSourceShowsAsNotOkayAndLeavesTheStart) {
  KivTextParser parser(new KivTextFileReader("missing.txt"), 0);
  EXPECT_FALSE(parser.IsOkay());
  EXPECT_EQ(parser.GetLastLineNumber(), 0);
  EXPECT_EQ(parser.GetLookAheadLineNumber(), 0);
  EXPECT_EQ(parser.GetTokenOffset(), -1);
  EXPECT_EQ(parser.GetNextTokenOffset(), -1);
  EXPECT_EQ(parser.GetSavedOffset(), -1);
  EXPECT_EQ(parser.GetSavedLineNum(), -1);
  EXPECT_EQ(parser.GetCurrentLineOffset(), 0);
  EXPECT_EQ(parser.GetTokenCount(), 0);
  EXPECT_EQ(lookAhead(parser), "");
  EXPECT_EQ(spaces(parser), "");
  EXPECT_EQ(next(parser), "(end)");
}

TEST(TextParser, EmptyFileIsNotOkayAtOnceAndTheFailedReadCounts) {
  KivTextParser const parser(textOf(""), 0);
  EXPECT_FALSE(parser.IsOkay());
  EXPECT_EQ(parser.GetLookAheadLineNumber(), 1);
}

TEST(TextParser, NullReaderIsAnEmptySource) {
  KivTextParser parser(nullptr, 1);
  String text("old");
  parser.GetUntil('"', text, true, '\\');
  parser.SkipUntil('"', true);
  parser.SkipLine();
  EXPECT_EQ(text, "");
  EXPECT_FALSE(parser.IsOkay());
  EXPECT_EQ(next(parser), "(end)");
  EXPECT_FALSE(parser.MoveTo(0, 0));
  EXPECT_EQ(parser.GetLineReader(), nullptr);
}

TEST(TextParser, OwnsItsReader) {
  ListReader::Record record;
  {
    auto * const reader = new ListReader({"a\n"}, record);
    KivTextParser const parser(reader, 0);
    EXPECT_EQ(parser.GetLineReader(), reader);
    EXPECT_EQ(record.inits, 1);
    EXPECT_EQ(record.lines, 1);
    EXPECT_EQ(record.end, Tokens{});
  }
  EXPECT_EQ(record.end, (Tokens{"done", "deleted"}));
}

TEST(TextParser, ReadsNothingWhenInitFails) {
  ListReader::Record record;
  KivTextParser parser(new ListReader({"a\n"}, record, false), 0);
  EXPECT_EQ(next(parser), "(end)");
  parser.SkipToken();
  parser.SkipLine();
  EXPECT_EQ(record.lines, 0);
}

TEST(TextParser, BlankLinesAndIndentationStandInTheSpaces) {
  KivTextParser parser(textOf("a\n\n  b"), 0);
  EXPECT_EQ(next(parser), "a");
  EXPECT_EQ(spaces(parser), "\n\n  ");
  EXPECT_EQ(next(parser), "b");
}

TEST(TextParser, SpacesAndTokensRebuildTheText) {
  std::string const text = " a  =\t(b+c);\n\n\n  d , e\n \n";
  KivTextParser parser(textOf(text), kCommaSeparates);
  std::string rebuilt = spaces(parser);
  while (!lookAhead(parser).empty()) {
    rebuilt += next(parser);
    rebuilt += spaces(parser);
  }
  EXPECT_EQ(rebuilt, text);
}

TEST(TextParser, LastLineNumberIsTheLineOnWhichTheSpacesInFrontStart) {
  KivTextParser parser(textOf("a\nb"), 0);
  EXPECT_EQ(next(parser), "a");
  EXPECT_EQ(parser.GetLastLineNumber(), 1);
  EXPECT_EQ(next(parser), "b");
  EXPECT_EQ(parser.GetLastLineNumber(), 1);
  EXPECT_EQ(parser.GetLookAheadLineNumber(), 3); // the failed read counts
}

TEST(TextParser, OffsetsFollowTheLineOfTheLookAhead) {
  KivTextParser parser(textOf("a b\r\n\r\n  c d\n"), 0);
  EXPECT_EQ(parser.GetNextTokenOffset(), 5); // the end of the line, not of the token
  EXPECT_EQ(parser.GetCurrentLineOffset(), 0);
  EXPECT_EQ(next(parser), "a");
  EXPECT_EQ(parser.GetTokenOffset(), 5);
  EXPECT_EQ(next(parser), "b");
  EXPECT_EQ(parser.GetTokenOffset(), 5 - 1);
  EXPECT_EQ(parser.GetNextTokenOffset(), 13);
  EXPECT_EQ(parser.GetCurrentLineOffset(), 7);
  EXPECT_EQ(next(parser), "c");
  EXPECT_EQ(parser.GetTokenOffset(), 13 - 4);
}

TEST(TextParser, TokenCountCountsLookAheadTokens) {
  KivTextParser parser(textOf("a b c"), 0);
  EXPECT_EQ(parser.GetTokenCount(), 1);
  next(parser);
  parser.SkipToken();
  EXPECT_EQ(parser.GetTokenCount(), 3);
  next(parser);
  EXPECT_EQ(parser.GetTokenCount(), 3);
}

TEST(TextParser, SkipTokenLeavesLineAndOffsetOfTheLastToken) {
  KivTextParser parser(textOf("a\nb\nc\nd"), 0);
  next(parser);
  auto const offset = parser.GetTokenOffset();
  parser.SkipToken();
  EXPECT_EQ(parser.GetLastLineNumber(), 1);
  EXPECT_EQ(parser.GetTokenOffset(), offset);
  EXPECT_EQ(lookAhead(parser), "c");
}

TEST(TextParser, SkipLineActsOnTheLineOfTheLookAhead) {
  KivTextParser parser(textOf("a\nb c d\ne f\ng"), 0);
  EXPECT_EQ(next(parser), "a"); // the look-ahead is the first token of line 2
  parser.SkipLine();
  EXPECT_EQ(lookAhead(parser), "e");
  EXPECT_EQ(next(parser), "e"); // and now in the middle of line 3
  parser.SkipLine();
  EXPECT_EQ(lookAhead(parser), "g");
}

TEST(TextParser, IsNextWithACharacterLooksAtTheFirstOnly) {
  KivTextParser parser(textOf("abc"), 0);
  EXPECT_TRUE(parser.IsNext('a'));
  EXPECT_FALSE(parser.IsNext('b'));
  EXPECT_TRUE(parser.ExpectToken('a'));
  EXPECT_FALSE(parser.IsNext('a'));
  EXPECT_FALSE(parser.IsNext('\0'));
}

TEST(TextParser, IsNextWithATextComparesTheWholeToken) {
  KivTextParser parser(textOf("abc"), 0);
  EXPECT_TRUE(parser.IsNext("abc"));
  EXPECT_FALSE(parser.IsNext("ab"));
  EXPECT_FALSE(parser.IsNext("abcd"));
  EXPECT_FALSE(parser.IsNext("ABC"));
  EXPECT_FALSE(parser.IsNext(""));
  EXPECT_FALSE(parser.IsNext(nullptr));
}

TEST(TextParser, IsNextiIgnoresCaseByTheUsersLocale) {
  KivTextParser parser(textOf("abc\xE4 x"), 0);
  EXPECT_TRUE(parser.IsNexti("ABC"));
  EXPECT_TRUE(parser.IsNexti("aBc"));
  EXPECT_FALSE(parser.IsNexti("AB"));
  EXPECT_FALSE(parser.IsNexti(""));
  EXPECT_FALSE(parser.IsNexti(nullptr));
  EXPECT_TRUE(parser.ExpectToken("abc"));
  EXPECT_TRUE(parser.IsNexti("\xC4")); // also for letters beyond ASCII
}

TEST(TextParser, IsNextiAsksTheSystemUnlessOneSideAloneIsEmpty) {
  static int calls;
  support::spyOnImport("kivara.dll", "CompareStringA", [](support::SpiedCall const &) { ++calls; });
  KivTextParser parser(textOf("abc"), 0);
  EXPECT_FALSE(parser.IsNexti(""));
  EXPECT_EQ(calls, 0);
  EXPECT_FALSE(parser.IsNexti("abd"));
  EXPECT_EQ(calls, 1);
  parser.SkipToken();
  EXPECT_FALSE(parser.IsNexti("abc"));
  EXPECT_EQ(calls, 1);
  EXPECT_TRUE(parser.IsNexti(""));
  EXPECT_EQ(calls, 2);
}

TEST(TextParser, ExpectTokenSkipsWhatItExpectsOnly) {
  KivTextParser parser(textOf("begin ( end"), 0);
  EXPECT_FALSE(parser.ExpectToken("end"));
  EXPECT_FALSE(parser.ExpectToken('('));
  EXPECT_FALSE(parser.ExpectToken(nullptr));
  EXPECT_TRUE(parser.ExpectToken("begin"));
  EXPECT_TRUE(parser.ExpectToken('('));
  EXPECT_EQ(lookAhead(parser), "end");
}

TEST(TextParser, EndOfTheInputRepeatsWithoutFurtherReads) {
  ListReader::Record record;
  KivTextParser parser(new ListReader({"a\n"}, record), 0);
  EXPECT_EQ(next(parser), "a");
  EXPECT_EQ(record.lines, 2);
  String token("kept");
  for (int i = 0; i < 3; ++i) {
    EXPECT_FALSE(parser.GetNextToken(token));
    EXPECT_FALSE(parser.ExpectToken('a'));
    EXPECT_FALSE(parser.ExpectToken("a"));
    EXPECT_FALSE(parser.IsNext('a'));
    EXPECT_FALSE(parser.IsNexti("a"));
    EXPECT_TRUE(parser.IsNext(""));
    EXPECT_TRUE(parser.IsNexti(""));
  }
  EXPECT_EQ(token, "kept");
  EXPECT_EQ(record.lines, 2);
  EXPECT_EQ(parser.GetLookAheadLineNumber(), 2);
}

TEST(TextParser, FailedGetNextTokenStillSetsLineAndOffset) {
  KivTextParser parser(textOf("a\n\n"), 0);
  next(parser);
  EXPECT_EQ(parser.GetLastLineNumber(), 1);
  EXPECT_EQ(next(parser), "(end)");
  EXPECT_EQ(parser.GetLastLineNumber(), 3 - 2);
  EXPECT_EQ(parser.GetTokenOffset(), 2 - 2);
}

TEST(TextParser, ZeroByteEndsItsLineForTheTokeniser) {
  using namespace std::string_literals;
  KivTextParser parser(textOf("a \0 b\nc\n"s), 0);
  EXPECT_EQ(next(parser), "a");
  EXPECT_EQ(spaces(parser), " "); // the dropped line feed is missing
  EXPECT_EQ(next(parser), "c");
  EXPECT_EQ(parser.GetLastLineNumber(), 2);
}

TEST(TextParser, SaveOffsetCopiesOffsetAndLineOfTheLastToken) {
  KivTextParser parser(textOf("a b\nc d\n"), 0);
  next(parser);
  next(parser);
  parser.SaveOffset();
  auto const offset = parser.GetTokenOffset();
  next(parser);
  next(parser);
  EXPECT_EQ(parser.GetSavedOffset(), offset);
  EXPECT_EQ(parser.GetSavedLineNum(), 1);
}

TEST(TextParser, KeepTokenOffsetLastsThroughTheNextGetNextToken) {
  KivTextParser parser(textOf("a\nbb\nccc\ndddd\ne\n"), 0);
  next(parser);
  auto const token = parser.GetTokenOffset();
  auto const ahead = parser.GetNextTokenOffset();
  parser.KeepTokenOffset();
  parser.SkipToken();
  EXPECT_TRUE(parser.ExpectToken("ccc"));
  EXPECT_EQ(parser.GetNextTokenOffset(), ahead);
  EXPECT_EQ(next(parser), "dddd");
  EXPECT_EQ(parser.GetTokenOffset(), token);
  EXPECT_EQ(parser.GetNextTokenOffset(), ahead);
  EXPECT_EQ(next(parser), "e"); // the first token that changes them again
  EXPECT_EQ(parser.GetTokenOffset(), ahead - 1);
}

TEST(TextParser, KeepTokenOffsetLastsThroughLinesAndRawText) {
  KivTextParser parser(textOf("a\nb\nc; d\ne; f\ng\nh\n"), 0);
  next(parser);
  auto const token = parser.GetTokenOffset();
  auto const ahead = parser.GetNextTokenOffset();
  parser.KeepTokenOffset();
  parser.SkipLine();
  EXPECT_EQ(lookAhead(parser), "c");
  EXPECT_EQ(parser.GetNextTokenOffset(), ahead);
  String text;
  parser.GetUntil(';', text, true, '\\');
  EXPECT_EQ(lookAhead(parser), "d");
  EXPECT_EQ(parser.GetNextTokenOffset(), ahead);
  parser.SkipUntil(';', true);
  EXPECT_EQ(next(parser), "f");
  EXPECT_EQ(parser.GetTokenOffset(), token);
  EXPECT_EQ(parser.GetNextTokenOffset(), ahead);
  EXPECT_EQ(next(parser), "g");
  EXPECT_NE(parser.GetNextTokenOffset(), ahead);
}

TEST(TextParser, KeepTokenOffsetSurvivesAGetNextTokenThatFails) {
  KivTextParser parser(textOf("a\nb\n"), 0);
  next(parser);
  next(parser);
  auto const token = parser.GetTokenOffset();
  parser.KeepTokenOffset();
  EXPECT_EQ(next(parser), "(end)");
  EXPECT_TRUE(parser.MoveTo(0, 0));
  EXPECT_EQ(parser.GetNextTokenOffset(), -1);
  EXPECT_EQ(next(parser), "a");
  EXPECT_EQ(parser.GetTokenOffset(), 0);
  EXPECT_NE(token, 0);
}
