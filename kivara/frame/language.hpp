#pragma once
/// \file
/// The choice of the language at the start.

namespace kivara {

/// Reads the list of languages, makes the first one current, and then the one that the option "lang" gives: a decimal
/// identifier, which is not checked, or the native name of a language or of its country, the English name of the language, or
/// its ISO 639 code. A value that matches no language is reported on the debug output.
void chooseLanguage();

} // namespace kivara
