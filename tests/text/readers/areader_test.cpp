#include "areader.hpp"

#include "textfile.hpp"

#include "support/memory/allocation.hpp"
#include "tools/winapi.hpp"

#include <cstring>
#include <type_traits>

using SV::String;
using Lines = std::vector<std::string>;

namespace {

/// Opens what derived readers of products can reach.
class OpenReader : public KivTextFileReader {
public:
  using KivFileReader::_ImpRead;
  using KivFileReader::buffer;
  using KivFileReader::bufferEnd;
  using KivFileReader::bufferPos;
  using KivFileReader::bytesRead;
  using KivFileReader::fileSize;
  using KivTextFileReader::KivTextFileReader;

  /// Replaces the handle by one without the right to read.
  void loseReadAccess() {
    HANDLE weak = INVALID_HANDLE_VALUE;
    ASSERT_TRUE(DuplicateHandle(GetCurrentProcess(), handle, GetCurrentProcess(), &weak, FILE_READ_ATTRIBUTES, FALSE,
                                DUPLICATE_CLOSE_SOURCE));
    handle = weak;
  }

  /// The position of a virtual operation in the table of the class.
  template <class Operation> static std::size_t slotOf(Operation operation) {
    std::size_t offset[2];
    static_assert(sizeof offset == sizeof operation);
    std::memcpy(offset, &operation, sizeof offset);
    return (offset[0] - 1) / sizeof(void *);
  }
  static std::size_t readSlot() { return slotOf(&OpenReader::_ImpRead); }
};

std::string x(std::size_t count) { return std::string(count, 'x'); }

} // namespace

TEST(LineReader, VirtualOperationsStandInSlotOrder) {
  std::size_t const init = OpenReader::slotOf(&KivLineReader::Init);
  EXPECT_EQ(OpenReader::slotOf(&KivLineReader::Done), init + 1);
  EXPECT_EQ(OpenReader::slotOf(&KivLineReader::GetLine), init + 2);
  EXPECT_EQ(OpenReader::slotOf(&KivLineReader::GetCurrentOffset), init + 3);
  EXPECT_EQ(OpenReader::slotOf(&KivLineReader::Is2CharsForNewline), init + 4);
  EXPECT_EQ(OpenReader::readSlot(), init + 5);
  EXPECT_EQ(OpenReader::slotOf(&KivFileReader::MoveTo), init + 6);
  EXPECT_EQ(OpenReader::slotOf(&KivTextFileReader::Init), init);
  EXPECT_EQ(OpenReader::slotOf(&KivTextFileReader::GetLine), init + 2);
}

TEST(LineReader, IsAnAbstractRootWithoutData) {
  EXPECT_TRUE(std::is_abstract_v<KivLineReader>);
  EXPECT_TRUE((std::is_base_of_v<KivObject, KivLineReader>));
  EXPECT_EQ(sizeof(KivLineReader), sizeof(KivObject));
}

TEST(FileReader, IsAbstractAndAddsNothingInTheTextReader) {
  EXPECT_TRUE(std::is_abstract_v<KivFileReader>);
  EXPECT_EQ(sizeof(KivTextFileReader), sizeof(KivFileReader));
}

TEST(TextFileReader, IsDestroyedThroughItsOwnerOnly) {
  EXPECT_FALSE(std::is_destructible_v<KivTextFileReader>);
  EXPECT_TRUE(std::is_destructible_v<KivLineReader>);
}

TEST(TextFileReader, StartsWithNothingOpenAndNothingRead) {
  Owned<OpenReader> const reader("nowhere.txt");
  EXPECT_EQ(reader->GetHandle(), INVALID_HANDLE_VALUE);
  EXPECT_EQ(reader->fileSize, 0);
  EXPECT_EQ(reader->GetAbsoluteBufferOffset(), 0);
  EXPECT_NE(reader->buffer, nullptr);
  EXPECT_EQ(reader->bufferPos, nullptr);
  EXPECT_EQ(reader->bufferEnd, nullptr);
  EXPECT_EQ(reader->bytesRead, -1);
  EXPECT_TRUE(reader->Is2CharsForNewline());
  EXPECT_EQ(reader->GetCurrentPercent(), 0.0);
  String line("kept");
  EXPECT_FALSE(reader->GetLine(line));
  EXPECT_EQ(line, "kept");
}

