#pragma once
/// \file
/// How a text stands on one line.

#include <optional>
#include <string>

namespace kivml {

/// The text that a written form stands for: "\n", "\r", "\t" and "\\" are what they are in C, and "\x" with two hexadecimal
/// digits is one byte of the code page, whatever it stands for.
/// \param utf8      the written form
/// \param reason    why there is no text
std::optional<std::string> readWritten(std::string const & utf8, unsigned codePage, std::string & reason);

/// The written form, from which readWritten gives the text back.
std::string writtenForm(std::string const & text, unsigned codePage);

} // namespace kivml
