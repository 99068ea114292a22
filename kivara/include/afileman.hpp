#pragma once
/// \file
/// Small tasks with files: temporary names, the parts of a path, and a whole text file with a memory of the last one.
///
/// Both classes are only functions; their objects hold nothing. What the functions keep is kept once for the process,
/// and nothing is locked: they are for one thread at a time.
///
/// \code
///   SV::String const name = KivSystemFileManager::fileCreateTempName("report", "xml");
///   write(name); // deleted at the end of the process
/// \endcode

#include "export.hpp"
#include "tools/string.hpp"

/// The error text of the file managers.
class KIV_API KivBasicFileManager {
public:
  /// The text of the last error; empty at first. The library itself sets none.
  static SV::String const & getErrorMessage();

protected:
  /// Replaces the text.
  static void _setErrorMessage(SV::String const & text);
  /// Appends to it.
  static void _appendErrorMessage(SV::String const & text);
};

/// The tasks.
class KIV_API KivSystemFileManager : public KivBasicFileManager {
public:
  /// The environment variable "TEMP"; where it is not set "TMP"; otherwise the empty text. The value is taken as it
  /// stands: it may be empty, it may end in a separator, and the folder need not exist.
  static SV::String getTempDirectory();

  /// A name that nobody else has, in the temporary directory, or in the root of the current drive without one: \p prefix,
  /// a UUID and, unless \p extension is null, a dot and \p extension. Nothing is created; what stands under that name at
  /// the end of the process is deleted then. A null prefix is an empty one.
  /// \return the empty text, after an internal error, when the system gives no UUID
  static SV::String fileCreateTempName(char const * prefix, char const * extension);

  /// The parts of a path. Only '\\' separates, and a dot in front of the last one does not count.
  ///
  /// | path | directory | fileName | baseName | extension |
  /// |---|---|---|---|---|
  /// | `c:\dir\abc.txt` | `c:\dir` | `abc.txt` | `abc` | `.txt` |
  /// | `c:\dir\abc` | `c:\dir` | `abc` | `abc` | |
  /// | `abc.txt` | | `abc.txt` | `ab` | `.txt` |
  /// | `abc` | | `abc` | `abc` | |
  ///
  /// In a path without a directory the base name lacks the last character in front of the dot.
  /// \param keepBackslash  the directory keeps the separator at its end
  static void splitFileName(SV::String const & path, SV::String & directory, SV::String & fileName,
                            SV::String & baseName, SV::String & extension, bool keepBackslash);

  /// Reads a text file by the function of the module that knows the formats, and remembers its name and content; after
  /// a failure it remembers nothing. Without such a function that is an internal error, and \p out stays as it was.
  /// \param flag  handed on
  /// \return 0 on success; -1 without a function; otherwise what the function answered
  static long readStringFromFile(SV::String & out, SV::String const & fileName, bool flag);

  /// Whether the text is the content that is remembered. False when nothing is remembered, or an empty content.
  static bool IsContentOfLastFile(SV::String const & text);

  /// What is remembered; empty texts when it is nothing.
  static SV::String GetLastFileName();
  static SV::String GetLastFileContent();

  /// What readStringFromFile calls, with its arguments; 0 is success. Null until a module of the product sets it.
  static long (*pReadStringFromFileFct)(SV::String & out, SV::String const & fileName, bool flag);

private:
  static SV::String g_sLastFileName;
  static SV::String g_sLastFileContent;
};