TEST(TextFileReader, SharesTheTextOfItsFileName) {
  String const name("some file.txt");
  Owned<> const reader("other.txt");
  EXPECT_EQ(reader->GetFilename(), "other.txt");
  EXPECT_STREQ(reader->GetpFilename(), "other.txt");
  std::unique_ptr<KivLineReader> owner(new KivTextFileReader(name));
  auto const & shared = static_cast<KivTextFileReader const &>(*owner);
  EXPECT_EQ(shared.GetFilename().block(), name.block());
  EXPECT_EQ(name.block()->nRefCount, 1u);
  owner.reset();
  EXPECT_EQ(name.block()->nRefCount, 0u);
}

TEST(TextFileReader, InitFailsWithoutAMessageWhenTheFileCannotBeOpened) {
  Owned<OpenReader> const reader("missing.txt");
  EXPECT_FALSE(reader->Init());
  EXPECT_EQ(reader->GetHandle(), INVALID_HANDLE_VALUE);
  EXPECT_EQ(reader->bytesRead, -1);
  EXPECT_FALSE(reader->Is2CharsForNewline());
  String line;
  EXPECT_FALSE(reader->GetLine(line));
  EXPECT_FALSE(reader->MoveTo(0));
  EXPECT_TRUE(reader->Done());
}

TEST(TextFileReader, InitFailsOnAFolder) {
  ASSERT_TRUE(CreateDirectoryA("folder", nullptr));
  Owned<> const reader("folder");
  EXPECT_FALSE(reader->Init());
  RemoveDirectoryA("folder");
}

TEST(TextFileReader, SourceWithoutASizeFailsAndStaysOpenForTheDestructor) {
  HANDLE end = CreateNamedPipeA("\\\\.\\pipe\\kivara-areader-test", PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE | PIPE_NOWAIT, 1,
                                0, 0, 0, nullptr);
  ASSERT_NE(end, INVALID_HANDLE_VALUE);
  {
    Owned<OpenReader> const reader("\\\\.\\pipe\\kivara-areader-test");
    EXPECT_FALSE(reader->Init());
    EXPECT_NE(reader->GetHandle(), INVALID_HANDLE_VALUE);
    EXPECT_EQ(reader->fileSize, 0);
    EXPECT_EQ(reader->bytesRead, -1);
    String line;
    EXPECT_FALSE(reader->GetLine(line));
  }
  CloseHandle(end);
}

TEST(TextFileReader, EmptyFileOpensAndHasNoLine) {
  Owned<> const reader(writeText(""));
  EXPECT_TRUE(reader->Init());
  String line;
  EXPECT_FALSE(reader->GetLine(line));
  EXPECT_EQ(reader->GetCurrentPercent(), 0.0);
  EXPECT_EQ(reader->GetCurrentOffset(), 0);
}

TEST(TextFileReader, LastLineWithoutTerminatorIsDeliveredWithALineFeed) {
  Owned<> const reader(writeText("a\nb"));
  ASSERT_TRUE(reader->Init());
  EXPECT_EQ(linesOf(*reader.get()), (Lines{"a\n", "b\n"}));
  String line("kept");
  EXPECT_FALSE(reader->GetLine(line));
  EXPECT_EQ(line, "kept");
}

TEST(TextFileReader, LinesEndAtEachTerminator) {
  struct Row {
    char const * text;
    Lines lines;
  };
  Row const rows[] = {
      {"a\nb\n", {"a\n", "b\n"}},               // no extra line after a terminator
      {"a\rb\r", {"a\n", "b\n"}},               // a carriage return alone
      {"a\r\nb\r\n", {"a\n", "b\n"}},           // the pair counts once
      {"a\n\rb", {"a\n", "\n", "b\n"}},         // line feed and carriage return: two
      {"a\r\r\nb", {"a\n", "\n", "b\n"}},       // carriage return and pair
      {"a\r\n\nb", {"a\n", "\n", "b\n"}},       // pair and line feed
      {"a\n\n\nb", {"a\n", "\n", "\n", "b\n"}}, // three line feeds
      {"\n", {"\n"}},                           //
      {"\r", {"\n"}},                           //
      {"\r\n", {"\n"}},                         //
      {"a", {"a\n"}},                           //
  };
  for (auto const & row : rows)
    EXPECT_EQ(linesOfText(row.text), row.lines) << testing::PrintToString(row.text);
}

TEST(TextFileReader, BytesOfValueZeroAreCopied) {
  using namespace std::string_literals;
  EXPECT_EQ(linesOfText("a\0b\n\0\n"s), (Lines{"a\0b\n"s, "\0\n"s}));
}

TEST(TextFileReader, KnowsNoByteOrderMark) {
  EXPECT_EQ(linesOfText("\xEF\xBB\xBF"
                        "a\n"),
            (Lines{"\xEF\xBB\xBF"
                   "a\n"}));
}

