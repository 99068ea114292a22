// string_assertions WHAT: breaks one of the rules that String asserts, and ends with 0 when it gets that far.

#include "support/harness/process_guard.hpp"
#include "tools/string.hpp"

#include <cstring>

using SV::String;

namespace {

/// makeUnique on a block whose length was overwritten.
void makeUniqueWithLength(std::uint32_t length) {
  String text("text");
  auto * const block = const_cast<SV::StringData *>(text.block());
  block->nLen = static_cast<std::int32_t>(length);
  text.makeUnique();
  block->nLen = 4;
}

} // namespace

int main(int argc, char ** argv) {
  support::ProcessGuard const guard;
  char const * const what = argc == 2 ? argv[1] : "";
  if (std::strcmp(what, "last-of-empty") == 0)
    return String().lastChar();
  if (std::strcmp(what, "last") == 0)
    return String("text").lastChar() == 't' ? 0 : 1;
  if (std::strcmp(what, "high") == 0)
    makeUniqueWithLength(0xCD000004);
  else if (std::strcmp(what, "low") == 0)
    makeUniqueWithLength(0x12CD0004);
  else if (std::strcmp(what, "real-low") == 0)
    String::ofLength(0x00CDFFFF).makeUnique();
  else if (std::strcmp(what, "beside") == 0) {
    makeUniqueWithLength(0xCC000004);
    makeUniqueWithLength(0xCE000004);
    makeUniqueWithLength(0x00CCFFFF);
    makeUniqueWithLength(0x00CE0000);
  } else
    return 1;
  return 0;
}
