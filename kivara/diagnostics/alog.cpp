#include "alog.hpp"

#include "atrace.hpp"
#include "base/boundedtext.hpp"
#include "base/modules.hpp"
#include "base/openfile.hpp"
#include "diagnostics/logbackups.hpp"
#include "tools/dir.hpp"
#include "tools/direntry.hpp"
#include "tools/international.hpp"
#include "tools/winapi.hpp"

using SV::Date;
using SV::DirEntry;
using SV::String;

namespace {

constexpr unsigned kLineOwnLineNotWritten = 34;
constexpr unsigned kLineDateNotRead = 47;
constexpr unsigned kLineNotEmptied = 78;

constexpr int kAllKinds = 0xFFF;
constexpr int kOldestFirst = SV::FSYS_SORT_NAME;

using Stamp = kivara::BoundedText<40>;

SYSTEMTIME localTime() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  return now;
}

Stamp textStamp(SYSTEMTIME const & now) {
  return Stamp("%04d.%02d.%02d, %02d:%02d:%02d", now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond);
}

Stamp csvStampWithMilliseconds(SYSTEMTIME const & now) {
  return Stamp("%04d.%02d.%02d;%02d:%02d:%02d,%03d", now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute,
               now.wSecond, now.wMilliseconds);
}

Stamp csvStampWithBlank(SYSTEMTIME const & now) {
  return Stamp("%04d.%02d.%02d; %02d:%02d:%02d", now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond);
}

void printLine(FILE * file, String const & text) {
  __ms_fprintf(file, "%s: %s\n", textStamp(localTime()).c_str(), text.c_str());
}

bool isFile(String const & name) {
  DWORD const attributes = GetFileAttributesA(name.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

/// The start of a file, without the white space at its beginning: longer than any date is written.
struct Beginning {
  explicit Beginning(FILE * file) {
    __ms_fscanf(file, " ");
    text[std::fread(text, 1, sizeof text - 1, file)] = '\0';
  }
  char text[512];
};

} // namespace

KivBasicFileStream::~KivBasicFileStream() = default;
KivBasicTextFileStream::~KivBasicTextFileStream() = default;

KivBasicFileLogger::KivBasicFileLogger(bool flushEachWrite, bool stamped, int backups)
    : flushEachWrite_(flushEachWrite), stamped_(stamped), backups_(backups) {}

KivBasicFileLogger::~KivBasicFileLogger() { KivBasicFileLogger::close(); }

void KivBasicFileLogger::setForCSV(bool csv) { csv_ = csv; }

bool KivBasicFileLogger::open(char const * name, bool append) {
  if (isOpen())
    return false;
  name_ = String(name);
  date_ = isFile(name_) ? _getModDate() : Date();
  if (backups_ != 0 && !(date_ == Date()) && _createBackup(date_))
    date_ = Date();
  file_ = kivara::openForThisProgram(name_.c_str(), append ? "at" : "wt");
  return isOpen();
}

bool KivBasicFileLogger::close() {
  if (file_ == nullptr)
    return false;
  std::fclose(file_);
  file_ = nullptr;
  name_ = String();
  return true;
}

bool KivBasicFileLogger::isOpen() const { return file_ != nullptr; }

bool KivBasicFileLogger::write(void const * data, std::uint64_t size) {
  if (!isOpen())
    return false;
  return size == 0 || (data != nullptr && std::fwrite(data, 1, size, file_) == size);
}

bool KivBasicFileLogger::flush() {
  if (!isOpen())
    return false;
  std::fflush(file_);
  return std::ferror(file_) == 0;
}

bool KivBasicFileLogger::deleteFromDisc() {
  if (!isOpen())
    return false;
  std::fclose(file_);
  file_ = nullptr;
  if (std::remove(name_.c_str()) != 0)
    return false;
  name_ = String();
  return true;
}

bool KivBasicFileLogger::addText(char const * format, ...) {
  va_list arguments;
  va_start(arguments, format);
  bool const done = _addLine(CSVStamp::withMilliseconds, format, arguments);
  va_end(arguments);
  return done;
}

bool KivBasicFileLogger::vaddText(char const * format, va_list const & arguments) {
  return _addLine(CSVStamp::withBlank, format, arguments);
}

bool KivBasicFileLogger::_addLine(CSVStamp csvStamp, char const * format, va_list const & arguments) {
  if (!isOpen())
    return false;
  if (stamped_) {
    _checkDateOnWrite();
    if (!isOpen()) // it was turned over and could not be opened again
      return false;
    SYSTEMTIME const now = localTime();
    // Programs that read CSV logs know both forms: they must stay different.
    if (csv_ && csvStamp == CSVStamp::withMilliseconds) {
      std::fputs(csvStampWithMilliseconds(now).c_str(), file_);
    } else {
      std::fputs((csv_ ? csvStampWithBlank(now) : textStamp(now)).c_str(), file_);
      std::fputs(": ", file_);
    }
  }
  __ms_vfprintf(file_, kivara::orEmpty(format), arguments);
  if (stamped_)
    std::fwrite("\n", 1, 1, file_); // fputs and fputc flush with a line end under Wine
  return flushEachWrite_ ? flush() : std::ferror(file_) == 0;
}

void KivBasicFileLogger::_checkDateOnWrite() {
  if (backups_ == 0)
    return;
  Date const today;
  if (date_ == today)
    return;
  SV::International const formats;
  _debugPrint("Date changed from " + formats.GetDate(date_) + " to " + formats.GetDate(today));
  String const name(name_); // closing clears it
  close();
  open(name.c_str(), true);
}

Date KivBasicFileLogger::_getModDate() const {
  kivara::OpenFile const file = kivara::openFile(name_.c_str(), "r");
  if (!file) {
    displayErrorMessage(kivara::modules::kAlog, kLineDateNotRead);
    return Date();
  }
  return kivara::dateAtStart(Beginning(file.get()).text).value_or(Date());
}

bool KivBasicFileLogger::_createBackup(Date const & date) {
  DirEntry const source(name_);
  DirEntry const target = kivara::backupOf(name_, date);
  String text = "Moving log file from " + source.GetName() + " to " + target.GetName() + ".";
  SV::FSysError const error = source.MoveTo(target);
  if (error == SV::FSYS_ERR_OK) {
    _debugPrint(text); // the first line of the new file, which dates it
    _deleteOldBackupFiles();
    return true;
  }
  text += " FAILED (EC: " + String(error) + ")!";
  // A file that stays where it is would grow for ever: it is emptied.
  file_ = kivara::openForThisProgram(name_.c_str(), "wt");
  if (file_ == nullptr) {
    displayErrorMessage(kivara::modules::kAlog, kLineNotEmptied);
    return false;
  }
  _debugPrint(text);
  std::fclose(file_);
  file_ = nullptr;
  return false;
}

void KivBasicFileLogger::_deleteOldBackupFiles() const {
  if (backups_ == 0)
    return;
  SV::Dir backups(kivara::patternOfBackups(name_), kAllKinds);
  unsigned long const surplus = kivara::surplusBackups(backups.Count(), backups_);
  if (surplus != 0)
    backups.SetSort(kOldestFirst);
  for (unsigned long i = 0; i < surplus; ++i)
    backups[i].Kill();
}

void KivBasicFileLogger::_debugPrint(String const & text) {
  if (isOpen()) {
    printLine(file_, text);
    return;
  }
  kivara::OpenFile const file = kivara::openFile(name_.c_str(), "at");
  if (!file) {
    displayErrorMessage(kivara::modules::kAlog, kLineOwnLineNotWritten);
    return;
  }
  printLine(file.get(), text);
}