TEST(TextFileReader, PairAcrossABlockCountsAsOneTerminator) {
  EXPECT_EQ(linesOfText(x(8191) + "\r\nb\n"), (Lines{x(8191) + "\n", "b\n"}));
}

TEST(TextFileReader, LongestLineHas8191BytesBeforeItsTerminator) {
  EXPECT_EQ(linesOfText(x(8191) + "\n"), (Lines{x(8191) + "\n"}));
  EXPECT_EQ(linesOfText("ab\n" + x(8191)), (Lines{"ab\n", x(8191) + "\n"}));
}

// Products rely on such files being one line shorter.
TEST(TextFileReader, LastLineIsLostWhenItsBlockBeginsWithALineBreak) {
  EXPECT_EQ(linesOfText("\nabc"), (Lines{"\n"}));
  EXPECT_EQ(linesOfText("\rabc"), (Lines{"\n"}));
  EXPECT_EQ(linesOfText(x(8191) + "\r" + "\nabc"), (Lines{x(8191) + "\n"}));
  EXPECT_EQ(linesOfText("\nabc\n"), (Lines{"\n", "abc\n"}));
}

TEST(TextFileReader, LastLineInALoneCarriageReturnIsLostWhenItsBlockBeginsWithALineFeed) {
  EXPECT_EQ(linesOfText("\nabc\r"), (Lines{"\n"}));
  EXPECT_EQ(linesOfText("\rabc\r"), (Lines{"\n", "abc\n"}));
}

TEST(TextFileReader, AfterALostLineOnlyMoveToGivesLines) {
  Owned<> const reader(writeText("\nabc"));
  ASSERT_TRUE(reader->Init());
  EXPECT_EQ(linesOf(*reader.get()).size(), 1u);
  EXPECT_EQ(linesOf(*reader.get()).size(), 0u);
  ASSERT_TRUE(reader->MoveTo(1));
  EXPECT_EQ(linesOf(*reader.get()), (Lines{"abc\n"}));
}

TEST(TextFileReader, OffsetAfterTheLastLineIsTheSizeOfTheFile) {
  for (std::string const text : {"a\nb", "a\r\nb\r\n"}) {
    Owned<> const reader(writeText(text));
    ASSERT_TRUE(reader->Init());
    EXPECT_EQ(linesOf(*reader.get()).size(), 2u);
    EXPECT_EQ(reader->GetCurrentOffset(), static_cast<std::int64_t>(text.size()));
    EXPECT_EQ(reader->GetCurrentPercent(), 100.0);
  }
}

TEST(TextFileReader, OffsetsGiveTheBlockAndThePositionInIt) {
  Owned<> const reader(writeText(x(8000) + "\n" + x(999) + "\n" + x(999) + "\n"));
  ASSERT_TRUE(reader->Init());
  String line;
  ASSERT_TRUE(reader->GetLine(line));
  EXPECT_EQ(reader->GetAbsoluteBufferOffset(), 0);
  EXPECT_EQ(reader->GetInBufferOffset(), 8001);
  ASSERT_TRUE(reader->GetLine(line));
  EXPECT_EQ(reader->GetAbsoluteBufferOffset(), 8192);
  EXPECT_EQ(reader->GetInBufferOffset(), 9001 - 8192);
  EXPECT_EQ(reader->GetCurrentOffset(), 9001);
  EXPECT_DOUBLE_EQ(reader->GetCurrentPercent(), 9001 / 10001.0 * 100.0);
}

TEST(TextFileReader, Is2CharsForNewlineIsAboutTheLastLineOnly) {
  Owned<> const reader(writeText("a\r\nb\nc\r\nd\re"));
  EXPECT_TRUE(reader->Is2CharsForNewline());
  ASSERT_TRUE(reader->Init());
  EXPECT_FALSE(reader->Is2CharsForNewline());
  String line;
  for (bool const pair : {true, false, true, false, false}) {
    ASSERT_TRUE(reader->GetLine(line));
    EXPECT_EQ(reader->Is2CharsForNewline(), pair) << line.c_str();
  }
}

TEST(TextFileReader, MoveToContinuesAtTheOffset) {
  Owned<> const reader(writeText("one\ntwo\nthree\n"));
  ASSERT_TRUE(reader->Init());
  ASSERT_TRUE(reader->MoveTo(4));
  EXPECT_EQ(reader->GetCurrentOffset(), 4);
  EXPECT_EQ(linesOf(*reader.get()), (Lines{"two\n", "three\n"}));
  ASSERT_TRUE(reader->MoveTo(0)); // also after the end was reached
  EXPECT_EQ(linesOf(*reader.get()), (Lines{"one\n", "two\n", "three\n"}));
}

