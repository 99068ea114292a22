// A whole process on the library, from its start to its exit, beside one that makes the same window without it.

#include "support/program.hpp"
#include "support/ratio.hpp"

namespace {

bench::Pair const pairs[] = {
    {"Process: apps/minimal from start to exit", bench::atMost(1.5), bench::wholeProcess("minimal.exe", "-close"),
     "a bare window", bench::wholeProcess("bare_window.exe", "")},
};

} // namespace
