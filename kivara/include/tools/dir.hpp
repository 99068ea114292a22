#pragma once
/// \file
/// Dir: the list of a folder's entries.

#include "tools/direntry.hpp"

#include <vector>

namespace SV {

/// Which entries a Dir lists, as sums.
enum DirEntryKind { FSYS_KIND_FILE = 2, FSYS_KIND_DIR = 4 };

/// The order of a Dir.
enum FSysSort { FSYS_SORT_NONE = 0, FSYS_SORT_NAME = 0x80 };

/// What a folder holds, read at construction. The last component may hold the wildcards '*', any run of characters, and
/// '?', any one; "*.*" is every name. They are matched without regard to case, against the long name in whole. Without
/// wildcards the entry is a folder, and all of it is listed. A folder that cannot be read gives an empty list. "." and
/// ".." are not listed.
class Dir {
public:
  /// \param attributes  the kinds to list, a sum of DirEntryKind
  TL_API Dir(DirEntry const & entry, int attributes);

  /// Sorts the list, by name without regard to case for 0x80; any other order leaves it as the system gave it.
  TL_API void SetSort(int order);

  unsigned long Count() const { return static_cast<unsigned long>(entries_.size()); } ///< of the listed

  /// The entry at a position, with its full path; an empty entry at Count and beyond.
  TL_API DirEntry const & operator[](unsigned long position) const;

private:
  std::vector<DirEntry> entries_;
};

} // namespace SV
