#pragma once
/// \file
/// What the program keeps of the user's choices from one run to the next.

#include "kivara.hpp"

namespace modeler {

/// The file that "-keep" names, otherwise "modeler.ini" in the program's folder. Where it cannot be written, choices last
/// as long as the program.
class Settings {
public:
  /// Not before the command line can be asked.
  Settings();

  SV::String Get(char const * name, char const * fallback) const;
  void Set(char const * name, SV::String const & value) const;

  bool IsOn(char const * name, bool fallback) const;
  void SetOn(char const * name, bool isOn) const;

private:
  SV::String file_;
};

/// Has the library look as the user wanted it the last time.
void applyLook(Settings const & settings);

/// Chooses a theme by its name, and keeps the choice.
void chooseTheme(Settings const & settings, SV::String const & name);

/// Switches the system's visual styles on or off for the themes, and keeps the choice.
void useVisualStyles(Settings const & settings, bool isOn);

} // namespace modeler
