#pragma once
/// \file
/// Starting other programs: one that is polled for its end, with its output redirected if wanted, and documents or
/// programs that are given to the Windows shell.
///
/// There are no locks: each object is for one thread, and all executions of KivAsynchronousProcess share a plain counter.
///
/// \code
///   SV::String const archiver = "\"" + Kiv_GetProgramPath(true) + "tools\\7za.exe\""; // quoted, and with its folder
///   KivSynchronousProcess pack(archiver + " a report.zip report.txt 1>pack.log", "", KIV_CMDSHOW_MINIMIZED);
///   pack.SetUseRedirection(true);
///   if (!pack.Execute(false))
///     return reportFailure(GetLastError());
///   while (pack.Wait() == -1) // takes up to a second each time
///     showProgress();
///   bool const isPacked = pack.GetRetVal() == 0;
///
///   KivAsynchronousProcess("manual.pdf").Execute(nullptr); // in the program that the user reads such files with
/// \endcode

#include "export.hpp"
#include "tools/string.hpp"

namespace SV {
class Window;
}

/// How the window of a started program is shown: the show commands of Windows.
enum KivCmdShow : int {
  KIV_CMDSHOW_HIDE = 0,
  KIV_CMDSHOW_NORMAL = 1,
  KIV_CMDSHOW_MINIMIZED = 2,
  KIV_CMDSHOW_MAXIMIZED = 3,
  KIV_CMDSHOW_NO_ACTIVATE = 4, ///< as it was last, without becoming the active window
  KIV_CMDSHOW_SHOW = 5,
  KIV_CMDSHOW_MINIMIZE = 6, ///< and activates the next window
  KIV_CMDSHOW_MINIMIZED_NO_ACTIVATE = 7,
  KIV_CMDSHOW_SHOW_NO_ACTIVATE = 8,
  KIV_CMDSHOW_RESTORE = 9,
  KIV_CMDSHOW_DEFAULT = 10, ///< as this program was started
  KIV_CMDSHOW_FORCE_MINIMIZE = 11,
};

/// What both kinds of processes hold.
class KIV_API KivBasicProcess {
protected:
  /// \param command    if all of it stands between two double quotes, they are removed. A command such as
  ///                   `"c:\a b\x.exe" -y`, a quoted program followed by parameters, keeps its quotes
  /// \param arguments  may be empty
  KivBasicProcess(SV::String const & command, SV::String const & arguments, KivCmdShow show);

  /// As stored by the constructor.
  /// @{
  SV::String const & command() const { return command_; }
  SV::String const & arguments() const { return arguments_; }
  KivCmdShow show() const { return show_; }
  /// @}

private:
  SV::String command_;
  SV::String arguments_;
  KivCmdShow show_;
};

/// A program that is started directly and polled for its end. The destructor does not end it: a program that was never
/// waited for continues to run.
///
/// The command line is the command and, after a blank, the arguments. It has at most 32,766 characters. An empty command
/// stands for the command interpreter, as named by the environment variable "COMSPEC"; arguments are then ignored. A command
/// whose path contains a blank and that lost its quotes, as explained above, is searched for by Windows at each blank in
/// turn: put parameters or a blank after the closing quote to keep them.
///
/// The line may redirect output, written as in a shell. Both redirections are removed from the line whether they are used
/// or not; what is before and after them stays.
///
/// | in the line | effect, with SetUseRedirection(true) |
/// |---|---|
/// | `1>name` | standard output replaces the content of the file |
/// | `1>>name` | standard output is appended to the file |
/// | `2>name`, `2>>name` | the same for the standard error stream |
/// | `1>"a name"` | the name extends to the next double quote, otherwise to the next blank, in each case at most to the end of the line |
/// | `1> name` | no redirection: the name is empty, and `name` stays in the line |
///
/// The first occurrence of each operator counts, wherever it is: an argument with `1>` in it cannot be passed. One that
/// lies inside the name of the other redirection is part of that name. A redirected program is given no standard input,
/// and no other output stream unless that is redirected too.
///
/// Copies share the handles, which are not counted. The first one that sees the end or is destroyed closes them for
/// all; after that the others hold values that the system may use for something else, and must neither wait nor be
/// destroyed.
class KIV_API KivSynchronousProcess : public KivBasicProcess {
public:
  /// See KivBasicProcess.
  KivSynchronousProcess(SV::String const & command, SV::String const & arguments, KivCmdShow show);
  KivSynchronousProcess(KivSynchronousProcess const &) = default;
  KivSynchronousProcess & operator=(KivSynchronousProcess const &) = default;

  /// Closes the handle of the process. The redirection files of a program whose end was not seen by Wait stay open.
  virtual ~KivSynchronousProcess();

  /// Whether Execute opens the files of the redirections; at first it does not.
  void SetUseRedirection(bool on);

  /// Starts the program. It inherits all inheritable handles, the environment and the current folder of this process. A
  /// redirection file that cannot be opened leaves that stream without redirection; the program still starts.
  /// \param consoleWindow  false: a console program gets a console without a window
  /// \return false if it was not started: it is still running as far as this object knows, the line is empty, or the
  ///         system refuses, in which case GetLastError has the reason. Redirection files that were opened for it stay
  ///         open, and streams that the next Execute does not redirect anew then go to them
  bool Execute(bool consoleWindow);

  /// Waits for the end of the program for up to a second.
  /// \return -1 while it is running, and when none was started; otherwise its exit code, where every negative one becomes
  ///         0x7FFFFFFF. The object is then ready for another Execute. A program that ends with 259 never counts as ended
  long Wait();

  /// The exit code as Wait returned it; 0 before the end of the first run, and that of the run before until the end of a
  /// later one. 259 once Wait has seen that code.
  long GetRetVal() const;

private:
  int state_ = -1; ///< 0 while a program runs
  long returnValue_ = 0;
  void * process_;
  void * output_;
  void * error_;
  bool useRedirection_ = false;
};

/// A document or program that the Windows shell opens, and that is not followed any further.
class KIV_API KivAsynchronousProcess : public KivBasicProcess {
public:
  /// Without arguments, shown as normal.
  explicit KivAsynchronousProcess(SV::String const & command);
  /// \param command    the document or program: a path, or a name that the shell finds. `%NAME%` in it stands for that
  ///                   environment variable
  /// \param arguments  of a program; variables in them are passed on as they are
  KivAsynchronousProcess(SV::String const & command, SV::String const & arguments, KivCmdShow show);

  /// Opens it. The shell shows the user a box if it cannot, even while dialogs are suppressed.
  /// \param parent  the owner of that box; null stands for the application window, if there is one
  /// \return false if the shell refused; GetLastError has the reason
  bool Execute(SV::Window * parent);

  /// How often this process has called Execute, failures included.
  static long GetExecuteCount();
};
