// Raw text and seeks of the parser.

#include "parsertext.hpp"
#include "text/readers/listreader.hpp"

using SV::String;

namespace {

constexpr char kNoEscape = '\x01';

std::string until(KivTextParser & parser, char stop, bool consume, char escape) {
  String text("old");
  parser.GetUntil(stop, text, consume, escape);
  return bytesOf(text);
}

/// All that a client can ask for.
std::string stateOf(KivTextParser const & parser) {
  String token, spaces;
  parser.GetLookAheadToken(token);
  parser.GetSpacesToken(spaces);
  std::string state = bytesOf(token) + '|' + bytesOf(spaces) + (parser.IsOkay() ? "|okay" : "|not okay");
  for (std::int64_t const number :
       {std::int64_t{parser.GetTokenCount()}, parser.GetLastLineNumber(), parser.GetLookAheadLineNumber(),
        parser.GetTokenOffset(), parser.GetNextTokenOffset(), parser.GetSavedOffset(), parser.GetSavedLineNum(),
        parser.GetCurrentLineOffset()})
    state += '|' + std::to_string(number);
  return state;
}

} // namespace

TEST(GetUntil, ReadsAQuotedStringAndKeepsItsEscapes) {
  KivTextParser parser(textOf(R"(say "a \" b" loud)"), 0);
  EXPECT_EQ(next(parser), "say");
  ASSERT_TRUE(parser.ExpectToken('"'));
  EXPECT_EQ(until(parser, '"', true, '\\'), R"(a \" b)");
  EXPECT_EQ(next(parser), "loud");
}

TEST(GetUntil, DoubledEscapeCharacterCancelsItself) {
  KivTextParser parser(textOf(R"("a\\" b)"), 0);
  ASSERT_TRUE(parser.ExpectToken('"'));
  EXPECT_EQ(until(parser, '"', true, '\\'), R"(a\\)");
  EXPECT_EQ(next(parser), "b");
}

TEST(GetUntil, StopThatIsNotConsumedBecomesTheNextToken) {
  KivTextParser parser(textOf("a b ; c"), 0);
  EXPECT_EQ(until(parser, ';', false, kNoEscape), "a b ");
  EXPECT_EQ(next(parser), ";");
  EXPECT_EQ(next(parser), "c");
}

TEST(GetUntil, TextBeginsWithTheSpacesBeforeTheLookAhead) {
  KivTextParser parser(textOf("a   b c;d"), 0);
  EXPECT_EQ(next(parser), "a");
  EXPECT_EQ(until(parser, ';', true, kNoEscape), "   b c");
  EXPECT_EQ(next(parser), "d");
}

TEST(GetUntil, SpacesOfManyLinesArePutBackToo) {
  KivTextParser parser(textOf("a\n\n  b c;d"), 0);
  EXPECT_EQ(next(parser), "a");
  EXPECT_EQ(until(parser, ';', true, kNoEscape), "\n\n  b c");
  EXPECT_EQ(next(parser), "d");
}

TEST(GetUntil, LineBreaksOfAnyKindAreSingleLineFeeds) {
  KivTextParser parser(textOf("\"a\r\nb\nc\rd\" e"), 0);
  ASSERT_TRUE(parser.ExpectToken('"'));
  EXPECT_EQ(until(parser, '"', true, '\\'), "a\nb\nc\nd");
  EXPECT_EQ(next(parser), "e");
}

TEST(GetUntil, StopAtTheStartOfALineIsNeverEscaped) {
  KivTextParser parser(textOf("\"a\\\n\" b"), 0);
  ASSERT_TRUE(parser.ExpectToken('"'));
  EXPECT_EQ(until(parser, '"', true, '\\'), "a\\\n");
  EXPECT_EQ(next(parser), "b");
}

TEST(GetUntil, StopRightAfterTheStartGivesAnEmptyText) {
  KivTextParser parser(textOf("\"\" b"), 0);
  ASSERT_TRUE(parser.ExpectToken('"'));
  EXPECT_EQ(until(parser, '"', true, '\\'), "");
  EXPECT_EQ(next(parser), "b");
}

TEST(GetUntil, WithoutAStopGathersAllAndTurnsNotOkay) {
  KivTextParser parser(textOf("a b\nc\n"), 0);
  EXPECT_EQ(until(parser, '"', true, '\\'), "a b\nc\n");
  EXPECT_FALSE(parser.IsOkay());
  EXPECT_EQ(next(parser), "(end)");
}

// The last line stays in place when the search fails; clients that go on rely on finding it again.
TEST(GetUntil, WithoutAStopLeavesTheLastLineToSkipToken) {
  KivTextParser parser(textOf("a\nb c\n"), 0);
  until(parser, '"', true, '\\');
  parser.SkipToken();
  EXPECT_EQ(next(parser), "b");
  EXPECT_EQ(next(parser), "c");
  EXPECT_EQ(next(parser), "(end)");
}

TEST(GetUntil, PutBackTokensCountAgain) {
  KivTextParser parser(textOf("a ;b"), 0);
  EXPECT_EQ(parser.GetTokenCount(), 1);
  until(parser, ';', false, kNoEscape);
  EXPECT_EQ(parser.GetTokenCount(), 2);
}

TEST(GetUntil, ZeroByteEndsTheSearchInItsLineButNotTheText) {
  using namespace std::string_literals;
  KivTextParser parser(textOf("a\0;\nb;c"s), 0);
  EXPECT_EQ(until(parser, ';', true, kNoEscape), "a\0;\nb"s);
  EXPECT_EQ(next(parser), "c");
}

TEST(GetUntil, TextOfManyLinesIsGatheredInLinearTime) {
  std::string text;
  for (int i = 0; i < 200000; ++i)
    text += "word word\n";
  KivTextParser parser(textOf(text + "\"x"), 0);
  EXPECT_EQ(until(parser, '"', true, '\\').size(), text.size());
  EXPECT_EQ(next(parser), "x");
}

TEST(SkipUntil, GoesOverLinesAndKnowsNoEscape) {
  KivTextParser parser(textOf("a b\nc \\; d ; e"), 0);
  parser.SkipUntil(';', true);
  EXPECT_EQ(next(parser), "d");
  parser.SkipUntil(';', false);
  EXPECT_EQ(next(parser), ";");
  EXPECT_EQ(next(parser), "e");
}

TEST(SkipUntil, LooksAtTheTokenThatIsPutBack) {
  KivTextParser parser(textOf("; a ; b"), 0);
  parser.SkipUntil(';', true);
  EXPECT_EQ(next(parser), "a");
}

TEST(SkipUntil, SearchesPastAByteOfValueZeroToo) {
  using namespace std::string_literals;
  KivTextParser parser(textOf("a\0;b"s), 0);
  parser.SkipUntil(';', true);
  EXPECT_EQ(next(parser), "b");
}

TEST(SkipUntil, WithoutAStopTurnsNotOkay) {
  KivTextParser parser(textOf("a b\nc\n"), 0);
  parser.SkipUntil(';', true);
  EXPECT_FALSE(parser.IsOkay());
  EXPECT_EQ(next(parser), "(end)");
}

TEST(ParserMoveTo, ContinuesAtTheOffsetWithTheLineNumberPlusOne) {
  KivTextParser parser(textOf("a\nb\nc\n"), 0);
  while (next(parser) != "(end)") {
  }
  ASSERT_TRUE(parser.MoveTo(2, 1));
  EXPECT_TRUE(parser.IsOkay());
  EXPECT_EQ(parser.GetLastLineNumber(), 1);
  EXPECT_EQ(parser.GetLookAheadLineNumber(), 2);
  EXPECT_EQ(parser.GetTokenOffset(), 2);
  EXPECT_EQ(parser.GetCurrentLineOffset(), 2);
  EXPECT_EQ(parser.GetNextTokenOffset(), 4);
  EXPECT_EQ(next(parser), "b");
}

TEST(ParserMoveTo, LeavesCountAndSavedOffsetsAlone) {
  KivTextParser parser(textOf("a b\nc\n"), 0);
  next(parser);
  parser.SaveOffset();
  auto const offset = parser.GetSavedOffset();
  auto const count = parser.GetTokenCount();
  ASSERT_TRUE(parser.MoveTo(0, 0));
  EXPECT_EQ(parser.GetSavedOffset(), offset);
  EXPECT_EQ(parser.GetSavedLineNum(), 1);
  EXPECT_EQ(parser.GetTokenCount(), count + 1);
}

TEST(ParserMoveTo, BeyondTheEndFindsNoTokenAndIsNotOkay) {
  KivTextParser parser(textOf("a\n"), 0);
  EXPECT_FALSE(parser.MoveTo(100, 7));
  EXPECT_FALSE(parser.IsOkay());
  EXPECT_EQ(parser.GetLastLineNumber(), 7);
  EXPECT_EQ(parser.GetLookAheadLineNumber(), 8);
  EXPECT_EQ(parser.GetTokenOffset(), 100);
  EXPECT_EQ(parser.GetNextTokenOffset(), -1);
}

TEST(ParserMoveTo, OnASourceThatIsNoFileReturnsFalseAndChangesNothing) {
  ListReader::Record record;
  KivTextParser parser(new ListReader({"a b\n", "c\n"}, record), 0);
  EXPECT_EQ(next(parser), "a");
  std::string const state = stateOf(parser);
  EXPECT_FALSE(parser.MoveTo(0, 0));
  EXPECT_EQ(stateOf(parser), state);
  EXPECT_EQ(record.lines, 1);
  EXPECT_EQ(next(parser), "b");
}

TEST(ParserMoveTo, ThatTheReaderRefusesChangesNothing) {
  KivTextParser parser(textOf("a b\nc\n"), 0);
  EXPECT_EQ(next(parser), "a");
  std::string const state = stateOf(parser);
  EXPECT_FALSE(parser.MoveTo(-5, 3));
  EXPECT_EQ(stateOf(parser), state);
  EXPECT_EQ(next(parser), "b");
  EXPECT_EQ(next(parser), "c");
}

// It is not the place of the token: a client that goes there finds the rest of the token's line, and then the next line.
TEST(ParserMoveTo, SavedOffsetIsTheEndOfTheTokensLineLessTheSpacesInFront) {
  KivTextParser parser(textOf("a\nb\nc\nd\n"), 0);
  next(parser);
  EXPECT_EQ(next(parser), "b");
  parser.SaveOffset();
  EXPECT_EQ(parser.GetSavedOffset(), 3);
  EXPECT_EQ(parser.GetSavedLineNum(), 1);
  EXPECT_EQ(next(parser), "c");
  EXPECT_EQ(next(parser), "d");
  ASSERT_TRUE(parser.MoveTo(parser.GetSavedOffset(), parser.GetSavedLineNum()));
  EXPECT_EQ(next(parser), "c");
  ASSERT_TRUE(parser.MoveTo(parser.GetSavedOffset() + 1, parser.GetSavedLineNum() + 1));
  EXPECT_EQ(parser.GetLookAheadLineNumber(), 3);
  EXPECT_EQ(next(parser), "c");
  EXPECT_EQ(next(parser), "d");
}

TEST(ParserMoveTo, ReturnsToTheLineOfTheLookAhead) {
  KivTextParser parser(textOf("a\r\nb b\rc\n"), 0);
  EXPECT_EQ(next(parser), "a");
  auto const offset = parser.GetCurrentLineOffset();
  auto const line = parser.GetLookAheadLineNumber();
  while (next(parser) != "(end)") {
  }
  ASSERT_TRUE(parser.MoveTo(offset, line - 1));
  EXPECT_EQ(parser.GetLookAheadLineNumber(), line);
  EXPECT_EQ(next(parser), "b");
}
