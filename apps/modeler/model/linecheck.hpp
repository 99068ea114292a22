#pragma once
/// \file
/// Whether the lines of a file are such that a KivTextFileReader can read them.

#include "processmodel.hpp"

namespace modeler {

/// What the reader allows before the end of a line. A longer line ends the process, with a box that no option suppresses.
inline constexpr int kLongestLine = 8191;

/// Reads the file once, to its end or to the first fault.
/// \param count  receives the number of lines when there is no fault
/// \return NotReadable, NulByte or LineTooLong with the line, or a report without a fault
ModelReport checkLines(SV::String const & fileName, std::int64_t & count);

} // namespace modeler
