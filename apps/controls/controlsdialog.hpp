#pragma once
/// \file
/// The dialog with every control.

#include "inputpad.hpp"
#include "kivara.hpp"
#include "sv/sv.hpp"

#include <vector>

namespace controls {

class ControlsDialog : public SV::ModalDialog {
public:
  ControlsDialog();
  ~ControlsDialog() override;

private:
  void place(SV::Control & control, SV::Point const & position, SV::Size const & size);
  void makeTop();
  void makeFields();
  void makeBoxButtons();
  void makeBottom();
  void makeMenu();
  void reset();
  void showTime();

  // Tab goes through the controls in this order, and a label leads to the control after it.
  SV::FixedIcon icon_{this};
  SV::FixedText introduction_{this, SV::WB_MULTILINE};
  SV::FixedText phaseLabel_{this};
  SV::ListBox phase_{this};
  SV::FixedText departmentLabel_{this};
  SV::ListBox department_{this, SV::WB_DROPDOWN};
  SV::FixedText lengthLabel_{this};
  SV::MetricField length_{this, SV::WB_BORDER | SV::WB_SPIN | SV::WB_SPIN_REPEAT | SV::WB_DIGITS_ONLY};
  InputPad pad_;
  SV::FixedText yearStartLabel_{this};
  KivDayMonthControl yearStart_; // its place is in the language packs
  SV::FixedText noteLabel_{this};
  SV::Edit note_{this, SV::WB_BORDER | SV::WB_MULTILINE};
  SV::CheckBox urgent_{this};
  SV::FixedText time_{this};
  SV::PushButton information_{this, SV::WB_GROUP};
  SV::PushButton question_{this};
  SV::PushButton warning_{this};
  SV::PushButton error_{this};
  SV::OKButton ok_{this, SV::WB_GROUP | SV::WB_DEFAULT_BUTTON};
  SV::CancelButton cancel_{this};
  SV::HelpButton help_{this};

  SV::PopupMenu menu_;
  SV::Accelerator keys_;
  SV::Timer timer_;
  long seconds_ = 0;
};

} // namespace controls
