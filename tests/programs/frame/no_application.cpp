// A product that forgot its application object: it has the library's WinMain and nothing else.

#include "aentry.hpp"

/// Keeps the library among the imports.
auto const entry = &Kiv_ToolkitEntry;
