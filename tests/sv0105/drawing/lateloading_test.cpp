// What is seldom used is loaded when it is first needed.

#include "support/imports/import_hook.hpp"
#include "support/processes/child_process.hpp"
#include "support/windows/windows.hpp"
#include "sv0105/drawing/page.hpp"

#include <set>
#include <string>
#include <string_view>

namespace {

using namespace svtest;

constexpr char const * kLate[] = {"msimg32.dll",       "ole32.dll",   "uxtheme.dll",
                                  "windowscodecs.dll", "winhttp.dll", "winspool.drv"};

bool isLoaded(char const * library) { return GetModuleHandleA(library) != nullptr; }

/// Some systems load one or the other for every window.
std::set<std::string> loadedBySystemForWindows() {
  HWND const window = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
  std::set<std::string> libraries;
  for (char const * const library : kLate)
    if (isLoaded(library))
      libraries.insert(library);
  DestroyWindow(window);
  return libraries;
}

/// The libraries that a module has loaded before its first line runs.
std::set<std::string> importsOf(char const * module) {
  auto const base = reinterpret_cast<unsigned char const *>(GetModuleHandleA(module));
  auto const & headers =
      *reinterpret_cast<IMAGE_NT_HEADERS64 const *>(base + reinterpret_cast<IMAGE_DOS_HEADER const *>(base)->e_lfanew);
  auto const & place = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  std::set<std::string> names;
  for (auto dll = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR const *>(base + place.VirtualAddress); dll->Name; ++dll) {
    std::string name = reinterpret_cast<char const *>(base + dll->Name);
    CharLowerA(name.data());
    names.insert(name);
  }
  return names;
}

/// The functions that the window library asks a late library for from now on. That the process has the library says little:
/// the system loads some for its windows.
std::set<std::string> & functionsAskedFor() {
  static std::set<std::string> names;
  static bool const watched = [] {
    support::watchLateImports(GetModuleHandleA("SV0105.dll"), [](HMODULE, std::string_view name, void * function) {
      names.insert(std::string(name));
      return function;
    });
    return true;
  }();
  static_cast<void>(watched);
  return names;
}

class LateLoading : public ToolkitTest {};

TEST(LateLibraries, AreNotAmongTheImports) {
  std::set<std::string> const imports = importsOf("SV0105.dll");
  EXPECT_TRUE(imports.contains("gdi32.dll"));
  for (char const * const library : kLate)
    EXPECT_FALSE(imports.contains(library)) << library;
}

TEST(LateLibraries, AreMissingInAStartedProgramThatDoesNotUseThem) {
  std::set<std::string> const systems = loadedBySystemForWindows();
  support::ChildProcess const child({.program = "minimal"});
  ASSERT_TRUE(support::waitForWindow({.processId = child.processId(), .title = "The shortest program"}));
  std::set<std::string> const modules = child.modules();
  ASSERT_TRUE(modules.contains("sv0105.dll"));
  for (char const * const library : {"msimg32.dll", "uxtheme.dll", "windowscodecs.dll", "winhttp.dll", "winspool.drv"})
    EXPECT_TRUE(!modules.contains(library) || systems.contains(library)) << library;
}

TEST(LateLibraries, AreNotLoadedByWindowsAndDevices) {
  std::set<std::string> const systems = loadedBySystemForWindows();
  functionsAskedFor();
  SV::Window const window(nullptr);
  SV::VirtualDevice device;
  device.SetOutputSizePixel({20, 20});
  device.DrawRect({{1, 1}, {9, 9}});
  device.DrawBitmap({0, 0}, squares({2, 2}));
  for (char const * const library : kLate)
    EXPECT_TRUE(!isLoaded(library) || systems.contains(library)) << library;
  EXPECT_TRUE(functionsAskedFor().empty()) << *functionsAskedFor().begin();
}

TEST_F(LateLoading, ComesWithTheFirstGradient) {
  SV::VirtualDevice device;
  device.SetOutputSizePixel({20, 20});
  EXPECT_TRUE(functionsAskedFor().empty());
  device.GradientFill(true, {{0, 0}, {20, 20}}, SV::COL_RED, SV::COL_BLUE);
  EXPECT_TRUE(functionsAskedFor().contains("GradientFill"));
}

TEST_F(LateLoading, ComesWithTheFirstQuestionForVisualStyles) {
  EXPECT_TRUE(functionsAskedFor().empty());
  SV::CVisualStylesXP::IsAppThemed();
  EXPECT_EQ(functionsAskedFor(), (std::set<std::string>{"IsAppThemed"}));
}

TEST_F(LateLoading, IsNotNeededForAPictureThatIsNotThere) {
  SV::ImagePool::SetPoolFile("no such file.zip");
  EXPECT_TRUE(SV::ImagePool::GetImage("x.png").IsEmpty());
  EXPECT_FALSE(isLoaded("windowscodecs.dll"));
}

} // namespace
