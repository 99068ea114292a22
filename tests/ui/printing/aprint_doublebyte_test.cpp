// Lines of text on paper where the code page has characters of two bytes.

#include "printtest.hpp"
#include "tools/winapi.hpp"

namespace {

class DoubleByteText : public support::PrintTest {};

/// A word of several lines, which begins with so many letters; the second byte of all its other characters is that of an A.
/// Where no face has them, each is printed as two Western letters.
std::string longWord(int letters) {
  std::string word(static_cast<std::size_t>(letters), 'x');
  for (int i = 0; i < 200; ++i)
    word += "\x83\x41";
  return word;
}

TEST_F(DoubleByteText, IsNotCutWithinACharacter) {
  ASSERT_EQ(GetACP(), 932u);
  support::PrintQueue const queue;
  kivtest::choosePrinter(queue.name());
  for (int letters = 0; letters < 4; ++letters) {
    ASSERT_TRUE(kivtest::printLines({longWord(letters) + " end"}));
    support::PrintedJob const job = queue.job(static_cast<std::size_t>(letters) + 1);
    EXPECT_GT(job.lines().size(), 2u);
    for (std::string const & line : job.lines())
      EXPECT_NE(line.front(), 'A') << line;
  }
}

} // namespace
