// A reader that throws: what its parser shows afterwards, and that the reader is ended when there is no parser.

#include "parsertext.hpp"
#include "text/readers/listreader.hpp"

#include "support/memory/allocation.hpp"

#include <new>
#include <stdexcept>

using SV::String;
using Strings = std::vector<std::string>;

namespace {

/// Throws when it is asked for that line, counted from 0, but only once.
class ThrowingReader : public ListReader {
public:
  ThrowingReader(Strings lines, Record & record, int line) : ListReader(std::move(lines), record), left_(line) {}
  bool GetLine(String & line) override {
    if (left_-- == 0)
      throw std::runtime_error("no line");
    return ListReader::GetLine(line);
  }

private:
  int left_;
};

class ThrowingFile : public KivTextFileReader {
public:
  ThrowingFile(char const * name, int line) : KivTextFileReader(name), left_(line) {}
  bool GetLine(String & line) override {
    if (left_-- == 0)
      throw std::runtime_error("no line");
    return KivTextFileReader::GetLine(line);
  }

private:
  int left_;
};

class ThatCannotBegin : public ListReader {
public:
  using ListReader::ListReader;
  bool Init() override { throw std::runtime_error("no source"); }
};

/// The parser of "a", a blank line and "b", after the reader has thrown once in place of the third line.
class ParserAfterAnException : public testing::Test {
protected:
  ParserAfterAnException() { EXPECT_THROW(next(parser), std::runtime_error); }

  ListReader::Record record;
  KivTextParser parser{new ThrowingReader({"a\n", "\n", "b\n"}, record, 2), 0};
};

} // namespace

TEST_F(ParserAfterAnException, ShowsTheWhiteSpaceReadSoFarAndTheOldToken) {
  EXPECT_TRUE(parser.IsOkay());
  EXPECT_EQ(lookAhead(parser), "a");
  EXPECT_EQ(spaces(parser), "\n\n");
}

TEST_F(ParserAfterAnException, CountsAllOfThatWhiteSpaceForTheNextToken) {
  EXPECT_EQ(next(parser), "a");
  EXPECT_EQ(parser.GetLastLineNumber(), 1);
  EXPECT_EQ(parser.GetTokenOffset(), 1000 - 2);
}

TEST_F(ParserAfterAnException, LooksForTheNextTokenFromTheStartOfItsLine) {
  parser.SkipToken();
  EXPECT_EQ(lookAhead(parser), "b");
  EXPECT_EQ(spaces(parser), "\n");
}

TEST_F(ParserAfterAnException, PutsAllOfThatWhiteSpaceBackForGetUntil) {
  String text;
  parser.GetUntil('b', text, false, '\\');
  EXPECT_EQ(text, "\n\na\n");
}

TEST(ParserException, LeavesNoWhiteSpaceToTheTokenAfterMoveTo) {
  KivTextParser parser(new ThrowingFile(writeText("a\n\nb\n").c_str(), 2), 0);
  EXPECT_THROW(next(parser), std::runtime_error);
  EXPECT_TRUE(parser.MoveTo(3, 2));
  EXPECT_EQ(lookAhead(parser), "b");
  EXPECT_EQ(spaces(parser), "");
}

TEST(ParserException, OfInitEndsTheReader) {
  ListReader::Record record;
  EXPECT_THROW(KivTextParser(new ThatCannotBegin({}, record), 0), std::runtime_error);
  EXPECT_EQ(record.end, (Strings{"done", "deleted"}));
}

TEST(ParserException, OfTheFirstLineEndsTheReader) {
  ListReader::Record record;
  EXPECT_THROW(KivTextParser(new ThrowingReader({"a\n"}, record, 0), 0), std::runtime_error);
  EXPECT_EQ(record.end, (Strings{"done", "deleted"}));
}

TEST(ParserException, ForLackOfMemoryEndsTheReader) {
  ListReader::Record record;
  auto * const reader = new ListReader({"a\n"}, record);
  support::AllocationLimit const limit(1000);
  EXPECT_THROW(KivTextParser(reader, 0), std::bad_alloc);
  EXPECT_EQ(record.inits, 0);
  EXPECT_EQ(record.end, (Strings{"done", "deleted"}));
}

TEST(ParserException, ForLackOfMemoryWithoutAReaderEndsNone) {
  support::AllocationLimit const limit(1000);
  EXPECT_THROW(KivTextParser(nullptr, 0), std::bad_alloc);
}
