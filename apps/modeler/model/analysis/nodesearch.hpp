#pragma once
/// \file
/// Nodes of a process model, by what their texts say.

#include "model/processmodel.hpp"

namespace modeler {

enum class SearchKind { Plain, Wildcards, Expression };

/// What the user looks for. It may stand anywhere in a text.
struct Search {
  SV::String what;
  SearchKind kind = SearchKind::Plain;
  bool isCaseSensitive = false;
};

/// A search, ready for use.
class NodeMatcher {
public:
  /// \param saysFault  whether the library shows what is wrong with a pattern that it cannot use
  NodeMatcher(Search const & search, bool saysFault);

  /// False for such a pattern: it then matches nothing.
  bool IsUsable() const;

  bool Matches(Node const & node) const;

private:
  bool usesWildcards_;
  KivRegEx expression_;
  KivJokerz wildcards_;
};

inline constexpr std::size_t kNoNode = static_cast<std::size_t>(-1);

/// The place of the next node that matches: from the one after \p from on, and from the last one round to \p from itself.
/// \param from  a node's place, or kNoNode to begin with the first one
/// \return kNoNode for none
std::size_t nextMatch(ProcessModel const & model, NodeMatcher const & matcher, std::size_t from);

} // namespace modeler
