// Random and damaged files for readers and parser. Every block that they allocate ends at a page without access, and the
// results are those of the models.

#include "parser_pair.hpp"

#include "support/data/damage.hpp"
#include "support/memory/allocation.hpp"

namespace {

constexpr std::size_t kFilesOfAPart = 625;

std::string goodText() {
  std::string text;
  for (int i = 0; i < 12; ++i)
    text += "process \"Order \\\"" + std::to_string(i) +
            "\\\"\" {\r\n  duration = -1.5e3, cost=(20, 3)\n\n  owner : Sales_1 }\r\n";
  return text;
}

std::string randomBytes(std::mt19937 & random) {
  std::string bytes(random() % 50 == 0 ? random() % 20000 : random() % 300, '\0');
  bool const any = random() % 2 == 0;
  for (char & c : bytes)
    c = any ? static_cast<char>(random()) : "ab\r\n\0 \"\\,("[random() % 10];
  return bytes;
}

/// Cuts lines to the 8191 bytes that are allowed: a longer one would end the process.
void breakLongLines(std::string & text) {
  std::size_t length = 0;
  for (char & c : text) {
    length = c == '\r' || c == '\n' ? 0 : length + 1;
    if (length == 8192) {
      c = '\n';
      length = 0;
    }
  }
}

std::string badText(std::mt19937 & random) {
  static std::string const good = goodText();
  std::string text = random() % 2 == 0 ? randomBytes(random) : good;
  if (random() % 8 != 0)
    text = support::damaged(text, random, {.pieces = {"\r", "\n", "\"", "\\", " "}, .changes = 7});
  if (random() % 200 == 0)
    text.insert(random() % (text.size() + 1), 8000 + random() % 400, 'x');
  breakLongLines(text);
  return text;
}

testing::AssertionResult readsAsTheModel(std::string const & text) {
  Owned<> const reader(writeText(text));
  LineModel model(text);
  if (!reader->Init())
    return testing::AssertionFailure() << "Init fails";
  SV::String line;
  while (reader->GetLine(line))
    if (model.next() != bytesOf(line))
      return testing::AssertionFailure() << "a line of " << line.Len() << " characters differs";
  return model.next() ? testing::AssertionFailure() << "a line is missing" : testing::AssertionSuccess();
}

} // namespace

class BadTextFiles : public testing::TestWithParam<unsigned> {};

TEST_P(BadTextFiles, AreReadWithinTheirBoundsAndByTheRules) {
  support::GuardPages const guard;
  support::Random random(GetParam());
  for (std::size_t number = 0; number < support::times(kFilesOfAPart); ++number) {
    std::string const text = badText(random);
    if (random() % 4 == 0) {
      ASSERT_TRUE(readsAsTheModel(text)) << "file " << number;
      continue;
    }
    ParserPair pair(text, random() % 2 == 0);
    for (int step = 0; step < 12; ++step)
      ASSERT_TRUE(pair.step(random)) << "file " << number << ", step " << step;
  }
}

INSTANTIATE_TEST_SUITE_P(Part, BadTextFiles, testing::Range(0u, 16u));
