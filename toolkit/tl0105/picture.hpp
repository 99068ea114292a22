#pragma once
/// \file
/// Pictures: the system's patterns for dates and times, such as "dd'.'MM'.'yyyy".

#include <cstddef>
#include <functional>
#include <string>

namespace SV::picture {

/// Returns what replaces \p count equal letters in a row.
using Replace = std::function<std::wstring(wchar_t letter, std::size_t count)>;

/// Replaces each run of equal letters outside quotes. Quoted text and other characters stay.
std::wstring withRuns(std::wstring const & picture, Replace const & replace);

/// The run itself.
std::wstring run(wchar_t letter, std::size_t count);

/// A number with at least \p digits digits, which is shown as it is.
std::wstring number(unsigned long value, std::size_t digits);

} // namespace SV::picture
