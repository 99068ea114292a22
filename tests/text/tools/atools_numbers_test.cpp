#include "atools.hpp"

#include "diagnostics/internal_errors.hpp"
#include "support/data/random.hpp"
#include "support/memory/allocation.hpp"
#include "text/tools/poisoned_page.hpp"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <vector>

using kivtest::InternalErrors;
using SV::String;

namespace {

struct Row {
  char const * text;
  bool valid;
};
std::ostream & operator<<(std::ostream & out, Row const & row) {
  return out << (row.text != nullptr ? row.text : "(null)");
}

class ValidInteger : public testing::TestWithParam<Row> {};
TEST_P(ValidInteger, IsASignOrADigitFollowedByDigits) {
  EXPECT_EQ(Kiv_Valid_Integer(GetParam().text), GetParam().valid);
}
INSTANTIATE_TEST_SUITE_P(Texts, ValidInteger,
                         testing::Values(Row{nullptr, false}, Row{"", false}, Row{"0", true},
                                         Row{"12345678901234567890", true}, Row{"+", true}, Row{"-", true},
                                         Row{"+7", true}, Row{"-007", true}, Row{"1.5", false}, Row{"1,5", false},
                                         Row{"--1", false}, Row{"1-", false}, Row{" 1", false}, Row{"1 ", false},
                                         Row{"a", false}, Row{"1a", false}, Row{"\xB2", false}, Row{"/", false},
                                         Row{":", false}));

std::string decimalSeparator;

int WINAPI tellSeparator(LCID, LCTYPE, char * text, int size) {
  if (size > static_cast<int>(decimalSeparator.size()))
    std::strcpy(text, decimalSeparator.c_str());
  return static_cast<int>(decimalSeparator.size()) + 1;
}

void useSeparator(std::string const & separator) {
  decimalSeparator = separator;
  support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                          {{"GetLocaleInfoA", reinterpret_cast<void *>(tellSeparator)}});
}

class ValidDouble : public testing::TestWithParam<Row> {};
TEST_P(ValidDouble, WithAPointForTheUsersSeparator) {
  useSeparator(".");
  EXPECT_EQ(Kiv_Valid_Double(GetParam().text), GetParam().valid);
}
TEST_P(ValidDouble, MayHaveAPointWhereTheUserWritesACommaToo) {
  useSeparator(",");
  EXPECT_EQ(Kiv_Valid_Double(GetParam().text), GetParam().valid);
}
INSTANTIATE_TEST_SUITE_P(Texts, ValidDouble,
                         testing::Values(Row{nullptr, false}, Row{"", false}, Row{"+", false}, Row{"-", false},
                                         Row{".", false}, Row{"-.", false}, Row{"1.5", true}, Row{".5", true},
                                         Row{"5.", true}, Row{"-1", true}, Row{"+1.5", true}, Row{"0", true},
                                         Row{"1.5.2", false}, Row{"1..5", false}, Row{"1e5", false}, Row{"1-", false},
                                         Row{"--1", false}, Row{" 1", false}, Row{"1 ", false}, Row{"x", false}));

TEST(ValidDoubleComma, IsAMarkWhereTheUserWritesIt) {
  useSeparator(",");
  for (char const * text : {"1,5", ",5", "5,", "-1,5"})
    EXPECT_TRUE(Kiv_Valid_Double(text)) << text;
  for (char const * text : {"1,5.2", "1.5,2", "1,5,2", ","})
    EXPECT_FALSE(Kiv_Valid_Double(text)) << text;
}

TEST(ValidDoubleComma, IsNoMarkWhereTheUserWritesAPoint) {
  useSeparator(".");
  EXPECT_FALSE(Kiv_Valid_Double("1,5"));
}

TEST(ValidDoubleComma, OnlyTheFirstCharacterOfTheSeparatorIsAMark) {
  useSeparator("~|");
  EXPECT_TRUE(Kiv_Valid_Double("1~5"));
  EXPECT_FALSE(Kiv_Valid_Double("1|5"));
  EXPECT_FALSE(Kiv_Valid_Double("1~|5"));
}

TEST(ValidDoubleComma, WithoutASeparatorThePointRemains) {
  useSeparator("");
  EXPECT_TRUE(Kiv_Valid_Double("1.5"));
  EXPECT_FALSE(Kiv_Valid_Double("1,5"));
}

// The locale of the runtime.

constexpr char kGerman[] = "German_Germany.1252";

std::string localeInUse() { return std::setlocale(LC_ALL, nullptr); }

