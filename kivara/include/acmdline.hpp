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

/// The command line: a fixed table of on/off words, and options whose value follows their name in the same word.
///
/// A word is an option when it begins with '-' or '/'; the two are equal everywhere. Names are case-sensitive.
/// A flag is set only by an option that is exactly its word: "-trace" sets doTracing, "-tracex" and "-Trace" do not.
/// isFlag and getValue ask for a prefix instead, and the first option from word 1 on that begins with the asked name
/// wins, whatever else it may mean: with "-profiling -pSecret" the value of "p" is "rofiling".
///
/// Nothing on a command line is an error: unknown words are passed over, an absent or empty value is the empty text or
/// 0.
///
/// \code
///   KivCmdline::init(argc, argv, true, "logfile");             // tool.exe -trace /trfC:\x.txt -h14
///   bool const tracing = KivCmdline::doTracing();              // true
///   SV::String const file = KivCmdline::Instance().getTraceFilename(); // "C:\x.txt"
/// \endcode
///
/// init belongs to the main thread, before the library has any other thread; afterwards every operation may be called
/// from any thread. Those that return a text or read a number from one allocate and throw std::bad_alloc. The one that
/// returns a reference gives a text that all threads see: other threads than the main one copy its characters, since
/// copying the text itself would change its count of owners.
class KIV_API KivCmdline {
public:
  static KivCmdline & Instance(); ///< the only one; it is made at the first call

  /// Takes the command line over, reads the flags and settles the values that are read once.
  /// A second call is a mistake of the caller, reported as internal error "acmdline-109". It repeats the work: flags
  /// that are set stay set.
  /// \param argc           number of words with the program's own name; below 1 there are none
  /// \param argv           the words. The array is kept, not copied, and must outlive every later query. Null words are
  ///                       passed over
  /// \param withGUI        false for a host without a user interface: no_dialogs, no_windows, no_gui, no_login_screen
  ///                       and no_printer_warning are then set and x is cleared
  /// \param logOptionName  name of the option that gives the log file for suppressed dialogs where "log_no_dialogs"
  ///                       gives none. An empty name takes the whole text of the first option
  static void init(int argc, char ** argv, bool withGUI, SV::String const & logOptionName);

  /// \name Words
  /// To ask before init is a mistake of the caller, reported as internal error "acmdline" with line 179 (getCount), 188
  /// (getParam), 201 (isFlag) or 228 (getValue and all that read by it); they then answer as for an empty command line.
  /// @{

  /// The number of words, with the program's own name.
  int getCount() const;

  /// Word \p i as it stands, with its '-'; word 0 is the program. Empty for an index that is negative or not below
  /// getCount.
  SV::String getParam(int i) const;

  /// True when an option begins with \p name. A null name counts as the empty one, with which every option begins.
  bool isFlag(char const * name) const;

  /// What follows \p name in the first option that begins with it; empty if there is none.
  SV::String getValue(char const * name) const;

  /// getValue as a number, read as the runtime's atoi, atol and atof do; 0 when the option is absent.
  int getInt(char const * name) const;
  long getLong(char const * name) const;
  double getDouble(char const * name) const;
  /// @}

  /// \name Flags
  /// Each is true when the word at its right was on the command line; all are false before init.
  /// @{
  static bool kivLogin();                       ///< "kivlogin"
  static bool typeChecksInKivScript();          ///< "kivscript_typecheck"
  static bool releaseAssertionsEnabled();       ///< "assert": assertions stay active in a release build
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
  /// Each reads the option named at its right at the moment of the call, by getValue or getInt.
  /// @{
  SV::String getLoginUserName() const; ///< "u"
  SV::String getLoginPassword() const; ///< "p"
  SV::String getLoginDBName() const;   ///< "d"
  SV::String getLoginDBSystem() const; ///< "s"

  /// "v", for a program whose name is "awssrv.exe" in any case; empty for every other program.
  SV::String getLoginSchemaVersion() const;

  /// "e": true when the option is there, and its value in \p out; otherwise \p out stays. "-e" alone gives true and the
  /// empty text.
  bool getStartupKivScript(SV::String & out) const;

  SV::String getFontFace() const;      ///< "f"
  int getFontHeight() const;           ///< "h"
  SV::String getTraceFilename() const; ///< "trf"
  SV::String getToolName() const;      ///< "toolname"
  int getWSPortNumber() const;         ///< "port"
  SV::String getPIDFileName() const;   ///< "pidfile"
  SV::String getWSLogFileName() const; ///< "wslogfile"

  /// "wslogbackup"; -1 when the option is absent, 0 when it has no number.
  int getWSLogFileBackupCount() const;

  SV::String getPrinterName() const; ///< "P"
  SV::String getUICharSet() const;   ///< "charset"
  /// @}

  /// \name Settled by init
  /// @{

  /// "wslogformat": the long form for the value "long", else the default form.
  KivWSLogFormat getWSLogFormat() const;

  /// The log file for suppressed dialogs; empty before init.
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
