#pragma once
/// \file
/// The store of the start directory, for the application frame.

namespace kivara {

/// Keeps the directory for Kiv_GetStartCWD, with '/' as '\\' and one '\\' at the end. Null and the empty text leave it
/// unknown.
void storeStartDirectory(char const * directory);

} // namespace kivara
