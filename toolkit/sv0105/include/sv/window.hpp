#pragma once
/// \file
/// Window: a window of the system.

#include "sv/event.hpp"
#include "sv/export.hpp"
#include "sv/font.hpp"
#include "sv/geometry.hpp"
#include "sv/outputdevice.hpp"
#include "sv/pen.hpp"
#include "tools/string.hpp"

namespace SV {

namespace detail {
struct WindowSpec;
struct WindowAccess;
} // namespace detail

/// Properties of a new window, joined by |.
using WinBits = unsigned long;
inline constexpr WinBits WB_BORDER = 1;   ///< a thin frame
inline constexpr WinBits WB_TITLE = 2;    ///< a title bar with a button to close; it then floats above its parent
inline constexpr WinBits WB_SIZEABLE = 4; ///< a frame to drag, buttons to minimise and maximise

/// A window with a class and a procedure of the toolkit's own. As an OutputDevice it is its client area. All of it is for the main thread, between InitSV and
/// DeInitSV.
///
/// A window is invisible until Show. Sizes and positions are in pixels; a position counts from the parent's client area
/// for a window inside of another one and from the screen for all others. When the system refuses the window,
/// Application::Exception is called with EXC_SYSTEM_OBJECT_NOT_CREATED and the system's error; if that returns, the
/// object has no system window and its operations do nothing. The same holds after the system window has been closed. A
/// parent closes with its children; the objects stay, for their owner to delete.
///
/// Exceptions. The system calls the handlers (Paint, Resize, Close, HandleMessage, Menu::Select, handlers of controls and
/// timers, and those of the application object), and no C++ exception can pass through it. One that leaves a handler ends
/// in the toolkit, which gives the device of a Paint and all else that it holds for the call back, and calls
/// Application::Exception with EXC_HANDLER_FAILED. If that returns, the message counts as dealt with, with the answer 0,
/// and the program goes on.
///
/// \code
///   class Greeting : public SV::Window {
///   public:
///     using Window::Window;
///     void Paint(SV::OutputDevice & device, SV::Rectangle const &) override { device.DrawText({10, 10}, "Hello"); }
///   };
/// \endcode
class SV_API Window : public OutputDevice {
public:
  /// \param parent  null for a window of the desktop
  explicit Window(Window * parent, WinBits style = 0);
  Window(Window const &) = delete;
  Window & operator=(Window const &) = delete;
  /// Closes the system window. Without the application window, the application has none.
  ~Window() override;

  /// Draws what lies in \p area of the client area, whose background has been filled already. The base draws nothing.
  /// \param device  this window, with a black pen, no brush, the window's font, no limit and pixels as its unit. What it had
  ///                before it has again afterwards
  virtual void Paint(OutputDevice & device, Rectangle const & area);

  /// The client area has got this size.
  virtual void Resize(Size const & size);

  /// \name Mouse
  /// Called before the system does what it does with the mouse over such a window. The base does nothing; MouseWheel is
  /// true when it has dealt with the wheel, which otherwise reaches the parent.
  /// @{
  virtual void MouseMove(MouseEvent const & event);
  virtual void MouseButtonDown(MouseEvent const & event);
  virtual void MouseButtonUp(MouseEvent const & event);
  virtual bool MouseWheel(MouseEvent const & event);
  /// @}

  /// Has all of the mouse come here until ReleaseMouse. The system may take it away earlier, for a menu or a dialog:
  /// CaptureLost then ends what the window was about to do, and ReleaseMouse has nothing to do.
  void CaptureMouse();
  void ReleaseMouse();
  virtual void CaptureLost();

  /// \name Keyboard
  /// True: the key has been dealt with. Otherwise, as in the base, the system gets it. KeyInput comes for every key that
  /// goes down, CharInput for the characters that keys make. In a dialog, Tab, the arrows, Return and Escape move between
  /// the controls and reach a window only if it asks for them in HandleMessage.
  /// @{
  virtual bool KeyInput(KeyEvent const & event);
  virtual bool CharInput(char character);
  /// @}

  /// It has got the input of the keyboard, or lost it; the base does nothing.
  virtual void GotFocus();
  virtual void LostFocus();

  /// The user wants it closed. The base asks Application::QueryExit for the application window and quits when that
  /// agrees; it closes all others.
  virtual void Close();

