#pragma once
/// \file
/// DirEntry: the name of a file or folder.

#include "tools/export.hpp"
#include "tools/string.hpp"

namespace SV {

/// How a path is written. 0, the style of the system, is the one in use.
enum FSysPathStyle { FSYS_STYLE_HOST = 0 };

/// A system's error code; 0 is success.
using FSysError = unsigned long;
inline constexpr FSysError FSYS_ERR_OK = 0;

/// The name of an entry of the file system, which need not exist. Names are kept as given, with '/' as '\\' and without
/// separators at the end but for a root's. Roots are "\", "C:\" and "\\server\share"; "C:" is the working directory of
/// that drive. A path is read in the system's code page and ends at its NUL. Calls on an empty entry that ask the file
/// system fail; its full path is the working directory.
class DirEntry {
public:
  TL_API DirEntry(String const & path, FSysPathStyle style = FSYS_STYLE_HOST); ///< nothing is looked up

  /// The full path, without "." and ".."; that of a relative entry begins at the working directory of the moment.
  /// \param withSeparator  non-zero: the path ends in one separator; 0: it ends in none, but for the root of a drive
  /// \param limit          the most characters of the result
  TL_API String GetFull(FSysPathStyle style = FSYS_STYLE_HOST, int withSeparator = 0,
                        std::int32_t limit = STRING_MAXLEN) const;

  /// The last component with its extension; that of a root or of an empty entry is empty.
  TL_API String GetName(FSysPathStyle style = FSYS_STYLE_HOST) const;

  /// The last component up to the last \p separator in it; all of it where there is none. That of ".profile" is empty.
  TL_API String GetBase(char separator = '.') const;

  /// Replaces what GetBase gives; what follows the separator stays.
  TL_API void ChangeBase(String const & base, char separator = '.');

  /// The folder that contains the entry: of a bare name ".", of a root the root. That of ".", ".." and "C:" is the real
  /// one, as a full path.
  TL_API DirEntry GetPath() const;

  TL_API bool Exists() const; ///< as a file or a folder

  /// Deletes the file or the empty folder.
  TL_API FSysError Kill() const;

  /// Moves a file, or a folder with all in it, to another name, on another drive too. An existing target is not
  /// overwritten. A failure leaves the source whole and makes no target, but for a folder that was copied to another
  /// drive and then not wholly removed: its copy stays.
  TL_API FSysError MoveTo(DirEntry const & target) const;

private:
  String path_;
};

} // namespace SV
