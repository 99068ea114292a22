#pragma once
/// \file
/// The security services as the library calls them, with calls that are written down and results that a test chooses. No
/// account is looked at.

#include "tools/winapi.hpp"

#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace kivtest {

/// The calls go to this object while it lives; one in a process.
class FakeSecurity {
public:
  FakeSecurity();
  FakeSecurity(FakeSecurity const &) = delete;
  FakeSecurity & operator=(FakeSecurity const &) = delete;
  ~FakeSecurity();

  /// In their order, each with its arguments: "open process token 8".
  std::vector<std::string> calls;
  /// How many begin with the word.
  std::size_t count(std::string const & word) const;

  /// For each word that a call begins with the codes with which the next such calls end: an error of the system, or the
  /// status of a call of the authentication. 0 is a success; calls after the last one do as they usually do.
  std::map<std::string, std::deque<long>> results;

  std::set<std::string> missing; ///< functions, and libraries as they are loaded

  std::string user = "worker";
  std::string domain = "SALES";
  std::string principal = "worker@sales.example.com";
  unsigned long largestToken = 100; ///< in bytes
  std::string windows = "10.0";     ///< the version that is reported to the library

  std::set<void *> openTokens;
  std::set<void *> blocks; ///< of the process's heap
  std::set<void *> credentials;
  std::set<void *> contexts;
  int loaded = 0; ///< libraries that were loaded and not given back
  int infos = 0;  ///< records of the package that were not given back

  bool nothingIsLeft() const {
    return openTokens.empty() && blocks.empty() && credentials.empty() && contexts.empty() && loaded == 0 && infos == 0;
  }

  /// Writes the call down and gives its result: the usual one where the test has chosen none.
  long note(std::string const & call, long usual = 0);
  void * newHandle() { return reinterpret_cast<void *>(++lastHandle_); }

private:
  std::uintptr_t lastHandle_ = 0x1000;
};

} // namespace kivtest
