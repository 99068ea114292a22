#include "sv/fixed.hpp"

#include "controls/controlspec.hpp"

namespace SV {

// In one line the system still takes "&" for the mnemonic, and breaks nowhere.
FixedText::FixedText(Window * parent, WinBits style)
    : LabelControl(detail::controlSpec("STATIC", parent, style,
                                       (style & WB_MULTILINE) != 0 ? SS_LEFT : SS_LEFT | SS_ENDELLIPSIS)) {}

} // namespace SV
