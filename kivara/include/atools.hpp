#pragma once
/// \file
/// Helpers for texts and values.

#include "export.hpp"

/// Whether a text can be the name of a file. The file need not exist; any thread may ask.
///
/// The name may have a drive letter and a colon in front, or a server and a share ("\\server\share\file"); '/' and '\\'
/// both part folders. False for
/// - null, the empty text, and what holds "://";
/// - a server or share name that is empty or has nothing behind it, and a server name with control characters;
/// - a reserved device name ("CON", "COM1", ...) in any case at the start, alone or with a '.' behind it. Folders in
///   the middle of a path are not tested;
/// - any of | * < > ? ", two separators in a row, a colon anywhere but behind a drive letter;
/// - a name that ends in a separator or a colon.
KIV_API bool Kiv_Valid_Filename(char const * name);
