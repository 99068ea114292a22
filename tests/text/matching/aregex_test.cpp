// KivRegEx and KivRegEx2: compiling, matching, sharing. The boxes are in aregex_box_test.cpp.
#include "matchers.hpp"

#include "support/imports/import_spy.hpp"
#include "support/memory/allocation.hpp"
#include "sv0105/application/testapplication.hpp"

#include <clocale>
#include <cstring>
#include <new>

using SV::String;

namespace {

/// Counts what lives of a class with a reference count.
class Counted : public __KivRefCounted {
public:
  Counted() { ++alive; }
  Counted(Counted const & other) : __KivRefCounted(other) { ++alive; }
  Counted & operator=(Counted const &) = default;
  static int alive;

protected:
  ~Counted() override { --alive; }
};
int Counted::alive = 0;

} // namespace

// The reference count.

TEST(RefCounted, StartsWithOneReferenceAndDiesWithTheLast) {
  auto * const object = new Counted;
  EXPECT_EQ(&object->addRef(), object);
  object->removeRef();
  EXPECT_EQ(Counted::alive, 1);
  object->removeRef();
  EXPECT_EQ(Counted::alive, 0);
}

TEST(RefCounted, CopyTakesTheCountOver) {
  auto * const object = new Counted;
  object->addRef();
  auto * const copy = new Counted(*object);
  int const before = Counted::alive;
  copy->removeRef();
  EXPECT_EQ(Counted::alive, before);
  copy->removeRef();
  EXPECT_EQ(Counted::alive, before - 1);
}

TEST(RefCounted, AssignmentTakesTheCountOver) {
  auto * const object = new Counted;
  auto * const other = new Counted;
  other->addRef();
  *object = *other;
  int const before = Counted::alive;
  object->removeRef();
  EXPECT_EQ(Counted::alive, before);
  object->removeRef();
  EXPECT_EQ(Counted::alive, before - 1);
}

// Matching.

TEST(RegEx, IsEmptyAtFirst) {
  KivRegEx const matcher;
  EXPECT_EQ(!matcher, 1);
  EXPECT_EQ(static_cast<void *>(matcher), nullptr);
  EXPECT_EQ(matcher.match("a"), 0);
  int start = 5, end = 6;
  EXPECT_EQ(matcher.match("a", start, end), 0);
  EXPECT_EQ(matcher.regExec("a", start, end, 0), KivRegEx::NoMatch);
  EXPECT_EQ(start, 5);
  EXPECT_EQ(end, 6);
  EXPECT_EQ(matcher.regExec("a", 1), KivRegEx::NoMatch); // no box
}

TEST(RegEx, HoldsAnExpression) {
  KivRegEx const matcher("b+", 0);
  EXPECT_EQ(!matcher, 0);
  EXPECT_EQ(static_cast<void *>(matcher), reinterpret_cast<void *>(1));
  EXPECT_EQ(matcher.match("abbc"), 1);
  EXPECT_EQ(matcher.match("ac"), 0);
  EXPECT_EQ(matcher.regExec("abbc", 0), KivRegEx::Success);
  EXPECT_EQ(matcher.regExec("ac", 0), KivRegEx::NoMatch);
}

TEST(RegEx, GivesOffsets) {
  KivRegEx const matcher("b+", 0);
  EXPECT_EQ(offsets(matcher, "abbc"), "1-3");
  int start = 5, end = 6;
  EXPECT_EQ(matcher.match("ac", start, end), 0);
  EXPECT_EQ(start, -1);
  EXPECT_EQ(end, -1);
  EXPECT_EQ(matcher.regExec("xb", start, end, 0), KivRegEx::Success);
  EXPECT_EQ(start, 1);
  EXPECT_EQ(end, 2);
}

TEST(RegEx, WithTheFlag4GivesNoOffsets) {
  KivRegEx const matcher("b+", 4);
  int start = 5, end = 6;
  EXPECT_EQ(matcher.regExec("abbc", start, end, 0), KivRegEx::Success);
  EXPECT_EQ(start, -1);
  EXPECT_EQ(end, -1);
}

TEST(RegEx, IsAlwaysOfExtendedSyntax) {
  for (int const flags : {0, 1, 2, 4})
    EXPECT_EQ(KivRegEx("^(a|b)+$", flags).match("abba"), 1) << flags;
}

TEST(RegEx, IgnoresCaseWithTheFlag2) {
  EXPECT_EQ(KivRegEx("ab", 0).match("AB"), 0);
  EXPECT_EQ(KivRegEx("ab", 2).match("AB"), 1);
}

TEST(RegEx, TakesNullForEmpty) {
  EXPECT_EQ(KivRegEx(static_cast<char const *>(nullptr), 0).match(nullptr), 1);
  EXPECT_EQ(KivRegEx("a", 0).match(nullptr), 0);
}

