#include "drawing/archiveentry.hpp"

#include <cstring>
#include <minizip/unzip.h>

namespace SV::detail {

namespace {

/// As long as names in archives may be for the reader of directories.
constexpr std::size_t kLongestName = 1024;

constexpr uLong kEncrypted = 1; // of the flags

bool isNamed(unzFile archive, String const & name, unz_file_info64 & info) {
  char stored[kLongestName + 1] = {};
  return unzGetCurrentFileInfo64(archive, &info, stored, kLongestName, nullptr, 0, nullptr, 0) == UNZ_OK &&
         info.size_filename == static_cast<uLong>(name.Len()) && info.size_filename <= kLongestName &&
         std::memcmp(stored, name.c_str(), info.size_filename) == 0;
}

} // namespace

ArchiveEntry::ArchiveEntry(String const & archive, String const & name)
    : archive_(archive.Len() > 0 ? unzOpen64(archive.c_str()) : nullptr) {
  isOpen_ = archive_ && find(name) && unzOpenCurrentFile(archive_) == UNZ_OK;
}

ArchiveEntry::~ArchiveEntry() {
  if (archive_)
    unzClose(archive_);
}

bool ArchiveEntry::find(String const & name) {
  unz_file_info64 info = {};
  for (int found = unzGoToFirstFile(archive_); found == UNZ_OK; found = unzGoToNextFile(archive_)) {
    if (!isNamed(archive_, name, info))
      continue;
    size_ = static_cast<std::size_t>(info.uncompressed_size);
    return !(info.flag & kEncrypted);
  }
  return false;
}

bool ArchiveEntry::read(std::span<std::byte> bytes) {
  int const wanted = static_cast<int>(bytes.size());
  return isOpen_ && unzReadCurrentFile(archive_, bytes.data(), static_cast<unsigned>(wanted)) == wanted;
}

bool ArchiveEntry::isIntact() {
  isOpen_ = false;
  return unzCloseCurrentFile(archive_) == UNZ_OK;
}

} // namespace SV::detail
