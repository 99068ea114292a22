#include "fatal_exit.hpp"

#include "support/imports/import_hook.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <utility>

namespace kivtest {
namespace {

std::vector<FatalExit> fatalExits;

void WINAPI record(UINT action, char const * text) { fatalExits.push_back({action, text}); }

class Redirection : public testing::Environment {
public:
  void SetUp() override {
    support::replaceImports(GetModuleHandleA("kivara.dll"), "kernel32.dll",
                            {{"FatalAppExitA", reinterpret_cast<void *>(record)}});
  }
  void TearDown() override {
    for (FatalExit const & each : fatalExits)
      ADD_FAILURE() << "the process would have ended: " << each.text;
  }
};

testing::Environment const * const redirection = testing::AddGlobalTestEnvironment(new Redirection);

} // namespace

std::vector<FatalExit> takeFatalExits() { return std::exchange(fatalExits, {}); }

} // namespace kivtest
