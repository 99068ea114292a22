#pragma once
/// \file
/// Names of window messages. Internal.

namespace kivara {

/// The name of the platform's constant for a message, such as "WM_SIZE"; "unknown" if the table has none.
char const * messageName(unsigned message);

} // namespace kivara
