#pragma once
/// \file
/// Texts as the tool prints them: UTF-8 throughout.

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace kivcrash {

/// What is wrong with the input, a sentence each, in the order found. None: the answer is complete.
using Problems = std::vector<std::string>;

/// All conversions throw std::runtime_error for a text of more than 2 GiB.
std::string toUtf8(std::wstring_view wide);
std::wstring toWide(std::string_view utf8);
std::string toUtf8(std::filesystem::path const & path);

/// The text in the system's code page, as reports have it, in UTF-8.
std::string fromSystem(std::string_view text);
/// The text in the code page of consoles, as archives have the names of files, in UTF-8.
std::string fromConsole(std::string_view text);

/// The text with U+FFFD in the place of bytes that are no UTF-8.
std::string validUtf8(std::string_view text);

/// "0x1F" for 31.
std::string hex(std::uint64_t value);
/// The same with leading zeros: "0x0000001F" with 8 digits.
std::string hex(std::uint64_t value, int digits);

/// What follows the last separator of a path of Windows.
std::string_view fileName(std::string_view path);

/// The same in lower case, in which Windows compares names; letters beyond ASCII too.
std::string lowerCase(std::string_view text);

/// Whether there is a character in it that would move the cursor or colour the console, as in a name in a damaged file.
bool hasControlCharacter(std::string_view text);

/// With a "?" in the place of each control character.
std::string printable(std::string_view text);

} // namespace kivcrash
