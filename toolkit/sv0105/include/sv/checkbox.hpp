#pragma once
/// \file
/// CheckBox: something that is on or off.

#include "sv/control.hpp"

namespace SV {

/// A box to check, with a text beside it. The user changes it by a click, by the space key and by its mnemonic.
class SV_API CheckBox : public LabelControl {
public:
  using ClickHandler = std::function<void(CheckBox *)>;

  explicit CheckBox(Window * parent, WinBits style = 0); ///< WB_BORDER and WB_GROUP, joined by |

  bool IsChecked() const;
  void Check(bool isChecked = true); ///< without calling the handler

  /// The user has changed it. The base calls the handler.
  virtual void Click();

  /// The change gives the former one.
  ClickHandler ChangeClickHdl(ClickHandler handler);

protected:
  bool Notify(unsigned message, unsigned long long wParam, long long lParam, long long & result) override;

private:
  ClickHandler clickHandler_;
};

} // namespace SV
