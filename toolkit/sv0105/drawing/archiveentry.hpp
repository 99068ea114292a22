#pragma once
/// \file
/// One file in a zip archive. Internal.

#include "tools/string.hpp"

#include <cstddef>
#include <span>

namespace SV::detail {

/// A file of an archive, opened for reading from its beginning. What an archive says of itself is believed in nothing that
/// would cost memory.
class ArchiveEntry {
public:
  /// \param name  to the letter; of several of that name the first one is taken
  ArchiveEntry(String const & archive, String const & name);
  ArchiveEntry(ArchiveEntry const &) = delete;
  ArchiveEntry & operator=(ArchiveEntry const &) = delete;
  ~ArchiveEntry();

  /// False when the archive cannot be read, has no such file or one with a password, or packs it in another way than zip
  /// programs usually do.
  explicit operator bool() const { return isOpen_; }

  std::size_t size() const { return size_; } ///< unpacked, as the archive says
  bool hasSize(std::size_t least, std::size_t most) const { return size_ >= least && size_ <= most; }

  /// The next bytes; false unless there are as many.
  bool read(std::span<std::byte> bytes);

  /// Whether the check sum holds, once all has been read; nothing is read afterwards.
  bool isIntact();

private:
  bool find(String const & name);

  void * archive_;
  std::size_t size_ = 0;
  bool isOpen_ = false;
};

} // namespace SV::detail
