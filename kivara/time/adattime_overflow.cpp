#include "adattime_duration.hpp"

#include "aebox.hpp"

bool KivCoreTime::warnButtonPressed = false;

void KivCoreTime::tstOverFlow(SV::Window * parent, SV::String const & message) {
  if (!overflow)
    return;
  value = maxValue;
  if (warnButtonPressed)
    return;
  KivWarningBox(parent, SV::WB_OK, message).Execute();
  warnButtonPressed = true;
}

void KivCoreTime::ResetWarnButtonPressed() { warnButtonPressed = false; }