/// Each test begins in the German locale.
class NumberForms : public testing::Test {
protected:
  NumberForms() {
    EXPECT_NE(std::setlocale(LC_ALL, kGerman), nullptr);
    char text[8] = "";
    _snprintf(text, sizeof text, "%.1f", 0.5);
    EXPECT_STREQ(text, "0,5");
    german = localeInUse();
  }
  ~NumberForms() override { std::setlocale(LC_ALL, "C"); }

  std::string german;
};

TEST_F(NumberForms, AtofReadsPointAndComma) {
  EXPECT_EQ(kiv_atof("1.5"), 1.5);
  EXPECT_EQ(kiv_atof("1,5"), 1.5);
  EXPECT_EQ(kiv_atof("  -1,25e2 km"), -125.0);
  EXPECT_EQ(kiv_atof("1,234,5"), 1.234);
  EXPECT_EQ(kiv_atof(",5"), 0.5);
  EXPECT_EQ(kiv_atof("x"), 0.0);
  EXPECT_EQ(kiv_atof(""), 0.0);
  EXPECT_EQ(kiv_atof(nullptr), 0.0);
}

TEST_F(NumberForms, AtofLeavesTheProcessInTheCLocale) {
  kiv_atof("1,5");
  EXPECT_EQ(localeInUse(), "C");
}

TEST_F(NumberForms, AtofReadsTextsOfAnyLengthAndLeavesThemAlone) {
  support::GuardPages const guard;
  for (std::size_t const length : {126u, 127u, 128u, 129u, 1000u}) {
    auto const text = std::make_unique<char[]>(length + 1);
    std::memset(text.get(), '0', length);
    std::memcpy(text.get() + length - 3, "7,5", 4);
    EXPECT_EQ(kiv_atof(text.get()), 7.5) << length;
    EXPECT_STREQ(text.get() + length - 3, "7,5");
  }
}

TEST_F(NumberForms, AtofAllocatesOnlyForTextsOf128CharactersAndMore) {
  std::string const most(127, '1');
  support::AllocationCount const count;
  kiv_atof(most.c_str());
  EXPECT_EQ(count.value(), 0u);
  kiv_atof((most + "1").c_str());
  EXPECT_GE(count.value(), 1u);
}

TEST_F(NumberForms, LtoaWritesByTheFormatAndGivesTheLength) {
  char text[32];
  EXPECT_EQ(kiv_ltoa(-42, text, "%ld"), 3);
  EXPECT_STREQ(text, "-42");
  EXPECT_EQ(kiv_ltoa(255, text, "<%06lx>"), 8);
  EXPECT_STREQ(text, "<0000ff>");
  EXPECT_EQ(kiv_ltoa(LONG_MIN, text, "%ld"), 11);
  EXPECT_STREQ(text, "-2147483648");
  EXPECT_EQ(kiv_ltoa(7, text, ""), 0);
  EXPECT_STREQ(text, "");
}

TEST_F(NumberForms, LtoaLeavesTheProcessInTheCLocale) {
  char text[32];
  kiv_ltoa(1, text, "%ld");
  EXPECT_EQ(localeInUse(), "C");
}

TEST_F(NumberForms, LtoaFillsABufferThatJustFits) {
  InternalErrors const errors;
  support::GuardPages const guard;
  auto const text = std::make_unique<char[]>(5);
  EXPECT_EQ(kiv_ltoa(1234, text.get(), "%ld"), 4);
  EXPECT_EQ(errors.places(), std::vector<std::string>{});
}

TEST_F(NumberForms, LtoaWithoutBufferOrFormatIsReported) {
  InternalErrors const errors;
  char text[] = "x";
  EXPECT_EQ(kiv_ltoa(1, nullptr, "%ld"), -1);
  EXPECT_EQ(kiv_ltoa(1, text, nullptr), -1);
  EXPECT_STREQ(text, "x");
  EXPECT_EQ(errors.places(), (std::vector<std::string>{"atools.cpp (1294)", "atools.cpp (1294)"}));
}

TEST_F(NumberForms, LtoaIntoABufferThatLooksPoisonedIsReportedAndWritesIt) {
  kivtest::PoisonedPage const poisoned;
  char * const page = poisoned.address();
  ASSERT_NE(page, nullptr);
  InternalErrors const errors;
  EXPECT_EQ(kiv_ltoa(12, page, "%ld"), 2);
  EXPECT_STREQ(page, "12");
  EXPECT_EQ(errors.places(), std::vector<std::string>{"atools.cpp (1294)"});
}

TEST_F(NumberForms, FtoaRestoresTheLocale) {
  EXPECT_STREQ(kiv_ftoa_no_locale(1.5, 3).c_str(), "1.5");
  EXPECT_EQ(localeInUse(), german);
  EXPECT_STREQ(kiv_ftoa_period(1.5, 3).c_str(), "1.5");
  EXPECT_EQ(localeInUse(), german);
}