TEST(RegEx, PatternIsAssignedWithTheFlag4) {
  KivRegEx matcher;
  KivRegEx const & result = matcher = "^b+$";
  EXPECT_EQ(&result, &matcher);
  EXPECT_EQ(offsets(matcher, "bb"), "-1--1");
  EXPECT_EQ(matcher.match("BB"), 0);
}

TEST(RegEx, CompilesAnotherPatternAndReleasesTheFormer) {
  LiveExpressions const live;
  {
    KivRegEx matcher("a", 0);
    EXPECT_EQ(matcher.regComp("b", 0, 0), KivRegEx::Success);
    EXPECT_EQ(live.value(), 1);
    EXPECT_EQ(matcher.match("b"), 1);
    EXPECT_EQ(matcher.match("a"), 0);
  }
  EXPECT_EQ(live.value(), 0);
}

TEST(RegEx, IsEmptyAfterAFailedCompilation) {
  LiveExpressions const live;
  KivRegEx matcher("a", 0);
  EXPECT_EQ(matcher.regComp("(", 0, 0), KivRegEx::UnbalancedParentheses);
  EXPECT_EQ(!matcher, 1);
  EXPECT_EQ(matcher.match("a"), 0);
  EXPECT_EQ(live.value(), 0);
}

TEST(RegEx, CompilationThatFailsLeavesCopiesAlone) {
  KivRegEx matcher("a", 0);
  KivRegEx const copy(matcher);
  matcher.regComp("(", 0, 0);
  EXPECT_EQ(copy.match("a"), 1);
}

TEST(RegEx, WithoutMemoryForItselfThrowsAndIsEmpty) {
  KivRegEx matcher("a", 0);
  {
    support::AllocationLimit const limit(1);
    EXPECT_THROW(matcher.regComp("b", 0, 0), std::bad_alloc);
  }
  EXPECT_EQ(!matcher, 1);
}

TEST(RegEx, WithoutMemoryForTheExpressionGivesCode12) {
  KivRegEx matcher;
  std::string const pattern(2000, 'a');
  support::AllocationLimit const limit(4000);
  EXPECT_EQ(matcher.regComp(pattern.c_str(), 0, 0), KivRegEx::OutOfMemory);
}

TEST(RegEx, AllocatesNothingOfItsOwnToMatch) {
  KivRegEx const matcher("b+", 0);
  support::AllocationCount const count;
  matcher.match("abbc");
  EXPECT_LE(count.value(), 1u); // the engine's work area
}

// Sharing.

TEST(RegExSharing, CopiesHoldOneExpressionThatDiesWithTheLast) {
  LiveExpressions const live;
  {
    KivRegEx const first("a", 0);
    {
      KivRegEx const second(first);
      KivRegEx third;
      third = second;
      EXPECT_EQ(live.value(), 1);
      EXPECT_EQ(third.match("a"), 1);
    }
    EXPECT_EQ(live.value(), 1);
    EXPECT_EQ(first.match("a"), 1);
  }
  EXPECT_EQ(live.value(), 0);
}

TEST(RegExSharing, CopyOfAnEmptyOneIsEmpty) {
  KivRegEx const first;
  KivRegEx second(first);
  EXPECT_EQ(!second, 1);
  second = first;
  EXPECT_EQ(!second, 1);
}

TEST(RegExSharing, CountsInDataOfAFixedLayout) {
  struct Layout {
    void * table;
    std::int32_t references;
    int compileFlags;
    regex_t compiled;
  };
  KivRegEx const matcher("a", 2);
  KivRegEx const copy(matcher);
  Layout const * data = nullptr; // the one field
  std::memcpy(&data, reinterpret_cast<char const *>(&matcher), sizeof data);
  EXPECT_EQ(data->references, 2);
  EXPECT_EQ(data->compileFlags, 3);
  EXPECT_NE(data->compiled.value, nullptr);
  EXPECT_EQ(sizeof(KivRegEx), sizeof(void *));
  EXPECT_EQ(sizeof(KivRegExData), sizeof(Layout));
}

TEST(RegExSharing, AssignmentLeaksTheExpressionThatWasHeld) {
  LiveExpressions const live;
  {
    KivRegEx held("a", 0);
    KivRegEx const other("b", 0);
    held = other;
    EXPECT_EQ(held.match("b"), 1);
  }
  EXPECT_EQ(live.value(), 1);
}

TEST(RegExSharing, AssignmentToItselfAddsAReferenceThatIsNeverRemoved) {
  LiveExpressions const live;
  {
    KivRegEx matcher("a", 0);
    KivRegEx const & same = matcher;
    matcher = same;
    EXPECT_EQ(matcher.match("a"), 1);
  }
  EXPECT_EQ(live.value(), 1);
}

