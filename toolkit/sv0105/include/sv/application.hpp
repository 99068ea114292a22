#pragma once
/// \file
/// The application object: one per process, a static object of a derived class.

#include "sv/export.hpp"
#include "sv/font.hpp"
#include "tools/international.hpp"
#include "tools/object.hpp"
#include "tools/string.hpp"

namespace SV {

class Accelerator;
class Application;
class CVisualStylesXP;
class Help;
class Window;

/// What a change of the system's settings was about.
enum SysChangeType {
  SYSCHANGE_COLORS = 1,
  SYSCHANGE_SETTINGS = 2,
  SYSCHANGE_DISPLAY = 3,
  SYSCHANGE_THEME = 4,
  SYSCHANGE_FONTS = 5,
  SYSCHANGE_LOCALE = 6
};

/// Codes of severe exceptions, see Application::Exception.
inline constexpr long EXC_RESOURCE_NOT_LOADED = 0x100;       ///< the argument is the resource identifier
inline constexpr long EXC_SYSTEM_OBJECT_NOT_CREATED = 0x200; ///< the argument is the system's error code, or 0
inline constexpr long EXC_RESOURCE_FILE_NOT_LOADED = 0x400;  ///< the argument is the address of the file name
inline constexpr long EXC_HANDLER_FAILED = 0x800;            ///< a C++ exception has left a handler; the argument is 0

/// Where the keys of an accelerator count, see Application::InsertAccel.
inline constexpr unsigned short ACCEL_NORMAL = 0;      ///< not in a modal dialog that is opened later
inline constexpr unsigned short ACCEL_WITH_DIALOG = 1; ///< also in the next modal dialog, not in one that that opens

/// Kinds of sounds.
inline constexpr unsigned short BEEP_DEFAULT = 0;
inline constexpr unsigned short BEEP_INFO = 1;
inline constexpr unsigned short BEEP_QUERY = 2;
inline constexpr unsigned short BEEP_ERROR = 3;
inline constexpr unsigned short BEEP_WARNING = 4;

/// Ways to ask for help, which EnableHelp takes as a sum.
inline constexpr unsigned short HELP_BY_KEY = 1; ///< F1 starts the help
inline constexpr unsigned short HELP_EXTENDED =
    2; ///< Shift+F1 calls ActivateExtHelp; the next click then starts the help

/// The toolkit's frame of a program. All of it is used on the main thread.
///
/// An executable defines one static object of a derived class. The entry routine brings the toolkit up with InitSV,
/// calls Main and takes the toolkit down with DeInitSV.
class SV_API Application : public LinkHdl {
public:
  /// Makes this object the application. A second object replaces the first.
  Application();
  Application(Application const &) = delete;
  Application & operator=(Application const &) = delete;
  /// Clears the toolkit's pointer to this object.
  ~Application() override;

  /// Asked before the program's windows close: true lets it end.
  virtual bool QueryExit();
  /// Called when a setting of the system has changed.
  virtual void SysChange(SysChangeType type);
  /// An event from another part of the toolkit, or one that the product posts to itself; the base does nothing.
  virtual void AppEvent(unsigned long event, void * data);
  virtual void UserEvent(unsigned long event, void * data);
  /// Called when the program comes to the front, and when it leaves it; the base does nothing.
  virtual void Activate();
  virtual void Deactivate();
  /// Help for the next click, on and off: the base changes the pointer of the application window.
  virtual void ActivateExtHelp();
  virtual void DeactivateExtHelp();
  /// The program.
  virtual void Main(int argc, char ** argv) = 0;
  /// A severe exception. The base ends the process with exit(1); an override that returns lets the caller try again or
  /// go on. A C++ exception that leaves it while it is called with EXC_HANDLER_FAILED ends the process.
  virtual void Exception(long code, unsigned long arg);

