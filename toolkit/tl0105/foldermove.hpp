#pragma once
/// \file
/// Moving a folder to another drive, which the system does for files only.

#include "tools/dir.hpp"

#include <vector>

namespace SV {

/// Copies a folder with all in it and then removes the original. The first failure ends the copy, removes what was
/// copied and leaves the original whole. What cannot be removed of the original stays, beside a complete copy.
class FolderMove {
public:
  /// \p target must not exist.
  FSysError run(DirEntry const & source, DirEntry const & target);

private:
  FSysError copy(DirEntry const & source, DirEntry const & target);
  FSysError copyContent(DirEntry const & source, DirEntry const & target);

  std::vector<DirEntry> sources_;
  std::vector<DirEntry> targets_;
};

/// The system's code of the call that has just failed, never that of success.
FSysError lastSystemError();

} // namespace SV
