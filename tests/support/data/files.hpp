#pragma once
/// \file
/// Whole files, folders of a test's own, and files that cannot be written.
///
///     support::TempFolder const folder;
///     support::writeFile(folder / "lang.ini", "2057\n");
///     support::FileInUse const refusal(folder / "trace.txt");  // cannot be opened until the guard goes
///
/// Paths are Windows paths in the ANSI code page. What cannot be done throws std::runtime_error with the path and the
/// system's error code, which fails the test.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace support {

/// The bytes of a file as they are; nothing when it does not exist or cannot be opened.
std::optional<std::string> readFile(std::string const & path);

/// Writes the bytes as they are; an existing file is replaced.
void writeFile(std::string const & path, std::string_view bytes);

/// Whether a file or a folder of that name exists.
bool exists(std::string const & path);

/// The names of all entries of a folder, in byte order.
std::vector<std::string> entriesOf(std::string const & folder);

/// Sets or clears the read-only attribute. An administrator of a Unix file system is not stopped by it: to have a file
/// that surely cannot be written, use FileInUse or put a folder in its place.
void setReadOnly(std::string const & path, bool on);

/// The folder of the running program, where all programs and DLLs of the build lie; it ends in a backslash.
std::string binFolder();

/// A new, empty folder inside the working folder that the test program started with. It goes away with this object,
/// with all that it then holds, read-only files too.
class TempFolder {
public:
  TempFolder();
  TempFolder(TempFolder const &) = delete;
  TempFolder & operator=(TempFolder const &) = delete;
  ~TempFolder();

  /// Absolute, without a backslash at the end.
  std::string const & path() const { return path_; }
  /// The absolute path of an entry, which need not exist.
  std::string operator/(std::string_view entry) const { return path_ + '\\' + std::string(entry); }

private:
  std::string path_;
};

/// Holds a file open so that every other attempt to open it fails with a sharing violation. The file is made when it
/// does not exist, and stays afterwards.
class FileInUse {
public:
  explicit FileInUse(std::string const & path);
  FileInUse(FileInUse const &) = delete;
  FileInUse & operator=(FileInUse const &) = delete;
  ~FileInUse();

private:
  void * handle_;
};

} // namespace support
