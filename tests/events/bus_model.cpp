#include "events/bus_model.hpp"

#include <algorithm>

namespace kivtest {

void BusModel::add(int type, void const * listener, int handler, int priority) {
  std::vector<ModelAction> & actions = sequences_[type].actions;
  std::size_t place = 0;
  while (place < actions.size() && actions[place].priority > priority)
    ++place;
  actions.insert(actions.begin() + static_cast<std::ptrdiff_t>(place), {listener, handler, priority, false});
}

void BusModel::signOff(void const * listener) {
  auto const isIts = [listener](ModelAction const & action) { return action.listener == listener; };
  for (auto & [type, sequence] : sequences_) {
    std::vector<ModelAction> & actions = sequence.actions;
    bool const isLive = std::any_of(actions.begin(), actions.end(),
                                    [&](ModelAction const & action) { return isIts(action) && !action.removed; });
    if (!isLive)
      continue;
    if (!sequence.firing)
      std::erase_if(actions, isIts);
    for (ModelAction & action : actions)
      action.removed = action.removed || isIts(action);
  }
}

void BusModel::begin(int type) {
  Sequence & sequence = sequences_[type];
  walks_.push_back({type, 0, sequence.firing});
  sequence.firing = true;
}

ModelAction const * BusModel::next() {
  Walk & walk = walks_.back();
  std::vector<ModelAction> const & actions = sequences_[walk.type].actions;
  while (walk.cursor < actions.size()) {
    ModelAction const & action = actions[walk.cursor++];
    if (!action.removed && action.handler >= 0)
      return &action;
  }
  return nullptr;
}

void BusModel::end() {
  sequences_[walks_.back().type].firing = walks_.back().firingBefore;
  walks_.pop_back();
}

void BusModel::abandon() { walks_.pop_back(); }

bool BusModel::isWalked(int type) const {
  return std::any_of(walks_.begin(), walks_.end(), [type](Walk const & walk) { return walk.type == type; });
}

bool BusModel::onlyMarks(int type) const {
  auto const entry = sequences_.find(type);
  return entry != sequences_.end() && entry->second.firing;
}

std::vector<ModelAction> const & BusModel::actions(int type) const {
  static std::vector<ModelAction> const none;
  auto const entry = sequences_.find(type);
  return entry != sequences_.end() ? entry->second.actions : none;
}

} // namespace kivtest
