#include "system/processes/redirection.hpp"

#include <algorithm>

using SV::String;

namespace kivara {
namespace {

constexpr std::int32_t kOperatorLength = 2;

/// The place of a character at or after another one; the end of the line if there is none.
std::int32_t placeOf(String const & line, char c, std::int32_t from) {
  std::int32_t place = from;
  while (place < line.Len() && line.charAt(place) != c)
    ++place;
  return place;
}

/// The place of the stream's first operator at or after another place; -1 if there is none.
std::int32_t operatorPlace(String const & line, char stream, std::int32_t from) {
  for (std::int32_t place = placeOf(line, stream, from); place < line.Len(); place = placeOf(line, stream, place + 1))
    if (line.charAt(place + 1) == '>')
      return place;
  return -1;
}

Redirection readAt(String const & line, std::int32_t place) {
  Redirection found;
  if (place < 0)
    return found;
  found.place = place;
  found.appends = line.charAt(place + kOperatorLength) == '>';
  std::int32_t const name = place + kOperatorLength + (found.appends ? 1 : 0);
  std::int32_t const end =
      line.charAt(name) == '"' ? std::min(placeOf(line, '"', name + 1) + 1, line.Len()) : placeOf(line, ' ', name);
  found.name = line.substr(name, end - name);
  found.length = end - place;
  return found;
}

String without(String const & line, Redirection const & redirection) {
  return redirection.isThere() ? line.substr(0, redirection.place) + line.substr(redirection.end()) : line;
}

} // namespace

Redirections findRedirections(String const & line) {
  Redirections found{readAt(line, operatorPlace(line, '1', 0)), readAt(line, operatorPlace(line, '2', 0))};
  auto const isInside = [](Redirection const & inner, Redirection const & outer) {
    return inner.isThere() && outer.isThere() && inner.place > outer.place && inner.place < outer.end();
  };
  if (isInside(found.error, found.output))
    found.error = readAt(line, operatorPlace(line, '2', found.output.end()));
  else if (isInside(found.output, found.error))
    found.output = readAt(line, operatorPlace(line, '1', found.error.end()));
  return found;
}

String withoutRedirections(String const & line, Redirections const & redirections) {
  bool const isErrorLast = redirections.error.place > redirections.output.place;
  // From the back, so that the place of the other one stays right.
  Redirection const & last = isErrorLast ? redirections.error : redirections.output;
  Redirection const & first = isErrorLast ? redirections.output : redirections.error;
  return without(without(line, last), first);
}

} // namespace kivara
