#include "atools.hpp"

#include "diagnostics/internal_errors.hpp"
#include "support/data/random.hpp"
#include "support/memory/allocation.hpp"
#include "text/tools/masking.hpp"
#include "text/tools/poisoned_page.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>
#include <string>

using kivtest::InternalErrors;
using SV::String;

namespace {

using Places = std::vector<std::string>;

std::string bytesOf(String const & text) { return {text.c_str(), static_cast<std::size_t>(text.Len())}; }

// Masks with an escape.

TEST(Mask, PutsTheEscapeBeforeMaskedCharactersAndEscapes) {
  EXPECT_STREQ(Kiv_Mask("a\"b", '"', '\\').c_str(), "a\\\"b");
  EXPECT_STREQ(Kiv_Mask("\"\\\"", '"', '\\').c_str(), "\\\"\\\\\\\"");
  EXPECT_STREQ(Kiv_Mask("nothing", '"', '\\').c_str(), "nothing");
  EXPECT_STREQ(Kiv_Mask("a;b", ';', ';').c_str(), "a;;b");
}

TEST(Mask, OfNothingIsEmpty) {
  EXPECT_EQ(Kiv_Mask("", '"', '\\').Len(), 0);
  EXPECT_EQ(Kiv_Mask(nullptr, '"', '\\').Len(), 0);
}

TEST(Unmask, DropsTheEscapeAndTakesWhateverFollows) {
  EXPECT_STREQ(Kiv_Unmask("a\\\"b", '\\').c_str(), "a\"b");
  EXPECT_STREQ(Kiv_Unmask("\\\\\\n\\a", '\\').c_str(), "\\na");
  EXPECT_STREQ(Kiv_Unmask("a;;b", ';').c_str(), "a;b");
}

TEST(Unmask, OfNothingIsEmpty) {
  EXPECT_EQ(Kiv_Unmask("", '\\').Len(), 0);
  EXPECT_EQ(Kiv_Unmask(nullptr, '\\').Len(), 0);
}

/// A copy that ends right before a page without access.
std::unique_ptr<char[]> guarded(std::string const & text) {
  auto copy = std::make_unique<char[]>(text.size() + 1);
  std::memcpy(copy.get(), text.c_str(), text.size() + 1);
  return copy;
}

TEST(Unmask, OfATextThatEndsInTheEscapeStaysWithinIt) {
  support::GuardPages const guard;
  EXPECT_STREQ(Kiv_Unmask(guarded("a\\").get(), '\\').c_str(), "a");
  EXPECT_STREQ(Kiv_Unmask(guarded("\\").get(), '\\').c_str(), "");
  EXPECT_STREQ(Kiv_Unmask(guarded("a\\\\\\").get(), '\\').c_str(), "a\\");
}

std::string randomText(std::mt19937 & random, std::size_t most) {
  std::string text(random() % (most + 1), '\0');
  bool const any = random() % 2 == 0;
  for (char & c : text)
    c = any ? static_cast<char>(1 + random() % 255) : "ab\\\";>/\n"[random() % 8];
  return text;
}

TEST(Unmask, TurnsEveryMaskedTextBack) {
  support::GuardPages const guard;
  support::Random random(1);
  for (std::size_t i = 0; i < support::times(3000); ++i) {
    std::string const text = randomText(random, 80);
    char const masked = static_cast<char>(1 + random() % 255);
    char const escape = random() % 2 == 0 ? '\\' : static_cast<char>(1 + random() % 255);
    String const result = Kiv_Mask(guarded(text).get(), masked, escape);
    std::size_t extra = 0;
    for (char const c : text)
      extra += c == masked || c == escape ? 1 : 0;
    ASSERT_EQ(static_cast<std::size_t>(result.Len()), text.size() + extra);
    ASSERT_EQ(bytesOf(Kiv_Unmask(guarded(bytesOf(result)).get(), escape)), text);
  }
}

TEST(Unmask, OfRandomBytesStaysWithinThem) {
  support::GuardPages const guard;
  support::Random random(2);
  for (std::size_t i = 0; i < support::times(3000); ++i) {
    std::string const text = randomText(random, 40);
    ASSERT_LE(static_cast<std::size_t>(Kiv_Unmask(guarded(text).get(), '\\').Len()), text.size());
  }
}

// A text that is too long for a String takes gigabytes, so the rule is tested with a smaller limit.
TEST(MaskedExtent, IsCutBeforeTheCharacterThatDoesNotFit) {
  auto const isB = [](char c) { return c == 'b'; };
  auto const extent = [&isB](std::size_t most) { return kivara::maskedExtent("abab", 4, most, isB); };
  struct {
    std::size_t most, read, written;
  } const rows[] = {{0, 0, 0}, {1, 1, 1}, {2, 1, 1}, {3, 2, 3}, {4, 3, 4}, {5, 3, 4}, {6, 4, 6}, {100, 4, 6}};
  for (auto const & row : rows) {
    EXPECT_EQ(extent(row.most).read, row.read) << row.most;
    EXPECT_EQ(extent(row.most).written, row.written) << row.most;
  }
}

// Fields of CSV files.

TEST(MaskCSV, QuotesWhatHoldsAQuoteOrASemicolon) {
  EXPECT_STREQ(Kiv_MaskCSV("a;b").c_str(), "\"a;b\"");
  EXPECT_STREQ(Kiv_MaskCSV("a\"b").c_str(), "\"a\"\"b\"");
  EXPECT_STREQ(Kiv_MaskCSV("\"").c_str(), "\"\"\"\"");
  EXPECT_STREQ(Kiv_MaskCSV(";\"").c_str(), "\";\"\"\"");
}

TEST(MaskCSV, LeavesOtherTextsAsTheyAre) {
  for (char const * text : {"ab", "", "a,b", "a\nb"}) {
    String const field(text);
    EXPECT_EQ(Kiv_MaskCSV(field).block(), field.block()) << text;
  }
}

TEST(MaskCSV, TakesNULForACharacter) { EXPECT_EQ(bytesOf(Kiv_MaskCSV(String("a\0;", 3))), std::string("\"a\0;\"", 5)); }

/// Reads one field as a program that imports the file does.
std::string unmaskCSV(std::string const & field) {
  if (!field.starts_with('"'))
    return field;
  std::string text;
  for (std::size_t i = 1; i + 1 < field.size(); ++i) {
    text += field[i];
    i += field[i] == '"' ? 1 : 0;
  }
  return text;
}

TEST(MaskCSV, CanBeReadBackWhateverTheText) {
  support::GuardPages const guard;
  support::Random random(3);
  for (std::size_t i = 0; i < support::times(3000); ++i) {
    std::string const text = randomText(random, 60);
    ASSERT_EQ(unmaskCSV(bytesOf(Kiv_MaskCSV(text.c_str()))), text);
  }
}

// Names, values and paths for export.

using Export = void (*)(char const *, char *);

std::string exported(Export mask, char const * text) {
  char out[200];
  std::memset(out, '#', sizeof out);
  mask(text, out);
  EXPECT_EQ(out[std::strlen(out) + 1], '#') << text;
  return out;
}

TEST(MaskExport, StopCharacterAndBackslashGetABackslash) {
  EXPECT_EQ(exported(Kiv_Mask_Export_Name, "<a>b\\c\"/"), "<a\\>b\\\\c\"/");
  EXPECT_EQ(exported(Kiv_Mask_Export_Value, "<a>b\\c\"/"), "<a>b\\\\c\\\"/");
  EXPECT_EQ(exported(Kiv_Mask_Export_Path, "<a>b\\c\"/"), "<a>b\\\\c\"\\/");
  EXPECT_EQ(exported(Kiv_Mask_Export_Path, "a/b\\c"), "a\\/b\\\\c");
}

TEST(MaskExport, OfNothingIsEmpty) {
  for (Export const mask : {Kiv_Mask_Export_Name, Kiv_Mask_Export_Value, Kiv_Mask_Export_Path}) {
    EXPECT_EQ(exported(mask, ""), "");
    EXPECT_EQ(exported(mask, nullptr), "");
  }
}

TEST(MaskExport, CanWriteIntoTheTextItself) {
  for (std::size_t const offset : {0u, 1u, 3u, 5u}) {
    char room[32] = "a/b\\c";
    Kiv_Mask_Export_Path(room, room + offset);
    EXPECT_STREQ(room + offset, "a\\/b\\\\c") << offset;
  }
}

TEST(MaskExport, LineFeedInANameIsReportedAndBecomesABlank) {
  InternalErrors const errors;
  EXPECT_EQ(exported(Kiv_Mask_Export_Name, "a\n>\nb"), "a \\> b");
  EXPECT_EQ(errors.places(), (Places{"atools.cpp (3118)", "atools.cpp (3118)"}));
}

TEST(MaskExport, LineFeedInAValueOrAPathIsACharacter) {
  InternalErrors const errors;
  EXPECT_EQ(exported(Kiv_Mask_Export_Value, "a\nb"), "a\nb");
  EXPECT_EQ(exported(Kiv_Mask_Export_Path, "a\nb"), "a\nb");
  EXPECT_EQ(errors.places(), Places{});
}

/// A writable page, followed by one without access.
class Page {
public:
  Page() : base_(static_cast<char *>(VirtualAlloc(nullptr, 2 * kSize, MEM_RESERVE, PAGE_NOACCESS))) {
    VirtualAlloc(base_, kSize, MEM_COMMIT, PAGE_READWRITE);
  }
  ~Page() { VirtualFree(base_, 0, MEM_RELEASE); }
  Page(Page const &) = delete;
  Page & operator=(Page const &) = delete;