TEST(RegExSharing, AssignmentOfAnEmptyOneLeaksToo) {
  LiveExpressions const live;
  {
    KivRegEx matcher("a", 0);
    matcher = KivRegEx();
    EXPECT_EQ(!matcher, 1);
  }
  EXPECT_EQ(live.value(), 1);
}

TEST(RegExSharing, AssignmentOfAPatternReleasesWhatWasHeld) {
  LiveExpressions const live;
  {
    KivRegEx matcher("a", 0);
    matcher = "b";
    EXPECT_EQ(live.value(), 1);
  }
  EXPECT_EQ(live.value(), 0);
}

// The locale.

TEST(RegExLocale, IsThatOfTheSystemsCodePageWhileItCompiles) {
  ASSERT_TRUE(std::setlocale(LC_CTYPE, "C"));
  KivRegEx const umlauts("^[[:alpha:]]+$", 0);
  EXPECT_STREQ(std::setlocale(LC_CTYPE, nullptr), "C");
  EXPECT_EQ(umlauts.match("\xE4\xD6\xDF"), 1);
  EXPECT_EQ(KivRegEx("\xE4", 2).match("\xC4"), 1);
}

TEST(RegExLocale, IsRestoredToWhatItWas) {
  std::string const before = std::setlocale(LC_CTYPE, "German_Germany.1252") != nullptr
                                 ? std::setlocale(LC_CTYPE, nullptr)
                                 : std::setlocale(LC_CTYPE, "");
  KivRegEx matcher("a", 0);
  EXPECT_EQ(std::setlocale(LC_CTYPE, nullptr), before);
  matcher.regComp("(", 0, 0);
  EXPECT_EQ(std::setlocale(LC_CTYPE, nullptr), before);
}

TEST(RegExLocale, OtherCategoriesStay) {
  ASSERT_TRUE(std::setlocale(LC_NUMERIC, "C"));
  static std::string during; // spies stay as long as the process
  support::spyOnImport("kivara.dll", "regcomp",
                       [](support::SpiedCall &) { during = std::setlocale(LC_NUMERIC, nullptr); });
  KivRegEx const matcher("a", 0);
  EXPECT_EQ(during, "C");
}

TEST(RegExLocale, IsThatOfTheRuntimeForWordsWhenItMatches) {
  KivRegEx const word("\\<b", 0);
  char const umlautFirst[] = {'\xE4', 'b', '\0'};
  ASSERT_TRUE(std::setlocale(LC_CTYPE, "C"));
  EXPECT_EQ(word.match(umlautFirst), 1);
  ASSERT_TRUE(std::setlocale(LC_CTYPE, ".ACP"));
  EXPECT_EQ(word.match(umlautFirst), 0);
  std::setlocale(LC_CTYPE, "C");
}

TEST(RegExLocale, CountsTheTabAsPrintable) { EXPECT_EQ(KivRegEx("^[[:print:]]$", 0).match("\t"), 1); }

// Texts of errors.

namespace {

struct TextRow {
  int code;
  char const * english;
  char const * german;
};
std::ostream & operator<<(std::ostream & out, TextRow const & row) { return out << row.code; }

class RegExText : public ToolkitTest, public testing::WithParamInterface<TextRow> {
protected:
  std::string textIn(char const * language) {
    SV::ResMgr pack(String("language\\") + language + "\\kivara72.dll");
    SV::Resource::SetResManager(&pack);
    std::string const text = textOf(KivRegEx().fmtErrMsg(static_cast<KivRegEx::KivRegExError>(GetParam().code)));
    SV::Resource::SetResManager(nullptr);
    return text;
  }
};

} // namespace

