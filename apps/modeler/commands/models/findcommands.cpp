#include "commands/models/findcommands.hpp"

#include "dialogs/finddialog.hpp"
#include "texts/findtexts.hpp"

using SV::String;

namespace modeler {

Commands FindCommands::GetCommands() {
  return {separator(MENU_EDIT), withKey({MENU_EDIT, EDIT_FIND, named(kFind), [this] { ask(); }}, control('F')),
          withKey({MENU_EDIT, EDIT_FIND_NEXT, named(kFindNext), [this] { findNext(); }}, SV::KEY_F1 + 2)};
}

void FindCommands::ask() {
  if (documents_.GetFront() == nullptr) {
    say(text(Text::NothingToSave));
    return;
  }
  FindDialog dialog(frame_, search_);
  if (dialog.Execute() != SV::RET_OK)
    return;
  search_ = dialog.GetSearch();
  findNext();
}

void FindCommands::findNext() {
  ProcessWindow * const window = documents_.GetFront();
  if (search_.what.Len() == 0 || window == nullptr) {
    ask();
    return;
  }
  NodeMatcher const matcher(search_, true);
  if (!matcher.IsUsable()) {
    journal_.Add("no expression: " + search_.what);
    return;
  }
  std::size_t const node = nextMatch(window->GetModel(), matcher, window->GetSelected());
  if (node == kNoNode) {
    journal_.Add("not found: " + search_.what);
    say(filled(kNotFound, search_.what));
    return;
  }
  window->Select(node);
  journal_.Add("found: " + window->GetModel().nodes[node].text);
}

void FindCommands::say(String const & message) { KivInfoBox(&frame_, message).Execute(); }

} // namespace modeler
