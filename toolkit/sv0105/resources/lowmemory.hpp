#pragma once
/// \file
/// Memory whose address fits in 32 bits.

#include "tools/string.hpp"

namespace SV::detail {

/// A copy of the text below 4 GiB, valid until the next call. Null if there is no such memory left.
char const * copyBelow4GiB(String const & text);

} // namespace SV::detail
