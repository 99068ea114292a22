#include "crash/crashfile.hpp"

#include "common/wholefile.hpp"
#include "crash/archive.hpp"

#include <stdexcept>

namespace kivcrash {
namespace {

void addDump(CrashFile & file, std::string bytes, Problems & problems) {
  file.dumpBytes = std::move(bytes);
  file.dump = readDump(file.dumpBytes, problems);
}

/// The files of the archive by what is in them: the names are those of the customer's program.
void addContents(CrashFile & file, std::string_view bytes, Problems & problems) {
  Contents contents = unpackArchive(bytes, problems);
  std::string log;
  for (auto & [name, content] : contents)
    if (isDump(content) && !file.dump)
      addDump(file, std::move(content), problems);
    else if (Problems none; file.reports.empty() && !readReports(content, none).empty())
      file.reports = readReports(content, problems);
    else
      file.others.push_back(name);
  if (!contents.empty() && !file.dump)
    problems.emplace_back("the archive has no minidump in it");
  if (!contents.empty() && file.reports.empty())
    problems.emplace_back("the archive has no report in it");
}

void chooseReport(CrashFile & file, Problems & problems) {
  if (file.dump)
    file.report = reportOf(file.reports, file.dump->time);
  else if (!file.reports.empty())
    file.report = &file.reports.back();
  if (file.dump && !file.report && !file.reports.empty())
    problems.emplace_back("the log has no report of this crash");
}

/// "program.exe.20261122083015123.dmp" lies beside "program.exe.log".
std::filesystem::path logBeside(std::filesystem::path const & dump) {
  return dump.parent_path() / dump.stem().replace_extension(L".log");
}

/// Where it cannot be read, there is still the minidump.
void addLog(CrashFile & file, std::filesystem::path const & log, Problems & problems) {
  try {
    file.reports = readReports(readWhole(log), problems);
    chooseReport(file, problems);
  } catch (std::runtime_error const & error) { // its text names the log
    problems.emplace_back(error.what());
  }
}

} // namespace

std::unique_ptr<CrashFile> readCrashFile(std::string bytes, Problems & problems) {
  auto file = std::make_unique<CrashFile>();
  if (isArchive(bytes))
    addContents(*file, bytes, problems);
  else if (isDump(bytes))
    addDump(*file, std::move(bytes), problems);
  else
    file->reports = readReports(bytes, problems);
  if (!file->dump && file->reports.empty()) {
    problems.emplace_back("this is no crash archive, minidump or crash report that can be read");
    return nullptr;
  }
  chooseReport(*file, problems);
  return file;
}

std::unique_ptr<CrashFile> openCrashFile(std::filesystem::path const & path, Problems & problems) {
  std::unique_ptr<CrashFile> file = readCrashFile(readWhole(path), problems);
  if (file && file->dump && file->reports.empty() && isFile(logBeside(path)))
    addLog(*file, logBeside(path), problems);
  return file;
}

} // namespace kivcrash
