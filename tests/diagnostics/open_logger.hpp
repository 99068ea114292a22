#pragma once
/// \file
/// A logger whose protected operations a test may call.

#include "alog.hpp"

#include <cstdarg>

namespace kivtest {

class OpenLogger : public KivBasicFileLogger {
public:
  using KivBasicFileLogger::_createBackup;
  using KivBasicFileLogger::_debugPrint;
  using KivBasicFileLogger::_deleteOldBackupFiles;
  using KivBasicFileLogger::_getModDate;
  using KivBasicFileLogger::KivBasicFileLogger;

  /// Through vaddText.
  bool addList(char const * format, ...) {
    va_list arguments;
    va_start(arguments, format);
    bool const done = vaddText(format, arguments);
    va_end(arguments);
    return done;
  }
};

} // namespace kivtest
