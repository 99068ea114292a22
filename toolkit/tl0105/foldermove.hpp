#pragma once
/// \file
/// Moving a folder to another drive, which the system does for files only.

#include "tools/direntry.hpp"

#include <cstddef>
#include <vector>

namespace SV {

/// Copies a folder with all in it and then removes the original. A failure leaves the original whole and removes the copy: what
/// was removed of the original by then is copied back. Only if that fails too does the copy stay, which is complete.
class FolderMove {
public:
  /// \p target must not exist.
  FSysError run(DirEntry const & source, DirEntry const & target);

private:
  /// Where an entry was and where its copy is. A folder comes before what it holds.
  struct Copied {
    DirEntry source;
    DirEntry target;
  };

  FSysError copyTree(DirEntry const & source, DirEntry const & target);
  FSysError copyContent(DirEntry const & source, DirEntry const & target);
  FSysError checkRemoval() const;
  FSysError removeSources();
  bool restoreSources(std::size_t first) const;
  void removeTargets() const;

  std::vector<Copied> copied_;
  bool copyStays_ = false;
};

} // namespace SV
