#pragma once
/// \file
/// Moving a folder to another drive, which the system does for files only.

#include "tools/direntry.hpp"

#include <cstddef>
#include <vector>

namespace SV {

/// Copies a folder with its content and then removes the original. A failure leaves the original complete and removes the
/// copy: entries of the original that were removed before the failure are copied back. Only if that fails too, the copy stays;
/// it is complete.
class FolderMove {
public:
  /// \p target must not exist.
  FSysError run(DirEntry const & source, DirEntry const & target);

private:
  /// An entry and its copy. A folder comes before its content.
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
