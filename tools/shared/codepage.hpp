#pragma once
/// \file
/// Between UTF-8 and the 8-bit characters of a code page.

#include <optional>
#include <string>

namespace kivtools {

/// Whether the system knows the code page and its characters are 8-bit codes, as those of texts are.
bool isUsableCodePage(unsigned codePage);

/// The text in the code page; nothing when that lacks one of the characters.
std::optional<std::string> fromWide(std::wstring const & wide, unsigned codePage);

/// The same from UTF-8. Letters with separate accents are composed where the code page has no such accents.
/// \param reason  why there is none: it is not UTF-8, or which character the code page lacks
std::optional<std::string> fromUtf8(std::string const & utf8, unsigned codePage, std::string & reason);

/// The text in UTF-8; nothing unless fromUtf8 would give the same bytes again.
std::optional<std::string> toUtf8(std::string const & text, unsigned codePage);

} // namespace kivtools
