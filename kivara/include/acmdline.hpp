#pragma once
/// \file
/// KivCmdline: the one reader of the process's command line.

#include "export.hpp"
#include "tools/string.hpp"

/// The form of a web-service log, from the option "wslogformat".
enum KivWSLogFormat : int {
  KIV_WS_LOG_FORMAT_DEFAULT = 0,
  KIV_WS_LOG_FORMAT_LONG = 1, ///< "-wslogformatlong"
};

/// The command line: a fixed table of flags, and options whose value follows their name in the same word.
///
/// A word is an option when it begins with '-' or '/'; the two mean the same. Names are case-sensitive.
/// A flag is set only by an option that is exactly its word: "-trace" sets doTracing, "-tracex" and "-Trace" do not.
/// isFlag and getValue compare prefixes instead: they take the first option, from word 1 on, that begins with the given
/// name, even if it is another option. With "-profiling -pSecret" the value of "p" is "rofiling".
///
/// Nothing on a command line is an error: unknown words are ignored, a missing value is the empty string or 0.
///
/// \code
///   KivCmdline::init(argc, argv, true, "logfile");             // tool.exe -trace /trfC:\x.txt -h14
///   bool const tracing = KivCmdline::doTracing();              // true
///   SV::String const file = KivCmdline::Instance().getTraceFilename(); // "C:\x.txt"
/// \endcode
///
/// init belongs to the main thread, before the library has any other thread; afterwards any thread may call any
/// operation. Those that return a string or convert one to a number allocate memory and can throw std::bad_alloc.
/// getModalDialogSuppressionLogfileName returns a reference to a string that all threads share: a thread other than the
/// main one copies its characters, not the String, whose reference count is not locked.
class KIV_API KivCmdline {
public:
  static KivCmdline & Instance(); ///< the only object; it is created by the first call

  /// Stores the command line, reads the flags and those values that are read only once.
  /// A second call is a mistake of the caller, reported as internal error "acmdline-109". It then does all of its work
  /// again, but flags that are set stay set.
  /// \param argc           number of words, including the program's own name; below 1 there are none
  /// \param argv           the words. The array is kept, not copied, and must outlive every later query. Null words are
  ///                       ignored
  /// \param withGUI        false for a host without a user interface: no_dialogs, no_windows, no_gui, no_login_screen
  ///                       and no_printer_warning are then set and x is cleared
  /// \param logOptionName  name of the option with the log file for suppressed dialogs, used if "log_no_dialogs" is
  ///                       missing or empty. An empty name gives the whole text of the first option
  static void init(int argc, char ** argv, bool withGUI, SV::String const & logOptionName);

  /// \name Words
  /// A call before init is a mistake of the caller, reported as internal error "acmdline" with line 179 (getCount), 188
  /// (getParam, getLoginSchemaVersion), 201 (isFlag, getStartupKivScript, getWSLogFileBackupCount) or 228 (getValue and
  /// whatever else reads a value). The result is that of an empty command line.
  /// @{

  /// The number of words, including the program's own name.
  int getCount() const;

  /// Word \p i unchanged, with its '-'; word 0 is the program. Empty if \p i is negative or not below getCount.
  SV::String getParam(int i) const;

  /// True when an option begins with \p name. A null name counts as the empty one, which matches every option.
  bool isFlag(char const * name) const;

  /// The rest of the first option that begins with \p name; empty if there is none.
  SV::String getValue(char const * name) const;

  /// getValue as a number, converted as by the runtime's atoi, atol and atof; 0 if the option is absent.
  int getInt(char const * name) const;
  long getLong(char const * name) const;
  double getDouble(char const * name) const;
  /// @}

  /// \name Flags
  /// Each is true if the word on its right is on the command line; all are false before init, without a report.
  /// @{
  static bool kivLogin();                       ///< "kivlogin"
  static bool typeChecksInKivScript();          ///< "kivscript_typecheck"
  static bool releaseAssertionsEnabled();       ///< "assert": assertions are active in a release build too
  static bool isAutoKick();                     ///< "autokick"
  static bool dynamicConsole();                 ///< "console"
  static bool debugMemDelayFree();              ///< "debug_mem_delayfree": accepted, but switched off: always false
  static bool debugMemHeapCheck();              ///< "debug_mem_heapcheck": accepted, but switched off: always false
  static bool isRovinsLibDocuGen();             ///< "libdox"
  static bool isExceptionHandlingDeactivated(); ///< "no_exception_handling"
  static bool modalDialogSuppression();         ///< "no_dialogs", or no GUI
  static bool showWindowSuppression();          ///< "no_windows", or no GUI
  static bool noGUI();                          ///< "no_gui", or no GUI
  static bool noLoginScreen();                  ///< "no_login_screen", or no GUI
  static bool noPrinterWarning();               ///< "no_printer_warning", or no GUI
  static bool noDBBootLogin();                  ///< "nobootlogin"
  static bool profiling();                      ///< "profiling"
  static bool doTracing();                      ///< "trace"
  static bool trySingleSignOn();                ///< "winlogin"
  static bool executeLoginDlgAnyway();          ///< "x"; always false without a GUI
  /// @}

  /// \name Values
  /// Each reads the option named on its right at the moment of the call, by getValue or getInt.
  /// @{
  SV::String getLoginUserName() const; ///< "u"
  SV::String getLoginPassword() const; ///< "p"
  SV::String getLoginDBName() const;   ///< "d"
  SV::String getLoginDBSystem() const; ///< "s"

  /// "v", if the program's file name is "awssrv.exe" in upper or lower case; empty for every other program.
  SV::String getLoginSchemaVersion() const;

  /// "e": if the option is there, stores its value in \p out and returns true; otherwise leaves \p out unchanged. "-e"
  /// alone gives true and the empty string.
  bool getStartupKivScript(SV::String & out) const;

  SV::String getFontFace() const;      ///< "f"
  int getFontHeight() const;           ///< "h"
  SV::String getTraceFilename() const; ///< "trf"
  SV::String getToolName() const;      ///< "toolname"
  int getWSPortNumber() const;         ///< "port"
  SV::String getPIDFileName() const;   ///< "pidfile"
  SV::String getWSLogFileName() const; ///< "wslogfile"

  /// "wslogbackup"; -1 if the option is absent, 0 if it has no number.
  int getWSLogFileBackupCount() const;

  SV::String getPrinterName() const; ///< "P"
  SV::String getUICharSet() const;   ///< "charset"
  /// @}

  /// \name Read once by init
  /// @{

  /// "wslogformat": the long form for the value "long", otherwise the default form.
  KivWSLogFormat getWSLogFormat() const;

  /// "log_no_dialogs", otherwise the option that init was given: the log file for suppressed dialogs. Empty before init.
  SV::String const & getModalDialogSuppressionLogfileName() const;
  /// @}

private:
  constexpr KivCmdline() = default;
  KivCmdline(KivCmdline const &) = delete;
  KivCmdline & operator=(KivCmdline const &) = delete;

  void _init(int count, char ** words);

  int argc = 0;
  char ** argv = nullptr;
};
