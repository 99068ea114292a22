#pragma once
/// \file
/// Who is at work, and where.

#include "background/startfacts.hpp"

namespace modeler {

/// The Windows account with its domain, the name that is shown for the user, whether that is an administrator, the account of the
/// database if there is one, and the identifiers of the machine, in the current language. Main thread.
ISequence<Fact> userFacts();

/// The name of a database account, or why there is none. A password is never shown.
SV::String accountText(KivDBUserUtils & account);

} // namespace modeler
