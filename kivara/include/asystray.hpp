#pragma once
/// \file
/// KivSystemTray: an icon in the notification area of the taskbar, with its text, balloons, animation and popup menu.
///
/// A program derives from it to say what the menu holds and what a double-click does:
///
/// \code
///   class ProductIcon : public KivSystemTray {
///     void BuildPopupMenu(SV::PopupMenu & menu) override { menu.InsertItem(1, "~Restore"); }
///     void DoDoubleClickAction() override { MaximizeFromTray(SV::Application::GetAppWindow()->GethWnd()); }
///   };
///   ProductIcon icon;
///   icon.Create(nullptr, 0x8001, "Order.mod", SV::Icon(SV::ResId(1)), 1);
///   icon.ShowBalloon("The run has ended.", "Modeler", 1, 10);
/// \endcode
///
/// **Limits.** A text that is too long is cut. But first each violated limit calls the runtime's `_wassert`, in release builds
/// too, which shows a box or a line and may end the process; under dialog suppression it is a line of KivDebugOut. docs/tray.md
/// names the limits, and the state of the icon after each operation.
///
/// All of it is for the main thread. Each object has a hidden window of its own, but only the object that was constructed last
/// gets messages there.

#include "export.hpp"
#include "sv/geometry.hpp"
#include "sv/icon.hpp"
#include "sv/menu.hpp"
#include "sv/window.hpp"
#include "tools/object.hpp"
#include "tools/string.hpp"

#include <vector>

/// Where nothing else is said, an operation returns 1 for success and 0 if the shell refuses. Those that show or change
/// something return 0 before Create.
class KIV_API KivSystemTray : public SV::LinkHdl {
public:
  KivSystemTray();
  /// The same, followed by Create.
  KivSystemTray(SV::Window * parent, unsigned int uCallbackMessage, SV::String const & tip, SV::Icon const & icon,
                unsigned int uID, int bHidden = 0, SV::String const & balloonTip = {},
                SV::String const & balloonTitle = {}, unsigned long dwBalloonIcon = 0,
                unsigned int uBalloonTimeout = 10);
  KivSystemTray(KivSystemTray const &) = delete;
  KivSystemTray & operator=(KivSystemTray const &) = delete;
  /// Removes the icon and destroys the hidden window.
  ~KivSystemTray() override;

  /// What the shell reports about the icon. A right click opens the menu at the pointer, unless it is empty, and a double-click
  /// calls DoDoubleClickAction; before either, the notification window comes to the front. The menu and the action may delete
  /// this object. A program that has given a parent calls this when the parent gets the callback message.
  /// \param wParam  the number of the icon; anything else is ignored
  /// \param lParam  the mouse message
  /// \return 0 if the message was ignored, otherwise 1
  virtual long long OnTrayNotification(unsigned long long wParam, long long lParam);
  virtual void CustomizeMenu(HMENU menu); ///< for derived classes; nothing calls it
  /// Adds the items; called each time the menu is about to open. The base adds none, and no menu appears.
  virtual void BuildPopupMenu(SV::PopupMenu & menu);
  virtual void DoDoubleClickAction(); ///< the base does nothing

  /// Adds the icon. A former one of this object is removed first.
  /// \param parent            gets the callback message; null: the hidden window of this object does, which passes it to
  ///                          OnTrayNotification
  /// \param uCallbackMessage  at least WM_APP, 0x8000
  /// \param tip               at most 127 bytes are shown
  /// \param icon              must outlive this object's use of it, as must all icons below
  /// \param uID               the number of the icon, other than those of the parent's other icons
  /// \param bHidden           adds it invisible, and without picture, text and callback message: see docs/tray.md
  /// \param balloonTip        for a balloon at once, below 256 bytes; empty for none
  /// \param balloonTitle      below 64 bytes; may be empty
  /// \param dwBalloonIcon     0 none, 1 information, 2 warning, 3 error
  /// \param uBalloonTimeout   10 to 30 seconds
  /// \return 0 if there was no shell to take it: it is then added as soon as one reports that it has begun
  int Create(SV::Window * parent, unsigned int uCallbackMessage, SV::String const & tip, SV::Icon const & icon,
             unsigned int uID, int bHidden = 0, SV::String const & balloonTip = {},
             SV::String const & balloonTitle = {}, unsigned long dwBalloonIcon = 0, unsigned int uBalloonTimeout = 10);

  int Enabled() const { return m_bEnabled; } ///< whether Create has found a system that has notification areas
  int Visible() const { return !m_bHidden; } ///< also true if it is behind the button for more icons

  /// \name Text and picture
  /// While the icon is hidden, a change is stored, the shell is not called, and the result is 1.
  /// @{
  int SetTooltipText(SV::String const & tip); ///< below 128 bytes
  SV::String GetTooltipText() const;

  int SetIcon(SV::Icon const & icon);
  int SetIcon(HICON icon);
  /// Reads an icon file of that name, or "#5" for the number 5, although a resource is meant. The handle is destroyed at once, so
  /// that GetIcon then returns one that is no longer valid. Without such a file the icon has no picture.
  int SetIcon(char const * resource);
  int SetIcon(unsigned int resource);
  int SetStandardIcon(char const * name);       ///< one of the system's, such as IDI_WARNING
  int SetStandardIcon(unsigned int resource);   ///< the same by its number: 32512 to 32517
  HICON GetIcon() const { return m_tnd.hIcon; } ///< null for none
  /// @}

