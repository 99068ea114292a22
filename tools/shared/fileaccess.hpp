#pragma once
/// \file
/// Whole files.

#include <string>

namespace kivtools {

/// The bytes of a file; throws std::runtime_error with the reason.
std::string readFile(std::string const & name);

/// Replaces a file in one step: a failure, which throws std::runtime_error with the reason, leaves the former one.
void writeFile(std::string const & name, std::string const & bytes);

} // namespace kivtools
