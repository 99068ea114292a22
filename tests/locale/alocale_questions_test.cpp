// What is asked of the system, and what becomes of its answers: the system's part is played by the test.
#include "alocale.hpp"

#include "locale/locale_facts.hpp"
#include "support/imports/import_hook.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

using kivtest::Fact;
using kivtest::Form;
using kivtest::kFacts;

namespace {

struct Question {
  LCID locale;
  LCTYPE type;
  int size;
  bool hasBuffer;
  bool isCleared; ///< the buffer with one byte more; only of numbers and fixed texts

  bool operator==(Question const &) const = default;
};

void PrintTo(Question const & question, std::ostream * out) {
  *out << question.locale << ' ' << question.type << ' ' << question.size << ' ' << question.hasBuffer
       << question.isCleared;
}

class LocaleQuestions : public testing::Test {
protected:
  LocaleQuestions() {
    support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                            {{"GetLocaleInfoA", reinterpret_cast<void *>(answer)}});
    reply = "1";
    fails = false;
    sizedType = 0;
  }

  static std::string ask(Fact const & fact) {
    questions.clear();
    sizedType = fact.form == Form::Sized ? fact.type : 0;
    return fact.told();
  }

  static inline std::string reply;  ///< of the system, to every question
  static inline bool fails = false; ///< what fits of the reply is in the buffer all the same
  static inline std::vector<Question> questions;

private:
  static int WINAPI answer(LCID locale, LCTYPE type, char * text, int size) {
    bool const isCleared =
        text != nullptr && type != sizedType && std::all_of(text, text + size + 1, [](char c) { return c == '\0'; });
    questions.push_back({locale, type, size, text != nullptr, isCleared});
    int const needed = static_cast<int>(reply.size()) + 1;
    if (text != nullptr)
      std::memcpy(text, reply.c_str(), static_cast<std::size_t>(std::min(size, needed)));
    bool const fits = size == 0 || needed <= size;
    return !fails && fits ? needed : 0;
  }

  static inline LCTYPE sizedType = 0;
};

} // namespace

TEST_F(LocaleQuestions, AreForTheUsersFactWithTheSizeOfItsForm) {
  for (Fact const & fact : kFacts) {
    ask(fact);
    std::vector<Question> expected{{1024, fact.type, fact.size, true, true}};
    if (fact.form == Form::Sized)
      expected = {{1024, fact.type, 0, false, false}, {1024, fact.type, 2, true, false}};
    EXPECT_EQ(questions, expected) << fact.name;
  }
}

TEST_F(LocaleQuestions, AreAskedAnewByEachCall) {
  for (Fact const & fact : kFacts) {
    reply = "1";
    EXPECT_EQ(ask(fact), "1") << fact.name;
    reply = "0";
    EXPECT_EQ(ask(fact), "0") << fact.name;
  }
}

TEST_F(LocaleQuestions, ThatTheSystemRefusesGiveZeroOrAnEmptyText) {
  reply = "";
  fails = true;
  for (Fact const & fact : kFacts)
    EXPECT_EQ(ask(fact), fact.form == Form::Number ? "0" : "") << fact.name;
}

TEST_F(LocaleQuestions, GiveWhatAFailedCallLeftInTheBuffer) {
  reply = "7";
  fails = true;
  for (Fact const & fact : kFacts) {
    std::string const left = fact.form == Form::Sized ? "" : kivtest::isYesOrNo(fact) ? "1" : "7";
    EXPECT_EQ(ask(fact), left) << fact.name;
  }
}

TEST_F(LocaleQuestions, GiveABufferThatWasFilledToItsLastByteUpToThere) {
  reply = std::string(200, '1');
  for (Fact const & fact : kFacts) {
    if (fact.form == Form::Fixed) {
      EXPECT_EQ(ask(fact), std::string(static_cast<std::size_t>(fact.size), '1')) << fact.name;
    }
  }
}

TEST_F(LocaleQuestions, GiveTextsWithoutABufferOfAnyLength) {
  reply = std::string(100'000, 'x');
  for (Fact const & fact : kFacts) {
    if (fact.form == Form::Sized) {
      EXPECT_EQ(ask(fact), reply) << fact.name;
    }
  }
}

TEST_F(LocaleQuestions, GiveTheNumbersOfTheSystemEvenWhereTheyHaveNoName) {
  reply = "9";
  for (Fact const & fact : kFacts) {
    if (fact.form == Form::Number) {
      EXPECT_EQ(ask(fact), kivtest::isYesOrNo(fact) ? "1" : "9") << fact.name;
    }
  }
}

// Callers compare with the number that comes of it.
TEST_F(LocaleQuestions, GiveHexadecimalLanguagesUpToTheFirstLetter) {
  struct {
    char const * text;
    unsigned long number;
  } const rows[] = {{"040c", 40}, {"0407", 407}, {"0c0a", 0}, {"1009", 1009}, {"a", 0}};
  for (auto const & row : rows) {
    reply = row.text;
    EXPECT_EQ(Locale::Kiv_GetLanguage(), row.number) << row.text;
    EXPECT_EQ(Locale::Kiv_GetDefaultLanguage(), row.number) << row.text;
  }
}

TEST_F(LocaleQuestions, ForTheDateSeparatorAreForTheCurrencySymbol) {
  reply = "kr";
  EXPECT_STREQ(Locale::Kiv_GetDateSeparator().c_str(), "kr");
  for (Fact const & fact : kFacts) {
    ask(fact);
    EXPECT_NE(questions.back().type, static_cast<LCTYPE>(LOCALE_SDATE)) << fact.name;
  }
}
