#include "acmdline.hpp"

#include "atrace.hpp"
#include "base/modules.hpp"
#include "tools/direntry.hpp"

#include <cstring>

using SV::String;

namespace {

// Where a call outside of its time is reported: the second part of the error code.
constexpr unsigned kLineSecondInit = 109;
constexpr unsigned kLineGetCountBeforeInit = 179;
constexpr unsigned kLineGetParamBeforeInit = 188;
constexpr unsigned kLineIsFlagBeforeInit = 201;
constexpr unsigned kLineGetValueBeforeInit = 228;

struct Flags {
  bool kivLogin;
  bool typeChecksInKivScript;
  bool releaseAssertionsEnabled;
  bool autoKick;
  bool dynamicConsole;
  bool debugMemDelayFree;
  bool debugMemHeapCheck;
  bool libDocuGen;
  bool exceptionHandlingDeactivated;
  bool modalDialogSuppression;
  bool showWindowSuppression;
  bool noGUI;
  bool noLoginScreen;
  bool noPrinterWarning;
  bool noDBBootLogin;
  bool profiling;
  bool tracing;
  bool singleSignOn;
  bool loginDlgAnyway;
};

enum class WithoutGUI { asGiven, on, off };

struct FlagRow {
  char const * word;
  bool Flags::*flag;
  WithoutGUI withoutGUI = WithoutGUI::asGiven;
};

constexpr FlagRow kFlagTable[] = {
    {"kivlogin", &Flags::kivLogin},
    {"kivscript_typecheck", &Flags::typeChecksInKivScript},
    {"assert", &Flags::releaseAssertionsEnabled},
    {"autokick", &Flags::autoKick},
    {"console", &Flags::dynamicConsole},
    {"debug_mem_delayfree", &Flags::debugMemDelayFree},
    {"debug_mem_heapcheck", &Flags::debugMemHeapCheck},
    {"libdox", &Flags::libDocuGen},
    {"no_exception_handling", &Flags::exceptionHandlingDeactivated},
    {"no_dialogs", &Flags::modalDialogSuppression, WithoutGUI::on},
    {"no_windows", &Flags::showWindowSuppression, WithoutGUI::on},
    {"no_gui", &Flags::noGUI, WithoutGUI::on},
    {"no_login_screen", &Flags::noLoginScreen, WithoutGUI::on},
    {"no_printer_warning", &Flags::noPrinterWarning, WithoutGUI::on},
    {"nobootlogin", &Flags::noDBBootLogin},
    {"profiling", &Flags::profiling},
    {"trace", &Flags::tracing},
    {"winlogin", &Flags::singleSignOn},
    {"x", &Flags::loginDlgAnyway, WithoutGUI::off},
};

// Process-wide values: written by init alone, before there is a second thread.
Flags flags;
String modalDialogSuppressionLogfileName;
KivWSLogFormat wsLogFormat = KIV_WS_LOG_FORMAT_DEFAULT;

void reportIf(bool misused, unsigned line) {
  if (misused)
    displayErrorMessage(kivara::modules::kAcmdline, line);
}

/// The text behind the '-' or '/' of an option; null for any other word.
char const * optionText(char const * word) {
  return word != nullptr && (*word == '-' || *word == '/') ? word + 1 : nullptr;
}

/// What follows \p name in the first option that begins with it; null where none does.
char const * textBehind(int count, char * const * words, char const * name) {
  char const * const prefix = name != nullptr ? name : "";
  std::size_t const length = std::strlen(prefix);
  for (int i = 1; words != nullptr && i < count; ++i) {
    char const * const text = optionText(words[i]);
    if (text != nullptr && std::strncmp(text, prefix, length) == 0)
      return text + length;
  }
  return nullptr;
}

void setFlagOf(char const * text) {
  for (FlagRow const & row : kFlagTable)
    if (std::strcmp(text, row.word) == 0) {
      flags.*row.flag = true;
      return;
    }
}

void forceFlagsWithoutGUI() {
  for (FlagRow const & row : kFlagTable)
    if (row.withoutGUI != WithoutGUI::asGiven)
      flags.*row.flag = row.withoutGUI == WithoutGUI::on;
}

} // namespace

KivCmdline & KivCmdline::Instance() {
  static KivCmdline instance;
  return instance;
}

void KivCmdline::_init(int count, char ** words) {
  reportIf(argv != nullptr, kLineSecondInit);
  argc = count;
  argv = words;
  for (int i = 1; argv != nullptr && i < argc; ++i)
    if (char const * const text = optionText(argv[i]))
      setFlagOf(text);
}

