#pragma once
/// \file
/// Log files: a log that puts a time stamp before each line and starts a new file when the date changes, and named logs
/// that any code can add a line to.
///
/// \code
///   KivBasicFileLogger log(true, true, 30);             // flushed, stamped, keeps 30 old files
///   if (log.open("C:\\logs\\server.log", true))
///     log.addText("%d users", count);                   // "2026.11.13, 07:08:09: 12 users"
///
///   Kiv_AddToLog("C:\\logs\\import.log", "done");       // the first line opens the log, the end of the process closes it
/// \endcode
///
/// The date of a log file is the one that its first line begins with, whatever the file system says. A file that begins
/// with anything else counts as today's and is never turned over. Relative names start at the current working folder.
/// Nothing is locked: only one thread at a time may use a logger, or any of the named logs.

#include "export.hpp"
#include "tools/date.hpp"
#include "tools/string.hpp"

#include <cstdarg>
#include <cstdint>
#include <cstdio>

/// A file to write to. Every operation returns true on success. While the file is closed, every operation except open
/// does nothing and returns false. A file can be closed and opened again any number of times.
class KIV_API KivBasicFileStream {
public:
  KivBasicFileStream() = default;
  KivBasicFileStream(KivBasicFileStream const &) = default;
  KivBasicFileStream & operator=(KivBasicFileStream const &) = default;
  virtual ~KivBasicFileStream();

  /// Opens the file of that name for writing and creates it if there is none.
  /// \param append  true: writes after what the file holds; false: discards it
  virtual bool open(char const * name, bool append) = 0;
  virtual bool close() = 0;        ///< writes out what is buffered and closes the file
  virtual bool isOpen() const = 0; ///< whether there is a file to write to

  /// Writes \p size bytes.
  virtual bool write(void const * data, std::uint64_t size) = 0;

  /// Passes what is buffered to the system.
  virtual bool flush() = 0;

  /// Closes the file and deletes it.
  virtual bool deleteFromDisc() = 0;
};

/// A file of text.
class KIV_API KivBasicTextFileStream : public KivBasicFileStream {
public:
  KivBasicTextFileStream() = default;
  KivBasicTextFileStream(KivBasicTextFileStream const &) = default;
  KivBasicTextFileStream & operator=(KivBasicTextFileStream const &) = default;
  ~KivBasicTextFileStream() override;

  /// Writes a text, formatted as by the runtime's printf. A null format is the empty string.
  virtual bool addText(char const * format, ...) __attribute__((format(ms_printf, 2, 3))) = 0;

  /// The same with a list of arguments.
  virtual bool vaddText(char const * format, va_list const & arguments) = 0;
};

/// A log file.
///
/// A line of a stamped log consists of the local time, the text and a line end:
///
/// | | plain log | CSV log |
/// |---|---|---|
/// | addText | `2026.11.13, 07:08:09: text` | `2026.11.13;07:08:09,045text` |
/// | vaddText | `2026.11.13, 07:08:09: text` | `2026.11.13; 07:08:09: text` |
///
/// Readers of CSV logs expect exactly these two forms; a text for addText begins with its own separator. A log that is
/// not stamped contains the texts unchanged, without line ends.
///
/// A log that keeps backups is turned over when it is opened on a new date and, if it is stamped, by its first line on
/// a new date, never by a timer: the file "server.log" is renamed to "server_2026.11.12.log" in the same folder, and
/// the first line of the new file says so. Then the oldest "server_*.log" are deleted, in the order of their names,
/// whatever program wrote them. If the file cannot be renamed, because it is open elsewhere or the new name is taken,
/// **its content is discarded** and the first line gives the system's error code.
class KIV_API KivBasicFileLogger : public KivBasicTextFileStream {
public:
  /// \param flushEachWrite  whether each text is passed to the system at once
  /// \param stamped         whether each text is a line with a time stamp
  /// \param backups         how many old files are kept; 0: the log is never turned over; below 0: it is, and none is kept
  KivBasicFileLogger(bool flushEachWrite, bool stamped, int backups);
  KivBasicFileLogger(KivBasicFileLogger const &) = delete;
  KivBasicFileLogger & operator=(KivBasicFileLogger const &) = delete;
  /// Closes the log.
  ~KivBasicFileLogger() override;

  /// Whether addText and vaddText write the lines of a CSV log from now on. A new logger writes those of a plain log.
  void setForCSV(bool csv);

  /// Opens the log; a file of another date is turned over first. If the log is already open, it stays as it is, and the
  /// result is false. A file that exists but cannot be read is an internal error. If the file cannot be opened, the
  /// logger is closed but keeps the name, for lines that it writes about itself, until the next open.
  bool open(char const * name, bool append) override;
  bool close() override;
  bool isOpen() const override;

  /// Writes the bytes without a stamp or a line end; each line feed in them becomes a carriage return and a line feed.
  /// Never turns the log over and never flushes.
  bool write(void const * data, std::uint64_t size) override;

  /// Also false if an earlier write to this file has failed.
  bool flush() override;

  /// Closes the file and deletes it. If it cannot be deleted, because it is open elsewhere, the result is false; the
  /// file is closed even so, and the logger keeps the name until the next open.
  bool deleteFromDisc() override;

  /// If each text is flushed, the result says whether the system has accepted the text; otherwise, whether no write has
  /// failed so far. Also false if the log had to be turned over and could not be opened again; it is closed then.
  bool addText(char const * format, ...) override __attribute__((format(ms_printf, 2, 3)));
  bool vaddText(char const * format, va_list const & arguments) override;

protected:
  /// Turns the log over if it keeps backups and its date is not today's.
  void _checkDateOnWrite();

  /// The date that the file begins with; today if it begins with anything else.
  SV::Date _getModDate() const;

  /// Renames the closed file to the name with the date in it and deletes the oldest backups. False if it was not
  /// renamed; its content is then discarded.
  bool _createBackup(SV::Date const & date);

  void _deleteOldBackupFiles() const; ///< all but the newest, as many as are to be kept

  /// Adds a stamped line about the log itself, without flushing it. Works on a closed logger that has a name, too: the
  /// file is opened for this line. \p text is not a format.
  void _debugPrint(SV::String const & text);

  /// The stamps that addText and vaddText write in a CSV log.
  enum class CSVStamp { withMilliseconds, withBlank };
  bool _addLine(CSVStamp csvStamp, char const * format, va_list const & arguments);

private:
  SV::String name_; ///< of the open file; a closed logger has one only after an open or a deletion that failed
  FILE * file_ = nullptr;
  bool flushEachWrite_;
  bool stamped_;
  bool csv_ = false;
  int backups_;
  SV::Date date_; ///< of the content
};

/// \name Named logs
/// Each function adds a stamped line to the log with that path and flushes it. Paths are compared exactly,
/// case-sensitively. The first line opens the log and decides whether it is a CSV log; it stays open and is never
/// turned over. If it cannot be opened, all its lines are discarded.
///
/// \p text is a format: write "%%" for a percent sign. There are no arguments: other conversions print zeros. A text with
/// "%n" in any of its forms, such as "100% now", is written unchanged.
/// @{
KIV_API void Kiv_AddToLog(SV::String const & path, SV::String const & text);

/// The same for a CSV log; the line has the form that addText writes.
KIV_API void Kiv_AddToCSVLog(SV::String const & path, SV::String const & text);
/// @}

/// \name The log of the web service
/// A logger that the whole process can reach; it is not owned. Null until it is set.
/// @{
KIV_API void Kiv_SetWSLogger(KivBasicFileLogger * logger);
KIV_API KivBasicFileLogger * Kiv_GetWSLogger();
/// @}
