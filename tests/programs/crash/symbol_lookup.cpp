// symbol_lookup FILE OFFSETS: for each line of OFFSETS, an offset in hexadecimal digits, the functions there from the inside out,
// a line each: name, tab, file, tab, line; then an empty line.

#include "common/wholefile.hpp"
#include "handles/handle.hpp"
#include "symbols/debugsymbols.hpp"

#include <cstdio>
#include <cstdlib>
#include <exception>

int main(int count, char ** words) {
  try {
    std::string reason;
    auto const image = kivcrash::Image::read(
        std::make_shared<std::string const>(kivcrash::readWhole(count == 3 ? words[1] : "")), reason);
    if (!image)
      throw std::runtime_error(reason);
    kivcrash::DebugSymbols symbols(*image);
    handles::Stream const wanted(std::fopen(words[2], "r"));
    char line[64];
    while (std::fgets(line, sizeof line, wanted.get()) != nullptr) {
      for (kivcrash::Location const & each : symbols.at(std::strtoull(line, nullptr, 16)))
        std::printf("%s\t%s\t%u\n", each.function.c_str(), each.place.file.c_str(), each.place.line);
      std::puts("");
    }
    return 0;
  } catch (std::exception const & error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
