#pragma once
/// \file
/// Message boxes: KivErrorBox, which lays out its text itself, leads to the help and can be shown only once; and the
/// toolkit's boxes for information, questions and warnings, which know the open dialogs of the program.
///
/// The text of an error may begin with a key in square brackets, which stands on a line of its own: "[aparser-07]\nThe line
/// ...". It names the topic of the help, and ShowOncePerKey goes by it.
///
/// \code
///   if (KivErrorBox(this, KivErrorBox::WB_RETRY_CANCEL, "[amodel-03]\nThe file is damaged.").Execute(ShowAlways) == 4)
///     readAgain();
///   if (KivQueryBox(this, SV::WB_YES_NO, "Overwrite the file?").Execute() == SV::RET_YES)
///     save();
/// \endcode
///
/// All of it is for the main thread, with a language pack of the library active, since labels and the default title come
/// from there. A box is built, executed once and destroyed by its caller. While a box exists, it stands on the stack of
/// parent windows (awinstack.hpp).

#include "export.hpp"
#include "sv/accelerator.hpp"
#include "sv/button.hpp"
#include "sv/dialog.hpp"
#include "sv/fixed.hpp"
#include "sv/messbox.hpp"

#include <memory>
#include <vector>

/// What KivErrorBox::Execute remembers.
enum KivErrorBoxType {
  ShowAlways = 0,      ///< nothing
  ShowOncePerKey = 1,  ///< a message with a key that has been shown is not shown again
  ShowOncePerText = 2, ///< a text that has been shown is not shown again
};

/// A modal dialog with an icon, a text and two to four buttons, or none. Long lines are wrapped at three quarters of
/// the screen's width; the text is shown whole, however high the box becomes. Each "~" of the text is shown.
class KIV_API KivErrorBox : public SV::ModalDialog {
public:
  /// \name Styles
  /// Buttons, to which every box adds Help; of several bits the first one of this list counts, and without any of them the
  /// box has no buttons. A default bit for a button that the box lacks does nothing.
  /// @{
  static constexpr unsigned long WB_OK = SV::WB_OK;
  static constexpr unsigned long WB_OK_CANCEL = SV::WB_OK_CANCEL;
  static constexpr unsigned long WB_YES_NO = SV::WB_YES_NO;
  static constexpr unsigned long WB_YES_NO_CANCEL = SV::WB_YES_NO_CANCEL;
  static constexpr unsigned long WB_RETRY_CANCEL = SV::WB_RETRY_CANCEL;
  static constexpr unsigned long WB_DEF_OK = SV::WB_DEF_OK;
  static constexpr unsigned long WB_DEF_CANCEL = SV::WB_DEF_CANCEL;
  static constexpr unsigned long WB_DEF_RETRY = SV::WB_DEF_RETRY;
  static constexpr unsigned long WB_DEF_YES = SV::WB_DEF_YES;
  static constexpr unsigned long WB_DEF_NO = SV::WB_DEF_NO;
  /// @}

  static constexpr long kAlreadyShown = 0x10; ///< Execute: the message has been shown before

  /// Has the error icon, and the title of the application window, of \p parent where there is no such window, or a default.
  /// \param parent  what it lies over; for the application window that is the topmost open dialog; null for none
  /// \param text    newlines at its end are dropped, and tabs become spaces
  KivErrorBox(SV::Window * parent, unsigned long style, SV::String const & text);
  ~KivErrorBox() override;

  /// Shows the box, with a sound and the ordinary pointer, and waits; the application window takes no input meanwhile.
  /// \return the number of the button: 0 Cancel, 1 OK, 2 Yes, 3 No, 4 Retry; 0 also when the box is closed otherwise;
  ///         kAlreadyShown when \p type forbids it. Under dialog suppression 0, and an entry in the log of suppressed
  ///         dialogs if that has a name: nothing is shown then, and nothing remembered.
  long Execute(KivErrorBoxType type);

  void SetIconStyle(SV::IconStyle iconStyle); ///< replaces the icon

  /// \param button  its number, as Execute has it; nothing for one that the box lacks
  void SetButtonText(unsigned long button, SV::String const & label);
  void DisableButton(unsigned long button);

