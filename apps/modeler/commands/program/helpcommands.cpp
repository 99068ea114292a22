#include "commands/program/helpcommands.hpp"

#include "texts/helptexts.hpp"

using SV::String;

namespace modeler {

HelpCommands::HelpCommands(SV::MDIFrame & frame, Menus const & menus) : frame_(frame), menus_(menus) {}

Commands HelpCommands::GetCommands() {
  return {{MENU_HELP, HELP_KEYS, named(kKeys), [this] { showKeys(); }}};
}

void HelpCommands::Install() {
  if (SV::Help const * const former = SV::Application::ChangeHelp(&help_))
    help_.ChangeFileName(former->GetFileName());
}

bool HelpCommands::KeysHelp::Start(unsigned long topic) {
  if (Kiv_FileExists(GetFileName().c_str()))
    return Help::Start(topic);
  bool const canShow = commands_.frame_.IsEnabled(); // not while a dialog has to be answered
  if (canShow)
    commands_.showKeys();
  return canShow;
}

void HelpCommands::showKeys() {
  if (!window_ || window_->GethWnd() == nullptr)
    window_ = std::make_unique<TableWindow>(frame_, named(kKeysTitle), [this] { return keys(); });
  window_->Show();
}

/// Those of the menus, then those of the windows.
TableWindow::Rows HelpCommands::keys() const {
  TableWindow::Rows rows;
  for (Menus::Key const & key : menus_.GetKeys())
    rows.push_back({key.key, key.name});
  for (int place = 0; place < kOtherKeys; ++place) {
    String const line = text(static_cast<Text>(static_cast<int>(kFirstKey) + place));
    rows.push_back({line.token(0, '\t'), line.token(1, '\t')});
  }
  return rows;
}

void HelpCommands::Retext() {
  if (window_)
    window_->Retext();
}

} // namespace modeler
