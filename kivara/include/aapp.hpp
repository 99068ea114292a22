#pragma once
/// \file
/// The application frame: the classes that every executable builds on.

#include "export.hpp"
#include "sv/application.hpp"
#include "sv/bitmap.hpp"
#include "tools/string.hpp"

namespace SV {
class Help;
class Image;
} // namespace SV

/// What the frame does for any kind of application; the second base of KivMDIApplication. All of it is for the main
/// thread.
class KIV_API KivApplicationInterface {
public:
  /// \param applicationName  begins every message of a severe exception; null counts as empty
  /// \param hasGUI           false for a host without a user interface: dialogs and windows are then suppressed
  KivApplicationInterface(char const * applicationName, bool hasGUI);
  KivApplicationInterface(KivApplicationInterface const &) = delete;
  KivApplicationInterface & operator=(KivApplicationInterface const &) = delete;

  /// Whether the process's application object was constructed with a user interface; false when there is none of this class.
  static bool IsWithGUI();

  /// True once the end has begun: from then on singletons are destroyed. False when there is no application object of
  /// this class.
  static bool IsAfterMain();

  /// Makes the help object of the application, installs it in the toolkit and gives it the file. It dies with the end
  /// of Main. A second call keeps the first object and changes its file.
  /// \param fileName  the name of the help file without folder and extension, for KivInternational::switchHelpObject
  void createHelpObject(char const * fileName);

  /// Loads a resource DLL, as KivInternational::createResourceManager does. False when it could not be loaded, which has
  /// then been reported to the user.
  bool createResourceManager(char const * const resourceName, bool languageSpecific);

protected:
  ~KivApplicationInterface() = default;

  /// \name Steps of Main
  /// @{

  /// All that precedes the derived class's own preparation: the command line first, then console, trace file,
  /// application font, suppression, picture archive, language, pid file and start directory. Only a console
  /// that cannot be allocated stops the start: it ends the process.
  void _beforeMain(int argc, char ** const argv, SV::String const & logOption);

  /// Character set and button labels. Both are read from resources, so a resource manager must be active.
  void _beforeMain2();

  /// Triggers AppExit, closes the trace file, drops the words of all languages, deletes the help object and
  /// the resource managers of KivInternational, and leaves none active.
  void _afterMain(int exitCode);
  /// @}

  /// Answers a severe exception: true when the program can go on, since the next resource manager is now active or a
  /// resource file was only being tried. Otherwise its message has been shown, or written to the log of suppressed
  /// dialogs, and AppExit has been triggered. An exception during this handling is answered with false at once.
  bool _handleException(long code, unsigned long arg);

  /// Passes a change of the system's settings on to the library's parts.
  void _onSystemSettingsChange(SV::SysChangeType type);

private:
  SV::String name;
  SV::Help * help = nullptr;
  bool withGUI;
  bool afterMain = false;
};

/// How the picture behind the MDI windows is laid out, see KivMDIApplication::getMDIClientImage. Any other number: neither
/// picture nor background, only the line around the area.
enum KivMDIClientMode : int {
  KIV_MDI_CLIENT_COLOR = 0,   ///< no picture, the theme's colour alone
  KIV_MDI_CLIENT_STRETCH = 1, ///< stretched to the area in both directions
  KIV_MDI_CLIENT_COVER = 2,   ///< the middle of a picture that is scaled to cover the screen
  KIV_MDI_CLIENT_CENTER = 3,  ///< in the middle of the theme's colour
  KIV_MDI_CLIENT_TILE = 4     ///< side by side from the upper left corner
};

/// The frame of an MDI application. An executable derives one class from it and defines one static object of that
/// class; the toolkit entry calls its Main.
///
/// Main runs the start-up steps, prepareApplication, runApplication and the steps of the end. The command line can be
/// read from prepareApplication on, resources as soon as that has installed a resource manager.
///
/// \code
///   class Modeler : public KivMDIApplication {
///   public:
///     Modeler() : KivMDIApplication("Modeler", true, "log_dialogs") {}
///     int prepareApplication() override;  // load resources
///     int runApplication() override;      // make the main window, then return Execute()
///     bool getMDIClientImage(SV::Image &, int &) override { return false; }
///   };
///   Modeler modeler;
/// \endcode
class KIV_API KivMDIApplication : public SV::MDIApplication, public KivApplicationInterface {
public:
  /// \param applicationName  as in KivApplicationInterface
  /// \param hasGUI           as in KivApplicationInterface
  /// \param logOption        name of the command line's option for the log file of suppressed dialogs
  KivMDIApplication(char const * applicationName, bool hasGUI, SV::String logOption);
  ~KivMDIApplication() override;

  void SysChange(SV::SysChangeType type) override;

  /// Runs the program. A non-zero exit code ends the process here with exit(code), so that the toolkit is not taken
  /// down; zero returns.
  void Main(int argc, char ** const argv) override;

  /// Passes what _handleException does not settle on to the toolkit, which ends the process.
  void Exception(long code, unsigned long arg) override;

  /// True: the area behind the MDI windows is painted by PaintMDIClient.
  bool IsUserDefPaintMDIClient() override;

  /// Paints the whole area behind the MDI windows as the mode of the last call of MakeMDIClientImg says, in colours of the
  /// current theme, and a line around it. A null window, or one without a client area, is left alone.
  void PaintMDIClient(HWND hwnd) override;

  /// The program itself; the result is the exit code.
  virtual int runApplication() = 0;

  /// Called before runApplication: 0 to go on; any other value skips it and becomes the exit code.
  virtual int prepareApplication() = 0;

  /// The picture behind the MDI windows, for MakeMDIClientImg. False when there is no picture.
  /// \param image  empty; to be filled
  /// \param mode   how it is laid out, see KivMDIClientMode; on entry the current one; what it is set to is kept even when the result is false
  virtual bool getMDIClientImage(SV::Image & image, int & mode) = 0;

  /// Asks getMDIClientImage for the picture and keeps it for PaintMDIClient, cut to the size of the screen; with
  /// KIV_MDI_CLIENT_COVER it is scaled first, so that it covers the screen. For the derived class, before its window is
  /// shown and when the picture, the mode or the screen has changed: the library never calls it. The area is not painted
  /// anew: see InvalidateMDIClient.
  /// \param multiMonitor  false: the size is that of the main screen. True: the width is that of all screens less that of
  ///                      the main one, so with one screen there is no picture; the height is the larger one
  /// \return false when there is no picture, or when the kept one has the size of the screen already: it is then kept, even
  ///         if getMDIClientImage gives another picture by now. The new mode counts in every case
  bool MakeMDIClientImg(bool multiMonitor);

  bool isAppInitialized() const { return appInitialized; } ///< what the derived class set

private:
  SV::String logOptionName;
  SV::Bitmap mdiClientBitmap;
  int mdiClientImageMode = 0;

protected:
  /// For the derived class to set once it is ready; the frame leaves it alone.
  bool appInitialized = false;
};
