// Process models as XML, read by the system's own parser.
#include "frame/product_run.hpp"

#include "support/data/xml.hpp"

#include <gtest/gtest.h>

namespace {

std::string const kModel = "process \"A & \\\"B\\\" <\xE4\x80\t>\"\r\n"
                           "start a \"A\"\r\nactivity b \"5 > 4\" duration 90\r\ndecision c \"C?\"\r\nend d \"D\"\r\n"
                           "flow a b\r\nflow b c \"yes\"\r\nflow c d\r\n";

/// The XML of a model; the program has to end with this code.
std::string exported(std::string const & model, unsigned long exitCode) {
  support::TempFolder const folder;
  support::writeFile(folder / "model.txt", model);
  ProductRun run("modeler", "\"-model" + folder / "model.txt" + "\" -xmlout.xml");
  EXPECT_EQ(run.exitCode(), exitCode);
  return run.file("out.xml").value_or("");
}

} // namespace

TEST(ModelXml, IsReadByAParserWithAllThatTheModelHolds) {
  support::XmlDocument const document(exported(kModel, 0));
  ASSERT_EQ(document.error(), "");
  EXPECT_EQ(document.text(L"/process/@name"), L"A & \"B\" <\u00E4\u20AC\t>");
  EXPECT_EQ(document.count(L"/process/*"), 7);
  EXPECT_EQ(document.text(L"/process/start/@id"), L"a");
  EXPECT_EQ(document.text(L"/process/activity/@text"), L"5 > 4");
  EXPECT_EQ(document.text(L"/process/activity/@duration"), L"90");
  EXPECT_EQ(document.count(L"//@duration"), 1);
  EXPECT_EQ(document.text(L"/process/decision/@text"), L"C?");
  EXPECT_EQ(document.text(L"/process/end/@id"), L"d");
  EXPECT_EQ(document.text(L"/process/flow[1]/@from"), L"b");
  EXPECT_EQ(document.text(L"/process/flow[1]/@to"), L"c");
  EXPECT_EQ(document.count(L"/process/flow/@text"), 1);
}

TEST(ModelXml, HoldsDateCalendarAndTimes) {
  support::XmlDocument const document(exported("process \"A\"\r\ndate \"2024:03:05\"\r\ncalendar 220 8\r\n"
                                               "activity a \"A\" duration \"01:002:03:04:05\"\r\n",
                                               0));
  ASSERT_EQ(document.error(), "");
  EXPECT_EQ(document.text(L"/process/@date"), L"2024:03:05");
  EXPECT_EQ(document.text(L"/process/@daysPerYear"), L"220");
  EXPECT_EQ(document.text(L"/process/@hoursPerDay"), L"8");
  EXPECT_EQ(document.text(L"/process/activity/@time"), L"01:002:03:04:05");
}

TEST(ModelXml, OfAModelWithAFaultIsNotWritten) { EXPECT_EQ(exported("process \"A\"\r\nround\r\n", 1), ""); }

TEST(ModelXml, ThatCannotBeWrittenIsAFailure) {
  support::TempFolder const folder;
  support::writeFile(folder / "model.txt", kModel);
  ProductRun run("modeler", "\"-model" + folder / "model.txt" + "\" -xmlnone\\out.xml");
  EXPECT_EQ(run.exitCode(), 1u);
}
