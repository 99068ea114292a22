#pragma once
/// \file
/// Log files: a stream of text lines with a time stamp each, a file that turns itself over when the date changes, and lines
/// for named logs from anywhere.
///
/// \code
///   KivBasicFileLogger log(true, true, 30);             // flushed, stamped, 30 old files kept
///   if (log.open("C:\\logs\\server.log", true))
///     log.addText("%d users", count);                   // "2026.11.13, 07:08:09: 12 users"
///
///   Kiv_AddToLog("C:\\logs\\import.log", "done");       // opened by the first line, closed at the end of the process
/// \endcode
///
/// The day that a file belongs to is the date that its first line begins with, not what the file system says. A file that
/// begins with anything else counts as today's and is never turned over. Names of files count from the working folder of the
/// moment. Nothing is locked: a logger, and all named logs together, belong to one thread at a time.

#include "export.hpp"
#include "tools/date.hpp"
#include "tools/string.hpp"

#include <cstdarg>
#include <cstdint>
#include <cstdio>

/// A file to be written. Every operation is true on success; on one that is closed each is false and does nothing, but for
/// open. Closed and opened again as often as one likes.
class KIV_API KivBasicFileStream {
public:
  KivBasicFileStream() = default;
  KivBasicFileStream(KivBasicFileStream const &) = default;
  KivBasicFileStream & operator=(KivBasicFileStream const &) = default;
  virtual ~KivBasicFileStream();

  /// \param append  false: what the file holds is dropped
  virtual bool open(char const * name, bool append) = 0;
  virtual bool close() = 0;
  virtual bool isOpen() const = 0;

  /// Writes \p size bytes.
  virtual bool write(void const * data, std::uint64_t size) = 0;

  /// Hands what is buffered to the system.
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

  /// Writes a formatted text, in the form of the runtime's printf. A null format is the empty text.
  virtual bool addText(char const * format, ...) __attribute__((format(ms_printf, 2, 3))) = 0;
  virtual bool vaddText(char const * format, va_list const & arguments) = 0;
};

/// The log file.
///
/// A line of a stamped log is the local time, the text and a line end:
///
/// | | not CSV | CSV |
/// |---|---|---|
/// | addText | `2026.11.13, 07:08:09: text` | `2026.11.13;07:08:09,045text` |
/// | vaddText | `2026.11.13, 07:08:09: text` | `2026.11.13; 07:08:09: text` |
///
/// Readers of CSV logs expect exactly these two forms; a text for addText begins with its own separator. The text of a log
/// that is not stamped is written as it stands, without a line end.
///
/// A stamped log that keeps backups is turned over by open and by the first line on a new date, never by a timer: the file
/// "server.log" becomes "server_2026.11.12.log" beside it, and the first line of the new one tells of that. Then the oldest
/// "server_*.log" are deleted, by the order of their names, whatever wrote them. When the file cannot be moved, because
/// somebody has it open or there is a file of that name, **its content is dropped** and the first line tells the system's
/// error code.
class KIV_API KivBasicFileLogger : public KivBasicTextFileStream {
public:
  /// \param flushEachWrite  each text goes to the system at once
  /// \param stamped         each text is a line with a time stamp
  /// \param backups         how many old files are kept; 0: the log is never turned over
  KivBasicFileLogger(bool flushEachWrite, bool stamped, int backups);
  KivBasicFileLogger(KivBasicFileLogger const &) = delete;
  KivBasicFileLogger & operator=(KivBasicFileLogger const &) = delete;
  /// Closes the log.
  ~KivBasicFileLogger() override;

  /// From now on addText and vaddText write the lines of a CSV log, or no longer do. A log starts without.
  void setForCSV(bool csv);

  /// Opens the log, turning over a file of another date first. False, without any change, when it is open already. A file
  /// that exists but cannot be read is an internal error.
  bool open(char const * name, bool append) override;
  bool close() override;
  bool isOpen() const override;

  /// The bytes without stamp and line end, line feeds in them as line ends. The date is not looked at, and nothing is
  /// flushed.
  bool write(void const * data, std::uint64_t size) override;

  /// False also when an earlier write to this file has failed.
  bool flush() override;

  /// When the file is not deleted, because somebody else has it open, it is closed all the same.
  bool deleteFromDisc() override;

  /// A log that is flushed each time answers whether the text is with the system. False also when the log had to be turned
  /// over and could not be opened again: it is closed then.
  bool addText(char const * format, ...) override __attribute__((format(ms_printf, 2, 3)));
  bool vaddText(char const * format, va_list const & arguments) override;

protected:
  /// Turns the log over when its date is not today's.
  void _checkDateOnWrite();

  /// The date at the start of the file; today where there is none.
  SV::Date _getModDate() const;

  /// Moves the closed file to the name with the date in it and deletes the oldest of those. False when it was not moved.
  bool _createBackup(SV::Date const & date);

  void _deleteOldBackupFiles() const; ///< all but as many as are wanted

  /// Adds a stamped line about the log itself, also to a closed log; it is not flushed. \p text is no format.
  void _debugPrint(SV::String const & text);

  /// The two ways in which the operations that add a text stamp a line of a CSV log.
  enum class CSVStamp { withMilliseconds, withBlank };
  bool _addLine(CSVStamp csvStamp, char const * format, va_list const & arguments);

private:
  SV::String name_; ///< empty when no file is open
  FILE * file_ = nullptr;
  bool flushEachWrite_;
  bool stamped_;
  bool csv_ = false;
  int backups_;
  SV::Date date_; ///< of the content
};

/// \name Named logs
/// Each adds a stamped line, flushed at once, to the log of that path, which is compared to the letter. The first line opens
/// the log and settles whether it is a CSV log; it stays open, and is never turned over. When it cannot be opened, all its
/// lines are dropped.
///
/// \p text is a format: write "%%" for a percent sign. Other conversions find zeros; a text with "%n" in any of its forms,
/// "100% now" among them, is written as it stands.
/// @{
KIV_API void Kiv_AddToLog(SV::String const & path, SV::String const & text);

/// As Kiv_AddToLog, in the form that addText gives the lines of a CSV log.
KIV_API void Kiv_AddToCSVLog(SV::String const & path, SV::String const & text);
/// @}

/// \name The log of the web service
/// Any logger, not owned; null at start.
/// @{
KIV_API void Kiv_SetWSLogger(KivBasicFileLogger * logger);
KIV_API KivBasicFileLogger * Kiv_GetWSLogger();
/// @}
