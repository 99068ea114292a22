#include "foldermove.hpp"

#include "tools/winapi.hpp"

namespace SV {
namespace {

DWORD attributesOf(DirEntry const & entry) { return GetFileAttributesA(entry.GetFull().c_str()); }

/// Removes files and then empty folders, from the last to the first, and gives the first error.
FSysError killAll(std::vector<DirEntry> const & entries) {
  FSysError first = FSYS_ERR_OK;
  for (auto each = entries.rbegin(); each != entries.rend(); ++each) {
    SetFileAttributesA(each->GetFull().c_str(), attributesOf(*each) & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
    FSysError const code = each->Kill();
    first = first == FSYS_ERR_OK ? code : first;
  }
  return first;
}

} // namespace

FSysError lastSystemError() {
  DWORD const code = GetLastError();
  return code != ERROR_SUCCESS ? code : ERROR_GEN_FAILURE;
}

FSysError FolderMove::run(DirEntry const & source, DirEntry const & target) {
  FSysError const code = copy(source, target);
  if (code == FSYS_ERR_OK)
    return killAll(sources_);
  killAll(targets_);
  return code;
}

FSysError FolderMove::copy(DirEntry const & source, DirEntry const & target) {
  DWORD const attributes = attributesOf(source);
  if (attributes == INVALID_FILE_ATTRIBUTES)
    return lastSystemError();
  bool const isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  // A link to a folder shows what belongs to another place and must not be emptied there.
  if (isFolder && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
    return ERROR_NOT_SAME_DEVICE;
  String const from = source.GetFull();
  String const to = target.GetFull();
  BOOL const made =
      isFolder ? CreateDirectoryExA(from.c_str(), to.c_str(), nullptr) : CopyFileA(from.c_str(), to.c_str(), TRUE);
  if (!made)
    return lastSystemError();
  sources_.push_back(source);
  targets_.push_back(target);
  return isFolder ? copyContent(source, target) : FSYS_ERR_OK;
}

FSysError FolderMove::copyContent(DirEntry const & source, DirEntry const & target) {
  String const folder = target.GetFull(FSYS_STYLE_HOST, 1);
  Dir const content(source, FSYS_KIND_FILE | FSYS_KIND_DIR);
  for (unsigned long i = 0; i < content.Count(); ++i) {
    FSysError const code = copy(content[i], DirEntry(folder + content[i].GetName()));
    if (code != FSYS_ERR_OK)
      return code;
  }
  return FSYS_ERR_OK;
}

} // namespace SV
