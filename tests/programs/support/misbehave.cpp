// misbehave WHAT: a process that does the one wrong thing that it is asked for, under the guards of the tests.

#include "support/harness/process_guard.hpp"
#include "support/memory/allocation.hpp"
#include "tools/string.hpp"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <stdexcept>

#include "tools/winapi.hpp"

namespace {

// The optimiser must not see through what is wrong.
template <class T> T * hidden(T * pointer) {
  T * volatile kept = pointer;
  return kept;
}

[[gnu::no_sanitize_undefined]] void write(char * address) { *static_cast<char volatile *>(hidden(address)) = 'x'; }
[[gnu::no_sanitize_undefined]] void read(char const * address) {
  static_cast<void>(*static_cast<char const volatile *>(hidden(address)));
}

void writeBehindNew() { write(new char[64] + 64); }
void readBehindCalloc() { read(static_cast<char *>(std::calloc(3, 16)) + 48); }
void writeBehindOddSize() {
  char * const block = hidden(new char[61]);
  write(block + 61);
  delete[] block; // in debug builds the three bytes before the page are looked at here
}
void writeBehindStringBlock() {
  SV::String text(SV::String::ofLength(300));
  write(text.writable() + 304);
}
void readAfterDelete() {
  char * const block = hidden(new char[64]);
  delete[] block;
  read(block);
}
void readReleasedString() {
  SV::String text("a text that is released");
  char const * const characters = hidden(text.c_str());
  text = "another";
  read(characters);
}
void freeTwice() {
  void * const block = std::malloc(64);
  hidden(std::free)(block);
  hidden(std::free)(block);
}
void freeTheMiddle() { hidden(std::free)(static_cast<char *>(std::malloc(64)) + 8); }
void readNull() { read(nullptr); }
[[gnu::no_sanitize_undefined]] void callNull() { hidden(static_cast<void (*)()>(nullptr))(); }
void callAbort() { std::abort(); }
void throwUncaught() { throw std::runtime_error("nobody catches this"); }
void hang() { Sleep(INFINITE); }
void openBox() { MessageBoxA(nullptr, "A question", "Left open", MB_OK); }

struct Deed {
  char const * name;
  void (*act)();
  bool underGuardPages;
};
constexpr Deed kDeeds[] = {
    {"write-behind-new", writeBehindNew, true},
    {"read-behind-calloc", readBehindCalloc, true},
    {"write-behind-odd-size", writeBehindOddSize, true},
    {"write-behind-string-block", writeBehindStringBlock, true},
    {"read-after-delete", readAfterDelete, true},
    {"read-released-string", readReleasedString, true},
    {"free-twice", freeTwice, true},
    {"free-the-middle", freeTheMiddle, true},
    {"read-null", readNull, false},
    {"call-null", callNull, false},
    {"abort", callAbort, false},
    {"throw", throwUncaught, false},
    {"hang", hang, false},
    {"box", openBox, false},
};

} // namespace

int main(int argc, char ** argv) {
  support::ProcessGuard const guard;
  std::printf("begun\n"); // stays in the buffer until somebody flushes it
  for (Deed const & deed : kDeeds)
    if (argc == 2 && std::strcmp(argv[1], deed.name) == 0) {
      if (!deed.underGuardPages)
        deed.act();
      support::GuardPages const guardPages;
      deed.act();
      return 0;
    }
  return 1;
}
