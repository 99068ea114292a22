#pragma once
/// \file
/// ImagePool: the archive of named pictures.

#include "sv/export.hpp"
#include "tools/string.hpp"

namespace SV {

/// One archive per process.
class SV_API ImagePool {
public:
  /// The archive's file, empty at first. It is not opened before a picture is asked for.
  static void SetPoolFile(String const & fileName);
  static String const & GetPoolFile();
};

} // namespace SV
