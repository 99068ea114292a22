#include "drawing/picturepool.hpp"

#include "drawing/archiveentry.hpp"
#include "drawing/pngpicture.hpp"

#include <vector>

namespace SV::detail {

namespace {

constexpr std::size_t kMostKnown = 32 * 1024 * 1024;

std::size_t bytesOf(Image const & image) {
  Size const & size = image.GetSizePixel();
  return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) * 4;
}

Image readPicture(String const & archive, String const & name) {
  ArchiveEntry entry(archive, name);
  if (!entry || !entry.hasSize(kPngHeaderSize, kLargestPng))
    return Image();
  std::vector<std::byte> file(kPngHeaderSize);
  if (!entry.read(file) || !isSizeAllowed(file))
    return Image();
  std::vector<std::byte> rest(entry.size() - file.size());
  if (!entry.read(rest) || !entry.isIntact())
    return Image();
  file.insert(file.end(), rest.begin(), rest.end());
  return decodePng(file);
}

} // namespace

void PicturePool::setFile(String const & file) {
  file_ = file;
  clear();
}

Image PicturePool::get(String const & name) {
  std::string const key(name.c_str(), static_cast<std::size_t>(name.Len()));
  if (auto const known = known_.find(key); known != known_.end())
    return known->second;
  Image const image = readPicture(file_, name);
  if (!image.IsEmpty() && bytes_ + bytesOf(image) <= kMostKnown) {
    known_.emplace(key, image);
    bytes_ += bytesOf(image);
  }
  return image;
}

void PicturePool::clear() {
  known_.clear();
  bytes_ = 0;
}

} // namespace SV::detail
