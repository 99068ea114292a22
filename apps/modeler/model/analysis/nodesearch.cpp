#include "model/analysis/nodesearch.hpp"

#include <cstring>

using SV::String;

namespace modeler {
namespace {

// Flags of the two matchers.
constexpr int kExpressionIgnoresCase = 2;
constexpr int kExpressionHasNoOffsets = 4;
constexpr int kWildcardsIgnoreCase = 1;
constexpr int kWildcardsAnywhere = 2;

/// An expression for the text itself.
String expressionFor(String const & plain) {
  String expression;
  for (char const * c = plain.c_str(); *c != '\0'; ++c) {
    if (std::strchr(".[\\(){|*+?^$", *c) != nullptr)
      expression += '\\';
    expression += *c;
  }
  return expression;
}

} // namespace

NodeMatcher::NodeMatcher(Search const & search, bool saysFault)
    : usesWildcards_(search.kind == SearchKind::Wildcards),
      wildcards_(usesWildcards_ ? KivJokerz(search.what.c_str(),
                                            kWildcardsAnywhere | (search.isCaseSensitive ? 0 : kWildcardsIgnoreCase))
                                : KivJokerz()) {
  int const flags = kExpressionHasNoOffsets | (search.isCaseSensitive ? 0 : kExpressionIgnoresCase);
  String const pattern = search.kind == SearchKind::Plain ? expressionFor(search.what) : search.what;
  if (!usesWildcards_)
    expression_.regComp(pattern.c_str(), flags, saysFault ? 1 : 0);
}

bool NodeMatcher::IsUsable() const { return usesWildcards_ ? !!wildcards_ : !!expression_; }

bool NodeMatcher::Matches(Node const & node) const {
  char const * const text = node.text.c_str();
  return (usesWildcards_ ? wildcards_.match(text) : expression_.match(text)) != 0;
}

std::size_t nextMatch(ProcessModel const & model, NodeMatcher const & matcher, std::size_t from) {
  std::size_t const count = model.nodes.size();
  std::size_t const first = from < count ? from + 1 : 0;
  for (std::size_t step = 0; step < count; ++step)
    if (std::size_t const place = (first + step) % count; matcher.Matches(model.nodes[place]))
      return place;
  return kNoNode;
}

} // namespace modeler
