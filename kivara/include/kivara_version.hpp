#pragma once
/// \file
/// The version of these headers, for the preprocessor: all numbers of the version stand here and nowhere else.
///
/// \code
///   #if !KIVARA_VERSION_AT_LEAST(7, 2, 0)
///   #error "this program needs kivara 7.2"
///   #endif
///
///   // What a plug-in answers when it is asked which version it was built for:
///   extern "C" __declspec(dllexport) int KivPluginFctGetVersion() { return KIVARA_VERSION_IDENTIFIER; }
/// \endcode
///
/// The version of the DLL that a program runs with is in aappinfo.hpp, where Kiv_HeadersMatchLibrary compares the two.

#define KIVARA_VERSION_HIGH 7
#define KIVARA_VERSION_LOW 2
#define KIVARA_VERSION_UPDATE_LEVEL 0
#define KIVARA_VERSION_HOT_FIX 0
#define KIVARA_VERSION_BUILD 5050

/// The number in the names of resource DLLs, of products too. It stays when the version changes: installed products go on
/// looking for these names.
#define KIVARA_RESOURCE_VERSION 72

/// Whether the headers are of that version or a newer one: high part, low part, update level.
#define KIVARA_VERSION_AT_LEAST(high, low, update)                                                                     \
  (KIVARA_VERSION_HIGH > (high) ||                                                                                     \
   (KIVARA_VERSION_HIGH == (high) &&                                                                                   \
    (KIVARA_VERSION_LOW > (low) || (KIVARA_VERSION_LOW == (low) && KIVARA_VERSION_UPDATE_LEVEL >= (update)))))

/// The number that a plug-in and the program that loads it must have in common, as Kiv_GetVersionIdentifier forms it.
#define KIVARA_VERSION_IDENTIFIER ((KIVARA_VERSION_HIGH * 10 + KIVARA_VERSION_LOW) * 1000 + KIVARA_VERSION_BUILD)
