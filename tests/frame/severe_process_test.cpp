#include "frame/product_run.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using Lines = std::vector<std::string>;

constexpr char kTail[] = "\n\nThis is a severe error!!\n\nThe application will shut down immediately!\n\n"
                         "Please inform your administrator!!";

/// MB_ICONHAND and nothing else; the wait pointer is off while the box is open and as before after it.
Lines const kBoxAndEnd{"prepareApplication", "runApplication", "box style 10, wait 0", "exit 1, wait 3", "destroyed"};

struct Severe {
  char const * code;
  char const * arg;
  char const * fragment;
};
std::ostream & operator<<(std::ostream & out, Severe const & row) { return out << row.code << ' ' << row.arg; }

class SevereException : public testing::TestWithParam<Severe> {};
TEST_P(SevereException, ShowsItsTextAndEndsTheProcessWith1) {
  ProductRun run("frame_severe", "", {{"NAME", "Modeler"}, {"CODE", GetParam().code}, {"ARG", GetParam().arg}});
  auto const box = run.answerBox();
  EXPECT_EQ(box.title, "Modeler");
  EXPECT_EQ(box.texts, Lines{std::string("[Modeler") + GetParam().fragment + kTail});
  EXPECT_EQ(box.buttons, Lines{"OK"});
  EXPECT_EQ(run.exitCode(), 1u);
  EXPECT_EQ(run.record(), kBoxAndEnd);
}
INSTANTIATE_TEST_SUITE_P(
    Codes, SevereException,
    testing::Values(Severe{"256", "0", "-10001]\nInternal error loading a resource."},
                    Severe{"256", "4711", "-10001]\nInternal error loading a resource.\nResource ID: 4711"},
                    Severe{"512", "0", "-10002]\nSystem object (e.g. window) could not be created."},
                    Severe{"512", "1400",
                           "-10002]\nSystem object (e.g. window) could not be created.\nError code: 1400"},
                    Severe{"1024", "0", "-10004]\nInternal error loading a resource file."},
                    Severe{"768", "0", "-10003]\nGeneral exception 768 occured."},
                    Severe{"-3", "4294967295", "-10003]\nGeneral exception -3 occured.\nResource ID: 4294967295"}));

TEST(SevereExceptionBox, SaysThatAnExceptionHasLeftAHandler) {
  ProductRun run("frame_severe", "", {{"THROW", "1"}});
  EXPECT_EQ(run.answerBox().texts, Lines{std::string("[Child-10003]\nGeneral exception 2048 occured.") + kTail});
  EXPECT_EQ(run.exitCode(), 1u);
  EXPECT_EQ(run.record(), kBoxAndEnd);
}

TEST(SevereExceptionBox, NamesTheResourceFile) {
  ProductRun run("frame_severe", "", {{"CODE", "1024"}, {"FILE", "C:\\packs\\m\xFCll.dll"}});
  EXPECT_EQ(run.answerBox().texts, Lines{"[Child-10004]\nInternal error loading a resource file.\n"
                                         "Resource file name: C:\\packs\\m\xFCll.dll" +
                                         std::string(kTail)});
  EXPECT_EQ(run.exitCode(), 1u);
}

TEST(SevereExceptionBox, OfAnApplicationWithoutANameHasAnEmptyBracket) {
  ProductRun run("frame_severe", "", {{"NAME", ""}, {"CODE", "512"}});
  EXPECT_EQ(run.answerBox().texts,
            Lines{std::string("[-10002]\nSystem object (e.g. window) could not be created.") + kTail});
}

/// Files that are no resource DLLs; the size is that of the part that is kept of a good one.
struct BadFile {
  char const * name;
  int keptPart; ///< in 1/1000; -1: another text instead
};
std::ostream & operator<<(std::ostream & out, BadFile const & row) { return out << row.name; }

class BadResourceFile : public testing::TestWithParam<BadFile> {};
TEST_P(BadResourceFile, GivesTheErrorBoxAndNeverAFault) {
  support::TempFolder const folder;
  std::string const path = folder / GetParam().name;
  std::string const good = support::readFile(support::binFolder() + "frame_texts.dll").value();
  support::writeFile(path, GetParam().keptPart < 0
                               ? std::string(5000, 'M')
                               : good.substr(0, good.size() * static_cast<std::size_t>(GetParam().keptPart) / 1000));
  ProductRun run("frame_severe", "", {{"LOAD", path}});
  EXPECT_EQ(run.answerBox().texts, Lines{"[Child-10004]\nInternal error loading a resource file.\n"
                                         "Resource file name: " +
                                         path + kTail});
  EXPECT_EQ(run.exitCode(), 1u);
}
INSTANTIATE_TEST_SUITE_P(Files, BadResourceFile,
                         testing::Values(BadFile{"empty.dll", 0}, BadFile{"header.dll", 5}, BadFile{"half.dll", 500},
                                         BadFile{"noise.dll", -1}));

