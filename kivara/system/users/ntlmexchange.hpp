#pragma once
/// \file
/// A password tested by an NTLM authentication of which this process plays both sides. Internal.

namespace kivara {

/// Whether the system accepts the account. The debug output says which step failed; the library of the system is given back.
/// None of the texts is null or changed.
bool passesNtlm(char * user, char * domain, char * password);

} // namespace kivara
