#include "findings/facts.hpp"

#include "diagnostics/crash/exceptions.hpp"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace kivcrash {
namespace {

constexpr std::uint32_t kCppException = 0x20474343; // "GCC", which the compiler's runtime raises
constexpr std::uint64_t kWriting = 1;
constexpr std::uint64_t kExecuting = 8;

/// "2026-11-22 08:30:15 UTC"
std::string timeText(std::int64_t seconds) {
  using namespace std::chrono;
  sys_seconds const moment{std::chrono::seconds(seconds)};
  auto const midnight = floor<days>(moment);
  year_month_day const date(midnight);
  hh_mm_ss const time(moment - midnight);
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02d UTC", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                static_cast<int>(time.seconds().count()));
  return text;
}

std::string systemText(System const & system) {
  std::string text = "Windows " + std::to_string(system.major) + '.' + std::to_string(system.minor) + '.' +
                     std::to_string(system.build);
  if (!system.servicePack.empty())
    text += ' ' + system.servicePack;
  return text + ", processors: " + std::to_string(system.processors);
}

/// Without the quotation marks that the report puts around it.
std::string unquoted(std::string const & text) {
  bool const isQuoted = text.size() >= 2 && text.front() == '\'' && text.back() == '\'';
  return isQuoted ? text.substr(1, text.size() - 2) : text;
}

std::string ofReport(CrashFile const & file, char const * beginning) {
  return file.report ? printable(unquoted(lineAfter(*file.report, beginning))) : "";
}

std::string programOf(CrashFile const & file) {
  if (file.dump && !file.dump->modules.empty())
    return file.dump->modules.front().path;
  return ofReport(file, "  Module name......: ");
}

std::string timeOf(CrashFile const & file) {
  if (file.dump)
    return timeText(file.dump->time);
  return file.report && file.report->time ? timeText(*file.report->time) : "";
}

/// "orders.log, notes.txt"
std::string inOneLine(std::vector<std::string> const & names) {
  std::string text;
  for (std::string const & name : names)
    text += (text.empty() ? "" : ", ") + name;
  return text;
}

/// "writing 0x10"
std::string accessOf(Exception const & exception) {
  bool const isAccess = exception.code == STATUS_ACCESS_VIOLATION || exception.code == STATUS_IN_PAGE_ERROR;
  if (!isAccess || exception.parameters.size() < 2)
    return "";
  std::string const what = exception.parameters[0] == kWriting     ? "writing "
                           : exception.parameters[0] == kExecuting ? "executing "
                                                                   : "reading ";
  return what + hex(exception.parameters[1]);
}

std::string exceptionText(std::uint32_t code) {
  if (code == kCppException)
    return "C++ exception that nobody caught";
  std::string name = fromSystem(kivara::crash::exceptionName(code));
  name.erase(std::ranges::find_if(name, [](char c) { return c == '\r' || c == '\n'; }), name.end());
  return name.empty() ? "unknown exception" : name;
}

/// "C0000005h ACCESS_VIOLATION"
std::optional<Fault> faultOfReport(Report const & report) {
  std::string const line = lineAfter(report, "  Exception code: ");
  if (line.size() < 9 || line[8] != 'h')
    return std::nullopt;
  Fault fault;
  fault.code = static_cast<std::uint32_t>(std::strtoul(line.c_str(), nullptr, 16));
  fault.name = exceptionText(fault.code);
  return fault;
}

} // namespace

std::vector<std::pair<std::string, std::string>> factsOf(CrashFile const & file) {
  std::vector<std::pair<std::string, std::string>> facts;
  auto const add = [&](char const * name, std::string const & value) {
    if (!value.empty())
      facts.emplace_back(name, value);
  };
  bool const hasProgram = file.dump && !file.dump->modules.empty();
  add("program", programOf(file));
  add("program version", hasProgram ? file.dump->modules.front().version : "");
  add("library version", ofReport(file, "    Version: "));
  add("command line", ofReport(file, "    Command line: "));
  add("time", timeOf(file));
  add("local time", ofReport(file, "  Local crash time.: "));
  add("system",
      file.dump && file.dump->system ? systemText(*file.dump->system) : ofReport(file, "  Windows version: "));
  add("current folder", ofReport(file, "  Current directory: "));
  add("also in the archive", inOneLine(file.others));
  return facts;
}

std::optional<Fault> faultOf(CrashFile const & file) {
  if (!file.dump)
    return file.report ? faultOfReport(*file.report) : std::nullopt;
  if (!file.dump->exception)
    return std::nullopt;
  Exception const & exception = *file.dump->exception;
  Fault fault{exceptionText(exception.code), exception.code, exception.address, "", 0, accessOf(exception)};
  if (Module const * const module = file.dump->moduleAt(exception.address)) {
    fault.module = fileName(module->path);
    fault.offset = exception.address - module->base;
  }
  return fault;
}

std::vector<std::string> pluginsOf(CrashFile const & file) {
  std::vector<std::string> plugins =
      file.report ? linesBelow(*file.report, " loaded plugins:") : std::vector<std::string>{};
  std::ranges::transform(plugins, plugins.begin(), printable);
  return plugins;
}

} // namespace kivcrash