TEST(ResourceFile, ThatIsMissingGivesTheErrorBox) {
  ProductRun run("frame_severe", "", {{"LOAD", "no_such_texts.dll"}});
  EXPECT_EQ(run.answerBox().texts, Lines{"[Child-10004]\nInternal error loading a resource file.\n"
                                         "Resource file name: .\\no_such_texts.dll" +
                                         std::string(kTail)});
  EXPECT_EQ(run.exitCode(), 1u);
}

TEST(ResourceFile, ThatIsSoundIsLoadedWithoutAWord) {
  ProductRun run("frame_severe", "", {{"LOAD", "frame_texts.dll"}});
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.record()[2], "loaded 1 as .\\frame_texts.dll");
}

TEST(ResourceFile, ThatIsMissingWhileALanguageIsTriedGivesNoBox) {
  ProductRun run("frame_severe", "", {{"LOAD", "no_such_texts.dll"}, {"LOADING", "1"}});
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.record(), (Lines{"prepareApplication", "runApplication", "loaded 0 as .\\no_such_texts.dll",
                                 "goes on, wait 3", "second answer 1", "destroyed"}));
}

TEST(ResourceFile, OtherExceptionsKeepTheirBoxWhileALanguageIsTried) {
  ProductRun run("frame_severe", "", {{"CODE", "512"}, {"LOADING", "1"}});
  run.answerBox();
  EXPECT_EQ(run.exitCode(), 1u);
  EXPECT_EQ(run.record(), kBoxAndEnd);
}

TEST(Resource, ThatIsMissingAtStartUpGivesTheErrorBox) {
  ProductRun run("frame_severe", "", {{"RESOURCES", "frame_texts_no_charset.dll"}});
  EXPECT_EQ(run.answerBox().texts,
            Lines{std::string("[Child-10001]\nInternal error loading a resource.\nResource ID: 33564939") + kTail});
  EXPECT_EQ(run.exitCode(), 1u);
}

TEST(Resource, WithoutAManagerGivesTheErrorBox) {
  ProductRun run("frame_severe", "-charset1", {{"RESOURCES", "none"}});
  EXPECT_EQ(run.answerBox().texts,
            Lines{std::string("[Child-10001]\nInternal error loading a resource.\nResource ID: 33564962") + kTail});
  EXPECT_EQ(run.exitCode(), 1u);
}

TEST(SecondException, InsideTheFirstGoesToTheToolkitAtOnce) {
  ProductRun run("frame_severe", "", {{"CODE", "256"}, {"INNER", "1"}});
  EXPECT_EQ(run.exitCode(), 1u);
  EXPECT_EQ(run.record(),
            (Lines{"prepareApplication", "runApplication", "box style 10, wait 0", "exit 1, wait 0", "destroyed"}));
}

TEST(SecondException, InsideTheFirstIsNotHandledAndHasNoBox) {
  ProductRun run("frame_severe", "", {{"CODE", "256"}, {"INNER", "ask"}});
  run.answerBox();
  EXPECT_EQ(run.exitCode(), 1u);
  EXPECT_EQ(run.record(), (Lines{"prepareApplication", "runApplication", "box style 10, wait 0", "inner answer 0",
                                 "exit 1, wait 3", "destroyed"}));
}

TEST(SevereExceptionBox, IsNotShownUnderDialogSuppression) {
  ProductRun run("frame_severe", "-no_dialogs", {{"CODE", "512"}});
  EXPECT_EQ(run.exitCode(), 1u);
  EXPECT_EQ(run.record(), (Lines{"prepareApplication", "runApplication", "exit 1, wait 3", "destroyed"}));
}

TEST(SevereExceptionBox, GoesToTheLogOfAHostWithoutAGUI) {
  ProductRun run("frame_severe", "-log_no_dialogsdialogs.log", {{"CODE", "512"}, {"GUI", "0"}});
  EXPECT_EQ(run.exitCode(), 1u);
  Lines log = linesOf(run.file("dialogs.log").value_or(""));
  ASSERT_GE(log.size(), 2u);
  EXPECT_EQ(log[0], "[Child-10002]");
  EXPECT_EQ(log[1], "System object (e.g. window) could not be created.");
}

} // namespace
