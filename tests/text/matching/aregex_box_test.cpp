// The boxes of regular expressions, for each code and in both languages.
#include "matchers.hpp"

#include "ui/boxes/boxtest.hpp"

#include "support/imports/import_hook.hpp"

#include <ostream>
#include <tuple>

using SV::String;

namespace {

struct Row {
  char const * pattern;
  int code;
};
std::ostream & operator<<(std::ostream & out, Row const & row) { return out << row.code; }

std::string const kHuge(100'001, 'a');

/// A pattern for each code.
Row const kRows[] = {{"(?z)", 2}, {"[[.a.]]", 3}, {"[[:none:]]", 4}, {"a\\", 5},    {"\\1", 6},          {"[", 7},
                     {"(", 8},    {"a{", 9},      {"a{}", 10},       {"[b-a]", 11}, {kHuge.c_str(), 12}, {"a**", 13}};

class RegExBoxTest : public boxtest::BoxTest {
protected:
  /// What the box says that appears meanwhile, with the title and the labels, each on a line of its own. It is closed by OK.
  template <class Work> std::string shownBy(Work const & work) {
    std::string shown;
    script->then([&shown] {
      boxtest::Parts const parts(*Kiv_GetTopWindow(0));
      shown = boxtest::systemText(parts.text);
      std::erase(shown, '\r');
      for (std::string const & label : parts.labels())
        shown += "|" + label;
      svtest::postClick(parts.buttons.at(0));
    });
    work();
    return shown;
  }

  static std::string text(unsigned long id) { return textOf(SV::Resource::LoadString(0x2000000 | id)); }

  /// The message for a code, from the texts of the language.
  static std::string messageFor(int code) {
    if (code == 12)
      return text(951);
    std::string const reason = code >= 3 && code != 12 ? text(static_cast<unsigned long>(958 + code))
                                                       : textOf(KivRegEx().fmtErrMsg(KivRegEx::BadPattern));
    return text(950) + "\n\n" + reason;
  }

  static std::string buttons() { return "|OK|Help"; } // the frame gives buttons the labels of the language
};

class RegExBox : public RegExBoxTest, public testing::WithParamInterface<std::tuple<Row, char const *>> {
protected:
  RegExBox() { SV::Resource::SetResManager(&pack_); }

private:
  SV::ResMgr pack_{String("language\\") + std::get<1>(GetParam()) + "\\kivara72.dll"};
};

class RegExNoMatchBox : public RegExBoxTest, public testing::WithParamInterface<char const *> {
protected:
  RegExNoMatchBox() { SV::Resource::SetResManager(&pack_); }

private:
  SV::ResMgr pack_{String("language\\") + GetParam() + "\\kivara72.dll"};
};

/// The engine's result of every match from now on.
int resultOfMatch = 0;
int pretendMatch(regex_t const *, char const *, std::size_t, regmatch_t *, int) { return resultOfMatch; }

} // namespace

TEST_P(RegExBox, ShowsTheHeadingAndTheReason) {
  Row const & row = std::get<0>(GetParam());
  KivRegEx matcher;
  EXPECT_EQ(shownBy([&] { EXPECT_EQ(matcher.regComp(row.pattern, 0, 1), row.code); }),
            messageFor(row.code) + buttons());
  EXPECT_EQ(!matcher, 1);
}

TEST_P(RegExBox, OfTheMessageHasATopicOfTheHelp) {
  EXPECT_EQ(KivErrorBox::GetHelpIDOfErrorText(messageFor(std::get<0>(GetParam()).code).c_str()),
            std::get<0>(GetParam()).code == 12 ? 8502u : 8501u);
}

INSTANTIATE_TEST_SUITE_P(Codes, RegExBox, testing::Combine(testing::ValuesIn(kRows), testing::Values("2057", "1031")));

TEST_P(RegExNoMatchBox, ShowsTheHeadingAndTheReason) {
  KivRegEx const matcher("a", 0);
  EXPECT_EQ(shownBy([&] { EXPECT_EQ(matcher.regExec("b", 1), KivRegEx::NoMatch); }),
            text(950) + "\n\n" + textOf(matcher.fmtErrMsg(KivRegEx::NoMatch)) + buttons());
}

INSTANTIATE_TEST_SUITE_P(Languages, RegExNoMatchBox, testing::Values("2057", "1031"));

TEST_F(RegExBoxTest, AppearsForConstructorsAndAssignedPatterns) {
  std::string const message = messageFor(8) + buttons();
  KivRegEx matcher;
  KivJokerz pattern;
  EXPECT_EQ(shownBy([] { KivRegEx("(", 0); }), message);
  EXPECT_EQ(shownBy([] { KivRegEx2("(", 0); }), message);
  EXPECT_EQ(shownBy([&] { matcher = "("; }), message);
  EXPECT_EQ(shownBy([&] { pattern = "("; }), message);
}

TEST_F(RegExBoxTest, DoesNotAppearWhereItIsNotWanted) {
  KivRegEx matcher;
  EXPECT_EQ(matcher.regComp("(", 0, 0), KivRegEx::UnbalancedParentheses);
  KivJokerz const wildcards(kHuge.c_str(), 0);
  KivJokerz2 const others(kHuge.c_str(), 0);
  matcher.regComp("a", 0, 1);
  EXPECT_EQ(matcher.match("b"), 0);
  EXPECT_EQ(matcher.regExec("b", 0), KivRegEx::NoMatch);
} // a box would stay open

TEST_F(RegExBoxTest, AppearsForNoMatchWhereThatIsAskedFor) {
  KivRegEx const matcher("a", 0);
  int start, end;
  std::string const message = text(950) + "\n\n" + textOf(matcher.fmtErrMsg(KivRegEx::NoMatch)) + buttons();
  EXPECT_EQ(shownBy([&] { matcher.regExec("b", 1); }), message);
  EXPECT_EQ(shownBy([&] { matcher.regExec("b", start, end, 1); }), message);
  EXPECT_EQ(start, -1);
}

TEST_F(RegExBoxTest, AppearsForAFailureOfTheEngineWhichIsNoMatch) {
  KivRegEx const matcher("a", 0);
  support::replaceImports(GetModuleHandleA("kivara.dll"), "re00005.dll",
                          {{"regexec", reinterpret_cast<void *>(&pretendMatch)}});
  resultOfMatch = 12;
  int start = 5, end = 6;
  EXPECT_EQ(shownBy([&] { EXPECT_EQ(matcher.match("a"), 0); }), text(951) + buttons());
  EXPECT_EQ(shownBy([&] { EXPECT_EQ(matcher.match("a", start, end), 0); }), text(951) + buttons());
  EXPECT_EQ(start, -1);
  EXPECT_EQ(end, -1);
  resultOfMatch = 2;
  EXPECT_EQ(shownBy([&] { EXPECT_EQ(matcher.match("a"), 0); }), messageFor(2) + buttons());
  EXPECT_EQ(matcher.regExec("a", 0), KivRegEx::BadPattern); // silent
}

// Another engine may leave the offsets as they are.
TEST_F(RegExBoxTest, DoesNotAppearForAMatchWithoutOffsetsWhichAreMinusOne) {
  KivRegEx const matcher("a", 4);
  support::replaceImports(GetModuleHandleA("kivara.dll"), "re00005.dll",
                          {{"regexec", reinterpret_cast<void *>(&pretendMatch)}});
  resultOfMatch = 0;
  int start = 5, end = 6;
  EXPECT_EQ(matcher.regExec("a", start, end, 1), KivRegEx::Success);
  EXPECT_EQ(start, -1);
  EXPECT_EQ(end, -1);
}

TEST_F(RegExBoxTest, IsNotShownUnderSuppression) {
  SV::Application::SetModalDialogSuppression(true);
  EXPECT_EQ(KivRegEx("(", 0).match("a"), 0);
  SV::Application::SetModalDialogSuppression(false);
}

TEST_F(RegExBoxTest, LiesOverTheApplicationWindow) {
  SV::Window main(nullptr, SV::WB_TITLE);
  main.Show();
  SV::Application::SetAppWindow(&main);
  HWND owner = nullptr;
  script->then([&owner] {
    SV::Window const & box = *Kiv_GetTopWindow(0);
    owner = GetWindow(box.GethWnd(), GW_OWNER);
    svtest::postClick(boxtest::Parts(box).buttons.at(0));
  });
  KivRegEx matcher;
  matcher = "(";
  EXPECT_EQ(owner, main.GethWnd());
}
