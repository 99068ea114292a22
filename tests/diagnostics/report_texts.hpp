#pragma once
/// \file
/// What the error reports say, in the languages that there are and without any.

#include "diagnostics/reporter_run.hpp"

#include <string>

namespace kivtest {

inline std::string const kErrorBuiltIn = "An internal error has occurred.\n\nError code: ";
inline std::string const kNetworkBuiltIn = "The connection to the database has been lost.";
inline std::string const kCancelHint = "\n\n Press Cancel to debug!";
inline std::string const kAssertionText = "Assertion failed!\nFile amodule.cpp line 42:\n\nExpression: 'count>0'\n\n"
                                          "User message:\n  'what it means'\n";

inline char const kNoWindow[] = "Unexpected program failure";
inline char const kWindow[] = "The product";

inline Lines const kOK{"OK"};
inline Lines const kOKCancel{"OK", "Cancel"};

/// Lines on the debug output.
inline std::string const kErrorLine = "[dEM] aEvent.cpp (246): " + errorCode() + "\n";
inline std::string const kAssertionLine = "[assertion] amodule.cpp (42): count>0\n";
inline std::string const kNoBoxLine = "            MessageBox errorcode: 0\n";

/// What the program prints of a box without and with Cancel.
inline char const kPlainBox[] = "box owner=0 style=0x42010, wait 0";
inline char const kBoxWithCancel[] = "box owner=0 style=0x42011, wait 0";

/// The text of an internal error; language 0 is that without resources.
inline std::string errorText(int language = 0, std::string const & code = errorCode()) {
  switch (language) {
  case 1031:
    return "Ein interner Fehler ist aufgetreten.\n\nFehlercode: " + code +
           "\n\nBitte verst\xE4ndigen Sie Ihren Administrator.";
  case 2057: return kErrorBuiltIn + code + "\n\nPlease inform your administrator.";
  default: return kErrorBuiltIn + code;
  }
}

inline std::string networkText(int language = 0) {
  switch (language) {
  case 1031:
    return "Die Verbindung zur Datenbank ist unterbrochen.\n\nBitte sichern Sie Ihre "
           "\xC4nderungen in eine Datei und starten Sie das Programm neu.";
  case 2057: return kNetworkBuiltIn + "\n\nPlease save what you can to a file and start the program again.";
  default: return kNetworkBuiltIn;
  }
}

} // namespace kivtest
