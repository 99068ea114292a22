// A general plug-in, which prints that it is there.

#include <cstdio>

namespace {

struct Greeting {
  Greeting() { std::puts("plain is there"); }
} const greeting;

} // namespace
