#pragma once
/// \file
/// The child program platform_facts in a folder of its own.

#include "system/copied_program.hpp"

namespace kivtest {

class FactsProgram : public CopiedProgram {
public:
  explicit FactsProgram(std::string const & name = "facts") : CopiedProgram("platform_facts", name) {}

  void put(std::string const & name) const { support::writeFile(beside(name), "not looked into"); }
};

} // namespace kivtest
