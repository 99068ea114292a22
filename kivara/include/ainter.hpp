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

/// The installed languages, the current language, and the resource DLLs and the help file that go with it.
///
/// Languages are Windows language identifiers: 1031 is German, 2057 is British English. "lang.ini" in the program's folder
/// lists the installed languages, one decimal identifier per line; the program starts in the first. Leading white space,
/// empty lines, lines that begin with ';' and anything after the number are ignored. Lines are read 99 characters at a time,
/// so the rest of a longer line counts as a line of its own.
///
/// The resource DLLs form a chain. A resource is looked up in the first DLL and, if that fails, in the next: a later DLL
/// fills gaps and overrides nothing. There is no way back to an earlier DLL.
///
/// \code
///   KivInternational::InitAvailableLanguages();           // the frame does this before prepareApplication
///   if (!createResourceManager("kivara", true))           // language\2057\kivara72.dll
///     return 1;
///   KivInternational::SetCurrentLanguageID(1031);         // reloads all DLLs, the help file and the button labels
/// \endcode
///
/// Everything here is for the main thread; there are no locks. Functions that allocate throw std::bad_alloc.
class KIV_API KivInternational {
public:
  KivInternational(KivInternational const & other);
  KivInternational & operator=(KivInternational const & other);
  /// Does not delete the resource managers; DeleteResMgrs does.
  ~KivInternational();

  /// \name Languages
  /// @{

  /// Reads "lang.ini" and makes its first language the current one. A second call does nothing. If the file is missing, 1031
  /// is the only language. A missing file, an identifier of 0 and one that the system does not know are reported as failed
  /// assertions; such an identifier stays in the list.
  static void InitAvailableLanguages();

  /// The languages in the order of the file. Duplicates are kept.
  static ISequence<unsigned short> const & GetAvailableLanguages();

  /// The current language; 1031 until another one is set.
  static unsigned short GetCurrentLanguageID();
  static unsigned long GetCurrentWindowsLocaleID();

  /// The ISO 639 code of the current language. If the system has none, it is that of the base language, or else that of
  /// 1031, or else the empty string.
  static SV::String GetCurrentISOID();

  /// Changes the language, in this order: reloads the DLLs of the chain, switches the help file, and reads the labels of the
  /// standard buttons and the name of the tool from the new resources. Before the first DLL is loaded, only the identifier
  /// is stored. Setting the current language again does nothing. The identifier need not be in "lang.ini" or known to the
  /// system. A DLL that cannot be loaded for it is reported as by createResourceManager and leaves the chain; the language
  /// still changes. If no DLL is left, the missing labels raise a severe Application::Exception.
  static void SetCurrentLanguageID(unsigned short id);

  /// The name of the language in that language, in the system's code page; empty if the system does not know it.
  static SV::String GetNativeLanguageName(unsigned short id);

  /// Whether the system supports the language.
  static bool IsValidLanguageID(unsigned short id);

  /// The base language of the product, from the resources, and its ISO 639 code. 0 if the resource is not a number; the code
  /// is empty if the system does not know the language.
  static unsigned short GetDefaultLanguageID();
  static SV::String GetIso639OfBaseLanguage();
  /// @}

  /// \name Language by name
  /// The language of the first system locale with the given name, which is not case-sensitive; 0 if there is none. Regional
  /// variants give the one language that products ship: every English gives 2057, every German 1031, every Chinese 2052.
  /// The functions are not reentrant, since the name is stored process-wide during the search.
  /// @{
  static unsigned short GetLanguageIDOfNativeLanguageName(SV::String const & name);
  static unsigned short GetLanguageIDOfNativeCountryName(SV::String const & name);
  static unsigned short GetLanguageIDOfEnglishLanguageName(SV::String const & name);
  static unsigned short GetLanguageIDOfEnglishCountryName(SV::String const & name);
  static unsigned short GetLanguageIDOfISO639(SV::String const & code);
  /// @}

  /// \name Resource DLLs
  /// @{

  /// Loads a DLL and appends it to the chain; the first DLL of the chain becomes the active one. If it is not in the
  /// language's folder, "name72.dll" is tried. If that fails too, a box reports it, or the log of suppressed dialogs.
  /// \param name              the name without the two digits of the version and ".dll"
  /// \param languageSpecific  true: "language\2057\name72.dll" for the current language; false: "language\name72.dll"
  /// \return false if neither could be loaded; errorLoadingResourceFiles is true from then on
  static bool createResourceManager(char const * name, bool languageSpecific);

  /// The manager after the active one; null if the active one is the last or is not in the chain.
  static SV::ResMgr * getNextResMgr();

  /// Deletes all managers and empties the chain.
  static void DeleteResMgrs();

  /// Whether loading a DLL has failed under both names since the program started.
  static bool errorLoadingResourceFiles();
  /// @}

  /// Sets the file of the application's help object, if there is one, to "help\2057\name.chm" for the current language, or
  /// to "name.chm" if that file is missing. Both are in the program's folder. Then it enables help.
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
