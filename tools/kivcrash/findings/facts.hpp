#pragma once
/// \file
/// What a crash is of: program, version, system, times. From the minidump as far as it says so, otherwise from the report.

#include "findings/findings.hpp"

namespace kivcrash {

/// Those that are known, in the order in which they are printed.
std::vector<std::pair<std::string, std::string>> factsOf(CrashFile const & file);

/// Nothing where there was no exception.
std::optional<Fault> faultOf(CrashFile const & file);

/// The lines of the report for them.
std::vector<std::string> pluginsOf(CrashFile const & file);

} // namespace kivcrash
