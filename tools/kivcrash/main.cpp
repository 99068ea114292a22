// kivcrash: from the files that a program leaves behind when it fails to the line of source.
#include "common/wholefile.hpp"
#include "crash/crashfile.hpp"
#include "findings/findings.hpp"
#include "options.hpp"
#include "output/jsonoutput.hpp"
#include "output/textoutput.hpp"

#include <shellapi.h>

#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <io.h>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace kivcrash;

constexpr int kDone = 0;
constexpr int kFaulty = 1;
constexpr int kMisused = 2;

struct LocalMemory {
  void operator()(void * block) const { LocalFree(block); }
};

std::vector<std::wstring> commandLine() {
  int count = 0;
  std::unique_ptr<LPWSTR[], LocalMemory> const words(CommandLineToArgvW(GetCommandLineW(), &count));
  return words ? std::vector<std::wstring>(words.get() + 1, words.get() + count) : std::vector<std::wstring>{};
}

void print(std::FILE * stream, std::string const & text) { std::fwrite(text.data(), 1, text.size(), stream); }

/// \return the exit code. The output may have gone to a full disk, or to a reader that has ended.
int tellProblems(std::string const & file, Problems const & problems) {
  bool const isWritten = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
  if (!isWritten)
    print(stderr, "kivcrash: the answer cannot be written\n");
  for (std::string const & problem : problems)
    print(stderr, "kivcrash: " + file + ": " + printable(problem) + '\n');
  return problems.empty() && isWritten ? kDone : kFaulty;
}

std::vector<std::filesystem::path> foldersOf(Options const & options) {
  std::vector<std::filesystem::path> folders = options.symbols;
  folders.push_back(fullPath(options.file).parent_path());
  return folders;
}

int printReport(CrashFile const & file, std::string const & name, Problems problems) {
  if (file.report) {
    _setmode(_fileno(stdout), _O_BINARY); // it has the ends of its lines already
    print(stdout, fromSystem(file.report->text));
  } else {
    problems.emplace_back("there is no report");
  }
  return tellProblems(name, problems);
}

int run(Options const & options) {
  std::string const name = toUtf8(options.file);
  Problems problems;
  std::unique_ptr<CrashFile> const file = openCrashFile(options.file, problems);
  if (!file)
    return tellProblems(name, problems);
  if (options.report)
    return printReport(*file, name, problems);
  ModuleFiles files(foldersOf(options));
  Findings const findings = find(*file, files, {options.allThreads, options.modules}, problems);
  print(stdout, options.json ? asJson(findings) : asText(findings, options.modules));
  return tellProblems(name, findings.problems);
}

} // namespace

int main() {
  try {
    SetConsoleOutputCP(CP_UTF8);
    std::string reason;
    std::optional<Options> const options = readOptions(commandLine(), reason);
    if (options && !options->help)
      return run(*options);
    if (!options)
      print(stderr, "kivcrash: " + reason + '\n');
    print(options ? stdout : stderr, usage());
    return options ? kDone : kMisused;
  } catch (std::exception const & error) {
    print(stderr, std::string("kivcrash: ") + error.what() + '\n');
    return kFaulty;
  }
}
