#pragma once
/// \file
/// A dynamic library that is loaded at run time, unloaded with its object, and seen in the debug output.
///
/// \code
///   class Speller : public KivDLLLoader {
///   public:
///     bool knows(char const * word) {
///       auto * const check = reinterpret_cast<bool (*)(char const *)>(_getGenericFunctionPtr("SpellCheckWord"));
///       return check != nullptr && check(word);
///     }
///   };
///   Speller speller;
///   if (!speller.load("C:\\dict\\speller.dll"))
///     report(speller.getFilename(), speller.getLastError());
/// \endcode
///
/// Nothing throws but lack of memory: the results and getLastError are the whole report. An object is for one thread.
/// Each load, whether it succeeded or not, and each unload is a line of the debug output:
/// "[kivdll] Load 'name'", "[kivdll] LoadEx 'name'" and "[kivdll] Unload 'name'". A name is cut there so that the line has at
/// most 511 bytes.

#include "export.hpp"
#include "tools/string.hpp"

struct HINSTANCE__; // what the platform's module handles point to

/// One library, or none.
class KIV_API KivDLLLoader {
public:
  /// Nothing is loaded.
  KivDLLLoader() = default;
  KivDLLLoader(KivDLLLoader const &) = delete;
  KivDLLLoader & operator=(KivDLLLoader const &) = delete;
  /// Unloads the library, if one is loaded.
  virtual ~KivDLLLoader();

  /// Loads a library. One that is loaded already is unloaded first, also if the new one then cannot be loaded.
  /// \param file  at most as long as a path may be; searched for as LoadLibrary does. Null counts as empty
  /// \return whether getLastError is 0. Ask isLoaded, too, where a library may refuse to be loaded without an error code
  bool load(char const * file);

  /// The same with the flags of LoadLibraryEx.
  bool loadExt(char const * file, unsigned long flags);

  /// Unloads the library. If the system refuses, the module stays in the process, but the object has none any more.
  /// \return whether getLastError is 0. Where nothing is loaded, that is still the error of the last operation
  bool unload();

  bool isLoaded() const; ///< whether a library is loaded

  /// The name as it was given: of the loaded library, or of one that could not be loaded. Empty after unload.
  SV::String const & getFilename() const;

  /// The system's error code of the last operation, lookups of functions included; 0 if it succeeded.
  unsigned long getLastError() const;

protected:
  /// The function or variable that the library exports under that name; null if there is none. Call it only while a
  /// library is loaded: otherwise the system searches the program itself.
  void * _getGenericFunctionPtr(char const * name);

  /// Takes over the thread's last error if an operation failed; 0 otherwise.
  void _rememberLastError(bool failed);

  HINSTANCE__ * handle = nullptr;
  unsigned long lastError = 0;
  SV::String filename;

private:
  friend class KivPluginKivScript;
  friend class KivPluginManager;

  bool _finishLoad(char const * event, HINSTANCE__ * loaded);
};
