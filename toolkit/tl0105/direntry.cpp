#include "tools/direntry.hpp"

#include "foldermove.hpp"
#include "lasterror.hpp"
#include "pathparts.hpp"
#include "tools/winapi.hpp"

#include <vector>

namespace SV {
namespace {

constexpr char kSeparator = '\\';

/// The absolute form of \p path; the path itself if the system has none.
String absolute(String const & path) {
  char const * const asked = path.Len() == 0 ? "." : path.c_str();
  std::vector<char> full(GetFullPathNameA(asked, 0, nullptr, nullptr));
  DWORD const length = GetFullPathNameA(asked, static_cast<DWORD>(full.size()), full.data(), nullptr);
  return length == 0 || length >= full.size() ? path : String(full.data(), static_cast<std::int32_t>(length));
}

/// Names that stand for a folder but are not its name.
bool isUnnamedFolder(String const & path, String const & name) {
  bool const isBareDrive = path.Len() == 2 && path.charAt(1) == ':';
  return isBareDrive || name == "." || name == "..";
}

bool endsInSeparator(String const & path) { return pathparts::lastOf(path, kSeparator, 0) == path.Len() - 1; }

} // namespace

DirEntry::DirEntry(String const & path, FSysPathStyle)
    : path_(pathparts::withoutTrailingSeparators(pathparts::normalised(path))) {}

String DirEntry::GetFull(FSysPathStyle, int withSeparator, std::int32_t limit) const {
  String full = pathparts::withoutTrailingSeparators(absolute(path_));
  if (withSeparator != 0 && !endsInSeparator(full))
    full += kSeparator;
  return full.substr(0, limit);
}

String DirEntry::GetName(FSysPathStyle) const { return path_.substr(pathparts::nameStart(path_)); }

String DirEntry::GetBase(char separator) const {
  String const name = GetName();
  std::int32_t const end = pathparts::lastOf(name, separator, 0);
  return end < 0 ? name : name.substr(0, end);
}

void DirEntry::ChangeBase(String const & base, char separator) {
  String const changed = base + GetName().substr(GetBase(separator).Len());
  String folder = path_.substr(0, pathparts::nameStart(path_));
  bool const isBareShare = pathparts::isOnShare(path_) && !endsInSeparator(folder);
  if (isBareShare && changed.Len() > 0)
    folder += kSeparator;
  *this = DirEntry(folder + changed);
}

DirEntry DirEntry::GetPath() const {
  String const name = GetName();
  DirEntry const resolved(isUnnamedFolder(path_, name) ? GetFull() : path_);
  if (!(resolved.path_ == path_)) // some device paths keep their dots
    return resolved.GetPath();
  String const folder = path_.substr(0, pathparts::nameStart(path_));
  return DirEntry(folder.Len() == 0 ? String(".") : folder);
}

bool DirEntry::Exists() const { return GetFileAttributesA(path_.c_str()) != INVALID_FILE_ATTRIBUTES; }

FSysError DirEntry::Kill() const {
  DWORD const attributes = GetFileAttributesA(path_.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES)
    return lastSystemError();
  bool const isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  BOOL const done = isFolder ? RemoveDirectoryA(path_.c_str()) : DeleteFileA(path_.c_str());
  return done ? FSYS_ERR_OK : lastSystemError();
}

FSysError DirEntry::MoveTo(DirEntry const & target) const {
  DWORD const attributes = GetFileAttributesA(path_.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES)
    return lastSystemError();
  bool const isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  DWORD const flags = isFolder ? 0 : MOVEFILE_COPY_ALLOWED | MOVEFILE_WRITE_THROUGH;
  if (MoveFileExA(path_.c_str(), target.path_.c_str(), flags))
    return FSYS_ERR_OK;
  FSysError const code = lastSystemError();
  return isFolder && code == ERROR_NOT_SAME_DEVICE ? FolderMove().run(*this, target) : code;
}

} // namespace SV
