#pragma once
/// \file
/// The boxes that nobody pressed.

#include <string>

namespace support {

/// A line for each box that this process or one of its children shows, and one for each of the box's texts; empty when there
/// is none.
std::string openBoxes();

} // namespace support
