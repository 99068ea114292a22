// Readers whose operations are overridden by a product, and readers whose file can no longer be read.

#include "areader.hpp"

#include "aparser.hpp"
#include "textfile.hpp"

#include <utility>

using SV::String;
using Lines = std::vector<std::string>;

namespace {

std::string x(std::size_t count) { return std::string(count, 'x'); }

/// Reads goodReads blocks; after that its file cannot be read.
class FailingReader : public KivTextFileReader {
public:
  using KivFileReader::buffer;
  using KivFileReader::bufferEnd;
  using KivFileReader::bufferPos;
  using KivFileReader::bytesRead;
  using KivTextFileReader::KivTextFileReader;

  int goodReads = 0;
  int reads = 0;

protected:
  bool _ImpRead() override {
    if (reads++ < goodReads)
      return KivFileReader::_ImpRead();
    void * const file = std::exchange(handle, INVALID_HANDLE_VALUE);
    bool const result = KivFileReader::_ImpRead();
    handle = file;
    return result;
  }
};

/// Over a file of this text.
class Failing : public Owned<FailingReader> {
public:
  Failing(std::string const & text, int goodReads) : Owned(writeText(text)) { get()->goodReads = goodReads; }
};

void expectExhausted(FailingReader & reader) {
  EXPECT_EQ(reader.bytesRead, 0);
  EXPECT_EQ(reader.bufferPos, nullptr);
  EXPECT_EQ(reader.bufferEnd, nullptr);
  String line("kept");
  EXPECT_FALSE(reader.GetLine(line));
  EXPECT_EQ(line, "kept");
}

/// Counts the calls of each operation.
class CountingReader : public KivTextFileReader {
public:
  struct Calls {
    int init = 0, done = 0, getLine = 0, getCurrentOffset = 0, is2CharsForNewline = 0, read = 0, moveTo = 0, death = 0;
  };

  CountingReader(char const * name, Calls & calls) : KivTextFileReader(name), calls_(calls) {}
  ~CountingReader() override { ++calls_.death; }

  bool Init() override { return count(calls_.init), KivTextFileReader::Init(); }
  bool Done() override { return count(calls_.done), KivTextFileReader::Done(); }
  bool GetLine(String & line) override { return count(calls_.getLine), KivTextFileReader::GetLine(line); }
  std::int64_t GetCurrentOffset() const override {
    return count(calls_.getCurrentOffset), KivTextFileReader::GetCurrentOffset();
  }
  bool Is2CharsForNewline() const override {
    return count(calls_.is2CharsForNewline), KivTextFileReader::Is2CharsForNewline();
  }
  bool MoveTo(std::int64_t offset) override { return count(calls_.moveTo), KivTextFileReader::MoveTo(offset); }

protected:
  bool _ImpRead() override { return count(calls_.read), KivTextFileReader::_ImpRead(); }

private:
  static void count(int & calls) { ++calls; }

  Calls & calls_;
};

} // namespace

TEST(TextFileReader, InitIsFalseWhenTheFirstReadFails) {
  Failing const reader("one\n", 0);
  EXPECT_FALSE(reader->Init());
  EXPECT_NE(reader->GetHandle(), INVALID_HANDLE_VALUE); // the file was opened
  EXPECT_FALSE(reader->Is2CharsForNewline());
  expectExhausted(*reader.get());
}

TEST(TextFileReader, MoveToIsFalseAndTheReaderExhaustedWhenTheReadThereFails) {
  Failing const reader("one\ntwo\n", 1);
  ASSERT_TRUE(reader->Init());
  EXPECT_FALSE(reader->MoveTo(4));
  EXPECT_EQ(reader->GetAbsoluteBufferOffset(), 4);
  expectExhausted(*reader.get());
  EXPECT_EQ(reader->reads, 2); // no attempt by an exhausted reader
  reader->goodReads = 10;
  ASSERT_TRUE(reader->MoveTo(4));
  EXPECT_EQ(linesOf(*reader.get()), (Lines{"two\n"}));
}

