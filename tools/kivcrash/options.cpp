#include "options.hpp"

#include "common/text.hpp"

namespace kivcrash {
namespace {

struct Flag {
  wchar_t const * word;
  bool Options::*field;
};

constexpr Flag kFlags[] = {
    {L"--all-threads", &Options::allThreads},
    {L"--report", &Options::report},
    {L"--modules", &Options::modules},
    {L"--json", &Options::json},
    {L"--help", &Options::help},
};

bool setFlag(Options & options, std::wstring const & word) {
  for (Flag const & flag : kFlags)
    if (word == flag.word) {
      options.*flag.field = true;
      return true;
    }
  return false;
}

/// What the options lack or have too much of; empty where they are right.
std::string faultOf(Options const & options, std::size_t files) {
  if (options.help)
    return "";
  if (files != 1)
    return files == 0 ? "a file is missing" : "more than one file is named";
  return options.json && options.report ? "--json has the report in it; --report prints it alone" : "";
}

} // namespace

std::optional<Options> readOptions(std::vector<std::wstring> const & words, std::string & reason) {
  Options options;
  std::size_t files = 0;
  for (std::size_t i = 0; i < words.size(); ++i) {
    std::wstring const & word = words[i];
    if (setFlag(options, word))
      continue;
    if (word == L"--symbols") {
      if (++i == words.size() || words[i].empty()) {
        reason = "--symbols needs a folder";
        return std::nullopt;
      }
      options.symbols.emplace_back(words[i]);
    } else if (word.starts_with(L"-")) {
      reason = "there is no option " + toUtf8(std::wstring_view(word));
      return std::nullopt;
    } else {
      options.file = word;
      ++files;
    }
  }
  reason = faultOf(options, files);
  return reason.empty() ? std::optional(options) : std::nullopt;
}

char const * usage() {
  return "usage: kivcrash FILE [--all-threads] [--modules] [--symbols DIR]... [--json]\n"
         "       kivcrash FILE --report\n"
         "       kivcrash --help\n"
         "\n"
         "Tells where a program failed. FILE is what it left behind in the temporary folder: the archive\n"
         "(.crash), the minidump (.dmp) or the report (.log). Printed are the exception, program, versions,\n"
         "system, plug-ins, and the stack of the failing thread with function, file and line.\n"
         "\n"
         "  --all-threads  the stacks of all threads\n"
         "  --modules      all modules: address, version, and the files that were used for them\n"
         "  --report       only the report, without its scrambling, as it was written\n"
         "  --symbols DIR  look for programs, DLLs and their debug files (NAME.debug) in DIR, DIR\\.debug and\n"
         "                 the folders below DIR that the paths of the modules end in; may be repeated\n"
         "  --json         the same as one JSON object, in UTF-8\n"
         "\n"
         "Modules are also looked for beside FILE, and where they were on the machine that failed, unless\n"
         "that was in the network. A file of another build is not used, and named where no other one fits.\n"
         "Exit code 0: all that was asked for is there; 1: FILE cannot be read, is damaged or foreign, or\n"
         "something is missing: messages say what, and what is known is printed; 2: wrong usage.\n";
}

} // namespace kivcrash
