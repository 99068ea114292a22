#pragma once
/// \file
/// The pictures that were read from the archive. Internal.

#include "sv/image.hpp"
#include "tools/string.hpp"

#include <cstddef>
#include <string>
#include <unordered_map>

namespace SV::detail {

class PicturePool {
public:
  String const & file() const { return file_; }
  void setFile(String const & file);

  /// The empty image when there is none.
  Image get(String const & name);

  /// Gives back what is in memory.
  void clear();

private:
  String file_;
  std::unordered_map<std::string, Image> known_;
  std::size_t bytes_ = 0; ///< that the known ones take
};

} // namespace SV::detail
