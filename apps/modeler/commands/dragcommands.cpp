#include "commands/dragcommands.hpp"

#include "texts/dragtexts.hpp"

using SV::String;

namespace modeler {
namespace {

constexpr SV::KeyCode letter(char which) { return static_cast<SV::KeyCode>(SV::KEY_A + (which - 'A')); }

} // namespace

DragCommands::DragCommands(SV::MDIFrame & frame, Documents & documents, std::function<TextTarget &()> target)
    : frame_(frame), documents_(documents), target_(std::move(target)) {
  keys_.InsertItem(EDIT_COPY, SV::KEY_CONTROL | letter('C'));
  keys_.InsertItem(EDIT_PASTE, SV::KEY_CONTROL | letter('V'));
  keys_.PushSelectHdl([this](SV::Accelerator * keys) {
    keys->GetCurItemId() == EDIT_COPY ? copy() : paste();
    return 1L;
  });
  SV::Application::InsertAccel(&keys_);
}

Commands DragCommands::GetCommands() {
  return {{MENU_EDIT, EDIT_COPY, named(kCopyActivity), [this] { copy(); }},
          {MENU_EDIT, EDIT_PASTE, named(kPasteActivity), [this] { paste(); }}};
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