TEST(TextFileReader, FailedRefillAfter8192BytesIsAnEndAndNoLineTooLong) {
  Failing const reader(x(9000) + "\n", 1);
  ASSERT_TRUE(reader->Init());
  String line("kept");
  EXPECT_FALSE(reader->GetLine(line)); // a line that is too long would end the process
  EXPECT_EQ(line, "kept");
  expectExhausted(*reader.get());
  EXPECT_EQ(reader->reads, 2);
}

TEST(TextFileReader, FailedRefillInsideATerminatorDropsItsLine) {
  struct Row {
    std::string text;
    char const * what;
  };
  Row const rows[] = {
      {"a\r\n" + x(8188) + "\r" + "\nb\n", "between carriage return and line feed"},
      {"a\r\n" + x(8187) + "\r\n" + "b\n", "behind the pair"},
      {"a\r\n" + x(8188) + "\n" + "b\n", "behind a line feed"},
      {"a\r\n" + x(8188) + "\r" + "b\n", "behind a carriage return"},
  };
  for (auto const & row : rows) {
    Failing const reader(row.text, 1);
    ASSERT_TRUE(reader->Init());
    String line;
    ASSERT_TRUE(reader->GetLine(line));
    EXPECT_FALSE(reader->GetLine(line)) << row.what;
    EXPECT_EQ(line, "a\n") << row.what;
    EXPECT_TRUE(reader->Is2CharsForNewline()) << row.what; // of the last line returned
    expectExhausted(*reader.get());
  }
}

TEST(TextFileReader, RefillsThroughTheVirtualOperation) {
  CountingReader::Calls calls;
  auto * const reader = new CountingReader(writeText(x(8000) + "\n" + x(8000) + "\n").c_str(), calls);
  std::unique_ptr<KivLineReader> const owner(reader);
  ASSERT_TRUE(reader->Init());
  EXPECT_EQ(calls.read, 1);
  EXPECT_EQ(linesOf(*reader).size(), 2u);
  EXPECT_EQ(calls.read, 3); // the second block, and the end
  ASSERT_TRUE(reader->MoveTo(0));
  EXPECT_EQ(calls.read, 4);
}

TEST(TextParser, CallsEachVirtualOperationOfItsReader) {
  CountingReader::Calls calls;
  {
    KivTextParser parser(new CountingReader(writeText("a\nb\n").c_str(), calls), 0);
    EXPECT_EQ(calls.init, 1);
    EXPECT_EQ(calls.getLine, 1);
    EXPECT_EQ(calls.is2CharsForNewline, 1);
    EXPECT_EQ(calls.getCurrentOffset, 1);
    EXPECT_EQ(calls.read, 1);
    EXPECT_TRUE(parser.MoveTo(2, 1));
    EXPECT_EQ(calls.moveTo, 1);
    EXPECT_EQ(calls.read, 3); // by MoveTo, and at the end of the file
    EXPECT_EQ(calls.done, 0);
  }
  EXPECT_EQ(calls.init, 1);
  EXPECT_EQ(calls.done, 1);
  EXPECT_EQ(calls.death, 1);
}

TEST(ParserMoveTo, ThatTheReaderCannotReadLeavesTheParserAsItWas) {
  auto * const reader = new FailingReader(writeText("a b\nc\n").c_str());
  reader->goodReads = 1;
  KivTextParser parser(reader, 0);
  String token;
  ASSERT_TRUE(parser.GetNextToken(token));
  EXPECT_FALSE(parser.MoveTo(4, 7));
  EXPECT_TRUE(parser.IsOkay());
  EXPECT_EQ(parser.GetLastLineNumber(), 1);
  EXPECT_EQ(parser.GetTokenOffset(), 4);
  ASSERT_TRUE(parser.GetNextToken(token)); // from the rest of the line, and nothing after it
  EXPECT_EQ(token, "b");
  EXPECT_FALSE(parser.GetNextToken(token));
  EXPECT_FALSE(parser.IsOkay());
}
