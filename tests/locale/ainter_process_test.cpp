#include "locale/language_run.hpp"

#include "frame/product_run.hpp"
#include "support/windows/windows.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

namespace {

using Texts = std::vector<std::string>;

// What is reported of a list is shown in debug builds, in a box that would wait for an answer; in release builds nothing is.
#ifdef KIVARA_DEBUG
constexpr char kNoBox[] = "-no_dialogs";
#else
constexpr char kNoBox[] = "";
#endif

/// How a list of languages is read.
struct List {
  char const * name;
  std::string content;
  char const * languages;
  char const * current;
};
std::ostream & operator<<(std::ostream & out, List const & row) { return out << row.name; }

class LanguageList : public testing::TestWithParam<List> {};
TEST_P(LanguageList, IsReadLineByLine) {
  LanguageFolder folder;
  folder.write("lang.ini", GetParam().content);
  auto const facts = folder.facts("languages|current|locale", kNoBox);
  EXPECT_EQ(facts.at("languages"), GetParam().languages);
  EXPECT_EQ(facts.at("current"), GetParam().current);
  EXPECT_EQ(facts.at("locale"), GetParam().current);
}
INSTANTIATE_TEST_SUITE_P(
    Forms, LanguageList,
    testing::Values(
        List{"empty", "", "", "1031"}, List{"comments only", "; 2057\n  ;1036\n\n \t\n", "", "1031"},
        List{"one", "2057", "2057", "2057"}, List{"first is current", "1036\n1031\n", "1036,1031", "1036"},
        List{"blanks in front", " \t\v\f2057\r\n", "2057", "2057"},
        List{"text behind the number", "2057 English\n1031;German\n", "2057,1031", "2057"},
        List{"duplicates stay", "2057\n1031\n2057\n", "2057,1031,2057", "2057"},
        List{"no number is 0", "English\n1031\n", "0,1031", "0"},
        List{"unknown ids stay", "1031\n9999\n", "1031,9999", "1031"}, List{"low 16 bits", "67593\n", "2057", "2057"},
        List{"120 characters are two lines",
             "2057" + std::string(99 - 4, ' ') + "1031" + std::string(17, 'x') + "\n1036\n", "2057,1031,1036", "2057"},
        List{"99 characters are one line", "2057" + std::string(95, ' ') + "\n1031\n", "2057,1031", "2057"}));

TEST(LanguageListFile, ThatIsMissingLeavesGermanAlone) {
  auto const facts = LanguageFolder().facts("languages|current", kNoBox);
  EXPECT_EQ(facts.at("languages"), "1031");
  EXPECT_EQ(facts.at("current"), "1031");
}

/// What is reported in a box when assertions test.
struct Report {
  char const * name;
  char const * content; ///< null: no file
  char const * expression;
  char const * languages;
};
std::ostream & operator<<(std::ostream & out, Report const & row) { return out << row.name; }

class LanguageListReport : public testing::TestWithParam<Report> {};
TEST_P(LanguageListReport, IsAFailedAssertionAndNoMore) {
  LanguageFolder folder;
  if (GetParam().content)
    folder.write("lang.ini", GetParam().content);
  ProductRun run(folder.start("languages", "-assert"));
  auto const box = run.answerBox();
  ASSERT_FALSE(box.texts.empty());
  EXPECT_TRUE(holds(box.texts[0], "ainter"));
  EXPECT_TRUE(holds(box.texts[0], GetParam().expression));
  EXPECT_EQ(run.fact("languages"), GetParam().languages);
}
INSTANTIATE_TEST_SUITE_P(Faults, LanguageListReport,
                         testing::Values(Report{"missing file", nullptr, "lang.ini", "1031"},
                                         Report{"unknown id", "9999\n", "IsValidLanguageID(id)", "9999"}));

TEST(LanguageListFile, WithAnIdOfZeroIsReportedTwiceAndKeepsIt) {
  LanguageFolder folder;
  folder.write("lang.ini", "1031\nnone\n");
  ProductRun run(folder.start("languages", "-assert"));
  EXPECT_TRUE(holds(run.answerBox().texts.at(0), "id != 0"));
  EXPECT_TRUE(holds(run.answerBox().texts.at(0), "IsValidLanguageID(id)"));
  EXPECT_EQ(run.fact("languages"), "1031,0");
}

TEST(LanguageListFile, ReadASecondTimeHasNoEffect) {
  LanguageFolder folder;
  folder.write("lang.ini", "2057\n");
  auto const facts = folder.facts("set 1036|again|languages|current");
  EXPECT_EQ(facts.at("languages"), "2057");
  EXPECT_EQ(facts.at("current"), "1036");
}

TEST(LanguageDebugLines, NameEachLanguageAndTheChange) {
  LanguageFolder folder;
  folder.write("lang.ini", "2057\n1031\n");
  Texts const texts = folder.debugTexts("");
  EXPECT_TRUE(tells(texts, "[locale] Adding locale 2057\n"));
  EXPECT_TRUE(tells(texts, "[locale] Adding locale 1031\n"));
  EXPECT_TRUE(tells(texts, "[locale] Changing default language to 2057: English / United Kingdom\n"));
}

TEST(LanguageDebugLines, NoneReportsAChangeWhenTheFirstIsGerman) {
  LanguageFolder folder;
  folder.write("lang.ini", "1031\n2057\n");
  EXPECT_FALSE(anyHolds(folder.debugTexts(""), "Changing default language"));
}

TEST(LanguageDebugLines, NamesOfAnUnknownLanguageAreEmpty) {
  LanguageFolder folder;
  folder.write("lang.ini", "1031\n");
  EXPECT_TRUE(tells(folder.debugTexts("set 9999"), "[locale] Changing default language to 9999:  / \n"));
}

/// A folder with the English and the German pack under the name "texts".
class Packs : public testing::Test {
protected:
  Packs() {
    folder.write("lang.ini", "2057\n1031\n");
    folder.addPack(kEnglish, "language\\2057\\texts72.dll");
    folder.addPack(kGerman, "language\\1031\\texts72.dll");
  }

