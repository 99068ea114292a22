#pragma once
/// \file
/// Where the parts of a path lie. Paths here have '\\' as the only separator.

#include "tools/string.hpp"

namespace SV::pathparts {

/// The text up to its NUL, with '/' as '\\'.
String normalised(String const & path);

/// The length of what is no name: "C:\", "C:", "\", "\\server\share", "\\?\C:\", "\\?\UNC\server\share"; 0 where a name
/// comes first.
std::int32_t rootLength(String const & path);

/// Whether the path begins with "\\server\share" or "\\?\UNC\server\share": its root is a folder with and without a separator
/// behind it.
bool isOnShare(String const & path);

/// The path without the separators at its end; those of a root stay.
String withoutTrailingSeparators(String const & path);

/// Where the last component starts; the length of the path where it has none.
std::int32_t nameStart(String const & path);

/// The position of the last \p c from \p start on, -1 where there is none. A second byte of a double-byte character is
/// no such character.
std::int32_t lastOf(String const & text, char c, std::int32_t start);

} // namespace SV::pathparts
