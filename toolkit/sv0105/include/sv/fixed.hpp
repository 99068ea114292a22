#pragma once
/// \file
/// FixedText and FixedIcon: what a dialog says without asking.

#include "sv/control.hpp"
#include "sv/icon.hpp"

namespace SV {

/// For FixedText: as many lines as there is room for, broken between words and at line feeds.
inline constexpr WinBits WB_MULTILINE = 0x100;

/// A text for reading, and the label of the control that is made after it: its mnemonic leads there. Without WB_MULTILINE
/// it is one line, which ends in an ellipsis where it is too long.
class SV_API FixedText : public LabelControl {
public:
  explicit FixedText(Window * parent, WinBits style = 0); ///< WB_MULTILINE, WB_BORDER and WB_GROUP, joined by |
};

/// A picture that fills the control, whatever its size.
class SV_API FixedIcon : public Control {
public:
  explicit FixedIcon(Window * parent, WinBits style = 0); ///< without a picture

  /// Each change gives the former one.
  Icon const & GetIcon() const { return icon_; }
  Icon ChangeIcon(Icon const & icon);
  /// One of the system's, sharp in the size that the control has at this moment.
  Icon ChangeIcon(IconStyle style);

protected:
  bool Notify(unsigned message, unsigned long long wParam, long long lParam, long long & result) override;

private:
  Icon icon_;
};

} // namespace SV
