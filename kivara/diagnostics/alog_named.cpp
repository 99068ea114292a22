#include "alog.hpp"

#include "tools/containers.hpp"

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

using SV::String;

namespace {

/// Whether the format has a "%n" conversion, which would store a count through a pointer, with any flags, width or
/// prefix.
bool storesCount(char const * format) {
  while ((format = std::strchr(format, '%')) != nullptr) {
    format += 1 + std::strspn(format + 1, " +-#.*0123456789FNhlLIwjtz");
    if (*format == 'n')
      return true;
    if (*format == '%') // "%%" is a percent sign
      ++format;
  }
  return false;
}

/// A log that is never turned over, and whose formats have no arguments.
class NamedLog : public KivBasicFileLogger {
public:
  explicit NamedLog(bool csv) : KivBasicFileLogger(true, true, 0) { setForCSV(csv); }

  void add(String const & text) {
    if (storesCount(text.c_str()))
      addText("%s", text.c_str());
    else
      addWithZeros(text.c_str());
  }

private:
  /// Passes zeros to all conversions, so that they do not print what happens to be on the stack. On this platform a
  /// list of arguments is an array of 8-byte elements; a conversion reads one, and one more for each '*'.
  void addWithZeros(char const * format) {
    char const * const end = format + std::strlen(format);
    auto const most = std::count(format, end, '%') + std::count(format, end, '*');
    std::vector<std::uint64_t> zeros(static_cast<std::size_t>(most) + 1);
    _addLine(CSVStamp::withMilliseconds, format, reinterpret_cast<va_list>(zeros.data()));
  }
};

using NamedLogs = KivValueDelMap<String, NamedLog *>;

NamedLog & logOf(String const & path, bool csv) {
  static NamedLogs logs;
  auto const known = logs.find(path);
  if (known != logs.end())
    return *known->second;
  auto log = std::make_unique<NamedLog>(csv);
  log->open(path.c_str(), true); // a log that cannot be opened stays in the map and discards its lines
  auto const added = logs.emplace(path, log.get()).first;
  log.release(); // NOLINT(bugprone-unused-return-value): the map owns it now
  return *added->second;
}

KivBasicFileLogger * wsLogger = nullptr;

} // namespace

void Kiv_AddToLog(String const & path, String const & text) { logOf(path, false).add(text); }
void Kiv_AddToCSVLog(String const & path, String const & text) { logOf(path, true).add(text); }

void Kiv_SetWSLogger(KivBasicFileLogger * logger) { wsLogger = logger; }
KivBasicFileLogger * Kiv_GetWSLogger() { return wsLogger; }