TEST(TextFileReader, MoveToBeyondTheEndSucceedsAndThenThereIsNoLine) {
  Owned<> const reader(writeText("one\n"));
  ASSERT_TRUE(reader->Init());
  EXPECT_TRUE(reader->MoveTo(1000));
  String line;
  EXPECT_FALSE(reader->GetLine(line));
  EXPECT_EQ(reader->GetCurrentOffset(), 1000);
}

TEST(TextFileReader, MoveToANegativeOffsetFailsAndChangesNothing) {
  Owned<> const reader(writeText("one\ntwo\n"));
  ASSERT_TRUE(reader->Init());
  String line;
  ASSERT_TRUE(reader->GetLine(line));
  EXPECT_FALSE(reader->MoveTo(-1));
  EXPECT_EQ(reader->GetCurrentOffset(), 4);
  EXPECT_EQ(linesOf(*reader.get()), (Lines{"two\n"}));
}

TEST(TextFileReader, FailedReadDropsTheUnfinishedLineSilently) {
  Owned<OpenReader> const reader(writeText("one\n" + x(9000)));
  ASSERT_TRUE(reader->Init());
  String line;
  ASSERT_TRUE(reader->GetLine(line));
  reader->loseReadAccess();
  EXPECT_FALSE(reader->GetLine(line));
  EXPECT_EQ(line, "one\n");
  EXPECT_EQ(reader->bytesRead, 0);
  EXPECT_EQ(reader->bufferPos, nullptr);
  EXPECT_EQ(reader->bufferEnd, nullptr);
  EXPECT_FALSE(reader->GetLine(line));
}

TEST(TextFileReader, ReadAtTheEndSucceedsOnceWithoutBytes) {
  Owned<OpenReader> const reader(writeText("one\n"));
  ASSERT_TRUE(reader->Init());
  EXPECT_EQ(reader->bytesRead, 4);
  EXPECT_TRUE(reader->_ImpRead());
  EXPECT_EQ(reader->bytesRead, 0);
  EXPECT_EQ(reader->bufferPos, reader->buffer);
  EXPECT_EQ(reader->bufferEnd, reader->buffer);
  EXPECT_EQ(reader->GetAbsoluteBufferOffset(), 4);
  EXPECT_FALSE(reader->_ImpRead());
  EXPECT_EQ(reader->bufferPos, nullptr);
}

TEST(TextFileReader, FileStaysOpenUntilTheReaderDies) {
  std::string const name = writeText("one\n");
  {
    Owned<> const reader(name);
    ASSERT_TRUE(reader->Init());
    EXPECT_TRUE(reader->Done());
    EXPECT_FALSE(DeleteFileA(name.c_str()));
  }
  EXPECT_TRUE(DeleteFileA(name.c_str()));
}

TEST(TextFileReader, OwnsItsBuffer) {
  support::GuardPages const guard;
  char const * buffer = nullptr;
  {
    Owned<OpenReader> const reader(writeText("one\n"));
    buffer = reader->buffer;
    ASSERT_TRUE(support::GuardPages::guards(buffer));
  }
  EXPECT_FALSE(support::GuardPages::guards(buffer));
}

TEST(TextFileReader, OthersMayReadItsFileButNotWriteIt) {
  std::string const name = writeText("one\n");
  Owned<> const reader(name);
  ASSERT_TRUE(reader->Init());
  Owned<> const second(name);
  EXPECT_TRUE(second->Init());
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  HANDLE const writer = CreateFileA(name.c_str(), GENERIC_WRITE, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_EQ(writer, INVALID_HANDLE_VALUE);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_SHARING_VIOLATION});
}

TEST(TextFileReader, InitFailsOnAFileThatIsOpenForWriting) {
  std::string const name = writeText("one\n");
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  HANDLE const writer = CreateFileA(name.c_str(), GENERIC_WRITE, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(writer, INVALID_HANDLE_VALUE);
  {
    Owned<> const reader(name);
    EXPECT_FALSE(reader->Init());
  }
  CloseHandle(writer);
  Owned<> const reader(name);
  EXPECT_TRUE(reader->Init());
}

TEST(TextFileReader, ReadersTakeTurnsLineByLine) {
  Owned<> const first(writeText("a\nbb\n", "first.txt"));
  Owned<> const second(writeText("1\n22\n", "second.txt"));
  ASSERT_TRUE(first->Init() && second->Init());
  String line;
  std::string seen;
  while (first->GetLine(line)) {
    seen += bytesOf(line);
    ASSERT_TRUE(second->GetLine(line));
    seen += bytesOf(line);
  }
  EXPECT_EQ(seen, "a\n1\nbb\n22\n");
}