TEST_F(NumberForms, FtoaRestoresCategoriesThatDiffer) {
  std::setlocale(LC_NUMERIC, "C");
  std::string const mixed = localeInUse();
  EXPECT_NE(mixed, german);
  kiv_ftoa_period(1.5, 3);
  EXPECT_EQ(localeInUse(), mixed);
}

struct Form {
  double value;
  int precision;
  char const * bare;
  char const * withPeriod;
};

TEST_F(NumberForms, FtoaCutsZerosAtTheEnd) {
  for (Form const & form : {Form{1.0, 3, "1", "1.0"}, Form{2.50, 3, "2.5", "2.5"}, Form{100, 0, "100", "100"},
                            Form{100, 2, "100", "100.0"}, Form{0, 2, "0", "0.0"}, Form{-0.04, 1, "-0", "-0.0"},
                            Form{1234567.125, 3, "1234567.125", "1234567.125"}, Form{1.5, -1, "1.5", "1.5"}}) {
    EXPECT_STREQ(kiv_ftoa_no_locale(form.value, form.precision).c_str(), form.bare) << form.value;
    EXPECT_STREQ(kiv_ftoa_period(form.value, form.precision).c_str(), form.withPeriod) << form.value;
  }
}

/// What the runtime prints in the "C" locale, cut to the 511 characters that are kept.
std::string printed(double value, int precision) {
  static char text[4096];
  int const count = _snprintf(text, sizeof text - 1, "%.*f", precision, value);
  return std::string(text, static_cast<std::size_t>(count)).substr(0, 511);
}

std::string withoutZeros(std::string text, std::size_t kept) {
  std::size_t const point = text.find('.');
  if (point == std::string::npos)
    return text;
  while (text.size() > point + 1 + kept && text.back() == '0')
    text.pop_back();
  if (text.back() == '.')
    text.pop_back();
  return text;
}

double randomDouble(std::mt19937_64 & random) {
  switch (random() % 3) {
  case 0: { // any bits
    std::uint64_t const bits = random();
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
  }
  case 1: return static_cast<double>(static_cast<std::int64_t>(random() % 2000001) - 1000000) / 1000;
  default: return std::ldexp(static_cast<double>(random() % 1000), static_cast<int>(random() % 80) - 40);
  }
}

TEST(Ftoa, IsTheRuntimesFormWithoutZerosAtTheEnd) {
  support::GuardPages const guard;
  support::Random64 random(11);
  for (std::size_t i = 0; i < support::times(4000); ++i) {
    double const value = randomDouble(random);
    int const precision = random() % 10 == 0 ? static_cast<int>(random() % 700) : static_cast<int>(random() % 20);
    std::string const plain = printed(value, precision);
    ASSERT_EQ(kiv_ftoa_no_locale(value, precision).c_str(), withoutZeros(plain, 0)) << plain << ' ' << precision;
    ASSERT_EQ(kiv_ftoa_period(value, precision).c_str(), withoutZeros(plain, 1)) << plain << ' ' << precision;
  }
}

TEST(Ftoa, OfSpecialValuesIsTheRuntimesText) {
  for (double const value : {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(kiv_ftoa_no_locale(value, 3).c_str(), withoutZeros(printed(value, 3), 0));
    EXPECT_EQ(kiv_ftoa_period(value, 3).c_str(), withoutZeros(printed(value, 3), 1));
  }
}

TEST(Ftoa, HasAtMost511Characters) {
  double const smallest = std::numeric_limits<double>::denorm_min();
  for (int const precision : {509, 510, 511, 1100, 5000, INT_MAX})
    EXPECT_LE(kiv_ftoa_no_locale(smallest + 1.0 / 3, precision).Len(), 511) << precision;
  EXPECT_EQ(kiv_ftoa_no_locale(DBL_MAX, 300).Len(), 309);
  EXPECT_EQ(kiv_ftoa_period(DBL_MAX, INT_MAX).Len(), 311); // its digits and ".0"
}

TEST(Ftoa, ANegativePrecisionCountsAs6) {
  for (int const precision : {-1, -2, -7, -511, -5000, INT_MIN}) {
    EXPECT_STREQ(kiv_ftoa_no_locale(1.0 / 3, precision).c_str(), "0.333333") << precision;
    EXPECT_STREQ(kiv_ftoa_period(1.0 / 3, precision).c_str(), "0.333333") << precision;
  }
}

TEST(Ftoa, OfAHalfAtThePrecisionIsTheRuntimesChoice) {
  for (double const value : {0.5, 1.5, 2.5, -2.5})
    EXPECT_EQ(kiv_ftoa_no_locale(value, 0).c_str(), printed(value, 0)) << value;
}

} // namespace
