#pragma once
/// \file
/// ImagePool: the archive of named pictures.

#include "sv/export.hpp"
#include "sv/image.hpp"
#include "tools/string.hpp"

namespace SV {

/// One archive per process, a zip file of PNG pictures. Main thread.
///
/// \code
///   SV::ImagePool::SetPoolFile("C:\\product\\pictures.zip");
///   device.DrawImage({0, 0}, SV::ImagePool::GetImage("control/close.png"));
/// \endcode
class SV_API ImagePool {
public:
  /// The archive's file, empty at first. It is not opened before a picture is asked for. Pictures read from the former one
  /// are forgotten.
  static void SetPoolFile(String const & fileName);
  static String const & GetPoolFile();

  /// The picture of that name, to the letter: upper and lower case differ, and folders are parted as in the archive, by "/".
  /// Its mask mode is IMAGE_MASK_ALPHA if one of its pixels is not fully opaque.
  ///
  /// The empty image for everything else: no such name, archive or picture damaged, a password, a picture above 4 MiB in
  /// its file or above 4,096 pixels a side. Both sizes are tested before the picture is unpacked. Pictures stay in memory,
  /// 32 MiB of them at the most, so that asking for one again costs no reading; files that change are not read again.
  static Image GetImage(String const & name);
};

} // namespace SV
