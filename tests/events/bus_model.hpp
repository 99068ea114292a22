#pragma once
/// \file
/// The rules of the event bus on plain lists, to hold the dispatcher against.

#include <cstddef>
#include <map>
#include <vector>

namespace kivtest {

struct ModelAction {
  void const * listener;
  int handler; ///< -1: none
  int priority;
  bool removed;
};

/// Types, listeners and handlers are what the test takes for them. Walks nest; next, end and abandon are about the
/// innermost one.
class BusModel {
public:
  void add(int type, void const * listener, int handler, int priority);
  void signOff(void const * listener);

  void begin(int type);
  /// The action to be called now; null when the walk has come to its end.
  ModelAction const * next();
  /// The walk came to its end.
  void end();
  /// It was left by an exception.
  void abandon();

  std::size_t depth() const { return walks_.size(); }
  /// Whether any of the walks under way is of that type.
  bool isWalked(int type) const;
  /// Whether a listener that leaves is only marked.
  bool onlyMarks(int type) const;
  std::vector<ModelAction> const & actions(int type) const;

private:
  struct Sequence {
    std::vector<ModelAction> actions;
    bool firing = false;
  };
  struct Walk {
    int type;
    std::size_t cursor;
    bool firingBefore;
  };

  std::map<int, Sequence> sequences_;
  std::vector<Walk> walks_;
};

} // namespace kivtest
