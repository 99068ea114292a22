// The sample product exports its models from the menu.
#include "modeler_run.hpp"

#include "support/data/xml.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

namespace {

constexpr WPARAM kExportXml = 112;
constexpr WPARAM kExportPicture = 113;

/// The program with a small model in front, and a file that is exported to.
class ModelerExport : public testing::Test {
protected:
  ModelerExport() {
    support::writeFile(folder / "model.txt", "process \"M\"\r\nstart a \"Begin\"\r\nend b \"End\"\r\nflow a b\r\n");
    run = std::make_unique<ProductRun>("modeler", "-lang2057 -journalout.log \"-model" + folder / "model.txt" + "\"");
    window = modeler::mainWindow(*run);
    EXPECT_TRUE(modeler::waitForDocument(window, "M"));
  }

  void exportTo(WPARAM command, std::string const & file) {
    PostMessageA(window, WM_COMMAND, command, 0);
    modeler::answerFileDialog(*run, file);
  }
  bool journalHas(std::string const & line) const {
    return support::eventually([&] { return run->file("out.log").value_or("").find(line) != std::string::npos; });
  }

  support::TempFolder folder;
  std::unique_ptr<ProductRun> run;
  HWND window;
};

TEST_F(ModelerExport, WritesXmlAndAsksBeforeItOverwritesIt) {
  std::string const file = folder / "model.xml";
  exportTo(kExportXml, file);
  ASSERT_TRUE(journalHas("exported: "));
  support::XmlDocument const document(support::readFile(file).value_or(""));
  EXPECT_EQ(document.text(L"/process/@name"), L"M");
  EXPECT_EQ(document.count(L"/process/*"), 3);
  support::writeFile(file, "old");
  exportTo(kExportXml, file);
  std::string const question = modeler::answerOwnBox(*run, "No").texts.back();
  EXPECT_NE(question.find("model.xml is there already.\n\nOverwrite it?"), std::string::npos) << question;
  EXPECT_EQ(support::readFile(file).value_or(""), "old");
  exportTo(kExportXml, file);
  modeler::answerOwnBox(*run, "Yes");
  EXPECT_TRUE(support::eventually([&] { return support::readFile(file).value_or("").ends_with("</process>\n"); }));
}

TEST_F(ModelerExport, ReportsAFileThatAnotherProgramHasOpenAndLeavesIt) {
  for (WPARAM const command : {kExportXml, kExportPicture}) {
    std::string const file = folder / (command == kExportXml ? "model.xml" : "model.bmp");
    support::writeFile(file, "old");
    {
      support::FileInUse const inUse(file);
      exportTo(command, file);
      modeler::answerOwnBox(*run, "Yes");
      std::string const report = modeler::answerOwnBox(*run, "OK").texts.back();
      EXPECT_EQ(report, "The file " + file + " cannot be written.");
    }
    EXPECT_EQ(support::readFile(file).value_or(""), "old");
    EXPECT_TRUE(journalHas("not exported: " + file));
  }
}

TEST_F(ModelerExport, WritesItsDrawingAsABitmapAndAsksBeforeItOverwritesIt) {
  std::string const file = folder / "model.bmp";
  support::writeFile(file, "old");
  exportTo(kExportPicture, file);
  modeler::answerOwnBox(*run, "No");
  EXPECT_EQ(support::readFile(file).value_or(""), "old");
  exportTo(kExportPicture, file);
  modeler::answerOwnBox(*run, "Yes");
  ASSERT_TRUE(journalHas("exported: "));
  std::string const picture = support::readFile(file).value_or("");
  EXPECT_TRUE(picture.starts_with("BM"));
  EXPECT_GT(picture.size(), 10'000u);
}

} // namespace
