#include "commands/program/languagecommands.hpp"

using SV::String;

namespace modeler {

Commands languageCommands(Journal & journal, std::function<void()> const & changed) {
  Commands commands;
  unsigned short item = LANGUAGE_FIRST;
  for (unsigned short const language : KivInternational::GetAvailableLanguages()) {
    auto const name = [language] {
      String const native = KivInternational::GetNativeLanguageName(language);
      return native.Len() > 0 ? native : String(language);
    };
    auto const choose = [&journal, changed, language] {
      KivInternational::SetCurrentLanguageID(language);
      journal.Add("language: " + String(language));
      changed();
    };
    auto const isChosen = [language] { return KivInternational::GetCurrentLanguageID() == language; };
    commands.push_back({MENU_LANGUAGE, item++, name, choose, isChosen});
  }
  return commands;
}

} // namespace modeler