TEST_P(RegExText, IsThatOfTheLanguage) {
  EXPECT_EQ(textIn("2057"), GetParam().english);
  EXPECT_EQ(textIn("1031"), GetParam().german);
  EXPECT_TRUE(application.exceptions.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Codes, RegExText,
    testing::Values(
        TextRow{0, "The search reports: No error.", "Die Suche meldet: No error."},
        TextRow{1, "The search reports: No match.", "Die Suche meldet: No match."},
        TextRow{2, "The search reports: Invalid regexp.", "Die Suche meldet: Invalid regexp."},
        TextRow{3, "The character in [. .] or [= =] is not known.", "Das Zeichen in [. .] oder [= =] ist unbekannt."},
        TextRow{4, "The character class in [: :] is not known.", "Die Zeichenklasse in [: :] ist unbekannt."},
        TextRow{5, "A character is missing after the last backslash.",
                "Hinter dem letzten umgekehrten Schr\xE4gstrich fehlt ein Zeichen."},
        TextRow{6, "A back reference refers to parentheses that do not exist.",
                "Ein R\xFC\x63kverweis bezieht sich auf eine Klammer, die es nicht gibt."},
        TextRow{7, "A square bracket is missing.", "Eine eckige Klammer fehlt."},
        TextRow{8, "A parenthesis is missing.", "Eine runde Klammer fehlt."},
        TextRow{9, "A brace is missing.", "Eine geschweifte Klammer fehlt."},
        TextRow{10, "The number of repetitions in braces is not valid.",
                "Die Anzahl der Wiederholungen in geschweiften Klammern ist ung\xFCltig."},
        TextRow{11, "The end of a range of characters comes before its start.",
                "Das Ende eines Zeichenbereichs liegt vor seinem Anfang."},
        TextRow{12, "The search reports: Out of memory.", "Die Suche meldet: Out of memory."},
        TextRow{13, "There is nothing to repeat before a repetition character.",
                "Vor einem Wiederholungszeichen fehlt, was wiederholt werden soll."},
        TextRow{14, "The search reports: Unknown error.", "Die Suche meldet: Unknown error."},
        TextRow{-1, "The search reports: Unknown error.", "Die Suche meldet: Unknown error."}));

class RegExTextTemplate : public ToolkitTest {};

TEST_F(RegExTextTemplate, IsFilledAtItsFirstPlaceOnly) {
  SV::ResMgr pack("regex_texts.dll"); // "%s and %s"
  SV::Resource::SetResManager(&pack);
  EXPECT_EQ(textOf(KivRegEx("a", 0).fmtErrMsg(KivRegEx::NoMatch)), "No match and %s");
  SV::Resource::SetResManager(nullptr);
}

// Through the interface.

TEST(RegEx2, IsTheOneThatTheInterfaceUses) {
  LiveExpressions const live;
  {
    KivRegEx2 const matcher("b+", 0);
    KivMatcherI const & held = matcher;
    EXPECT_EQ(static_cast<void *>(held), reinterpret_cast<void *>(1));
    EXPECT_EQ(!held, 0);
    EXPECT_EQ(held.match("abbc"), 1);
    EXPECT_EQ(held.match("ac"), 0);
    EXPECT_EQ(offsets(matcher, "abbc"), "1-3");
    KivRegEx2 const copy(matcher);
    EXPECT_EQ(copy.match("b"), 1);
    EXPECT_EQ(live.value(), 1);
  }
  EXPECT_EQ(live.value(), 0);
}

TEST(RegEx2, AssignmentLeaksTheExpressionThatWasHeld) {
  LiveExpressions const live;
  {
    KivRegEx2 held("a", 0);
    KivRegEx2 const other("b", 0);
    EXPECT_EQ(&(held = other), &held);
    EXPECT_EQ(held.match("b"), 1);
  }
  EXPECT_EQ(live.value(), 1);
}

TEST(MatcherInterface, AssignmentDoesNothing) {
  KivRegEx2 first("a", 0);
  KivJokerz2 const second("b", 0);
  KivMatcherI & held = first;
  EXPECT_EQ(&(held = second), &held);
  EXPECT_EQ(held.match("a"), 1);
}

TEST(MatcherInterface, HasItsOperationsInTheirOrder) {
  KivRegEx2 const matcher("a", 0);
  KivMatcherI const & held = matcher;
  void * const * const table = *reinterpret_cast<void * const * const *>(&held);
  EXPECT_EQ(reinterpret_cast<void * (*)(KivMatcherI const *)>(table[0])(&held), reinterpret_cast<void *>(1));
  EXPECT_EQ(reinterpret_cast<int (*)(KivMatcherI const *)>(table[1])(&held), 0);
  EXPECT_EQ(reinterpret_cast<int (*)(KivMatcherI const *, char const *)>(table[2])(&held, "a"), 1);
  EXPECT_EQ(sizeof(KivMatcherI), sizeof(void *));
  EXPECT_EQ(sizeof(KivRegEx2), 2 * sizeof(void *));
}

namespace {

/// How many expressions stay when a matcher that was assigned to itself is gone.
template <class Matcher> int leftBySelfAssignment() {
  LiveExpressions const live;
  {
    Matcher matcher("a", 0);
    Matcher const & same = matcher;
    matcher = same;
    EXPECT_EQ(matcher.match("a"), 1);
  }
  return live.value();
}

} // namespace

TEST(OtherMatchers, AssignmentToItselfAddsAReferenceThatIsNeverRemoved) {
  EXPECT_EQ(leftBySelfAssignment<KivRegEx2>(), 1);
  EXPECT_EQ(leftBySelfAssignment<KivJokerz>(), 1);
  EXPECT_EQ(leftBySelfAssignment<KivJokerz2>(), 1);
}
