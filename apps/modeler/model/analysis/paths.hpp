#pragma once
/// \file
/// The ways through a process model.

#include "model/processmodel.hpp"

namespace modeler {

/// Nodes in the order in which a case passes them, from a start to an end, each at most once.
using Path = ISequence<std::size_t>;

struct Paths {
  ISequence<Path> paths; ///< in the order of the starts and of the flows in the file
  bool areAll;           ///< false: the search ended early, there may be more
};

/// \param most  that many paths at most. A large model may have too many ways to try: the search then ends early too
Paths pathsOf(ProcessModel const & model, std::size_t most);

/// The identifiers of the nodes, shortened for a line on the screen.
SV::String pathText(ProcessModel const & model, Path const & path);

} // namespace modeler
