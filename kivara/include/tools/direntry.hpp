#pragma once
/// \file
/// DirEntry: the name of a file or folder.

#include "tools/export.hpp"
#include "tools/string.hpp"

namespace SV {

/// How a path is written. Only 0, the style of the system, is used.
enum FSysPathStyle { FSYS_STYLE_HOST = 0 };

/// An error code of the system; 0 is success.
using FSysError = unsigned long;
inline constexpr FSysError FSYS_ERR_OK = 0;

/// The name of a file or folder, which need not exist. Names are stored as given, except that '/' becomes '\\' and that
/// separators at the end are removed, but not that of a root. Roots are "\", "C:\" and "\\server\share"; "C:" is the working
/// directory of that drive. A path is in the system's code page and ends at its first NUL. The full path of an empty entry
/// is the working directory; calls on it that access the file system fail.
class DirEntry {
public:
  TL_API DirEntry(String const & path, FSysPathStyle style = FSYS_STYLE_HOST); ///< does not access the file system

  /// The full path, without "." and "..". The path of a relative entry begins with the current working directory.
  /// \param withSeparator  non-zero: the path ends in one separator; 0: it ends in none, except for the root of a drive
  /// \param limit          the maximum length of the result
  TL_API String GetFull(FSysPathStyle style = FSYS_STYLE_HOST, int withSeparator = 0,
                        std::int32_t limit = STRING_MAXLEN) const;

  /// The last component with its extension; empty for a root and for an empty entry.
  TL_API String GetName(FSysPathStyle style = FSYS_STYLE_HOST) const;

  /// The last component up to the last \p separator in it, or all of it if there is none. For ".profile" it is empty.
  TL_API String GetBase(char separator = '.') const;

  /// Replaces what GetBase returns; the separator and what follows it stay. A root has no base, and the new one is appended
  /// to it: to the root of a share with a '\\' between them, to a drive ("C:") or a device ("\\.\COM1") without one.
  TL_API void ChangeBase(String const & base, char separator = '.');

  /// The folder that contains the entry: "." for a name without a path, the root itself for a root. For ".", ".." and "C:"
  /// it is the actual folder, as a full path.
  TL_API DirEntry GetPath() const;

  TL_API bool Exists() const; ///< a file or a folder

  /// Deletes the file or the empty folder.
  TL_API FSysError Kill() const;

  /// Moves a file, or a folder with its content, to another name, even on another drive. An existing target is not
  /// overwritten. A failure leaves the source complete and removes the target. To move a folder to another drive, it is
  /// copied and the source is then removed. If an entry of the source cannot be removed, those already removed are copied
  /// back; only if that fails too, the complete copy stays in place.
  TL_API FSysError MoveTo(DirEntry const & target) const;

private:
  String path_;
};

} // namespace SV