  /// Dispatches messages until Quit is called. Its result is the code given to Quit.
  static int Execute();
  /// Dispatches what is waiting and returns; messages that keep coming are left alone after a tenth of a second.
  static void Reschedule();
  /// Ends the innermost Execute, or the next one when none runs.
  static void Quit(int exitCode = 0);

  /// Has UserEvent or AppEvent called from the event loop, in the order of posting. Any thread may call them. False,
  /// and no event, before InitSV and after DeInitSV.
  static bool PostUserEvent(unsigned long event, void * data);
  static bool PostAppEvent(unsigned long event, void * data);

  /// The wait pointer, counted: every Wait(n) sets the count; non-zero shows the hour-glass.
  static void Wait(unsigned short count);
  static unsigned short IsWait();

  /// The help in use, not owned; the former one is the result.
  static Help * ChangeHelp(Help * help);
  static Help * GetHelp();

  /// Sets by which keys the user gets help, HELP_BY_KEY and HELP_EXTENDED or 0; none at first. The former ones are the
  /// result. Escape ends what Shift+F1 has begun, and either end calls DeactivateExtHelp.
  static unsigned short EnableHelp(unsigned short modes);

  /// Puts the keys of an accelerator into effect, before those of the accelerators that are in already. It is not owned,
  /// and leaves when it dies. False for null, and for one that is in, or is not when it is removed.
  /// \param scope  ACCEL_NORMAL or ACCEL_WITH_DIALOG
  static bool InsertAccel(Accelerator * accelerator, unsigned short scope = ACCEL_NORMAL);
  static bool RemoveAccel(Accelerator * accelerator);

  /// The sound that the user has chosen for such an occasion.
  /// \param kind  BEEP_ERROR and so on; any other number counts as BEEP_DEFAULT
  static void Beep(unsigned short kind = BEEP_DEFAULT);

  /// The font of all windows that set none; the former one is the result. Windows that are open take it at once.
  static Font ChangeAppFont(Font const & font);
  static Font const & GetAppFont();

  /// The formats and button labels in use; the former ones are the result.
  static International ChangeAppInternational(International const & international);
  static International const & GetAppInternational();

  /// Under dialog suppression no modal box is shown; what it would tell goes to the log.
  static void SetModalDialogSuppression(bool on);
  static bool IsModalDialogSuppression();
  static void SetModalDialogSuppressionLogfileName(String const & name);
  static String const & GetModalDialogSuppressionLogfileName();
  /// Appends the text and a line end to the log file; without a name, or when the file can't be opened, nothing is
  /// written.
  static void ModalDialogSuppressionLog(char const * text);

  /// Under window suppression no window becomes visible.
  static void SetShowWindowSuppression(bool on);
  static bool IsShowWindowSuppression();

  /// The look of the system.
  static CVisualStylesXP & GetVisualStylesXP();

  /// The main window, null before it is made and after it is gone.
  static Window * GetAppWindow();
  static void SetAppWindow(Window * window);
};

/// An application whose main window is an MDI frame with a client area.
class SV_API MDIApplication : public Application {
public:
  MDIApplication(); ///< registers itself, as Application does
  ~MDIApplication() override;

  /// Whether PaintMDIClient draws the background of the client area; false here.
  virtual bool IsUserDefPaintMDIClient();
  /// Draws the whole background of the client area, for which it fetches a device context itself; nothing here.
  virtual void PaintMDIClient(HWND hwnd);

  /// Has the client area painted anew.
  void InvalidateMDIClient();
};

/// The application object, null when none has been constructed.
SV_API Application * GetpApp();

/// The process facts that the entry routine hands over before InitSV.
SV_API void SetProcessData(HINSTANCE instance, unsigned long threadId, int showCommand);

/// Brings the toolkit up for this process; false when its window classes cannot be registered.
SV_API bool InitSV(int argc, char ** argv);
/// Takes it down: closes the windows that are left and gives its system objects back.
SV_API void DeInitSV();

} // namespace SV
