// The text file reader beside a plain model.

#include "line_model.hpp"
#include "support/data/random.hpp"
#include "textfile.hpp"

#include <random>

namespace {

/// Compares everything that can be seen from here to the end of the file.
testing::AssertionResult sameToTheEnd(KivTextFileReader & reader, LineModel & model) {
  SV::String line;
  for (int number = 1;; ++number) {
    auto const expected = model.next();
    bool const read = reader.GetLine(line);
    if (read != expected.has_value())
      return testing::AssertionFailure() << "line " << number << (read ? " is too much" : " is missing");
    if (!model.lost() && reader.GetCurrentOffset() != std::max(model.offset(), std::int64_t{0}))
      return testing::AssertionFailure() << "line " << number << ": offset " << reader.GetCurrentOffset()
                                         << " instead of " << model.offset();
    if (!read)
      return testing::AssertionSuccess();
    if (bytesOf(line) != *expected || reader.Is2CharsForNewline() != model.pair())
      return testing::AssertionFailure() << "line " << number << " differs, length " << line.Len() << " instead of "
                                         << expected->size();
  }
}

testing::AssertionResult sameFrom(std::int64_t offset, KivTextFileReader & reader, LineModel & model) {
  model.moveTo(offset);
  if (!reader.MoveTo(offset))
    return testing::AssertionFailure() << "MoveTo fails at " << offset;
  auto const result = sameToTheEnd(reader, model);
  return result ? result : testing::AssertionFailure() << "from " << offset << ": " << result.message();
}

/// All texts of this length over a letter and the two terminators.
std::vector<std::string> mixes(int length) {
  std::vector<std::string> all{""};
  for (; length > 0; --length) {
    std::vector<std::string> longer;
    for (auto const & mix : all)
      for (char const c : {'a', '\r', '\n'})
        longer.push_back(mix + c);
    all = longer;
  }
  return all;
}

/// All mixes of four in one text, with letters between them.
std::string allMixes() {
  std::string text;
  std::size_t number = 0;
  for (auto const & mix : mixes(4))
    text += mix + std::string(20 + number++ % 7, 'x');
  return text;
}

std::string randomText(std::mt19937 & random) {
  static constexpr char kBytes[] = "ab \r\n\r\n\0\xFF";
  std::size_t const longest = random() % 3 == 0 ? 8187 : 40;
  std::string text;
  for (std::size_t lines = random() % 12; lines-- > 0;) {
    for (std::size_t length = random() % (longest + 1); length-- > 0;)
      text += static_cast<char>('a' + length % 26);
    for (std::size_t count = random() % 5; count-- > 0;)
      text += kBytes[random() % (sizeof kBytes - 1)];
    text += random() % 2 == 0 ? "\n" : "\r\n";
  }
  text.resize(text.size() - std::min<std::size_t>(text.size(), random() % 4));
  return text;
}

} // namespace

// A block begins where MoveTo goes, so reading a file from each of its first 8192 bytes puts every mix of line ends at every
// position of a block.
TEST(TextFileReaderModel, EveryMixOfLineEndsAtEveryPositionOfTheBlock) {
  std::string text;
  while (text.size() < 2 * 8192 + 3000)
    text += allMixes();
  Owned<> const reader(writeText(text));
  LineModel model(text);
  ASSERT_TRUE(reader->Init());
  for (std::int64_t offset = 0; offset < LineModel::kBlock; ++offset)
    ASSERT_TRUE(sameFrom(offset, *reader.get(), model));
}

class TextFileReaderEnds : public testing::TestWithParam<int> {};

TEST_P(TextFileReaderEnds, EveryEndOfTheFileAfterEveryFirstByteOfTheLastBlock) {
  std::string text;
  while (text.size() < 8192)
    text += allMixes();
  text = text.substr(0, 8192) + allMixes().substr(0, 400);
  for (auto const & end : mixes(GetParam())) {
    Owned<> const reader(writeText(text + end));
    LineModel model(text + end);
    ASSERT_TRUE(reader->Init());
    for (std::int64_t offset = 0; offset <= model.size() + 1; ++offset)
      ASSERT_TRUE(sameFrom(offset, *reader.get(), model)) << testing::PrintToString(end);
  }
}

INSTANTIATE_TEST_SUITE_P(OfLength, TextFileReaderEnds, testing::Values(0, 1, 2));

TEST(TextFileReaderModel, SmallFilesOfEveryMix) {
  for (int length = 0; length <= 6; ++length)
    for (auto const & text : mixes(length)) {
      Owned<> const reader(writeText(text));
      LineModel model(text);
      ASSERT_TRUE(reader->Init());
      ASSERT_TRUE(sameToTheEnd(*reader.get(), model)) << testing::PrintToString(text);
    }
}

TEST(TextFileReaderModel, RandomFilesWithSeeks) {
  support::Random random(9);
  for (std::size_t round = 0; round < support::times(1000); ++round) {
    std::string const text = randomText(random);
    Owned<> const reader(writeText(text));
    LineModel model(text);
    ASSERT_TRUE(reader->Init());
    ASSERT_TRUE(sameToTheEnd(*reader.get(), model)) << "round " << round;
    for (int seeks = 0; seeks < 10; ++seeks)
      ASSERT_TRUE(sameFrom(static_cast<std::int64_t>(random() % (text.size() + 3)), *reader.get(), model))
          << "round " << round;
  }
}
