#include "foldermove.hpp"

#include "handles/handle.hpp"
#include "lasterror.hpp"
#include "tools/dir.hpp"

namespace SV {
namespace {

DWORD attributesOf(DirEntry const & entry) { return GetFileAttributesA(entry.GetFull().c_str()); }

bool isFolder(DWORD attributes) { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }

/// Copies a file, or a folder without its content. The attributes are copied too.
FSysError copyOne(DirEntry const & source, DirEntry const & target, bool asFolder) {
  String const from = source.GetFull();
  String const to = target.GetFull();
  BOOL const made =
      asFolder ? CreateDirectoryExA(from.c_str(), to.c_str(), nullptr) : CopyFileA(from.c_str(), to.c_str(), TRUE);
  return made ? FSYS_ERR_OK : lastSystemError();
}

/// Removes a file or an empty folder, even if it is read-only. A failure changes nothing.
FSysError remove(DirEntry const & entry) {
  DWORD const attributes = attributesOf(entry);
  String const path = entry.GetFull();
  SetFileAttributesA(path.c_str(), attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
  FSysError const code = entry.Kill();
  if (code != FSYS_ERR_OK)
    SetFileAttributesA(path.c_str(), attributes);
  return code;
}

/// Fails if the entry cannot be removed now, because it is open elsewhere or access is denied.
FSysError checkRemovalOf(DirEntry const & entry) {
  handles::File const file(CreateFileA(entry.GetFull().c_str(), DELETE,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                       FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
  return file ? FSYS_ERR_OK : lastSystemError();
}

} // namespace

FSysError FolderMove::run(DirEntry const & source, DirEntry const & target) {
  FSysError code = copyTree(source, target);
  if (code == FSYS_ERR_OK)
    code = checkRemoval();
  if (code == FSYS_ERR_OK)
    code = removeSources();
  if (code != FSYS_ERR_OK && !copyStays_)
    removeTargets();
  return code;
}

FSysError FolderMove::copyTree(DirEntry const & source, DirEntry const & target) {
  DWORD const attributes = attributesOf(source);
  if (attributes == INVALID_FILE_ATTRIBUTES)
    return lastSystemError();
  // The content of a link to a folder belongs to another place and must not be removed there.
  if (isFolder(attributes) && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
    return ERROR_NOT_SAME_DEVICE;
  FSysError const code = copyOne(source, target, isFolder(attributes));
  if (code != FSYS_ERR_OK)
    return code;
  copied_.push_back({source, target});
  return isFolder(attributes) ? copyContent(source, target) : FSYS_ERR_OK;
}

FSysError FolderMove::copyContent(DirEntry const & source, DirEntry const & target) {
  String const folder = target.GetFull(FSYS_STYLE_HOST, 1);
  Dir const content(source, FSYS_KIND_FILE | FSYS_KIND_DIR);
  FSysError code = content.GetError();
  for (unsigned long i = 0; code == FSYS_ERR_OK && i < content.Count(); ++i)
    code = copyTree(content[i], DirEntry(folder + content[i].GetName()));
  return code;
}

FSysError FolderMove::checkRemoval() const {
  for (Copied const & each : copied_)
    if (FSysError const code = checkRemovalOf(each.source); code != FSYS_ERR_OK)
      return code;
  return FSYS_ERR_OK;
}

FSysError FolderMove::removeSources() {
  for (std::size_t left = copied_.size(); left > 0; --left) {
    FSysError const code = remove(copied_[left - 1].source);
    if (code == FSYS_ERR_OK)
      continue;
    copyStays_ = !restoreSources(left);
    return code;
  }
  return FSYS_ERR_OK;
}

bool FolderMove::restoreSources(std::size_t first) const {
  for (std::size_t i = first; i < copied_.size(); ++i)
    if (copyOne(copied_[i].target, copied_[i].source, isFolder(attributesOf(copied_[i].target))) != FSYS_ERR_OK)
      return false;
  return true;
}

void FolderMove::removeTargets() const {
  for (auto each = copied_.rbegin(); each != copied_.rend(); ++each)
    remove(each->target);
}

} // namespace SV
