#pragma once
/// \file
/// Two tables with nothing in common but their name: KivAcceleratorTable hands out the mnemonics of a menu or dialog, and
/// KivStringAcceleratorTable keeps string resources that were loaded once.
///
/// \code
///   KivAcceleratorTable table;
///   SV::String file("File"), format("Format");
///   table.AccelerateString(file);    // "~File"
///   table.AccelerateString(format);  // "F~ormat"
///
///   char const * const name = KivStringAcceleratorTable::GetGlobal()->GetCharPtr(0x2002922);
/// \endcode
///
/// Nothing is locked: a table belongs to one thread, the cache to the main thread.

#include "export.hpp"
#include "tools/containers.hpp"
#include "tools/string.hpp"

namespace SV {
class Menu;
}

/// Which characters are taken as mnemonics, so that no two texts get the same one. In a text a "~" stands in front of its
/// mnemonic.
///
/// Characters are bytes, and case makes no difference (toupper of the runtime's current locale). The bytes 33 to 127 can be
/// mnemonics; control characters, the blank and all above count as taken for ever.
class KIV_API KivAcceleratorTable {
public:
  /// A table of which nothing is taken yet.
  KivAcceleratorTable();

  /// Gives all mnemonics free.
  void Reset();

  bool IsInUse(char c) const; ///< true also for what can never be one

  /// Takes a character. False when it is taken already.
  bool SetInUse(char c);

  /// Takes the mnemonic that a text has: the character behind its first "~". A clash is not told: the result is true also
  /// when another text has the same one. False for a text without "~" and for one whose first "~" is its last character.
  bool AddAcceleratedString(SV::String const & text);

  /// Gives a text a mnemonic: a "~" in front of its first character that is free, which is then taken. A text that has a "~"
  /// stays as it is; its mnemonic is taken.
  /// \return false when all characters of the text are taken. The "~" then stands in front of the whole text, so that its
  ///         first character clashes with another text's
  bool AccelerateString(SV::String & text);

  /// Takes the mnemonics of a menu's items, not of the menus below it. Null is an internal error and changes nothing.
  void setAcceleratorsOfMenu(SV::Menu const * menu);

private:
  bool inUse[256];
};

/// String resources by their identifier. Each is loaded once, from the resource manager that is active at that moment, and
/// stays for the rest of the process: a change of the language does not reach it. One that is missing raises
/// Application::Exception at its first use, as any resource does, and is the empty text from then on.
class KIV_API KivStringAcceleratorTable {
public:
  /// The one table. It is made on first use and dies with the process.
  static KivStringAcceleratorTable * GetGlobal();

  KivStringAcceleratorTable(KivStringAcceleratorTable const &) = delete;
  KivStringAcceleratorTable & operator=(KivStringAcceleratorTable const &) = delete;
  virtual ~KivStringAcceleratorTable();

  /// The text of a string resource, with or without its type (0x200) in the high part; each form is kept for itself. The
  /// result is the same object each time and lives as long as the table.
  SV::String const & GetString(long id);

  /// Its characters.
  char const * GetCharPtr(long id);

private:
  KivStringAcceleratorTable();

  SV::String const & _GetElement(long id);

  KivValueDelMap<long, SV::String *> strings_;
};