  static constexpr char kEnglish[] = "language\\2057\\kivara72.dll";
  static constexpr char kGerman[] = "language\\1031\\kivara72.dll";
  LanguageFolder folder;
};

TEST_F(Packs, OfTheLanguageComeFromItsFolder) {
  auto const facts = folder.facts("create texts 1|chain|text 0x2002923");
  EXPECT_EQ(facts.at("create"), "1");
  EXPECT_EQ(facts.at("failed"), "0");
  EXPECT_EQ(facts.at("chain"), "language\\2057\\texts72.dll");
  EXPECT_EQ(facts.at("0x2002923"), "Cancel");
}

TEST_F(Packs, WithoutALanguageComeFromTheCommonFolder) {
  folder.addPack(kEnglish, "language\\common72.dll");
  EXPECT_EQ(folder.facts("create common 0|chain").at("chain"), "language\\common72.dll");
}

TEST_F(Packs, ThatAreNotInTheirFolderComeFromTheProgramFolder) {
  folder.addPack(kGerman, "spare72.dll");
  auto const facts = folder.facts("create spare 1|chain|text 0x2002923");
  EXPECT_EQ(facts.at("create"), "1");
  EXPECT_EQ(facts.at("failed"), "0") << "nothing is missing";
  EXPECT_EQ(facts.at("chain"), ".\\spare72.dll");
  EXPECT_EQ(facts.at("0x2002923"), "Abbrechen");
}

TEST_F(Packs, OfALanguageThatIsNotListedComeFromTheProgramFolder) {
  folder.addPack(kGerman, "texts72.dll");
  auto const facts = folder.facts("current|create texts 1|chain", "-lang1036");
  EXPECT_EQ(facts.at("current"), "1036");
  EXPECT_EQ(facts.at("chain"), ".\\texts72.dll");
}

TEST_F(Packs, ReportEachLoadOnTheDebugOutput) {
  folder.addPack(kGerman, "spare72.dll");
  Texts const texts = folder.debugTexts("create texts 1|create spare 0");
  EXPECT_TRUE(tells(texts, "[locale] Loading resource DLL language\\2057\\texts72.dll\n"));
  EXPECT_TRUE(tells(texts, "[locale] Loading resource DLL language\\spare72.dll\n"));
  EXPECT_TRUE(tells(texts, "[locale] Error! Loading fallback resource DLL spare72.dll\n"));
}

TEST_F(Packs, AreReportedInTheOrderOfTheSteps) {
  folder.addPack(kGerman, "spare72.dll");
  Texts lines;
  for (std::string const & text :
       folder.debugTexts("create texts 1|create spare 0|newhelp manual|set 1031|create none 1", "-no_dialogs"))
    if (text.starts_with("[locale]") || text.starts_with("[kiv] Using"))
      lines.push_back(text);
  std::string const help = "[kiv] Using help file '" + folder.path() + "\\manual.chm'\n";
  EXPECT_EQ(lines,
            (Texts{"[locale] Adding locale 2057\n", "[locale] Adding locale 1031\n",
                   "[locale] Changing default language to 2057: English / United Kingdom\n",
                   "[locale] Loading resource DLL language\\2057\\texts72.dll\n",
                   "[locale] Loading resource DLL language\\spare72.dll\n",
                   "[locale] Error! Loading fallback resource DLL spare72.dll\n", help,
                   "[locale] Changing default language to 1031: German / Germany\n",
                   "[locale] Loading resource DLL language\\1031\\texts72.dll\n",
                   "[locale] Loading resource DLL language\\spare72.dll\n",
                   "[locale] Error! Loading fallback resource DLL spare72.dll\n", help,
                   "[locale] Loading resource DLL language\\1031\\none72.dll\n",
                   "[locale] Error! Loading fallback resource DLL none72.dll\n",
                   "[locale] Failed to load the resource file 'none72.dll' for the selected language 'Deutsch'.\n"
                   "         Please change your language selection."}));
}

TEST_F(Packs, ThatAreNowhereGiveABoxAndAFlagAndNoMore) {
  ProductRun run(folder.start("create none 1|chain"));
  auto const texts = run.answerBox();
  EXPECT_EQ(texts.title, "KIVARA: error loading resource file");
  EXPECT_EQ(texts.texts, Texts{"Failed to load the resource file 'none72.dll' for the selected language 'English'.\n"
                               "Please change your language selection."});
  EXPECT_EQ(texts.buttons, Texts{"OK"});
  EXPECT_EQ(run.fact("box"), "owner 0, style 42010");
  EXPECT_EQ(run.fact("create"), "0");
  EXPECT_EQ(run.fact("failed"), "1");
  EXPECT_EQ(run.fact("chain"), "none");
}

TEST_F(Packs, ThatAreNowhereAreReportedByTheNumberOfALanguageWithoutAName) {
  ProductRun run(folder.start("create none 1", "-lang9999"));
  EXPECT_TRUE(holds(run.answerBox().texts.at(0), "for the selected language '9999'.\n"));
  EXPECT_EQ(run.fact("create"), "0");
}

TEST_F(Packs, ThatAreNowhereAreReportedOnTheDebugOutput) {
  EXPECT_TRUE(tells(folder.debugTexts("create none 1", "-no_dialogs"),
                    "[locale] Failed to load the resource file 'none72.dll' for the selected language 'English'.\n"
                    "         Please change your language selection."));
}

TEST_F(Packs, ThatAreNowhereGoToTheLogUnderSuppression) {
  auto const facts = folder.facts("create none 1|create texts 1", "-no_dialogs -log_no_dialogsout.log");
  EXPECT_EQ(facts.at("create"), "1");
  EXPECT_EQ(facts.at("failed"), "1"); // never cleared
  EXPECT_TRUE(holds(support::readFile(folder.path() + "\\out.log").value_or(""),
                    "Failed to load the resource file 'none72.dll'"));
}

TEST_F(Packs, FormAChainInTheOrderOfTheirCreation) {
  folder.addPack(kGerman, "language\\second72.dll");
  folder.addPack(kGerman, "third72.dll");
  auto const facts = folder.facts("next|create texts 1|next|create second 0|create third 1|chain|delete|next");
  EXPECT_EQ(facts.at("chain"), "language\\2057\\texts72.dll, language\\second72.dll, .\\third72.dll");
  EXPECT_EQ(facts.at("next"), "none");
}

TEST_F(Packs, AreUnloadedByAChangeOfTheLanguageAndAtTheEndOfTheChain) {
  folder.addPack(kEnglish, "language\\common72.dll");
  EXPECT_EQ(folder.facts("create texts 1|create common 0|unloads").at("unloads"), "0");
  EXPECT_EQ(folder.facts("create texts 1|create common 0|set 1031|unloads").at("unloads"), "2");
  auto const ended = folder.facts("create texts 1|create common 0|delete|unloads|chain");
  EXPECT_EQ(ended.at("unloads"), "2");
  EXPECT_EQ(ended.at("chain"), "none");
}

// What the new one takes over from the old one's file is still there then.
TEST_F(Packs, AreEachLoadedInTheNewLanguageBeforeTheOldOneIsUnloaded) {
  folder.addPack(kEnglish, "language\\common72.dll");
  auto const facts = folder.facts("create texts 1|create common 0|files|set 1031|files");
  EXPECT_EQ(facts.at("files"), "open (none), unload, open (none), unload");
}

TEST_F(Packs, AreReloadedWhileNoneIsActiveAndThenTheFirstIs) {
  folder.addPack(kEnglish, "language\\common72.dll");
  auto const facts = folder.facts("create texts 1|create common 0|files|set 1031|files|chain");
  EXPECT_EQ(facts.at("files").find("72.dll"), std::string::npos) << facts.at("files");
  EXPECT_EQ(facts.at("chain"), "language\\1031\\texts72.dll, language\\common72.dll");
}

TEST_F(Packs, AreMadeActiveAsTheFirstOfTheChainAndNotBecauseNoneIs) {
  folder.addPack(kEnglish, "language\\common72.dll");
  EXPECT_EQ(folder.facts("create texts 1|deactivate|create common 0|chain").at("chain"), "none");
  EXPECT_EQ(folder.facts("create texts 1|delete|create common 0|chain").at("chain"), "language\\common72.dll");
}

TEST_F(Packs, AreLoadedUnderTheFlagThatTheirFailureIsReportedHere) {
  folder.addPack(kGerman, "spare72.dll");
  for (std::string const steps : {"create texts 1", "create spare 0", "create none 1", "create texts 1|set 1031"})
    EXPECT_EQ(folder.facts(steps + "|flag", "-no_dialogs").at("flag"), "set in each load") << steps;
}

TEST_F(Packs, HaveNoNextOneWhenThereIsNoneOrTheLastIsActive) {
  EXPECT_EQ(folder.facts("next").at("next"), "none");
  EXPECT_EQ(folder.facts("create texts 1|next").at("next"), "none");
}

TEST_F(Packs, AllFollowAChangeOfTheLanguage) {
  folder.addPack(kEnglish, "language\\2057\\more72.dll");
  folder.addPack(kGerman, "language\\1031\\more72.dll");
  folder.addPack(kEnglish, "language\\common72.dll");
  auto const facts = folder.facts("create texts 1|create common 0|create more 1|set 1031|chain|text 0x2002923");
  EXPECT_EQ(facts.at("chain"), "language\\1031\\texts72.dll, language\\common72.dll, language\\1031\\more72.dll");
  EXPECT_EQ(facts.at("0x2002923"), "Abbrechen");
}

// A later change looks for it among the DLLs without a language: products keep such a DLL there, too.
TEST_F(Packs, ThatFellBackToTheProgramFolderBelongToNoLanguageAnyMore) {
  folder.addPack(kEnglish, "spare72.dll");
  folder.addPack(kGerman, "language\\1031\\spare72.dll");
  folder.addPack(kGerman, "language\\spare72.dll");
  EXPECT_EQ(folder.facts("create spare 1|set 1031|chain").at("chain"), "language\\spare72.dll");
}

TEST_F(Packs, ThatAreMissingInTheNewLanguageLeaveTheChain) {
  folder.addPack(kEnglish, "language\\2057\\english72.dll");
  auto const facts = folder.facts("create english 1|create texts 1|set 1031|chain|text 0x2002923", "-no_dialogs");
  EXPECT_EQ(facts.at("chain"), "language\\1031\\texts72.dll");
  EXPECT_EQ(facts.at("0x2002923"), "Abbrechen");
}

// The labels of the buttons are read from the new resources, and there are none.
TEST_F(Packs, ThatAreAllMissingInTheNewLanguageEndTheProgram) {
  folder.addPack(kEnglish, "language\\2057\\english72.dll");
  auto const result =
      support::runProgram(folder.start("create english 1|set 1031|chain", "-no_dialogs -log_no_dialogsout.log"));
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_EQ(factsOf(result.output).count("chain"), 0u);
  std::string const log = support::readFile(folder.path() + "\\out.log").value_or("");
  EXPECT_TRUE(log.starts_with("Failed to load the resource file 'english72.dll' for the selected language 'Deutsch'."));
  EXPECT_TRUE(holds(log, "Internal error loading a resource.\r\nResource ID: " + std::to_string(0x2002922)));
}

// The labels are missing in the new language, which ends the program: by then the help file has been changed.
TEST_F(Packs, HelpIsSwitchedBeforeTheLabelsAreRead) {
  folder.addPack(kEnglish, "language\\2057\\english72.dll");
  Texts const texts = folder.debugTexts("create english 1|newhelp manual|set 1031", "-no_dialogs");
  EXPECT_EQ(std::count(texts.begin(), texts.end(), "[kiv] Using help file '" + folder.path() + "\\manual.chm'\n"), 2);
}

TEST_F(Packs, HelpFileAndButtonsStayWhenTheLanguageIsSetAgain) {
  std::string const steps = "create texts 1|newhelp manual|run|label Mine|set 2057|buttons";
  Texts const texts = folder.debugTexts(steps);
  EXPECT_EQ(std::count(texts.begin(), texts.end(), "[locale] Loading resource DLL language\\2057\\texts72.dll\n"), 1);
  EXPECT_EQ(std::count(texts.begin(), texts.end(), "[kiv] Using help file '" + folder.path() + "\\manual.chm'\n"), 1);
  EXPECT_EQ(folder.facts(steps).at("buttons"), "Mine,Cancel,Help");
}

TEST_F(Packs, ChangeButtonsToolAndHelpWithTheLanguageWhileAWindowIsOpen) {
  folder.write("help\\1031\\manual.chm", "german");
  ProductRun run(folder.start(
      "runtime|create texts 1|newhelp manual|run|window|set 1031|buttons|tool|help|set 2057|current|wait"));
  HWND const window = support::waitForWindow({.processId = run.child().processId(), .title = "Languages"});
  ASSERT_NE(window, nullptr);
  support::closeWindow(window);
  EXPECT_EQ(run.fact("buttons"), "OK,Abbrechen,Hilfe");
  EXPECT_EQ(run.fact("tool"), "KIVARA Laufzeit");
  EXPECT_EQ(run.fact("help"), folder.path() + "\\help\\1031\\manual.chm");
  EXPECT_EQ(run.fact("current"), "2057");
}

TEST_F(Packs, ChangeTheNameOfTheToolWithTheLanguage) {
  auto const english = folder.facts("runtime|create texts 1|run|tool");
  EXPECT_EQ(english.at("tool"), "KIVARA Runtime");
  auto const german = folder.facts("runtime|create texts 1|run|tool|set 1031|tool");
  EXPECT_EQ(german.at("tool"), "KIVARA Laufzeit");
}

TEST_F(Packs, LeaveTheNameOfTheToolThatTheCommandLineGives) {
  auto const named = folder.facts("runtime|create texts 1|run|set 1031|tool", "-toolnameMine");
  EXPECT_EQ(named.at("tool"), "Mine");
}

TEST_F(Packs, HelpOfTheLanguageComesFromItsFolder) {
  folder.write("help\\2057\\manual.chm", "english");
  folder.write("help\\1031\\manual.chm", "german");
  auto const english = folder.facts("create texts 1|newhelp manual|help|helpmodes");
  EXPECT_EQ(english.at("help"), folder.path() + "\\help\\2057\\manual.chm");
  EXPECT_EQ(english.at("helpmodes"), "3");
  EXPECT_EQ(folder.facts("create texts 1|newhelp manual|set 1031|help").at("help"),
            folder.path() + "\\help\\1031\\manual.chm");
}

TEST_F(Packs, HelpThatTheLanguageLacksIsTheOneOfTheProgramFolderWithoutATest) {
  folder.write("help\\2057\\manual.chm", "english");
  EXPECT_EQ(folder.facts("create texts 1|newhelp manual|set 1031|help").at("help"), folder.path() + "\\manual.chm");
  EXPECT_TRUE(tells(folder.debugTexts("newhelp other"), "[kiv] Using help file '" + folder.path() + "\\other.chm'\n"));
}

TEST_F(Packs, HelpAndActiveDLLStayWhenTheLanguageIsSetBeforeTheFirstDLL) {
  folder.write("help\\2057\\manual.chm", "english");
  folder.write("help\\1031\\manual.chm", "german");
  auto const facts = folder.facts("newhelp manual|set 1031|help|current|create texts 1|chain");
  EXPECT_EQ(facts.at("current"), "1031");
  EXPECT_EQ(facts.at("help"), folder.path() + "\\help\\2057\\manual.chm");
  EXPECT_EQ(facts.at("chain"), "language\\1031\\texts72.dll");
}

TEST_F(Packs, HelpHasAFileNameOfAtMost1024Characters) {
  std::string const name(1100, 'x');
  EXPECT_EQ(folder.facts("newhelp " + name + "|help").at("help"), folder.path() + '\\' + name.substr(0, 1024));
}

TEST_F(Packs, BaseLanguageStandsInThem) {
  auto const facts = folder.facts("create texts 1|set 1031|base|baseiso|iso");
  EXPECT_EQ(facts.at("base"), "2057");
  EXPECT_EQ(facts.at("baseiso"), "en");
  EXPECT_EQ(facts.at("iso"), "de");
}

TEST_F(Packs, GiveTheCodeOfTheBaseLanguageWhereTheCurrentOneHasNone) {
  folder.addPack(kEnglish, "texts72.dll");
  EXPECT_EQ(folder.facts("create texts 1|iso", "-lang9999").at("iso"), "en");
}

TEST_F(Packs, GiveTheCodeOfGermanWhereTheBaseLanguageHasNoneEither) {
  folder.addPack("testres\\unknownbase72.dll", "unknownbase72.dll");
  auto const facts = folder.facts("create unknownbase 1|base|iso|baseiso", "-lang9999");
  EXPECT_EQ(facts.at("base"), "9999");
  EXPECT_EQ(facts.at("iso"), "de");
  EXPECT_EQ(facts.at("baseiso"), "");
}

TEST_F(Packs, HaveFileNamesOfAtMost259Characters) {
  std::string const name(300, 'x');
  Texts const texts = folder.debugTexts("create " + name + " 1|create " + name + " 0", "-no_dialogs");
  for (std::string const folderName : {"language\\2057\\", "language\\"})
    EXPECT_TRUE(tells(texts, "[locale] Loading resource DLL " + (folderName + name).substr(0, 259) + "\n"));
  EXPECT_TRUE(tells(texts, "[locale] Error! Loading fallback resource DLL " + name.substr(0, 259) + "\n"));
}

TEST_F(Packs, LaterOnesFillTheGapsOfEarlierOnesWithoutAWord) {
  folder.addPack("testres\\first72.dll", "language\\gaps72.dll");
  auto const result = support::runProgram(folder.start("create gaps 0|create texts 1|text 0x2002923|chain"));
  auto const facts = factsOf(result.output);
  EXPECT_EQ(facts.at("0x2002923"), "Cancel");
  EXPECT_EQ(facts.at("chain"), "language\\2057\\texts72.dll"); // there is no way back
  EXPECT_EQ(result.exitCode, 5u);
}

TEST_F(Packs, AfterSeveralGapsAreReachedOneAfterTheOther) {
  folder.addPack("testres\\first72.dll", "language\\gaps72.dll");
  folder.addPack("testres\\first72.dll", "language\\moregaps72.dll");
  auto const facts = folder.facts("create gaps 0|create moregaps 0|create texts 1|text 0x2002923|chain");
  EXPECT_EQ(facts.at("0x2002923"), "Cancel");
  EXPECT_EQ(facts.at("chain"), "language\\2057\\texts72.dll");
}

} // namespace
