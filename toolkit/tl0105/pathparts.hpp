#pragma once
/// \file
/// The positions of the parts of a path. The only separator here is '\\'.

#include "tools/string.hpp"

namespace SV::pathparts {

/// The path up to its first NUL, with each '/' replaced by '\\'.
String normalised(String const & path);

/// The length of the root: "C:\", "C:", "\", "\\server\share", "\\?\C:\", "\\?\UNC\server\share"; 0 if the path begins with a
/// name.
std::int32_t rootLength(String const & path);

/// Whether the path begins with "\\server\share" or "\\?\UNC\server\share". Such a root is a folder even without a separator
/// at its end.
bool isOnShare(String const & path);

/// The path without the separators at its end, except that of a root.
String withoutTrailingSeparators(String const & path);

/// The position of the last component; the length of the path if it has none.
std::int32_t nameStart(String const & path);

/// The position of the last \p c from \p start on, or -1. The second byte of a double-byte character does not count.
std::int32_t lastOf(String const & text, char c, std::int32_t start);

} // namespace SV::pathparts
