#pragma once
/// \file
/// Short forms of what tests ask a parser.

#include "aparser.hpp"

#include "text/readers/textfile.hpp"

#include <string>
#include <string_view>

/// A reader, for a parser to own, over a file of these bytes.
inline KivLineReader * textOf(std::string_view bytes) { return new KivTextFileReader(writeText(bytes).c_str()); }

/// The next token; "(end)" at the end of the input.
inline std::string next(KivTextParser & parser) {
  SV::String token;
  return parser.GetNextToken(token) ? bytesOf(token) : "(end)";
}

/// All tokens from here to the end of the input.
inline std::vector<std::string> tokensOf(KivTextParser & parser) {
  std::vector<std::string> tokens;
  for (SV::String token; parser.GetNextToken(token);)
    tokens.push_back(bytesOf(token));
  return tokens;
}

inline std::string lookAhead(KivTextParser const & parser) {
  SV::String token;
  parser.GetLookAheadToken(token);
  return bytesOf(token);
}

inline std::string spaces(KivTextParser const & parser) {
  SV::String token;
  parser.GetSpacesToken(token);
  return bytesOf(token);
}
