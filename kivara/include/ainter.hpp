#pragma once
/// \file
/// KivInternational: in which language the program runs.

#include "export.hpp"
#include "tools/containers.hpp"
#include "tools/string.hpp"

#include <list>

namespace SV {
class ResMgr;
} // namespace SV

/// The languages that are installed, the one that is current, and the resource DLLs and the help file that go with it.
///
/// Languages are Windows language identifiers: 1031 is German, 2057 British English. "lang.ini" in the program's folder
/// lists the installed ones, a decimal identifier on each line; the first is the language that the program starts in.
/// Blanks in front are passed over, and so are empty lines, lines that begin with ';' and what follows the number. Lines
/// are read 99 characters at a time: what is left of a longer one counts as a line.
///
/// Resource DLLs form a chain. A resource is looked for in the first of them and, once that has failed, in the next: a
/// later DLL fills gaps and replaces nothing. There is no way back to an earlier one.
///
/// \code
///   KivInternational::InitAvailableLanguages();           // the frame does so before prepareApplication
///   if (!createResourceManager("kivara", true))           // language\2057\kivara72.dll
///     return 1;
///   KivInternational::SetCurrentLanguageID(1031);         // all DLLs of the chain anew, help file and button labels
/// \endcode
///
/// All of it is for the main thread; nothing is locked. What allocates throws std::bad_alloc.
class KIV_API KivInternational {
public:
  KivInternational(KivInternational const & other);
  KivInternational & operator=(KivInternational const & other);
  /// Deletes no resource manager: DeleteResMgrs does.
  ~KivInternational();

  /// \name Languages
  /// @{

  /// Reads "lang.ini" and makes its first language the current one. A second call does nothing. Without the file, 1031
  /// is the only language. That, an identifier of 0 and one that the system does not know are reported as failed
  /// assertions; such an identifier stays in the list.
  static void InitAvailableLanguages();

  /// The languages in the order of the file; what is there twice stays there twice.
  static ISequence<unsigned short> const & GetAvailableLanguages();

  /// 1031 until another one is set.
  static unsigned short GetCurrentLanguageID();
  static unsigned long GetCurrentWindowsLocaleID();

  /// The ISO 639 code of the current language; where the system has none, that of the base language, then that of 1031,
  /// then the empty text.
  static SV::String GetCurrentISOID();

  /// Changes the language: the DLLs of the chain are loaded anew, the help file is changed for that of the language,
  /// and the labels of the standard buttons and the name of the tool are read from the new resources. Before the first
  /// DLL only the identifier is kept. Nothing happens for the language that is current. The identifier need be neither in
  /// "lang.ini" nor known to the system. A DLL that cannot be loaded for it is told as createResourceManager does and
  /// leaves the chain; the language is changed all the same. When none is left, the missing labels are a severe
  /// Application::Exception.
  static void SetCurrentLanguageID(unsigned short id);

  /// How the language calls itself, in the system's code page; empty when the system does not know it.
  static SV::String GetNativeLanguageName(unsigned short id);

  /// Whether the system supports the language.
  static bool IsValidLanguageID(unsigned short id);

  /// The language that the product was written in, and its ISO 639 code; both are read from the resources. 0 for a text
  /// without a number, and an empty code for a language that the system does not know.
  static unsigned short GetDefaultLanguageID();
  static SV::String GetIso639OfBaseLanguage();
  /// @}

  /// \name Looking a language up
  /// The language of the first locale of the system that has the given name, in any case; 0 when none has. Regional
  /// forms are folded into the one that products ship: each English is 2057, each German 1031, each Chinese 2052.
  /// One look-up at a time: what is looked for is kept in the process.
  /// @{
  static unsigned short GetLanguageIDOfNativeLanguageName(SV::String const & name);
  static unsigned short GetLanguageIDOfNativeCountryName(SV::String const & name);
  static unsigned short GetLanguageIDOfEnglishLanguageName(SV::String const & name);
  static unsigned short GetLanguageIDOfEnglishCountryName(SV::String const & name);
  static unsigned short GetLanguageIDOfISO639(SV::String const & code);
  /// @}

  /// \name Resource DLLs
  /// @{

  /// Loads a DLL and appends it to the chain; the first one becomes the active manager. Where the folder of the language
  /// has none, the bare name is tried; when that fails too, a box says so, or the log of suppressed dialogs.
  /// \param name              the name without the two digits of the version and ".dll"
  /// \param languageSpecific  true: "language\2057\name72.dll" for the current language; false: "language\name72.dll"
  /// \return false when neither could be loaded; errorLoadingResourceFiles is true from then on
  static bool createResourceManager(char const * name, bool languageSpecific);

  /// The manager behind the active one, null when that is the last or is not in the chain.
  static SV::ResMgr * getNextResMgr();

  /// Deletes the managers and empties the chain.
  static void DeleteResMgrs();

  /// Whether a DLL could not be loaded since the program started.
  static bool errorLoadingResourceFiles();
  /// @}

  /// Gives the help object of the application, if there is one, the file "help\2057\name.chm" of the current language,
  /// or "name.chm" where that is missing, both in the program's folder, and switches help on.
  static void switchHelpObject(char const * baseName);

private:
  KivInternational();

  void updateResourceManagers();
  SV::String buildResDLLName(char const * name, bool languageSpecific) const;
  static SV::String buildResDLLNameFallback(char const * name);

  bool initialised = false;
  unsigned short currentLanguage = 1031;
  ISequence<unsigned short> availableLanguages;
  std::list<SV::ResMgr *> resourceManagers;
  bool resourceLoadFailed = false;

  static KivInternational aInstance;
};
