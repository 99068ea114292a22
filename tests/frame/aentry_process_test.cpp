#include "frame/product_run.hpp"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using Lines = std::vector<std::string>;

TEST(Entry, WithoutAnApplicationObjectSaysSoAndEndsWith1) {
  ProductRun run("no_application", "");
  auto const box = run.answerBox();
  EXPECT_EQ(box.title, "Severe SV error");
  EXPECT_EQ(box.texts, Lines{"Severe error: No instance of class application (aSVData.pApp)!\n\n"
                             "Please contact your vendor!"});
  EXPECT_EQ(run.exitCode(), 1u);
}

TEST(Entry, AToolkitThatDoesNotComeUpSaysSoAndEndsWith1) {
  ProductRun run("init_refused", "");
  auto const box = run.answerBox();
  EXPECT_EQ(box.title, "Severe SV error");
  EXPECT_EQ(box.texts, Lines{"Severe error: failed to init program (InitSV)!\n\nPlease contact your vendor!"});
  EXPECT_EQ(run.exitCode(), 1u);
  EXPECT_EQ(run.record(), Lines{"taken"});
}

TEST(Entry, AnEmptyCommandLineIsTheProgramAlone) {
  ProductRun run(support::ProgramStart{.program = "frame_facts", .commandLine = ""});
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.fact("count"), "1");
}

TEST(Entry, TakesTenThousandArguments) {
  std::string line;
  for (int i = 1; i < 10000; ++i)
    line += "a ";
  ProductRun run("frame_facts", line + "-h20");
  EXPECT_EQ(run.fact("count"), "10001");
  EXPECT_EQ(run.fact("last word"), "-h20");
  EXPECT_EQ(run.fact("height"), "20");
  EXPECT_EQ(run.exitCode(), 0u);
}

TEST(Entry, TakesQuotesAndBackslashesByThePlatformsRules) {
  ProductRun run("frame_facts", R"("two words" -f"Some Face" a\"b \\"c d\\" "e\\\"f" "" g\h)");
  EXPECT_EQ(run.fact("count"), "8");
  EXPECT_EQ(run.fact("word 1"), "two words");
  EXPECT_EQ(run.fact("word 2"), "-fSome Face");
  EXPECT_EQ(run.fact("word 3"), "a\"b");
  EXPECT_EQ(run.fact("word 4"), "\\c d\\");
  EXPECT_EQ(run.fact("word 5"), "e\\\"f");
  EXPECT_EQ(run.fact("word 6"), "");
  EXPECT_EQ(run.fact("word 7"), "g\\h");
  EXPECT_EQ(run.fact("face"), "Some Face");
}

TEST(Entry, TakesBytesAbove127) {
  ProductRun run("frame_facts", "-f\xC4rial \x80\xFF\xDF");
  EXPECT_EQ(run.fact("face"), "\xC4rial");
  EXPECT_EQ(run.fact("word 2"), "\x80\xFF\xDF");
}

TEST(Entry, APatternOfFilesStaysAsItIs) {
  ProductRun run("frame_facts", "*.* ?");
  EXPECT_EQ(run.fact("word 1"), "*.*");
  EXPECT_EQ(run.fact("word 2"), "?");
}

struct Printers {
  char const * arguments;
  char const * registry;
  char const * caseSensitive;
  char const * current;
};
std::ostream & operator<<(std::ostream & out, Printers const & row) { return out << row.arguments; }

class PrinterSwitches : public testing::TestWithParam<Printers> {};
TEST_P(PrinterSwitches, AreReadByTheirExactWords) {
  ProductRun run("frame_facts", GetParam().arguments);
  EXPECT_EQ(run.fact("registry printers"), GetParam().registry);
  EXPECT_EQ(run.fact("case-sensitive printers"), GetParam().caseSensitive);
  EXPECT_EQ(run.fact("current printing"), GetParam().current);
}
INSTANTIATE_TEST_SUITE_P(
    Lines, PrinterSwitches,
    testing::Values(Printers{"", "0", "0", "1"}, Printers{"-registry-printers", "1", "0", "0"},
                    Printers{"/registry-printers", "1", "0", "0"}, Printers{"-case-sensitive-printers", "0", "1", "1"},
                    Printers{"/case-sensitive-printers", "0", "1", "1"}, Printers{"-legacy-printing", "0", "0", "0"},
                    Printers{"/legacy-printing", "0", "0", "0"},
                    Printers{"-legacy-printing -case-sensitive-printers -registry-printers", "1", "1", "0"},
                    Printers{"registry-printers --registry-printers -registry-printersx", "0", "0", "1"},
                    Printers{"-registry-printer -case-sensitive-printers=1", "0", "0", "1"},
                    Printers{"-Registry-Printers -LEGACY-PRINTING -Case-sensitive-printers", "0", "0", "1"},
                    Printers{"- / -- legacy-printing", "0", "0", "1"}));

} // namespace
