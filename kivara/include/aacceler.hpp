#pragma once
/// \file
/// Two tables that share nothing but their name: KivAcceleratorTable assigns the mnemonics of a menu or dialog, and
/// KivStringAcceleratorTable caches string resources.
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
/// Threads: there are no locks. One thread uses a KivAcceleratorTable; only the main thread uses the cache.

#include "export.hpp"
#include "tools/containers.hpp"
#include "tools/string.hpp"

namespace SV {
class Menu;
}

/// The mnemonics that are in use, so that no two texts get the same one. A "~" in a text marks the character after it as the
/// mnemonic.
///
/// Characters are bytes and not case-sensitive (toupper of the runtime's current locale). The bytes 33 to 127 can be mnemonics;
/// control characters, the blank and all bytes above 127 are always in use.
class KIV_API KivAcceleratorTable {
public:
  /// A table in which every possible mnemonic is free.
  KivAcceleratorTable();

  /// Frees all mnemonics.
  void Reset();

  bool IsInUse(char c) const; ///< also true for what cannot be a mnemonic

  /// Marks a character as used. False when it already is.
  bool SetInUse(char c);

  /// Marks the mnemonic of a text, the character after its first "~", as used. The result does not show a clash: it is also
  /// true when another text has the same mnemonic. False for a text without "~", and when the first "~" is the last character.
  bool AddAcceleratedString(SV::String const & text);

  /// Inserts a "~" before the first free character of a text and marks that character as used. A text that already has a "~"
  /// is unchanged; its mnemonic is marked.
  /// \return false when no character of the text is free. The "~" is then put at the start, and the mnemonic clashes with that
  ///         of another text
  bool AccelerateString(SV::String & text);

  /// Marks the mnemonics of a menu's items, but not those of its submenus. Null is an internal error and changes nothing.
  void setAcceleratorsOfMenu(SV::Menu const * menu);

private:
  bool inUse[256];
};

/// String resources by identifier. Each is loaded once, from the resource manager that is active at its first use, and kept until
/// the process ends: it does not follow a change of the language. A missing resource raises Application::Exception at its first
/// use, as every missing resource does, and is the empty string from then on.
class KIV_API KivStringAcceleratorTable {
public:
  /// The only instance, created on first use and destroyed at the end of the process.
  static KivStringAcceleratorTable * GetGlobal();

  KivStringAcceleratorTable(KivStringAcceleratorTable const &) = delete;
  KivStringAcceleratorTable & operator=(KivStringAcceleratorTable const &) = delete;
  virtual ~KivStringAcceleratorTable();

  /// A string resource. The identifier may have its type, 0x200, in the high 16 bits or not; the two forms are cached
  /// separately. The result is the same object at each call and lives as long as the table.
  SV::String const & GetString(long id);

  /// The characters of GetString(id).
  char const * GetCharPtr(long id);

private:
  KivStringAcceleratorTable();

  SV::String const & _GetElement(long id);

  KivValueDelMap<long, SV::String *> strings_;
};