void KivCmdline::init(int argc, char ** argv, bool withGUI, String const & logOptionName) {
  KivCmdline & cmdline = Instance();
  cmdline._init(argc, argv);
  if (!withGUI)
    forceFlagsWithoutGUI();
  String const general = cmdline.getValue("log_no_dialogs");
  String const own = cmdline.getValue(logOptionName.c_str());
  modalDialogSuppressionLogfileName = general.Len() != 0 ? general : own;
  wsLogFormat = SV::h_strcmp(cmdline.getValue("wslogformat").c_str(), "long") == 0 ? KIV_WS_LOG_FORMAT_LONG
                                                                                   : KIV_WS_LOG_FORMAT_DEFAULT;
}

int KivCmdline::getCount() const {
  reportIf(argv == nullptr, kLineGetCountBeforeInit);
  return argc;
}

String KivCmdline::getParam(int i) const {
  reportIf(argv == nullptr, kLineGetParamBeforeInit);
  return argv != nullptr && i >= 0 && i < argc ? String(argv[i]) : String();
}

bool KivCmdline::isFlag(char const * name) const {
  reportIf(argv == nullptr, kLineIsFlagBeforeInit);
  return textBehind(argc, argv, name) != nullptr;
}

String KivCmdline::getValue(char const * name) const {
  reportIf(argv == nullptr, kLineGetValueBeforeInit);
  return String(textBehind(argc, argv, name));
}

int KivCmdline::getInt(char const * name) const { return SV::h_atoi(getValue(name).c_str()); }
long KivCmdline::getLong(char const * name) const { return SV::h_atol(getValue(name).c_str()); }
double KivCmdline::getDouble(char const * name) const { return static_cast<double>(getValue(name)); }

bool KivCmdline::kivLogin() { return flags.kivLogin; }
bool KivCmdline::typeChecksInKivScript() { return flags.typeChecksInKivScript; }
bool KivCmdline::releaseAssertionsEnabled() { return flags.releaseAssertionsEnabled; }
bool KivCmdline::isAutoKick() { return flags.autoKick; }
bool KivCmdline::dynamicConsole() { return flags.dynamicConsole; }
// The heap aids are switched off for products in the field: their words must pass, and callers must not see them.
bool KivCmdline::debugMemDelayFree() { return false; }
bool KivCmdline::debugMemHeapCheck() { return false; }
bool KivCmdline::isRovinsLibDocuGen() { return flags.libDocuGen; }
bool KivCmdline::isExceptionHandlingDeactivated() { return flags.exceptionHandlingDeactivated; }
bool KivCmdline::modalDialogSuppression() { return flags.modalDialogSuppression; }
bool KivCmdline::showWindowSuppression() { return flags.showWindowSuppression; }
bool KivCmdline::noGUI() { return flags.noGUI; }
bool KivCmdline::noLoginScreen() { return flags.noLoginScreen; }
bool KivCmdline::noPrinterWarning() { return flags.noPrinterWarning; }
bool KivCmdline::noDBBootLogin() { return flags.noDBBootLogin; }
bool KivCmdline::profiling() { return flags.profiling; }
bool KivCmdline::doTracing() { return flags.tracing; }
bool KivCmdline::trySingleSignOn() { return flags.singleSignOn; }
bool KivCmdline::executeLoginDlgAnyway() { return flags.loginDlgAnyway; }

String KivCmdline::getLoginUserName() const { return getValue("u"); }
String KivCmdline::getLoginPassword() const { return getValue("p"); }
String KivCmdline::getLoginDBName() const { return getValue("d"); }
String KivCmdline::getLoginDBSystem() const { return getValue("s"); }

String KivCmdline::getLoginSchemaVersion() const {
  String const program = SV::DirEntry(getParam(0)).GetName().toLower();
  return program == "awssrv.exe" ? getValue("v") : String();
}

bool KivCmdline::getStartupKivScript(String & out) const {
  if (!isFlag("e"))
    return false;
  out = getValue("e");
  return true;
}

String KivCmdline::getFontFace() const { return getValue("f"); }
int KivCmdline::getFontHeight() const { return getInt("h"); }
String KivCmdline::getTraceFilename() const { return getValue("trf"); }
String KivCmdline::getToolName() const { return getValue("toolname"); }
int KivCmdline::getWSPortNumber() const { return getInt("port"); }
String KivCmdline::getPIDFileName() const { return getValue("pidfile"); }
String KivCmdline::getWSLogFileName() const { return getValue("wslogfile"); }
int KivCmdline::getWSLogFileBackupCount() const { return isFlag("wslogbackup") ? getInt("wslogbackup") : -1; }
String KivCmdline::getPrinterName() const { return getValue("P"); }
String KivCmdline::getUICharSet() const { return getValue("charset"); }

KivWSLogFormat KivCmdline::getWSLogFormat() const { return wsLogFormat; }
String const & KivCmdline::getModalDialogSuppressionLogfileName() const { return modalDialogSuppressionLogfileName; }
