#pragma once
/// \file
/// What the program knows about its start.

#include "kivara.hpp"

namespace modeler {

/// A fact's name and value.
struct Fact {
  SV::String name;
  SV::String value;
};

/// Version, command line, folders, font, system and what is suppressed, in the order to show them in, in the current language.
ISequence<Fact> startFacts();

} // namespace modeler
