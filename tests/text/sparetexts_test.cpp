// Blocks that readers and parser use again: nothing that somebody still holds may change, and little is allocated.

#include "aparser.hpp"

#include "textfile.hpp"

#include "support/allocation.hpp"

using SV::String;

namespace {

std::string textOfWords(int count) {
  std::string text;
  for (int i = 0; i < count; ++i)
    text += std::string(static_cast<std::size_t>(i * 7 % 23 + 1), static_cast<char>('a' + i % 26)) +
            (i % 5 == 0 ? "\n" : " ");
  return text + "\n";
}

} // namespace

TEST(SpareTexts, LinesThatAreKeptStayAsTheyAre) {
  std::string const text = textOfWords(2000);
  Owned<> const reader(writeText(text));
  ASSERT_TRUE(reader->Init());
  std::vector<String> kept;
  for (String line; reader->GetLine(line);)
    kept.push_back(line);
  std::string all;
  for (auto const & line : kept)
    all += bytesOf(line);
  EXPECT_EQ(all, text);
}

TEST(SpareTexts, TokensThatAreKeptStayAsTheyAre) {
  std::string const text = textOfWords(2000);
  KivTextParser parser(new KivTextFileReader(writeText(text).c_str()), 1);
  std::vector<String> kept;
  String token, spaces;
  for (parser.GetSpacesToken(spaces), kept.push_back(spaces); parser.GetNextToken(token); kept.push_back(spaces)) {
    kept.push_back(token);
    parser.GetSpacesToken(spaces);
  }
  std::string all;
  for (auto const & piece : kept)
    all += bytesOf(piece);
  EXPECT_EQ(all, text);
}

TEST(SpareTexts, TokenThatIsHandedOutHasNoOtherOwner) {
  KivTextParser parser(new KivTextFileReader(writeText("one two six ten").c_str()), 1);
  String first, second;
  ASSERT_TRUE(parser.GetNextToken(first));
  ASSERT_TRUE(parser.GetNextToken(second));
  EXPECT_EQ(first.block()->nRefCount, 0u);
  EXPECT_EQ(second.block()->nRefCount, 0u);
}

TEST(SpareTexts, LineAllocatesAtMostOnce) {
  std::string text;
  for (int i = 0; i < 1000; ++i)
    text += std::string(static_cast<std::size_t>(i * 37 % 600), 'x') + "\n";
  Owned<> const reader(writeText(text));
  ASSERT_TRUE(reader->Init());
  String line;
  for (int i = 0; i < 1000; ++i) {
    support::AllocationCount const count;
    ASSERT_TRUE(reader->GetLine(line));
    ASSERT_LE(count.value(), 1u) << i;
  }
}

TEST(SpareTexts, ShortTokensSoonAllocateNothing) {
  std::string const text = std::string("if (a = Department), (b = order.item); end\n");
  std::string many;
  for (int i = 0; i < 100; ++i)
    many += text;
  KivTextParser parser(new KivTextFileReader(writeText(many).c_str()), 1);
  String token;
  for (int i = 0; i < 100; ++i)
    ASSERT_TRUE(parser.GetNextToken(token));
  support::AllocationCount const count;
  for (int i = 0; i < 1000; ++i)
    ASSERT_TRUE(parser.GetNextToken(token));
  EXPECT_EQ(count.value(), 0u);
}
