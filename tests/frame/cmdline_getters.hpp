#pragma once
/// \file
/// Every getter of KivCmdline beside the word or the option that it reads.

#include "acmdline.hpp"

#include <iterator>

namespace kivtest {

/// What a host without a GUI makes of a flag.
enum class WithoutGUI { asGiven, on, off };

struct FlagGetter {
  char const * word;
  bool (*get)();
  WithoutGUI withoutGUI = WithoutGUI::asGiven;
  bool switchedOff = false; ///< the getter answers false whatever was given
};

inline constexpr FlagGetter kFlagGetters[] = {
    {"kivlogin", KivCmdline::kivLogin},
    {"kivscript_typecheck", KivCmdline::typeChecksInKivScript},
    {"assert", KivCmdline::releaseAssertionsEnabled},
    {"autokick", KivCmdline::isAutoKick},
    {"console", KivCmdline::dynamicConsole},
    {"debug_mem_delayfree", KivCmdline::debugMemDelayFree, WithoutGUI::asGiven, true},
    {"debug_mem_heapcheck", KivCmdline::debugMemHeapCheck, WithoutGUI::asGiven, true},
    {"libdox", KivCmdline::isRovinsLibDocuGen},
    {"no_exception_handling", KivCmdline::isExceptionHandlingDeactivated},
    {"no_dialogs", KivCmdline::modalDialogSuppression, WithoutGUI::on},
    {"no_windows", KivCmdline::showWindowSuppression, WithoutGUI::on},
    {"no_gui", KivCmdline::noGUI, WithoutGUI::on},
    {"no_login_screen", KivCmdline::noLoginScreen, WithoutGUI::on},
    {"no_printer_warning", KivCmdline::noPrinterWarning, WithoutGUI::on},
    {"nobootlogin", KivCmdline::noDBBootLogin},
    {"profiling", KivCmdline::profiling},
    {"trace", KivCmdline::doTracing},
    {"winlogin", KivCmdline::trySingleSignOn},
    {"x", KivCmdline::executeLoginDlgAnyway, WithoutGUI::off},
};
static_assert(std::size(kFlagGetters) == 19);

struct TextGetter {
  char const * option;
  SV::String (KivCmdline::*get)() const;
};

inline constexpr TextGetter kTextGetters[] = {
    {"u", &KivCmdline::getLoginUserName},
    {"p", &KivCmdline::getLoginPassword},
    {"d", &KivCmdline::getLoginDBName},
    {"s", &KivCmdline::getLoginDBSystem},
    {"f", &KivCmdline::getFontFace},
    {"trf", &KivCmdline::getTraceFilename},
    {"toolname", &KivCmdline::getToolName},
    {"pidfile", &KivCmdline::getPIDFileName},
    {"wslogfile", &KivCmdline::getWSLogFileName},
    {"P", &KivCmdline::getPrinterName},
    {"charset", &KivCmdline::getUICharSet},
};

struct NumberGetter {
  char const * option;
  int (KivCmdline::*get)() const;
  int whenAbsent;
};

inline constexpr NumberGetter kNumberGetters[] = {
    {"h", &KivCmdline::getFontHeight, 0},
    {"port", &KivCmdline::getWSPortNumber, 0},
    {"wslogbackup", &KivCmdline::getWSLogFileBackupCount, -1},
};

/// Options that are asked for by getValue alone, and words that others ask for by isFlag.
inline constexpr char const * kNamesWithoutGetter[] = {"lang", "log_no_dialogs", "getfulldomainname", "plug_log"};

} // namespace kivtest
