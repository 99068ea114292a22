#include "aevent_names.hpp"

#include "atrace.hpp"
#include "base/modules.hpp"

#include <cstring>
#include <iterator>

namespace {

char const * eventNames[] = {
    "__FIRST__",
#define KIV_EVENT(name) #name,
#include "detail/aevent_types.inc"
    "__LAST__",
};

constexpr unsigned kLineSameName = 246;

constexpr unsigned long eventCount = static_cast<unsigned long>(std::size(eventNames));
static_assert(eventCount == KIV_EVENT_LAST - KIV_EVENT_FIRST + 1);

} // namespace

char const ** Kiv_GetEventNames() { return eventNames; }

unsigned long Kiv_GetEventCount() { return eventCount; }

unsigned long Kiv_GetEventIndexOfName(char const * name) {
  for (unsigned long index = 1; name != nullptr && index < eventCount - 1; ++index)
    if (std::strcmp(eventNames[index], name) == 0)
      return index;
  return 0;
}

KivEventType Kiv_GetEventTypeOfName(char const * name) {
  unsigned long const index = Kiv_GetEventIndexOfName(name);
  return index != 0 ? static_cast<KivEventType>(KIV_EVENT_FIRST + index) : KIV_EVENT_LAST;
}

void Kiv_CheckEventNames() {
  for (unsigned long a = 0; a < eventCount; ++a)
    for (unsigned long b = a + 1; b < eventCount; ++b)
      if (std::strcmp(eventNames[a], eventNames[b]) == 0)
        displayErrorMessage(kivara::modules::kAevent, kLineSameName);
}
