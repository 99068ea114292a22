#pragma once
/// \file
/// Helpers for strings and values: escape characters, splitting, validation of numbers and file names, numbers as text,
/// lexical order, names of keys.
///
/// A null `char const *` counts as the empty string unless stated otherwise. A result beyond STRING_MAXLEN characters is cut.
/// Only lack of memory throws, std::bad_alloc: a string to be changed is then unchanged, and a list of tokens holds the first
/// of them. Any thread may call, except where number conversion, splitting and error texts state another rule.
///
/// \code
///   ISequence<SV::String> fields;
///   Kiv_SplitIntoTokens("a;b;", ';', fields);               // "a", "b", ""
///   SV::String const quoted = Kiv_Mask("a\"b", '"', '\\');  // a\"b
///   if (Kiv_Valid_Double("1,5"))                            // where the user writes a comma
///     total += kiv_atof("1,5");
/// \endcode

#include "atools_errors.hpp"
#include "export.hpp"
#include "tools/containers.hpp"
#include "tools/string.hpp"

/// \name Escape characters
/// @{

/// The text with \p escape before each \p masked and each \p escape.
KIV_API SV::String Kiv_Mask(char const * text, char masked, char escape);

/// Undoes Kiv_Mask: drops each \p escape and copies the character after it, whatever it is. A single escape at the end, which
/// is not valid input, is dropped.
KIV_API SV::String Kiv_Unmask(char const * text, char escape);

/// A field of a CSV file whose separator is the semicolon: each '"' is doubled, and a text that contains a '"' or a semicolon
/// is put between two '"'. Any other text is returned unchanged.
KIV_API SV::String Kiv_MaskCSV(SV::String const & text);

/// Writes the text with a backslash before each backslash and each '>' (name), '"' (value) or '/' (path). A line feed in a
/// name is an internal error and becomes a blank.
/// \param out  a buffer for twice the text and a NUL; it may overlap the text. Memory that cannot be written is an internal
///             error; as much as can be written is then filled, with a NUL at the end
/// @{
KIV_API void Kiv_Mask_Export_Name(char const * text, char * out);
KIV_API void Kiv_Mask_Export_Value(char const * text, char * out);
KIV_API void Kiv_Mask_Export_Path(char const * text, char * out);
/// @}
/// @}

/// \name Splitting
/// Replaces the contents of \p tokens by the parts of the text between separators. The empty text is one empty token, and a
/// separator at the end is followed by an empty token. A null or empty separator, or the NUL character, gives no token at all.
/// The text ends at its first NUL. No other thread may use the text during the call.
/// @{
KIV_API void Kiv_SplitIntoTokens(SV::String const & text, char const * separator, ISequence<SV::String> & tokens);
KIV_API void Kiv_SplitIntoTokens(SV::String const & text, char separator, ISequence<SV::String> & tokens);
/// @}

/// \name Validation
/// The result is false for null.
/// @{

/// Whether the text is a digit, '+' or '-' with any number of digits after it: a sign alone is valid, the empty text is not.
KIV_API bool Kiv_Valid_Integer(char const * text);

/// Whether the text is an optional '+' or '-' and then digits, at least one, with at most one decimal mark between, before or
/// after them. Decimal marks are '.' and the first character of the user's decimal separator. There is no exponent.
KIV_API bool Kiv_Valid_Double(char const * text);

/// Whether a text can be the name of a file; the file need not exist.
///
/// The name may begin with a drive letter and a colon, or with a server and a share ("\\server\share\file"). '/' and '\'
/// separate folders. False for
/// - null, the empty text, and a name that contains "://";
/// - a server or share name that is empty or ends the text, and a server name with control characters;
/// - a reserved device name ("CON", "COM1", ...), not case-sensitive, alone or with a '.' after it. Only the start of the name,
///   after server and share, is compared, not each folder;
/// - any of | * < > ? ", two separators in a row, a colon anywhere but after a drive letter at the start;
/// - a name that ends in a separator or a colon.
KIV_API bool Kiv_Valid_Filename(char const * name);

/// Whether the name is that of a file in the database: it begins with "DB:\", not case-sensitive.
KIV_API bool Kiv_Valid_DBFilename(char const * name);

/// Whether a file can be opened for reading. False for folders and for files in the database.
KIV_API bool Kiv_FileExists(char const * name);

/// Whether the file is open elsewhere and cannot be opened exclusively. False when the file is missing or cannot be opened for
/// another reason, and for files in the database.
KIV_API bool Kiv_FileIsInUse(char const * name);

