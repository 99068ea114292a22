#pragma once
/// \file
/// Memory whose address fits in 32 bits.

#include "tools/string.hpp"

namespace SV::detail {

/// A copy of the text below 4 GiB, which stays until the next call. Null when there is no such memory left.
char const * copyBelow4GiB(String const & text);

} // namespace SV::detail
