#pragma once
/// \file
/// The windows of the documents that are open.

#include "sv/mdi.hpp"

#include <vector>

namespace modeler {

/// Those that are visible, in the order in which they were opened.
/// \param client  the area of a frame that they lie in
std::vector<HWND> openWindows(HWND client);

SV::String titleOf(HWND window);

/// Brings such a window to the front, in its former size if it was minimised. Nothing for one that has gone.
void showInFront(HWND window);

/// How a menu calls a window: the first nine have their number for a mnemonic.
/// \param place  from 0
SV::String nameInList(std::size_t place, SV::String const & title);

} // namespace modeler
