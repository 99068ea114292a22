// search [-i] [-w] [-r] PATTERN FILE...: the lines of files that a pattern with * and ? matches somewhere, as "file:line:text".
//
//   -i  not case-sensitive
//   -w  whole words only
//   -r  the pattern is a regular expression
//
// Ends with 0 when a line was found, 1 when none was, 2 when something could not be read or understood.
//
// A sample of the matchers: which one it is, the search itself does not know.

#include "aregex.hpp"
#include "sv/resource.hpp"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <optional>
#include <string>

namespace {

enum ExitCode : int { kFound = 0, kNotFound = 1, kFailed = 2 };

struct Options {
  bool ignoreCase = false;
  bool wholeWords = false;
  bool isExpression = false;
  int next = 1; ///< the first argument that is no option; -1 when one is wrong
};

Options readOptions(int count, char ** arguments) {
  Options options;
  for (; options.next < count && arguments[options.next][0] == '-'; ++options.next) {
    std::string const option = arguments[options.next];
    options.ignoreCase |= option == "-i";
    options.wholeWords |= option == "-w";
    options.isExpression |= option == "-r";
    if (option != "-i" && option != "-w" && option != "-r") {
      options.next = -1;
      return options;
    }
  }
  return options;
}

/// Either kind of matcher, held by value: the interface has no virtual destructor.
class Search {
public:
  Search(char const * pattern, Options const & options) {
    if (options.isExpression)
      compile(pattern, options.ignoreCase ? 4 | 2 : 4);
    else
      matcher_ = &wildcards_.emplace(pattern, (options.ignoreCase ? 1 : 0) | (options.wholeWords ? 4 : 2));
  }
  Search(Search const &) = delete;
  Search & operator=(Search const &) = delete;

  KivMatcherI const * matcher() const { return matcher_; } ///< null when there is an error
  SV::String const & error() const { return error_; }

private:
  /// Without a box: this program has no window.
  void compile(char const * pattern, int flags) {
    KivRegEx test;
    KivRegEx::KivRegExError const code = test.regComp(pattern, flags, 0);
    if (code != KivRegEx::Success)
      error_ = test.fmtErrMsg(code);
    else
      matcher_ = &expression_.emplace(pattern, flags);
  }

  std::optional<KivRegEx2> expression_;
  std::optional<KivJokerz2> wildcards_;
  KivMatcherI const * matcher_ = nullptr;
  SV::String error_;
};

ExitCode searchFile(char const * name, KivMatcherI const & matcher) {
  std::ifstream file(name);
  if (!file) {
    std::fprintf(stderr, "search: cannot read %s\n", name);
    return kFailed;
  }
  ExitCode code = kNotFound;
  std::string line;
  for (long number = 1; std::getline(file, line); ++number)
    if (matcher.match(line.c_str()) != 0) {
      std::printf("%s:%ld:%s\n", name, number, line.c_str());
      code = kFound;
    }
  return code;
}

} // namespace

int main(int count, char ** arguments) {
  Options const options = readOptions(count, arguments);
  if (options.next < 0 || options.next + 1 >= count) {
    std::fputs("usage: search [-i] [-w] [-r] PATTERN FILE...\n", stderr);
    return kFailed;
  }
  SV::ResMgr texts("language\\2057\\kivara72.dll"); // of errors
  SV::Resource::SetResManager(&texts);
  Search const search(arguments[options.next], options);
  if (search.matcher() == nullptr) {
    std::fprintf(stderr, "search: %s\n", search.error().c_str());
    return kFailed;
  }
  bool isFound = false, isFailed = false;
  for (int i = options.next + 1; i < count; ++i) {
    ExitCode const code = searchFile(arguments[i], *search.matcher());
    isFound |= code == kFound;
    isFailed |= code == kFailed;
  }
  return isFailed ? kFailed : isFound ? kFound : kNotFound;
}
