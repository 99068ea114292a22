#pragma once
/// \file
/// The findings as programs read them.

#include "findings/findings.hpp"

#include <string>

namespace kivcrash {

/// One JSON object in UTF-8. Addresses are strings in hexadecimal digits, since numbers of JSON lose their last bits.
std::string asJson(Findings const & findings);

} // namespace kivcrash
