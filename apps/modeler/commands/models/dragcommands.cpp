#include "commands/models/dragcommands.hpp"

#include "texts/dragtexts.hpp"

using SV::String;

namespace modeler {

Commands DragCommands::GetCommands() {
  return {withKey({MENU_EDIT, EDIT_COPY, named(kCopyActivity), [this] { copy(); }}, control('C')),
          withKey({MENU_EDIT, EDIT_PASTE, named(kPasteActivity), [this] { paste(); }}, control('V'))};
}

/// The text counts as dragged until it is pasted, so that it can be dropped in either way.
void DragCommands::copy() {
  ProcessWindow * const window = documents_.GetFront();
  String const activity = window != nullptr ? window->SelectedActivity() : String();
  if (activity.Len() > 0)
    KivDragManager::BeginDragAction(activity);
  else
    KivInfoBox(&frame_, text(window != nullptr ? kNoActivity : Text::NothingToSave)).Execute();
}

void DragCommands::paste() {
  if (KivDragManager::GetDragType() != KivDragText) {
    KivInfoBox(&frame_, text(kNothingCopied)).Execute();
    return;
  }
  String const activity = KivDragManager::GetDragContent();
  KivDragManager::EndDragAction();
  target_().TakeText(activity);
}

} // namespace modeler
