#pragma once
/// \file
/// Internal errors that the library reports to this very process.

#include "support/import_hook.hpp"
#include "sv/application.hpp"
#include "tools/winapi.hpp"

#include <string>
#include <vector>

namespace kivtest {

/// While it lives, internal errors show no box and are kept. At most one at a time.
/// \code
///   InternalErrors const errors;
///   kiv_lexcmp(nullptr, "b");
///   EXPECT_EQ(errors.places(), std::vector<std::string>{"atools.cpp (122)"});
/// \endcode
class InternalErrors : private SV::Application {
public:
  InternalErrors() {
    SetModalDialogSuppression(true);
    lines().clear();
    support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                            {{"IsDebuggerPresent", reinterpret_cast<void *>(sayPresent)},
                             {"OutputDebugStringA", reinterpret_cast<void *>(keep)}});
  }

  /// Module and line of each report so far.
  std::vector<std::string> places() const {
    std::vector<std::string> found;
    constexpr std::size_t tag = sizeof "[dEM]";
    for (std::string const & line : lines())
      if (line.starts_with("[dEM] "))
        found.push_back(line.substr(tag, line.find(':') - tag));
    return found;
  }

private:
  void Main(int, char **) override {}
  void Exception(long, unsigned long) override {}

  static std::vector<std::string> & lines() {
    static std::vector<std::string> all;
    return all;
  }
  static BOOL WINAPI sayPresent() { return TRUE; }
  static void WINAPI keep(char const * text) { lines().emplace_back(text); }
};

} // namespace kivtest