  /// \name Presence
  /// @{
  void SetFocus();   ///< gives the keyboard back to the notification area, after a menu for example
  int ShowIcon();    ///< adds it if it is removed; whether it is visible then
  int HideIcon();    ///< keeps its place; whether it is invisible then
  int AddIcon();     ///< removes it first if it is there; whether it is there then
  int RemoveIcon();  ///< whether it is gone then
  int MoveToRight(); ///< removes and adds it, which puts it to the end; the result is that of AddIcon
  /// @}

  /// Null texts count as empty ones; an empty text takes the balloon away.
  /// \param icon, timeout  as for Create
  int ShowBalloon(char const * text, char const * title, unsigned long icon, unsigned int timeout);

  /// \name Animation
  /// @{
  /// Icon resources of the program.
  /// \return 0 if \p first is above \p last: the list stays as it is
  int SetIconList(unsigned int first, unsigned int last);
  /// \param count  the index of the last one: one less than there are
  int SetIconList(HICON * icons, unsigned int count);
  /// Shows the next icon of the list at each interval, beginning with the second.
  /// \param delayMs  the interval in milliseconds
  /// \param seconds  how long; 0 and below: until StopAnimation
  /// \return 0 if the list is empty or there is no timer
  int Animate(unsigned int delayMs, int seconds);
  int StepAnimation(); ///< shows the next icon, after the last one the first; 0 for an empty list
  int StopAnimation(); ///< brings the icon back that was there before; 0 if there was no animation
  unsigned int GetTimerID() const { return kTimerId; }
  /// @}

  /// \name Default item of the menu resource
  /// @{
  void GetMenuDefaultItem(unsigned int & item, int & byPosition) const;
  /// Stores the pair, and marks the item in a copy of the menu with the number of the icon, which is destroyed at once.
  /// \return 0 if the program has no such menu, or that has no sub-menu; 1 for the pair that is stored already
  int SetMenuDefaultItem(unsigned int item, int byPosition);
  /// @}

  /// \name Windows and messages
  /// @{
  /// The shell knows the icon by its window: while the icon is shown, it refuses another one, but the window is stored.
  int SetNotificationWnd(HWND window);
  HWND GetNotificationWnd() const { return m_tnd.hWnd; }
  void SetTargetWnd(HWND window) { m_hTargetWnd = window; }
  HWND GetTargetWnd() const { return m_hTargetWnd; }
  int SetCallbackMessage(unsigned int message);
  unsigned int GetCallbackMessage() const { return m_tnd.uCallbackMessage; }
  HWND GetSafeHwnd() const; ///< the hidden window; null for a null object

  /// Hides a window and its button in the taskbar, with the animation of the system if the user has that. No icon is added.
  static void MinimizeToTray(HWND window);
  /// Brings it back, to the front.
  static void MaximizeFromTray(HWND window);

  static long long WindowProc(HWND window, unsigned int message, unsigned long long wParam, long long lParam);
  void OnTimer(unsigned long long id); ///< shows the next icon of an animation, or ends it
  /// Add an icon that is waiting for the shell; the second one only if \p flags is 47, the number of the work area.
  long long OnTaskbarCreated(unsigned long long wParam, long long lParam);
  void OnSettingChange(unsigned int flags, char const * section);
  /// @}

protected:
  /// The system's NOTIFYICONDATAA, whose header public headers do not include.
  struct NotifyIconData {
    unsigned long cbSize;
    HWND hWnd;
    unsigned int uID, uFlags, uCallbackMessage;
    HICON hIcon;
    char szTip[128];
    unsigned long dwState, dwStateMask;
    char szInfo[256];
    unsigned int uTimeout;
    char szInfoTitle[64];
    unsigned long dwInfoFlags;
    unsigned char guidItem[16];
    HICON hBalloonIcon;
  };

  void Init();
  void InstallIconPending();
  unsigned short RegisterClassA(HINSTANCE instance);
  static int RemoveTaskbarIcon(HWND window);
  static void GetTrayWndRect(tagRECT & rectangle);
  static int GetDoWndAnimation();

  static KivSystemTray * m_pThis;
  static unsigned int m_nMaxTooltipLength;
  static unsigned int const m_nTaskbarCreatedMsg;
  static HWND m_hWndInvisible; ///< adopts the windows that are minimised to the tray

  NotifyIconData m_tnd;
  HINSTANCE m_hInstance = nullptr;
  HWND m_hWnd = nullptr;
  HWND m_hTargetWnd;
  int m_bEnabled;
  int m_bHidden;
  int m_bRemoved;
  int m_bShowIconPending;
  int m_bWin2K;
  std::vector<HICON> m_IconList;
  unsigned long long m_uIDTimer;
  std::size_t m_nCurrentIcon = 0;
  long long m_StartTime = 0;
  int m_nAnimationPeriod = 0;
  HICON m_hSavedIcon;
  unsigned int m_DefaultMenuItemID;
  int m_DefaultMenuItemByPos;
  unsigned int m_uCreationFlags;

private:
  static constexpr unsigned int kTimerId = 4567;
  static constexpr char kWindowClass[] = "TrayIconClass";

  void closeFormer();
  void fill(HWND parent, unsigned int message, SV::String const & tip, HICON icon, unsigned int number);
  void addBalloon(SV::String const & text, SV::String const & title, unsigned long icon, unsigned int timeout);
  void storeBalloon(char const * text, char const * title, unsigned long icon, unsigned int timeout);
  int addFirst(int hidden);
  bool addToShell(unsigned int flags);
  bool changeState(unsigned long state);
  int changeUnlessHidden(unsigned int flags);
  bool call(unsigned long what);
  long long serve(unsigned int message, unsigned long long wParam, long long lParam);
  void openMenu();
};
