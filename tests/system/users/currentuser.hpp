#pragma once
/// \file
/// The account of a process whose security services are the test's, with files beside the program that are the test's too.

#include "auser.hpp"

#include "acmdline.hpp"
#include "fakesecurity.hpp"
#include "support/data/files.hpp"
#include "support/imports/import_hook.hpp"
#include "support/processes/debug_lines.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kivtest {

/// The account in a process that has not asked for it yet. Files beside the program are those of a folder of its own.
class CurrentUser : public testing::Test {
protected:
  CurrentUser() {
    programFolder = folder.path();
    support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                            {{"GetModuleFileNameA", reinterpret_cast<void *>(nameOfProgram)}});
    start("program");
    security.results["thread token"] = {ERROR_NO_TOKEN};
  }
  ~CurrentUser() override { EXPECT_TRUE(security.nothingIsLeft()); } // on every way out

  /// The program was called with these words.
  void start(std::string const & words) {
    static std::vector<std::string> all;
    static std::vector<char *> pointers;
    all.clear();
    pointers.clear();
    for (std::size_t at = 0; at < words.size(); at = words.find_first_not_of(' ', at)) {
      all.push_back(words.substr(at, words.find(' ', at) - at));
      at += all.back().size();
    }
    for (std::string & word : all)
      pointers.push_back(word.data());
    KivCmdline::init(static_cast<int>(pointers.size()), pointers.data(), true, "log");
  }

  void writeLoginFile(std::string const & bytes) const { support::writeFile(folder / "login.ini", bytes); }

  bool ask() { return Kiv_GetCurrentUserAndDomain(user, domain); }

  support::TempFolder const folder;
  FakeSecurity security;
  support::DebugLines const debug;
  SV::String user = "former user";
  SV::String domain = "former domain";

private:
  static inline std::string programFolder;
  static DWORD WINAPI nameOfProgram(HMODULE, char * name, DWORD size) {
    return static_cast<DWORD>(std::snprintf(name, size, "%s\\program.exe", programFolder.c_str()));
  }
};

} // namespace kivtest
