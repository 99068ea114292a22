#include "acmdline.hpp"

#include "atrace.hpp"
#include "base/modules.hpp"
#include "tools/direntry.hpp"

#include <cstring>

using SV::String;

namespace {

// The line numbers under which calls at the wrong time are reported.
constexpr unsigned kLineSecondInit = 109;
constexpr unsigned kLineGetCountBeforeInit = 179;
constexpr unsigned kLineGetParamBeforeInit = 188;
constexpr unsigned kLineIsFlagBeforeInit = 201;
constexpr unsigned kLineGetValueBeforeInit = 228;

struct Flags {
#define KIV_FLAG(word, getter, withoutGUI, meaning) bool getter;
#define KIV_FLAG_SWITCHED_OFF(word, getter, meaning) bool getter;
#include "frame/cmdline_options.inc"
};

enum class WithoutGUI { asGiven, on, off };

struct FlagRow {
  char const * word;
  bool Flags::*flag;
  WithoutGUI withoutGUI;
};

constexpr FlagRow kFlagTable[] = {
#define KIV_FLAG(word, getter, withoutGUI, meaning) {word, &Flags::getter, WithoutGUI::withoutGUI},
#define KIV_FLAG_SWITCHED_OFF(word, getter, meaning) {word, &Flags::getter, WithoutGUI::asGiven},
#include "frame/cmdline_options.inc"
};

#define KIV_OPTION(constant, name, getter, meaning) constexpr char constant[] = name;
#include "frame/cmdline_options.inc"

// Process-wide values: written by init alone, before there is a second thread.
Flags flags;
String modalDialogSuppressionLogfileName;
KivWSLogFormat wsLogFormat = KIV_WS_LOG_FORMAT_DEFAULT;

void reportIf(bool misused, unsigned line) {
  if (misused)
    displayErrorMessage(kivara::modules::kAcmdline, line);
}

/// The text after the '-' or '/' of an option; null for any other word.
char const * optionText(char const * word) {
  return word != nullptr && (*word == '-' || *word == '/') ? word + 1 : nullptr;
}

/// The rest of the first option that begins with \p name; null if there is none.
char const * textAfter(int count, char * const * words, char const * name) {
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
  String const general = cmdline.getValue(kDialogLog);
  String const own = cmdline.getValue(logOptionName.c_str());
  modalDialogSuppressionLogfileName = general.Len() != 0 ? general : own;
  wsLogFormat = SV::h_strcmp(cmdline.getValue(kWSLogFormat).c_str(), "long") == 0 ? KIV_WS_LOG_FORMAT_LONG
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
  return textAfter(argc, argv, name) != nullptr;
}

String KivCmdline::getValue(char const * name) const {
  reportIf(argv == nullptr, kLineGetValueBeforeInit);
  return String(textAfter(argc, argv, name));
}

int KivCmdline::getInt(char const * name) const { return SV::h_atoi(getValue(name).c_str()); }
long KivCmdline::getLong(char const * name) const { return SV::h_atol(getValue(name).c_str()); }
double KivCmdline::getDouble(char const * name) const { return static_cast<double>(getValue(name)); }

#define KIV_FLAG(word, getter, withoutGUI, meaning)                                                                    \
  bool KivCmdline::getter() { return flags.getter; }
// The heap checks are switched off. Old shortcuts still pass these options, and callers must not see them.
#define KIV_FLAG_SWITCHED_OFF(word, getter, meaning)                                                                   \
  bool KivCmdline::getter() { return false; }
#define KIV_TEXT(name, getter, meaning)                                                                                \
  String KivCmdline::getter() const { return getValue(name); }
#define KIV_NUMBER(name, getter, meaning)                                                                              \
  int KivCmdline::getter() const { return getInt(name); }
#include "frame/cmdline_options.inc"

String KivCmdline::getLoginSchemaVersion() const {
  String const program = SV::DirEntry(getParam(0)).GetName().toLower();
  return program == "awssrv.exe" ? getValue(kSchemaVersion) : String();
}

bool KivCmdline::getStartupKivScript(String & out) const {
  if (!isFlag(kStartupScript))
    return false;
  out = getValue(kStartupScript);
  return true;
}

int KivCmdline::getWSLogFileBackupCount() const { return isFlag(kWSLogBackups) ? getInt(kWSLogBackups) : -1; }

KivWSLogFormat KivCmdline::getWSLogFormat() const { return wsLogFormat; }
String const & KivCmdline::getModalDialogSuppressionLogfileName() const { return modalDialogSuppressionLogfileName; }
