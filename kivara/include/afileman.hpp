#pragma once
/// \file
/// Small file tasks: temporary names, splitting a path, and reading a whole text file with a memory of the last one.
///
/// Both classes have only static functions; objects of them hold nothing. The state of the functions is process-wide and
/// not locked, so only one thread at a time may use them.
///
/// \code
///   SV::String const name = KivSystemFileManager::fileCreateTempName("report", "xml");
///   write(name); // the file is deleted at the end of the process
/// \endcode

#include "export.hpp"
#include "tools/string.hpp"

/// The error message that the file managers share.
class KIV_API KivBasicFileManager {
public:
  /// The message of the last error; empty at the start. The library itself sets none.
  static SV::String const & getErrorMessage();

protected:
  /// Replaces the message.
  static void _setErrorMessage(SV::String const & text);
  /// Appends to the message.
  static void _appendErrorMessage(SV::String const & text);
};

/// The file tasks.
class KIV_API KivSystemFileManager : public KivBasicFileManager {
public:
  /// The value of the environment variable "TEMP", or else of "TMP", or else the empty string. The value is not checked: it
  /// may be empty, it may end in a separator, and the folder need not exist.
  static SV::String getTempDirectory();

  /// A unique name in the temporary directory, or in the root of the current drive if there is none. It consists of
  /// \p prefix, a UUID and, unless \p extension is null, a dot and \p extension. The file is not created. If one of that
  /// name exists at the end of the process, it is deleted. A null prefix counts as empty.
  /// \return the empty string, after reporting an internal error, when the system gives no UUID
  static SV::String fileCreateTempName(char const * prefix, char const * extension);

  /// Splits a path. Only '\\' is a separator, and only a dot after the last separator starts an extension.
  ///
  /// | path | directory | fileName | baseName | extension |
  /// |---|---|---|---|---|
  /// | `c:\dir\abc.txt` | `c:\dir` | `abc.txt` | `abc` | `.txt` |
  /// | `c:\dir\abc` | `c:\dir` | `abc` | `abc` | |
  /// | `abc.txt` | | `abc.txt` | `ab` | `.txt` |
  /// | `abc` | | `abc` | `abc` | |
  ///
  /// Without a directory, the base name lacks the last character before the dot.
  /// \param keepBackslash  true: the directory ends in its separator
  static void splitFileName(SV::String const & path, SV::String & directory, SV::String & fileName,
                            SV::String & baseName, SV::String & extension, bool keepBackslash);

  /// Reads a text file through pReadStringFromFileFct and remembers its name and content. After a failure nothing is
  /// remembered. When that pointer is null, an internal error is reported and \p out is unchanged.
  /// \param flag  passed to the function
  /// \return 0 on success; -1 when the pointer is null; otherwise the function's own result
  static long readStringFromFile(SV::String & out, SV::String const & fileName, bool flag);

  /// Whether \p text is the remembered content. False when nothing is remembered or the content is empty.
  static bool IsContentOfLastFile(SV::String const & text);

  /// The remembered name and content; empty when nothing is remembered.
  static SV::String GetLastFileName();
  static SV::String GetLastFileContent();

  /// The function that reads the file; it returns 0 on success. Null until a module of the product sets it.
  static long (*pReadStringFromFileFct)(SV::String & out, SV::String const & fileName, bool flag);

private:
  static SV::String g_sLastFileName;
  static SV::String g_sLastFileContent;
};