  /// Under window suppression Show does nothing.
  virtual void Show();
  void Hide();

  /// Whether it has been shown.
  /// \param withParents  true: also whether all windows that it lies in have been
  bool IsVisible(bool withParents = false) const;

  /// Whether mouse and keyboard reach it; they do at first. A disabled window keeps them from those in it too.
  virtual void SetEnabled(bool enabled);
  void Enable() { SetEnabled(true); }
  void Disable() { SetEnabled(false); }
  bool IsEnabled() const;

  /// Brings its whole top-level window in front of the program's others and makes it the active one; nothing while that is
  /// hidden.
  void ToTop();

  /// The title, or the text of a control.
  virtual String GetText() const;
  virtual void SetText(String const & text);

  Point GetPosPixel() const; ///< of the frame, in its parent or on the screen
  Size GetSizePixel() const;
  /// A side below 0 counts as 0, one beyond 32,767 as that.
  virtual void SetPosSizePixel(Point const & position, Size const & size);

  /// The client area's size; the change keeps the position and makes the frame fit.
  Size GetOutputSizePixel() const override;
  void ChangeOutputSizePixel(Size const & size);

  /// A point of the client area, counted on the screen, and the other way round. As it is when there is no system window.
  Point OutputToScreenPixel(Point const & point) const;
  Point ScreenToOutputPixel(Point const & point) const;

  /// The innermost of the program's windows that the mouse would reach at a point of the screen, also while another one
  /// has captured it. Null over all that is not this program's.
  static Window * FindAt(Point const & onScreen);

  /// The font that Paint begins with: the application's until one is set here. The change gives the former one, and has
  /// the window repainted; the font that it draws with at the moment is changed by OutputDevice::ChangeFont.
  Font const & GetFont() const;
  Font ChangeFont(Font const & font);

  /// What the background is filled with before Paint: none, as at first, is that of the window's kind. The change gives the
  /// former one.
  Brush const & GetBackgroundBrush() const override { return background_; }
  Brush ChangeBackgroundBrush(Brush const & brush) override;

  /// The topic of the help file for this window and those in it that have none; 0, as at first, is that of the parent.
  /// The change gives the former one.
  unsigned long GetHelpId() const { return helpId_; }
  unsigned long ChangeHelpId(unsigned long id);

  /// Gives it the input of the keyboard; a window in the background of the desktop has it when its program comes to the
  /// front.
  virtual void GrabFocus();

  /// Has it repainted; Update does so at once where something is to be painted.
  void Invalidate();
  virtual void Update();

  /// The window it was made for; null for none, once that has died, and when the system refused this one.
  Window * GetParent() const { return parent_; }

  /// Null when there is no system window.
  HWND GethWnd() const { return hwnd_; }

protected:
  explicit Window(detail::WindowSpec const & spec); ///< for the toolkit's own kinds of windows

  /// Answers a message of the system, after the message hook. What a class does not deal with goes to its base.
  virtual long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam);

  /// What the system does with a message that no class has handled.
  virtual long long DefaultProcedure(unsigned message, unsigned long long wParam, long long lParam);

  HDC fetchContext() const override; ///< for the client area, without the windows in it
  void releaseContext(HDC context) const override;

  /// Closes the system window, by the protocol of its kind. Destructors of derived classes call it, so that their own
  /// HandleMessage hears of it.
  virtual void Destroy();

private:
  friend struct detail::WindowAccess;

  void create(detail::WindowSpec const & spec);
  void detach();
  void paint();
  bool fillBackground(HDC device) const;
  void useFont();
  bool handleInput(unsigned message, unsigned long long wParam, long long lParam);
  bool handleMouse(unsigned message, unsigned long long wParam, long long lParam);

  HWND hwnd_ = nullptr;
  Window * parent_ = nullptr;
  long long (*controlProcedure_)(HWND, unsigned, unsigned long long, long long) = nullptr; ///< of a class of the system
  HFONT systemFont_ = nullptr;
  Font font_;
  Brush background_;
  unsigned long helpId_ = 0;
  bool hasFont_ = false;
  bool mouseCaptured_ = false;
  char reserved_[364] = {}; ///< room for members to come: the size below is part of the binary interface
};

// Callers ask whether that many bytes of a window can be read to learn whether it is still there.
static_assert(sizeof(Window) >= 480);

} // namespace SV
