#include "base/modules.hpp"

#include <gtest/gtest.h>

namespace modules = kivara::modules;

namespace {

// The codes of internal errors, "acmdline-109", begin with these: those who support the products look them up.
TEST(ModuleNames, StayAsTheyAreKnownToSupport) {
  struct {
    char const * name;
    char const * known;
  } const rows[] = {
      {modules::kAapp, "aapp.cpp"},         {modules::kAacceler, "aacceler.cpp"}, {modules::kAcmdline, "acmdline.cpp"},
      {modules::kAdattime, "adattime.cpp"}, {modules::kAebox, "aebox.cpp"},       {modules::kAevent, "aevent.cpp"},
      {modules::kAfileman, "afileman.cpp"}, {modules::kAinter, "ainter.cpp"},     {modules::kAlog, "alog.cpp"},
      {modules::kAtools, "atools.cpp"},
  };
  for (auto const & row : rows)
    EXPECT_STREQ(row.name, row.known);
}

} // namespace
