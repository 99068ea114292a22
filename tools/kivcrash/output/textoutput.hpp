#pragma once
/// \file
/// The findings as people read them.

#include "findings/findings.hpp"

#include <string>

namespace kivcrash {

/// Lines that end in LF. Problems are not in them.
/// \param withModules  with the list of all modules
std::string asText(Findings const & findings, bool withModules);

} // namespace kivcrash
