// tests/package/product as it was built and shipped with the installation.

#include "package/file_facts.hpp"
#include "package/package_paths.hpp"
#include "support/processes/child_process.hpp"
#include "support/windows/windows.hpp"

#include <gtest/gtest.h>

using kivtest::FileFacts;

namespace {

FileFacts shipped(std::string const & file) { return FileFacts(packagePath("product-installed/bin/" + file)); }

/// All that a box of the product shows, which is then closed.
support::BoxTexts boxOf(std::string const & option) {
  support::ChildProcess const child({.program = packagePath("product-installed/bin/orders.exe"), .arguments = option});
  HWND const box = support::waitForWindow({.processId = child.processId(), .className = support::kBoxClass});
  auto const texts = support::readBox(box);
  support::pressButton(box, IDOK);
  child.waitForEnd();
  return texts;
}

} // namespace

TEST(LanguagePackOfAProduct, IsInUtf8WithAllLettersOfTheLanguage) {
  for (std::string const pack : {"language/1031/orders72.dll", "language/2057/orders72.dll"}) {
    EXPECT_EQ(shipped(pack).string(1), L"Auftr\u00e4ge pr\u00fcfen \u2013 gr\u00f6\u00dfer als 100 \u20ac") << pack;
    EXPECT_EQ(shipped(pack).string(17), L"V\u00e9rifier l'\u00e9t\u00e9") << pack;
  }
}

TEST(LanguagePackOfAProduct, IsTaggedWithItsLanguageUnlessTheScriptNamesAnother) {
  EXPECT_EQ(shipped("language/1031/orders72.dll").languagesOfStrings(1), (std::vector<int>{1031}));
  EXPECT_EQ(shipped("language/2057/orders72.dll").languagesOfStrings(1), (std::vector<int>{2057}));
  EXPECT_EQ(shipped("language/1031/orders72.dll").languagesOfStrings(17), (std::vector<int>{1036}));
}

TEST(VersionInfoOfAProduct, IsThatOfItsProjectWithAllLetters) {
  auto const program = shipped("orders.exe");
  EXPECT_EQ(program.version(), "3.1.0.17");
  EXPECT_EQ(program.productVersion(), "3.1.0.17");
  EXPECT_EQ(program.versionText(L"FileVersion"), L"3.1.0.17");
  EXPECT_EQ(program.versionText(L"ProductVersion"), L"3.1.0.17");
  EXPECT_EQ(program.versionText(L"ProductName"), L"orders");
  EXPECT_EQ(program.versionText(L"OriginalFilename"), L"orders.exe");
  EXPECT_EQ(program.versionText(L"FileDescription"), L"Auftragspr\u00fcfung \"S\u00fcd\" \u2013 \u20ac");
  EXPECT_EQ(program.versionText(L"CompanyName"), L"M\u00fcller & S\u00f8n");
  EXPECT_EQ(program.versionText(L"LegalCopyright"), L"\u00a9 2026 M\u00fcller");
  EXPECT_EQ(program.versionLanguage(), 0);
}

TEST(VersionInfoOfAProduct, OfALanguagePackIsInItsLanguageAndTakesWhatIsGiven) {
  auto const pack = shipped("language/1031/orders72.dll");
  EXPECT_EQ(pack.version(), "4.0.0.0");
  EXPECT_EQ(pack.versionText(L"FileVersion"), L"4");
  EXPECT_EQ(pack.versionText(L"ProductName"), L"Auftr\u00e4ge");
  EXPECT_EQ(pack.versionText(L"OriginalFilename"), L"orders72.dll");
  EXPECT_EQ(pack.versionLanguage(), 1031);
}

TEST(ManifestOfAProduct, IsThatOfTheSamples) {
  EXPECT_NE(shipped("orders.exe").manifest(), "");
  EXPECT_EQ(shipped("orders.exe").manifest(), FileFacts(packagePath("installed/bin/modeler.exe")).manifest());
}

TEST(BoxesOfAProduct, ShowItsVersionWhereItsNameAndItsWindowHaveIt) {
  auto const severe = boxOf("-severe");
  EXPECT_EQ(severe.title, "Orders 3.1.0.17");
  ASSERT_EQ(severe.texts.size(), 1u);
  EXPECT_TRUE(severe.texts[0].starts_with("[Orders 3.1.0.17-10002]")) << severe.texts[0];

  auto const internal = boxOf("-internal");
  EXPECT_EQ(internal.title, "Orders 3.1.0.17");
  ASSERT_EQ(internal.texts.size(), 1u);
  EXPECT_NE(internal.texts[0].find("aorders-42 [7.20.00.5050]"), std::string::npos) << internal.texts[0];
}
