// Blocks that readers and parser use again: no string that a client holds may change, and little is allocated.

#include "aparser.hpp"

#include "text/readers/listreader.hpp"
#include "text/readers/textfile.hpp"

#include "support/memory/allocation.hpp"

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

/// Returns the same line for ever, without a copy.
class SharedLines : public ListReader {
public:
  using ListReader::ListReader;
  bool GetLine(String & line) override {
    line = line_;
    return true;
  }

private:
  String const line_ = "if (a = Department), (b = order.item); end\n";
};

/// What a thousand tokens allocate after the first hundred.
std::size_t allocationsOfTokens(KivTextParser && parser) {
  String token;
  for (int i = 0; i < 100; ++i)
    EXPECT_TRUE(parser.GetNextToken(token));
  support::AllocationCount const count;
  for (int i = 0; i < 1000; ++i)
    EXPECT_TRUE(parser.GetNextToken(token));
  return count.value();
}

TEST(SpareTexts, ShortTokensSoonAllocateNothing) {
  ListReader::Record record;
  EXPECT_EQ(allocationsOfTokens(KivTextParser(new SharedLines({}, record), 1)), 0u);
}

TEST(SpareTexts, LineOfShortTokensAllocatesOnce) {
  std::string text;
  for (int i = 0; i < 100; ++i)
    text += "if (a = Department), (b = order.item); end\n";
  constexpr int kTokensOfALine = 14;
  EXPECT_LE(allocationsOfTokens(KivTextParser(new KivTextFileReader(writeText(text).c_str()), 1)),
            1000u / kTokensOfALine + 1);
}
