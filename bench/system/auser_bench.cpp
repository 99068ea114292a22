// The account of this process, which the system was asked for before, beside a copy of two strings.

#include "auser.hpp"

#include "acmdline.hpp"
#include "support/ratio.hpp"

#include <utility>

using SV::String;

namespace {

/// The search asks the command line.
void startProgram() {
  static char name[] = "kivara_bench";
  static char * words[] = {name};
  static bool isStarted = false;
  if (!std::exchange(isStarted, true))
    KivCmdline::init(1, words, true, "log");
}

bench::Pair const again{"Account of the process, asked again", bench::atMost(2.0),
                        [](benchmark::State & state) {
                          startProgram();
                          String user;
                          String domain;
                          if (!Kiv_GetCurrentUserAndDomain(user, domain))
                            state.SkipWithError("no account");
                          for (auto _ : state) {
                            benchmark::DoNotOptimize(Kiv_GetCurrentUserAndDomain(user, domain));
                            benchmark::ClobberMemory();
                          }
                        },
                        "a copy of two strings",
                        [](benchmark::State & state) {
                          String const knownUser = "worker";
                          String const knownDomain = "SALES";
                          String user;
                          String domain;
                          for (auto _ : state) {
                            user = knownUser;
                            domain = knownDomain;
                            benchmark::DoNotOptimize(&user);
                            benchmark::DoNotOptimize(&domain);
                            benchmark::ClobberMemory();
                          }
                        }};

} // namespace
