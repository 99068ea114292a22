// What the installed binaries say of themselves.

#include "package/package_paths.hpp"
#include "tools/winapi.hpp"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

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

/// A text of the version information; empty when there is none.
std::string versionText(fs::path const & file, std::string const & name) {
  DWORD ignored = 0;
  std::vector<char> data(GetFileVersionInfoSizeA(file.string().c_str(), &ignored));
  void * text = nullptr;
  UINT length = 0;
  if (data.empty() || !GetFileVersionInfoA(file.string().c_str(), 0, static_cast<DWORD>(data.size()), data.data()) ||
      !VerQueryValueA(data.data(), ("\\StringFileInfo\\080904E4\\" + name).c_str(), &text, &length))
    return "";
  return static_cast<char const *>(text);
}

std::string fixedVersion(fs::path const & file) {
  DWORD ignored = 0;
  std::vector<char> data(GetFileVersionInfoSizeA(file.string().c_str(), &ignored));
  void * fixed = nullptr;
  UINT length = 0;
  if (data.empty() || !GetFileVersionInfoA(file.string().c_str(), 0, static_cast<DWORD>(data.size()), data.data()) ||
      !VerQueryValueA(data.data(), "\\", &fixed, &length))
    return "";
  auto const & info = *static_cast<VS_FIXEDFILEINFO const *>(fixed);
  return std::to_string(HIWORD(info.dwFileVersionMS)) + '.' + std::to_string(LOWORD(info.dwFileVersionMS)) + '.' +
         std::to_string(HIWORD(info.dwFileVersionLS)) + '.' + std::to_string(LOWORD(info.dwFileVersionLS));
}

struct ModuleCloser {
  void operator()(HMODULE module) const { FreeLibrary(module); }
};

/// The text of the manifest; empty when there is none.
std::string manifest(fs::path const & program) {
  std::unique_ptr<HINSTANCE__, ModuleCloser> const module(
      LoadLibraryExA(program.string().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
  HRSRC const resource = module ? FindResourceA(module.get(), MAKEINTRESOURCEA(1), MAKEINTRESOURCEA(24))
                                : nullptr; // the process's manifest
  if (!resource)
    return "";
  auto const * const text = static_cast<char const *>(LockResource(LoadResource(module.get(), resource)));
  return {text, SizeofResource(module.get(), resource)};
}

} // namespace

TEST(InstalledBinaries, EveryDllTellsItsVersionAndName) {
  auto dlls = binaries(".dll");
  std::erase_if(dlls, [](fs::path const & file) { return file.filename() == "kivml.dll"; }); // words, and no library
  EXPECT_GE(dlls.size(), 5u);
  for (auto const & dll : dlls) {
    EXPECT_EQ(fixedVersion(dll), KIVARA_VERSION) << dll;
    EXPECT_EQ(versionText(dll, "FileVersion"), KIVARA_VERSION) << dll;
    EXPECT_EQ(versionText(dll, "OriginalFilename"), dll.filename().string()) << dll;
    EXPECT_NE(versionText(dll, "FileDescription"), "") << dll;
  }
}

TEST(InstalledBinaries, EveryProgramTellsItsVersionAndName) {
  auto const programs = binaries(".exe");
  EXPECT_GE(programs.size(), 2u);
  for (auto const & program : programs) {
    EXPECT_EQ(fixedVersion(program), KIVARA_VERSION) << program;
    EXPECT_EQ(versionText(program, "OriginalFilename"), program.filename().string()) << program;
    EXPECT_NE(versionText(program, "FileDescription"), "") << program;
  }
}

TEST(InstalledBinaries, EveryProgramHasAManifestForCurrentControlsAndNoAdministrator) {
  for (auto const & program : binaries(".exe")) {
    std::string const text = manifest(program);
    EXPECT_NE(text.find("name=\"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""), std::string::npos)
        << program;
    EXPECT_NE(text.find("requestedExecutionLevel level=\"asInvoker\""), std::string::npos) << program;
    EXPECT_EQ(text.find("activeCodePage"), std::string::npos) << program;
  }
}
