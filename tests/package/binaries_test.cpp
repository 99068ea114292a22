// What the installed binaries say of themselves.

#include "package/file_facts.hpp"
#include "package/package_paths.hpp"
#include "support/data/files.hpp"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using kivtest::FileFacts;

namespace {

namespace fs = std::filesystem;

/// Whether the file is what its name says: packed words are in a DLL by name alone.
bool isBinary(fs::path const & file) {
  char start[2] = {};
  std::ifstream(file, std::ios::binary).read(start, sizeof start);
  return start[0] == 'M' && start[1] == 'Z';
}

/// Our own binaries of that kind, with the language packs. The compiler's runtime begins with "lib".
std::vector<fs::path> binaries(std::string const & extension) {
  std::vector<fs::path> found;
  for (auto const & entry : fs::recursive_directory_iterator(packagePath("installed/bin")))
    if (entry.path().extension() == extension && !entry.path().filename().string().starts_with("lib") &&
        isBinary(entry.path()))
      found.push_back(entry.path());
  return found;
}

/// The packs of all languages, and the language of their folder.
std::vector<std::pair<fs::path, int>> packs() {
  std::vector<std::pair<fs::path, int>> found;
  for (auto const & dll : binaries(".dll"))
    if (dll.parent_path().parent_path().filename() == "language")
      found.emplace_back(dll, std::stoi(dll.parent_path().filename().string()));
  return found;
}

void expectOwnVersion(fs::path const & file) {
  FileFacts const facts(file.string());
  std::wstring const version(std::begin(KIVARA_VERSION), std::end(KIVARA_VERSION) - 1);
  EXPECT_EQ(facts.version(), KIVARA_VERSION) << file;
  EXPECT_EQ(facts.versionText(L"FileVersion"), version) << file;
  EXPECT_EQ(facts.versionText(L"OriginalFilename"), file.filename().wstring()) << file;
  EXPECT_NE(facts.versionText(L"FileDescription"), L"") << file;
}

} // namespace

TEST(InstalledBinaries, EveryDllHasItsVersionAndName) {
  auto const dlls = binaries(".dll");
  EXPECT_GE(dlls.size(), 5u);
  for (auto const & dll : dlls)
    expectOwnVersion(dll);
}

TEST(InstalledBinaries, EveryProgramHasItsVersionAndName) {
  auto const programs = binaries(".exe");
  EXPECT_GE(programs.size(), 2u);
  for (auto const & program : programs)
    expectOwnVersion(program);
}

TEST(InstalledBinaries, EveryLanguagePackIsTaggedWithItsLanguageAlone) {
  EXPECT_GE(packs().size(), 4u);
  for (auto const & [pack, language] : packs()) {
    FileFacts const facts(pack.string());
    EXPECT_EQ(facts.languages(), std::set<int>{language}) << pack;
    EXPECT_EQ(facts.versionLanguage(), language) << pack;
  }
}

TEST(InstalledBinaries, EveryProgramHasAManifestForCurrentControlsAndNoAdministrator) {
  for (auto const & program : binaries(".exe")) {
    std::string const text = FileFacts(program.string()).manifest();
    EXPECT_NE(text.find("name=\"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""), std::string::npos)
        << program;
    EXPECT_NE(text.find("requestedExecutionLevel level=\"asInvoker\""), std::string::npos) << program;
    EXPECT_EQ(text.find("activeCodePage"), std::string::npos) << program;
  }
}

TEST(InstalledBinaries, EveryProgramIsDrawnInTheScaleOfTheDisplay) {
  // This program has the manifest that all programs get: the system says how it reads it.
  wchar_t setting[8] = L"";
  EXPECT_TRUE(QueryActCtxSettingsW(0, nullptr, L"http://schemas.microsoft.com/SMI/2005/WindowsSettings", L"dpiAware",
                                   setting, std::size(setting), nullptr));
  EXPECT_STREQ(setting, L"true");
  std::string const own = FileFacts(support::binFolder() + "package_test.exe").manifest();
  EXPECT_NE(own, "");
  for (auto const & program : binaries(".exe"))
    EXPECT_EQ(FileFacts(program.string()).manifest(), own) << program;
}
