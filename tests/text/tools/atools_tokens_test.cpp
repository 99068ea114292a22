#include "atools.hpp"

#include "support/data/random.hpp"
#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

using SV::String;

namespace {

using Pieces = std::vector<std::string>;
using Tokens = ISequence<String>;

Pieces piecesOf(Tokens const & tokens) {
  Pieces pieces;
  for (String const & token : tokens)
    pieces.emplace_back(token.c_str(), static_cast<std::size_t>(token.Len()));
  return pieces;
}

template <class Separator> Pieces split(String const & text, Separator separator) {
  Tokens tokens{"what was there before"};
  Kiv_SplitIntoTokens(text, separator, tokens);
  return piecesOf(tokens);
}

struct Row {
  char const * text;
  char separator;
  Pieces pieces;
};
std::ostream & operator<<(std::ostream & out, Row const & row) { return out << '"' << row.text << '"'; }

class Split : public testing::TestWithParam<Row> {};

TEST_P(Split, AtACharacterKeepsEmptyPieces) {
  EXPECT_EQ(split(GetParam().text, GetParam().separator), GetParam().pieces);
}

TEST_P(Split, AtATextOfOneCharacterIsTheSame) {
  char const separator[] = {GetParam().separator, '\0'};
  EXPECT_EQ(split(GetParam().text, static_cast<char const *>(separator)), GetParam().pieces);
}

INSTANTIATE_TEST_SUITE_P(Texts, Split,
                         testing::Values(Row{"a;b;", ';', {"a", "b", ""}}, Row{"", ';', {""}}, Row{";", ';', {"", ""}},
                                         Row{"a", ';', {"a"}}, Row{";a", ';', {"", "a"}},
                                         Row{"a;;b", ';', {"a", "", "b"}},
                                         Row{"\xE4\xFF\xF6", '\xFF', {"\xE4", "\xF6"}}, Row{"a b", ' ', {"a", "b"}}));

TEST(Split, SkipsALongerSeparatorAsAWhole) {
  EXPECT_EQ(split("a--b-c--", "--"), (Pieces{"a", "b-c", ""}));
  EXPECT_EQ(split("a---b", "--"), (Pieces{"a", "-b"}));
  EXPECT_EQ(split("----", "--"), (Pieces{"", "", ""}));
  EXPECT_EQ(split("", "--"), Pieces{""});
  EXPECT_EQ(split("-", "--"), Pieces{"-"});
}

TEST(Split, AtNothingGivesNoPieces) {
  for (char const * text : {"", "a;b"}) {
    EXPECT_EQ(split(text, static_cast<char const *>(nullptr)), Pieces{});
    EXPECT_EQ(split(text, ""), Pieces{});
    EXPECT_EQ(split(text, '\0'), Pieces{});
  }
}

TEST(Split, EndsAtTheFirstNUL) {
  EXPECT_EQ(split(String("a;b\0c;d", 7), ';'), (Pieces{"a", "b"}));
  EXPECT_EQ(split(String("\0a;b", 4), "a;"), Pieces{""});
}

TEST(Split, LeavesTheTextAsItIs) {
  String const text("a;b;c");
  String const copy(text);
  split(text, ';');
  EXPECT_EQ(text, "a;b;c");
  EXPECT_EQ(text.block(), copy.block());
}

TEST(Split, OfAnOldTokenWorks) {
  support::GuardPages const guard;
  Tokens tokens{"a;b", "--"};
  Kiv_SplitIntoTokens(tokens[0], ';', tokens);
  EXPECT_EQ(piecesOf(tokens), (Pieces{"a", "b"}));
}

/// Joining the tokens with separators gives the text again.
TEST(Split, LosesNothing) {
  support::GuardPages const guard;
  support::Random random(7);
  for (std::size_t i = 0; i < support::times(2000); ++i) {
    std::string text(random() % 60, '\0');
    for (char & c : text)
      c = "ab;-"[random() % 4];
    char const * const separator = random() % 2 == 0 ? "-;" : ";";
    std::string joined;
    Pieces const pieces = split(text.c_str(), separator);
    for (std::size_t each = 0; each < pieces.size(); ++each) {
      ASSERT_EQ(pieces[each].find(separator), std::string::npos);
      joined += (each == 0 ? "" : separator) + pieces[each];
    }
    ASSERT_EQ(joined, text);
  }
}

} // namespace
