#pragma once
/// \file
/// The choice of the language at the start.

namespace kivara {

/// Reads the list of languages, whose first is then current, and takes the one that the option "lang" names: a decimal
/// identifier, which is not tested, or a language's own name, its country's own name, its English name or its ISO 639
/// code. The English name of a country is not among them. A value that names none is told on the debug output.
void chooseLanguage();

} // namespace kivara
