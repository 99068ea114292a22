#pragma once
/// \file
/// The packed form of a file of texts, kivml.dll.

#include "texts.hpp"

namespace kivml {

/// The bytes of the file.
std::string pack(Texts const & texts);

/// The texts of a file. Places are numbers of records, which follow the head of 8 bytes.
/// \param faults  gets all that a reader would stumble over or leave out
Texts unpack(std::string const & bytes, Faults & faults);

} // namespace kivml