  /// \name The memory of messages
  /// One for the process, of one text for each key: a message whose key is there already adds nothing, so that its text is
  /// shown each time. The key is the text up to and including the first "]"; texts without one share the empty key. Execute
  /// notes the text as it is shown, with its line breaks and with each "~" doubled. The clean-up at the end empties it.
  /// @{

  /// Notes a text as if it had been shown.
  static void RememberMessage(SV::String const & text);
  /// 1 if Execute would not show it, as far as the text is shown as given; otherwise 0, and always for ShowAlways.
  static int IsShownMessage(SV::String const & text, KivErrorBoxType type);
  static void ClearShownErrorBoxesTable(); ///< forgets all of them
  /// @}

  /// The help topic of a text that begins with a line such as "[aebox-01]": that of the module plus the number. The case
  /// of the letters does not matter. 0 if the text begins otherwise, has nothing after that line, or names no module that
  /// has a topic.
  static unsigned long GetHelpIDOfErrorText(SV::String const & text);

protected:
  /// A button has got the keyboard.
  void GetFocusHdl(SV::Control * control);
  /// A button has been pressed: ends the box, except for Help.
  void ClickHdl(SV::PushButton * button);
  /// Left and right arrow, items 1 and 2: the keyboard goes to the previous or next button. Always -1.
  long AccelHandler(SV::Accelerator * accelerator);

  /// The enabled button before or after the one that has the keyboard, round through Help; that one itself when it is the
  /// only one, null for a box without buttons.
  SV::Control * GetPrevFocusCtrl();
  SV::Control * GetNextFocusCtrl();

private:
  struct Metrics;

  SV::Size layOutText(Metrics const & metrics, SV::String const & message);
  void makeButtons();
  void layOutButtons(Metrics const & metrics, long width, long top);
  long gapBefore(SV::PushButton const * button, Metrics const & metrics) const;
  std::vector<SV::PushButton *> buttonRow() const;
  SV::PushButton * buttonOf(unsigned long number) const;
  SV::Control * enabledFrom(long step);
  void focusFirst();

  unsigned long style;
  SV::FixedIcon icon;
  SV::FixedText text;
  std::unique_ptr<SV::OKButton> okButton;
  std::unique_ptr<SV::CancelButton> cancelButton;
  std::unique_ptr<SV::PushButton> yesButton;
  std::unique_ptr<SV::PushButton> noButton;
  std::unique_ptr<SV::PushButton> retryButton;
  std::unique_ptr<SV::HelpButton> helpButton;
  SV::Control * focusControl = nullptr;
};

/// While it lives, the application window takes no input. Afterwards it is as before, and on top again if it was the
/// topmost window of the program.
class KIV_API KivAutoAppWindowDisable {
public:
  KivAutoAppWindowDisable();
  KivAutoAppWindowDisable(KivAutoAppWindowDisable const &) = delete;
  KivAutoAppWindowDisable & operator=(KivAutoAppWindowDisable const &) = delete;
  virtual ~KivAutoAppWindowDisable();

private:
  bool wasEnabled = false;
  bool bringToTop = false;
  bool restoreTop = true;
};

/// \name Boxes of the toolkit
/// Each Execute shows the box with the ordinary pointer and gives RET_OK, RET_YES and so on; see SV::MessBox for its
/// buttons, and for what suppression does.
/// @{

class KIV_API KivInfoBox : public SV::InfoBox {
public:
  KivInfoBox(SV::Window * parent, SV::ResId const & id);
  KivInfoBox(SV::Window * parent, SV::String const & text);
  ~KivInfoBox() override;
  long Execute();
};

class KIV_API KivQueryBox : public SV::QueryBox {
public:
  KivQueryBox(SV::Window * parent, SV::ResId const & id);
  KivQueryBox(SV::Window * parent, unsigned long style, SV::String const & text);
  ~KivQueryBox() override;
  long Execute();
};

class KIV_API KivWarningBox : public SV::WarningBox {
public:
  KivWarningBox(SV::Window * parent, SV::ResId const & id);
  KivWarningBox(SV::Window * parent, unsigned long style, SV::String const & text);
  ~KivWarningBox() override;
  long Execute();
};

/// @}
