// A plug-in with a listener of static lifetime.

#include "event_survivor.hpp"

namespace {

Survivor survivor("static of the DLL");

} // namespace
