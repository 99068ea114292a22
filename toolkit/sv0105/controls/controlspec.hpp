#pragma once
/// \file
/// What controls of the system's classes are made from.

#include "window/windowaccess.hpp"

namespace SV::detail {

/// \param style   the toolkit's, of which WB_BORDER and WB_GROUP are looked at
/// \param system  what the class understands, without WS_CHILD
/// \param id      by which dialogs know it; 0: one that no other control of the program has had for long
WindowSpec controlSpec(char const * className, Window * parent, WinBits style, DWORD system, WORD id = 0);

} // namespace SV::detail
