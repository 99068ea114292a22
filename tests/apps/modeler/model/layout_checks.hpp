#pragma once
/// \file
/// What holds for every layout of a process model.

#include "model/layout/layout.hpp"

#include <ostream>
#include <string>
#include <vector>

namespace modeler {

/// Letters of 7 by 16 pixels, or that many times as large.
TextFacts plainTexts(long scale = 1);

/// Lines such as "arrow 3 crosses box 1"; none when all is well:
/// - no two boxes overlap, and each holds its texts,
/// - arrows turn at right angles, begin and end at the edges of their boxes, enter with room for a head, and cross no box,
/// - no two arrows run on one another,
/// - labels lie on no box, no arrow and no other label,
/// - those that lead back rise above their boxes and come down on them,
/// - all of it lies in the picture.
std::vector<std::string> faultsOf(ProcessModel const & model, Layout const & layout);

/// For a model in short: "a>b b>c?yes" makes nodes in the order of their first names, and a flow for each word. A node is
/// a decision when its letter is a capital.
ProcessModel modelOf(std::string const & flows);

} // namespace modeler
