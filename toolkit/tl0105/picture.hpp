#pragma once
/// \file
/// Pictures: the system's patterns for dates and times, such as "dd'.'MM'.'yyyy".

#include <cstddef>
#include <functional>
#include <string>

namespace SV::picture {

/// What to write in place of a run of \p count equal letters.
using Replace = std::function<std::wstring(wchar_t letter, std::size_t count)>;

/// The picture with each run of letters outside of quotes replaced. Quoted text and other characters stay.
std::wstring withRuns(std::wstring const & picture, Replace const & replace);

/// The run itself, as a picture.
std::wstring run(wchar_t letter, std::size_t count);

/// A number with at least \p digits digits, which pictures show as it stands.
std::wstring number(unsigned long value, std::size_t digits);

} // namespace SV::picture