/// Whether a byte, in the system's code page, is allowed in XML.
/// \param allowEuro      true: the byte 128 is allowed
/// \param checkCodePage  true: all bytes are allowed, control characters too, except those from 127 to 159 to which the code
///                       page assigns no character. False: all are allowed except those below 32 other than 0, tab, line feed
///                       and carriage return
KIV_API bool Kiv_IsValidXMLChar(char c, bool allowEuro, bool checkCodePage);
/// @}

/// \name Characters of a text
/// @{

/// Replaces each \p from by \p to in place. Does nothing for null.
KIV_API void kiv_charreplace(char * text, char from, char to);

/// How often the character occurs in the text, not counting the terminator; 0 for null.
KIV_API int kiv_charcount(char const * text, char c);

/// Sets \p out to the text up to and including the first \p stop; to the whole text when there is none.
KIV_API void kiv_getuntil(char const * text, char stop, SV::String & out);
/// @}

/// \name Numbers as text
/// These functions change the locale of the whole runtime while they run: one thread at a time, while no other thread converts
/// numbers. kiv_atof and kiv_ltoa LEAVE the locale at "C", whatever it was before: no code may rely on another one.
/// @{

/// The number at the start of the text, with a point or a comma as the decimal mark; 0 when there is none.
KIV_API double kiv_atof(char const * text);

/// Writes the number to \p buffer, which must be large enough, by a format of the runtime's sprintf with one conversion of a
/// long.
/// \return the number of characters, without the NUL; -1 for a null buffer or format, which is an internal error
KIV_API int kiv_ltoa(long value, char * buffer, char const * format);

/// The number with at most \p precision digits after the point and without zeros at the end: 1.0 is "1" and 2.50 is "2.5". Any
/// negative precision counts as 6. The result is cut to 511 characters. The locale is restored.
KIV_API SV::String kiv_ftoa_no_locale(double value, int precision);

/// The same, but one digit after the point is kept: 1.0 is "1.0". With a precision of 0 there is no point.
KIV_API SV::String kiv_ftoa_period(double value, int precision);
/// @}

/// \name Lexical order
/// The order of the user's locale, not case-sensitive. Strings that are equal in it are ordered by case: at the first place
/// where both have a letter and the letters differ in case, the string with the upper-case letter comes first.
/// @{

/// \return -1 when \p a comes before \p b, 0 when they are equal, 1 when it comes after. Null is an internal error and then
///         counts as the empty string
KIV_API int kiv_lexcmp(char const * a, char const * b);
KIV_API bool Kiv_IsLexGreater(SV::String const & a, SV::String const & b);
KIV_API bool Kiv_IsLexGreaterEqual(SV::String const & a, SV::String const & b);
/// @}

/// \name Names and terms
/// @{

/// Changes a name to the next one of its series: "Model" to "Model (2)", and that to "Model (3)". Parentheses at the end that
/// do not contain a number count as 0, so "Model (x)" becomes "Model (1)"; a ')' without a '(' is part of the name.
KIV_API void Kiv_MakeNextName(SV::String & name);

/// The text in parentheses; unchanged if one pair already encloses all of it. Blanks, tabs and line ends around are ignored.
KIV_API SV::String Kiv_EnsureSurroundingParentheses(SV::String const & text);
/// @}

/// \name Keys
/// @{

/// The virtual-key code of a name, which is that of the system's constant without "VK_": "RETURN" gives 13. Names are
/// case-sensitive. Of any other name only the first character counts: 'A' to 'Z' and every character up to and including '0'
/// give their own code. All others give -1, among them the digits '1' to '9'. The empty name gives 0.
KIV_API long Kiv_GetVirtualKeyFromString(SV::String const & name);

/// The window library's codes for a key with modifiers: names separated by blanks, such as "CONTROL SHIFT A".
/// \param keyCode    0 when there is no key, or the window library has no code for it. Of several keys the one whose name comes
///                   first in byte order counts
/// \param modifiers  the sum of 4096 for SHIFT, 8192 for CONTROL and 16384 for MENU
KIV_API void Kiv_GetSVKeysFromWinKeys(SV::String const & keys, long & keyCode, long & modifiers);
/// @}

/// The text of an error, in the language that the program had when it was first asked for. The result is valid until the program
/// ends. A code without a text is treated like a text that is missing from the language pack. Main thread only.
KIV_API SV::String const & Kiv_GetErrorString(KivErrorCode code);
