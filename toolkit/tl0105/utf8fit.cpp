#include "utf8fit.hpp"

#include "tools/winapi.hpp"

namespace SV {
namespace {

constexpr std::size_t kMostBytesOfUnit = 3; // a lone surrogate is replaced by a character of that size
constexpr std::size_t kBytesOfPair = 4;

std::size_t bytesOfUnit(wchar_t unit) {
  if (unit < 0x80)
    return 1;
  return unit < 0x800 ? 2 : kMostBytesOfUnit;
}

} // namespace

std::size_t unitsThatFit(wchar_t const * wide, std::size_t units, std::size_t mostBytes) {
  if (units <= mostBytes / kMostBytesOfUnit)
    return units;
  for (std::size_t place = 0; place < units;) {
    bool const isPair = place + 1 < units && IS_SURROGATE_PAIR(wide[place], wide[place + 1]);
    std::size_t const bytes = isPair ? kBytesOfPair : bytesOfUnit(wide[place]);
    if (bytes > mostBytes)
      return place;
    mostBytes -= bytes;
    place += isPair ? 2 : 1;
  }
  return units;
}

} // namespace SV
