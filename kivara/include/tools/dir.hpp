#pragma once
/// \file
/// Dir: the list of a folder's entries.

#include "tools/direntry.hpp"

#include <vector>

namespace SV {

/// The kinds of entries that a Dir lists; they can be added up.
enum DirEntryKind { FSYS_KIND_FILE = 2, FSYS_KIND_DIR = 4 };

/// The order of a Dir.
enum FSysSort { FSYS_SORT_NONE = 0, FSYS_SORT_NAME = 0x80 };

/// The content of a folder, read at construction. The last component may contain the wildcards '*' for any characters and '?'
/// for a single one; "*.*" is every name. They are matched against the whole long name; case does not matter. Without
/// wildcards the entry is the folder, and everything in it is listed, except "." and "..". If the folder cannot be read, the
/// list is empty; GetError distinguishes it from an empty folder.
class Dir {
public:
  /// \param attributes  the kinds to list: a sum of DirEntryKind
  TL_API Dir(DirEntry const & entry, int attributes);

  /// 0x80 sorts the list by name; case does not matter. Any other order leaves the list as it is.
  TL_API void SetSort(int order);

  /// FSYS_ERR_OK if the folder was read to its end, even if nothing was found. Otherwise the system's error code; the list
  /// then holds what was read before the error.
  FSysError GetError() const { return error_; }

  unsigned long Count() const { return static_cast<unsigned long>(entries_.size()); } ///< of listed entries

  /// The entry at a position, with its full path; an empty entry from Count on.
  TL_API DirEntry const & operator[](unsigned long position) const;

private:
  std::vector<DirEntry> entries_;
  FSysError error_ = FSYS_ERR_OK;
};

} // namespace SV
