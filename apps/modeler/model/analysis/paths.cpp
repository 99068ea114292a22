#include "model/analysis/paths.hpp"

#include "model/excerpt.hpp"

using SV::String;

namespace modeler {
namespace {

constexpr std::size_t kMostSteps = 100'000;

/// Of a longer path, nodes in the middle are left out.
constexpr std::size_t kMostShown = 10;

/// A search in depth without recursion, since a path may be as long as the file.
class Search {
public:
  Search(ProcessModel const & model, std::size_t most)
      : model_(model), most_(most), targets_(model.nodes.size()), isOnPath_(model.nodes.size()) {
    for (Flow const & flow : model.flows)
      targets_[flow.from].push_back(flow.to);
  }

  Paths run() {
    for (std::size_t node = 0; node < model_.nodes.size() && found_.areAll; ++node)
      if (model_.nodes[node].kind == NodeKind::Start)
        searchFrom(node);
    return found_;
  }

private:
  void searchFrom(std::size_t start) {
    enter(start);
    while (!path_.empty() && found_.areAll)
      step();
    while (!path_.empty())
      leave();
  }

  void step() {
    if (++steps_ > kMostSteps) {
      found_.areAll = false;
      return;
    }
    ISequence<std::size_t> const & targets = targets_[path_.back()];
    if (next_.back() == targets.size()) {
      leave();
      return;
    }
    std::size_t const target = targets[next_.back()++];
    if (!isOnPath_[target])
      enter(target);
  }

  void enter(std::size_t node) {
    path_.push_back(node);
    next_.push_back(0);
    isOnPath_[node] = true;
    if (model_.nodes[node].kind == NodeKind::End)
      keep();
  }

  void leave() {
    isOnPath_[path_.back()] = false;
    path_.pop_back();
    next_.pop_back();
  }

  void keep() {
    if (found_.paths.size() == most_)
      found_.areAll = false;
    else
      found_.paths.push_back(path_);
  }

  ProcessModel const & model_;
  std::size_t most_;
  ISequence<ISequence<std::size_t>> targets_;
  ISequence<bool> isOnPath_;
  Path path_;
  ISequence<std::size_t> next_; ///< for each node of the path, the first of its flows that was not tried yet
  std::size_t steps_ = 0;
  Paths found_{{}, true};
};

} // namespace

Paths pathsOf(ProcessModel const & model, std::size_t most) { return Search(model, most).run(); }

String pathText(ProcessModel const & model, Path const & path) {
  String text;
  for (std::size_t place = 0; place < path.size(); ++place) {
    if (path.size() > kMostShown && place == kMostShown - 1) {
      text += " > ...";
      place = path.size() - 1;
    }
    text += place > 0 ? " > " : "";
    text += excerptOfWord(model.nodes[path[place]].id);
  }
  return text;
}

} // namespace modeler
