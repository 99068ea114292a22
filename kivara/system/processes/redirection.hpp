#pragma once
/// \file
/// Redirections of output that are written into a command line. Internal.

#include "tools/string.hpp"

namespace kivara {

/// One of the two; without a place there is none.
struct Redirection {
  std::int32_t place = -1; ///< of the operator
  std::int32_t length = 0; ///< of operator, append sign and name
  bool appends = false;
  SV::String name; ///< as written, with its quotes

  bool isThere() const { return place >= 0; }
  std::int32_t end() const { return place + length; }
};

struct Redirections {
  Redirection output; ///< "1>" or "1>>"
  Redirection error;  ///< "2>" or "2>>"
};

/// The first of each kind. One that lies inside the name of the other does not count.
Redirections findRedirections(SV::String const & line);

/// The line without them; the blanks around them stay.
SV::String withoutRedirections(SV::String const & line, Redirections const & redirections);

} // namespace kivara
