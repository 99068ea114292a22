#include "crash/archive.hpp"

#include "common/bytes.hpp"

#include <minizip/unzip.h>

#include <cstdio>
#include <cstring>
#include <memory>

namespace kivcrash {
namespace {

constexpr std::uint32_t kSignature = 0x04034B50; // "PK\3\4"
constexpr std::uint64_t kMostBytes = std::uint64_t{4} << 30;
constexpr std::size_t kMostFiles = 1'000;
constexpr std::size_t kLongestName = 1'024;

/// The archive as minizip reads it: from memory, since its own way knows only names in the system's code page.
struct Place {
  std::string_view bytes;
  ZPOS64_T at = 0;
};

voidpf ZCALLBACK openPlace(voidpf place, void const *, int) { return place; }

uLong ZCALLBACK readPlace(voidpf, voidpf stream, void * to, uLong size) {
  auto & place = *static_cast<Place *>(stream);
  std::string_view const found = place.at < place.bytes.size() ? place.bytes.substr(place.at, size) : "";
  std::memcpy(to, found.data(), found.size());
  place.at += found.size();
  return static_cast<uLong>(found.size());
}

uLong ZCALLBACK writePlace(voidpf, voidpf, void const *, uLong) { return 0; }
ZPOS64_T ZCALLBACK tellPlace(voidpf, voidpf stream) { return static_cast<Place *>(stream)->at; }

long ZCALLBACK seekPlace(voidpf, voidpf stream, ZPOS64_T offset, int origin) {
  auto & place = *static_cast<Place *>(stream);
  ZPOS64_T const start = origin == ZLIB_FILEFUNC_SEEK_CUR   ? place.at
                         : origin == ZLIB_FILEFUNC_SEEK_END ? place.bytes.size()
                                                            : 0;
  if (start + offset > place.bytes.size())
    return -1;
  place.at = start + offset;
  return 0;
}

int ZCALLBACK closePlace(voidpf, voidpf) { return 0; }
int ZCALLBACK errorOfPlace(voidpf, voidpf) { return 0; }

struct Closing {
  void operator()(unzFile file) const { unzClose(file); }
};
using Zip = std::unique_ptr<void, Closing>;

Zip openZip(Place & place) {
  zlib_filefunc64_def functions{openPlace, readPlace,  writePlace,   tellPlace,
                                seekPlace, closePlace, errorOfPlace, &place};
  return Zip(unzOpen2_64("", &functions));
}

/// The current file. What was read up to a fault is kept.
std::string unpackCurrent(unzFile zip, std::string const & name, std::uint64_t & left, Problems & problems) {
  std::string bytes;
  char block[1 << 16];
  int count = unzOpenCurrentFile(zip);
  if (count == UNZ_OK)
    while ((count = unzReadCurrentFile(zip, block, sizeof block)) > 0 && static_cast<std::uint64_t>(count) <= left) {
      bytes.append(block, static_cast<std::size_t>(count));
      left -= static_cast<std::uint64_t>(count);
    }
  if (count > 0)
    problems.push_back("the archive holds more than 4 GiB: " + name + " is not whole");
  else if (count < 0 || unzCloseCurrentFile(zip) != UNZ_OK)
    problems.push_back("the archive is damaged: " + name + " is not whole");
  return bytes;
}

/// A flag says whether the name is in UTF-8.
std::string nameOf(char const * stored, unz_file_info64 const & info) {
  constexpr uLong kUtf8 = 1 << 11;
  return printable(fileName((info.flag & kUtf8) != 0 ? validUtf8(stored) : fromConsole(stored)));
}

/// False where not even the name of the current file can be read.
bool addCurrent(Contents & contents, unzFile zip, std::uint64_t & left, Problems & problems) {
  char stored[kLongestName + 1] = "";
  unz_file_info64 info{};
  if (unzGetCurrentFileInfo64(zip, &info, stored, kLongestName, nullptr, 0, nullptr, 0) != UNZ_OK)
    return false;
  std::string const name = nameOf(stored, info);
  if (name.empty()) // a folder
    return true;
  if (contents.contains(name))
    problems.push_back("the archive has two files of the name " + name + ": the first one is read");
  else
    contents.emplace(name, unpackCurrent(zip, name, left, problems));
  return true;
}

} // namespace

bool isArchive(std::string_view bytes) { return Bytes(bytes).read<std::uint32_t>(0) == kSignature; }

Contents unpackArchive(std::string_view bytes, Problems & problems) {
  Place place{bytes};
  Zip const zip = openZip(place);
  Contents contents;
  if (!zip) {
    problems.emplace_back("the archive is damaged or cut off: its list of files is not there");
    return contents;
  }
  std::uint64_t left = kMostBytes;
  int found = unzGoToFirstFile(zip.get());
  for (std::size_t i = 0; found == UNZ_OK; found = unzGoToNextFile(zip.get()), ++i) {
    if (i == kMostFiles) {
      problems.push_back("the archive has more than " + std::to_string(kMostFiles) + " files: the rest is left out");
      return contents;
    }
    if (!addCurrent(contents, zip.get(), left, problems))
      break;
  }
  if (found != UNZ_END_OF_LIST_OF_FILE)
    problems.emplace_back("the archive is damaged: its list of files is not whole");
  return contents;
}

} // namespace kivcrash
