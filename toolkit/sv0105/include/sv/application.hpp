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

/// The kind of a change of the system's settings.
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

/// Where the keys of an accelerator work, see Application::InsertAccel.
inline constexpr unsigned short ACCEL_NORMAL = 0; ///< not in a modal dialog that is opened later
inline constexpr unsigned short ACCEL_WITH_DIALOG =
    1; ///< also in the next modal dialog, but not in one opened from there

/// Kinds of sounds.
inline constexpr unsigned short BEEP_DEFAULT = 0;
inline constexpr unsigned short BEEP_INFO = 1;
inline constexpr unsigned short BEEP_QUERY = 2;
inline constexpr unsigned short BEEP_ERROR = 3;
inline constexpr unsigned short BEEP_WARNING = 4;

/// Ways to ask for help; EnableHelp takes their sum.
inline constexpr unsigned short HELP_BY_KEY = 1; ///< F1 starts the help
inline constexpr unsigned short HELP_EXTENDED =
    2; ///< Shift+F1 calls ActivateExtHelp; the next click then starts the help

/// The toolkit's frame of a program. Main thread only, unless an operation says otherwise.
///
/// An executable defines one static object of a derived class. The entry routine initialises the toolkit with InitSV, calls
/// Main, and shuts the toolkit down with DeInitSV.
class SV_API Application : public LinkHdl {
public:
  /// Makes this object the application. A second object replaces the first.
  Application();
  Application(Application const &) = delete;
  Application & operator=(Application const &) = delete;
  /// Clears the toolkit's pointer to this object.
  ~Application() override;

  /// Called before the program's windows close: true allows it to end.
  virtual bool QueryExit();
  /// Called when a setting of the system has changed.
  virtual void SysChange(SysChangeType type);
  /// An event from another part of the toolkit, or one that the product posts to itself; the base does nothing.
  virtual void AppEvent(unsigned long event, void * data);
  virtual void UserEvent(unsigned long event, void * data);
  /// Called when the program becomes the active one, and when another one does; the base does nothing.
  virtual void Activate();
  virtual void Deactivate();
  /// Called when extended help begins and ends; the base changes the pointer of the application window.
  virtual void ActivateExtHelp();
  virtual void DeactivateExtHelp();
  /// The program itself.
  virtual void Main(int argc, char ** argv) = 0;
  /// A severe exception. The base ends the process with exit(1). If an override returns, the caller tries again or continues. A
  /// C++ exception thrown from a call with EXC_HANDLER_FAILED ends the process.
  virtual void Exception(long code, unsigned long arg);

  /// Dispatches messages until Quit is called.
  /// \return the code passed to Quit
  static int Execute();
  /// Dispatches the waiting messages and returns, after a tenth of a second at the latest.
  static void Reschedule();
  /// Ends the innermost Execute, or the next one if none runs.
  static void Quit(int exitCode = 0);

  /// Makes the event loop call UserEvent or AppEvent, in the order of posting. Any thread may call them.
  /// \return false, and nothing is posted, before InitSV and after DeInitSV
  static bool PostUserEvent(unsigned long event, void * data);
  static bool PostAppEvent(unsigned long event, void * data);

  /// The wait pointer: Wait sets its count, and a count other than 0 shows the hour-glass.
  static void Wait(unsigned short count);
  static unsigned short IsWait();

  /// The help in use, not owned. ChangeHelp returns the previous one.
  static Help * ChangeHelp(Help * help);
  static Help * GetHelp();

  /// Sets the keys that give help: the sum of HELP_BY_KEY and HELP_EXTENDED, or 0, which is the default. Extended help, which
  /// Shift+F1 begins, ends with a click or Escape; both call DeactivateExtHelp.
  /// \return the previous sum
  static unsigned short EnableHelp(unsigned short modes);

  /// Puts an accelerator into effect; its keys come before those of the accelerators inserted earlier. It is not owned, and is
  /// removed when it is destroyed. False for null, when inserting one that is already in effect, and when removing one that is not.
  /// \param scope  ACCEL_NORMAL or ACCEL_WITH_DIALOG
  static bool InsertAccel(Accelerator * accelerator, unsigned short scope = ACCEL_NORMAL);
  static bool RemoveAccel(Accelerator * accelerator);

  /// Plays the sound that the user has chosen for that kind of event.
  /// \param kind  BEEP_ERROR and so on; any other number counts as BEEP_DEFAULT
  static void Beep(unsigned short kind = BEEP_DEFAULT);

  /// The font of all windows that set none; open windows change at once. ChangeAppFont returns the previous one.
  static Font ChangeAppFont(Font const & font);
  static Font const & GetAppFont();

  /// The formats and button labels in use. ChangeAppInternational returns the previous ones.
  static International ChangeAppInternational(International const & international);
  static International const & GetAppInternational();

  /// Under dialog suppression no modal box is shown; its text goes to the log.
  static void SetModalDialogSuppression(bool on);
  static bool IsModalDialogSuppression();
  static void SetModalDialogSuppressionLogfileName(String const & name);
  static String const & GetModalDialogSuppressionLogfileName();
  /// Appends the text and a line end to the log file. Writes nothing if there is no name or the file cannot be opened.
  static void ModalDialogSuppressionLog(char const * text);

  /// Under window suppression no window becomes visible.
  static void SetShowWindowSuppression(bool on);
  static bool IsShowWindowSuppression();

  /// The look of the system.
  static CVisualStylesXP & GetVisualStylesXP();

  /// The main window; null before it is created and after it is closed.
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
  /// Draws the whole background of the client area, with a device context that it gets itself; does nothing here.
  virtual void PaintMDIClient(HWND hwnd);

  /// Causes the client area to be repainted.
  void InvalidateMDIClient();
};

/// The application object; null if none has been constructed.
SV_API Application * GetpApp();

/// The facts of the process, which the entry routine sets before InitSV.
SV_API void SetProcessData(HINSTANCE instance, unsigned long threadId, int showCommand);

/// Initialises the toolkit for this process; false if its window classes cannot be registered.
SV_API bool InitSV(int argc, char ** argv);
/// Shuts the toolkit down: closes the remaining windows and releases its system objects.
SV_API void DeInitSV();

} // namespace SV
