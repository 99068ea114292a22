#include "model/layout/lanes.hpp"

#include <algorithm>

namespace modeler {

Lanes lanesFor(ISequence<Span> const & spans) {
  ISequence<ISequence<Span>> taken;
  Lanes result{{}, 0};
  for (Span const & span : spans) {
    auto const isFree = [&span](ISequence<Span> const & lane) {
      return std::none_of(lane.begin(), lane.end(),
                          [&span](Span const & other) { return other.from <= span.to && span.from <= other.to; });
    };
    auto lane = std::find_if(taken.begin(), taken.end(), isFree);
    if (lane == taken.end())
      lane = taken.insert(lane, ISequence<Span>());
    lane->push_back(span);
    result.lanes.push_back(lane - taken.begin());
  }
  result.count = static_cast<long>(taken.size());
  return result;
}

} // namespace modeler
