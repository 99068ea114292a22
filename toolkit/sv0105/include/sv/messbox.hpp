#pragma once
/// \file
/// Message boxes: a text with an icon and one to three buttons.

#include "sv/button.hpp"
#include "sv/dialog.hpp"
#include "sv/fixed.hpp"

#include <memory>
#include <vector>

namespace SV {

/// Buttons of a message box; the first of these that is set counts.
inline constexpr WinBits WB_OK = 0x10;
inline constexpr WinBits WB_OK_CANCEL = 0x20;
inline constexpr WinBits WB_YES_NO = 0x40;
inline constexpr WinBits WB_YES_NO_CANCEL = 0x80;
inline constexpr WinBits WB_RETRY_CANCEL = 0x100;
/// Its default button, if it has it; otherwise that is the first one.
inline constexpr WinBits WB_DEF_OK = 0x200;
inline constexpr WinBits WB_DEF_CANCEL = 0x400;
inline constexpr WinBits WB_DEF_RETRY = 0x800;
inline constexpr WinBits WB_DEF_YES = 0x1000;
inline constexpr WinBits WB_DEF_NO = 0x2000;

/// A box without an icon. It has the title of the application window, or of its parent where there is none, until SetText
/// gives it another. OK and Cancel bear the labels of the application's International; Yes, No and Retry are German where
/// the user's language is, and English otherwise, until SetButtonText gives them others.
///
/// \code
///   if (SV::QueryBox(this, SV::WB_YES_NO | SV::WB_DEF_NO, "Delete the model?").Execute() == SV::RET_YES) ...
/// \endcode
class SV_API MessBox : public ModalDialog {
public:
  /// \param style  buttons and default button; without buttons there is OK
  MessBox(Window * parent, WinBits style, String const & text);
  /// The text of a string resource, with OK; see Resource::LoadString for one that is missing.
  MessBox(Window * parent, ResId const & id);
  ~MessBox() override;

  /// Shows it, with the sound of its kind and the wait pointer off, and gives RET_OK, RET_YES and so on; RET_CANCEL when it
  /// is closed otherwise. Under dialog or window suppression nothing is shown: title and text go to the log of suppressed
  /// dialogs, and the result is RET_CANCEL.
  long Execute();

  /// The text, in which a "~" is an ordinary character. It is broken between words at three quarters of the screen's width;
  /// of a very long one the beginning is shown, with an ellipsis.
  String const & GetMessText() const { return messText_; }
  void SetMessText(String const & text);

  /// \param button  RET_OK, RET_YES, ...; nothing for one that the box does not have
  void SetButtonText(long button, String const & text);

protected:
  MessBox(Window * parent, WinBits style, String const & text, IconStyle icon);

private:
  struct Button {
    long result;
    std::unique_ptr<PushButton> button;
  };

  void addButtons(WinBits style);
  void arrange();
  void arrangeButtons(Size const & area, long top, Size const & size, long gap);

  String messText_;
  IconStyle iconStyle_;
  FixedIcon icon_;
  FixedText text_;
  std::vector<Button> buttons_;
};

/// Something to know: the icon for it, and OK.
class SV_API InfoBox : public MessBox {
public:
  InfoBox(Window * parent, String const & text);
  InfoBox(Window * parent, ResId const & id);
};

/// A question; from a resource with Yes and No.
class SV_API QueryBox : public MessBox {
public:
  QueryBox(Window * parent, WinBits style, String const & text);
  QueryBox(Window * parent, ResId const & id);
};

/// A warning; from a resource with OK.
class SV_API WarningBox : public MessBox {
public:
  WarningBox(Window * parent, WinBits style, String const & text);
  WarningBox(Window * parent, ResId const & id);
};

} // namespace SV
