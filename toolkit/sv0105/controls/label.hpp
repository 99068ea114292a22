#pragma once
/// \file
/// Labels with a mnemonic.

#include "tools/string.hpp"

namespace SV::detail {

/// The system's way of writing a label of the toolkit: "&" before the mnemonic, and twice for itself.
String systemLabel(String const & text);

/// A label of the toolkit that shows every character of \p text.
String literalLabel(String const & text);

} // namespace SV::detail
