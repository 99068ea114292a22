// A general plug-in, which tells that it is there.

#include <cstdio>

namespace {

struct Greeting {
  Greeting() { std::puts("plain is there"); }
} const greeting;

} // namespace
