#include "diagnostics/messagename.hpp"

#include "tools/winapi.hpp"

#include <algorithm>
#include <array>

namespace kivara {
namespace {

struct Name {
  unsigned message;
  char const * text;
};

constexpr auto namesByNumber() {
  std::array names{
#define KIV_MESSAGE(name) Name{name, #name},
#include "diagnostics/messagenames.inc"
#undef KIV_MESSAGE
  };
  std::sort(names.begin(), names.end(), [](Name const & a, Name const & b) { return a.message < b.message; });
  return names;
}

constexpr auto kNames = namesByNumber();
static_assert(kNames.size() == 227);

} // namespace

char const * messageName(unsigned message) {
  auto const found = std::lower_bound(kNames.begin(), kNames.end(), message,
                                      [](Name const & name, unsigned number) { return name.message < number; });
  return found != kNames.end() && found->message == message ? found->text : "unknown";
}

} // namespace kivara
