#pragma once
/// \file
/// Internal errors that the library reports to this very process.

#include "support/processes/debug_lines.hpp"
#include "sv/application.hpp"

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
  InternalErrors() { SetModalDialogSuppression(true); }

  /// Module and line of each report so far.
  std::vector<std::string> places() const {
    std::vector<std::string> found;
    constexpr std::size_t tag = sizeof "[dEM]";
    for (std::string const & line : debug_.of("[dEM] "))
      found.push_back(line.substr(tag, line.find(':') - tag));
    return found;
  }

private:
  void Main(int, char **) override {}
  void Exception(long, unsigned long) override {}

  support::DebugLines debug_;
};

} // namespace kivtest
