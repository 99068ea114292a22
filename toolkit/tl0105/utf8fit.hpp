#pragma once
/// \file
/// How much of a UTF-16 string fits when it is converted to UTF-8.

#include <cstddef>

namespace SV {

/// The number of units, from the start, whose UTF-8 form has at most \p mostBytes bytes. A surrogate pair is not split.
std::size_t unitsThatFit(wchar_t const * wide, std::size_t units, std::size_t mostBytes);

} // namespace SV
