#include "acleanup.hpp"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <utility>

using SV::String;

namespace {

bool isSameName(String const & a, String const & b) {
  return a.block() == b.block() || (a.Len() == b.Len() && SV::h_strcmp(a.c_str(), b.c_str()) == 0);
}

} // namespace

KivCleanUpAction::~KivCleanUpAction() = default;

KivFileCleanUpAction::KivFileCleanUpAction(String const & fileName) : fileName_(fileName) {}
KivFileCleanUpAction::~KivFileCleanUpAction() = default;

bool KivFileCleanUpAction::execute() { return std::remove(fileName_.c_str()) == 0; }

KivCleanUp & KivCleanUp::Instance() {
  static KivCleanUp theRegistry;
  return theRegistry;
}

KivCleanUp::KivCleanUp() { setEventHandler(KIV_EVENT_AppExit, &KivCleanUp::_onExit); }

KivCleanUp::~KivCleanUp() {
  _onExit(nullptr);
  manualSignOff();
}

void KivCleanUp::AddAction(KivCleanUpAction * action) {
  std::unique_ptr<KivCleanUpAction> owner(action);
  if (owner != nullptr)
    actions_.push_back(std::move(owner));
}

void KivCleanUp::AddFileCleanUpAction(String const & file) { AddAction(new KivFileCleanUpAction(file)); }

void KivCleanUp::RemoveFileCleanUpAction(String const & file) {
  auto const place = std::find_if(actions_.begin(), actions_.end(), [&file](auto const & action) {
    auto const * const each = dynamic_cast<KivFileCleanUpAction const *>(action.get());
    return each != nullptr && isSameName(each->GetFileName(), file);
  });
  if (place != actions_.end())
    actions_.erase(place);
}

void KivCleanUp::_onExit(KivEvent *) {
  // By index, and taken out of the list before it runs, since an action may add and remove others.
  for (std::size_t place = 0; place < actions_.size(); ++place) {
    std::unique_ptr<KivCleanUpAction> const action = std::move(actions_[place]);
    if (action != nullptr)
      action->execute();
  }
  actions_.clear();
}