  char * beforeEnd(std::size_t bytes) const { return base_ + kSize - bytes; }

private:
  static constexpr std::size_t kSize = 4096;
  char * base_;
};

TEST(MaskExport, FillsABufferThatJustFits) {
  InternalErrors const errors;
  Page const page;
  Kiv_Mask_Export_Path("a/b\\c", page.beforeEnd(8));
  EXPECT_STREQ(page.beforeEnd(8), "a\\/b\\\\c");
  EXPECT_EQ(errors.places(), Places{});
}

TEST(MaskExport, IntoABufferThatIsTooSmallIsReportedAndWritesWhatFits) {
  InternalErrors const errors;
  Page const page;
  struct {
    std::size_t size;
    char const * written;
  } const rows[] = {{7, "a\\/b\\\\"}, {6, "a\\/b"}, {5, "a\\/b"}, {3, "a"}, {1, ""}};
  for (auto const & row : rows) {
    Kiv_Mask_Export_Path("a/b\\c", page.beforeEnd(row.size));
    EXPECT_STREQ(page.beforeEnd(row.size), row.written) << row.size;
  }
  EXPECT_EQ(errors.places(), Places(5, "atools.cpp (3101)"));
}

TEST(MaskExport, WithoutABufferIsReported) {
  InternalErrors const errors;
  Kiv_Mask_Export_Name("a\nb", nullptr);
  Kiv_Mask_Export_Value("a", nullptr);
  Kiv_Mask_Export_Path("", nullptr);
  EXPECT_EQ(errors.places(), Places(3, "atools.cpp (3101)"));
}

TEST(MaskExport, IntoMemoryForReadingOnlyIsReportedAndWritesNothing) {
  InternalErrors const errors;
  auto * const page = static_cast<char *>(VirtualAlloc(nullptr, 4096, MEM_RESERVE | MEM_COMMIT, PAGE_READONLY));
  Kiv_Mask_Export_Value("a", page);
  EXPECT_EQ(*page, '\0');
  EXPECT_EQ(errors.places(), Places{"atools.cpp (3101)"});
  VirtualFree(page, 0, MEM_RELEASE);
}

TEST(MaskExport, AtAnAddressThatLooksPoisonedIsReportedAndGoesOn) {
  kivtest::PoisonedPage const poisoned;
  char * const page = poisoned.address();
  ASSERT_NE(page, nullptr);
  InternalErrors const errors;
  Kiv_Mask_Export_Path("a/b", page);
  EXPECT_STREQ(page, "a\\/b");
  EXPECT_EQ(errors.places(), Places{"atools.cpp (3101)"});
}

} // namespace
