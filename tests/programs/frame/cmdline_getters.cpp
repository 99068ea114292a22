// Prints what every getter of KivCmdline answers to this program's own command line, one "name=value" a line. The
// environment variable KIVTEST_LOG_OPTION, if set, makes it a host without a GUI and names its log option.

#include "frame/cmdline_getters.hpp"

#include <cstdio>
#include <cstdlib>

/// Words go to the test as they stand: the runtime must not take '*' and '?' for file patterns.
extern "C" {
int _dowildcard = 0;
}

namespace {

void print(char const * name, char const * value) { std::printf("%s=%s\n", name, value); }

void printFlags() {
  for (auto const & flag : kivtest::kFlagGetters)
    if (flag.get())
      print(flag.word, "on");
}

void printValues(KivCmdline const & cmdline) {
  for (auto const & option : kivtest::kTextGetters)
    print(option.option, (cmdline.*option.get)().c_str());
  for (auto const & option : kivtest::kNumberGetters)
    std::printf("%s=%d\n", option.option, (cmdline.*option.get)());
  for (char const * const name : kivtest::kNamesWithoutGetter)
    print(name, cmdline.getValue(name).c_str());
  SV::String script("untouched");
  bool const hasScript = cmdline.getStartupKivScript(script);
  std::printf("e=%d,%s\n", hasScript, script.c_str());
  print("v", cmdline.getLoginSchemaVersion().c_str());
  std::printf("wslogformat=%d\n", cmdline.getWSLogFormat());
  print("dialog log", cmdline.getModalDialogSuppressionLogfileName().c_str());
}

} // namespace

int main(int argc, char ** argv) {
  char const * const logOption = std::getenv("KIVTEST_LOG_OPTION");
  KivCmdline::init(argc, argv, logOption == nullptr, logOption);
  std::printf("count=%d\n", KivCmdline::Instance().getCount());
  printFlags();
  printValues(KivCmdline::Instance());
  return 0;
}
