#pragma once
/// \file
/// The form of a file of texts that people edit: UTF-8, one text to a line.

#include "texts.hpp"

namespace kivml {

/// Reads the lines of a list. Each is empty, a comment that begins with ';', or a decimal identifier, one blank or tab
/// and the text in its written form. A line ends in LF or CR LF; the file may begin with a byte-order mark. A line with a NUL, a
/// carriage return within it or a blank at its end is a fault: an editor does not show them.
/// \param faults  gets what is wrong, with the number of the line
Texts readList(std::string const & bytes, unsigned codePage, Faults & faults);

/// The list of the texts, in their order.
std::string writeList(Texts const & texts, unsigned codePage);

} // namespace kivml
