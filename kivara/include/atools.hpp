#pragma once
/// \file
/// Helpers for texts and values: masks, splitting, checks of numbers and file names, numbers in texts, lexical order,
/// names of keys.
///
/// A null `char const *` counts as the empty text unless told otherwise. Nothing throws but std::bad_alloc when there is
/// no memory for a text. Any thread may call, but for the number forms and the splitting, which say so.
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

/// \name Masks
/// @{

/// The text with \p escape in front of each \p masked and of each \p escape.
KIV_API SV::String Kiv_Mask(char const * text, char masked, char escape);

/// Undoes Kiv_Mask: drops each \p escape and takes the character behind it as it is. A single escape at the end, which
/// no masked text has, is dropped.
KIV_API SV::String Kiv_Unmask(char const * text, char escape);

/// One field of a CSV file whose separator is the semicolon: each '"' is doubled, and a text that held a '"' or a
/// semicolon is put between '"'. Any other text comes back as it is.
KIV_API SV::String Kiv_MaskCSV(SV::String const & text);

/// Write the text with a backslash in front of each backslash and of each '>' (name), '"' (value) or '/' (path). A line
/// feed in a name is an internal error and becomes a blank.
/// \param out  room for twice the text and its NUL; it may be that of the text. Memory that cannot take the result is an
///             internal error; as much as it can take is then written, with its NUL
/// @{
KIV_API void Kiv_Mask_Export_Name(char const * text, char * out);
KIV_API void Kiv_Mask_Export_Value(char const * text, char * out);
KIV_API void Kiv_Mask_Export_Path(char const * text, char * out);
/// @}
/// @}

/// \name Splitting
/// Puts the pieces between the separators into \p tokens, in place of what it held. The empty text is one empty piece,
/// and a separator at the end has an empty piece behind it. A null or empty separator, or the character 0, gives no
/// pieces at all. The text ends at its first NUL. No other thread may use the text meanwhile.
/// @{
KIV_API void Kiv_SplitIntoTokens(SV::String const & text, char const * separator, ISequence<SV::String> & tokens);
KIV_API void Kiv_SplitIntoTokens(SV::String const & text, char separator, ISequence<SV::String> & tokens);
/// @}

/// \name Checks
/// All are false for null.
/// @{

/// Digits only, or a '+' or '-' with any number of digits behind it: a lone sign is true, the empty text is not.
KIV_API bool Kiv_Valid_Integer(char const * text);

/// Digits, at least one, with a '+' or '-' in front and one decimal mark among or around them if need be. A mark is a
/// '.' and the first character of the user's decimal separator. There is no exponent.
KIV_API bool Kiv_Valid_Double(char const * text);

/// Whether a text can be the name of a file, which need not exist.
///
/// The name may have a drive letter and a colon in front, or a server and a share ("\\server\share\file"); '/' and '\\'
/// both part folders. False for
/// - null, the empty text, and what holds "://";
/// - a server or share name that is empty or has nothing behind it, and a server name with control characters;
/// - a reserved device name ("CON", "COM1", ...) in any case at the start, alone or with a '.' behind it. Folders in
///   the middle of a path are not tested;
/// - any of | * < > ? ", two separators in a row, a colon anywhere but behind a drive letter;
/// - a name that ends in a separator or a colon.
KIV_API bool Kiv_Valid_Filename(char const * name);

/// Whether the name is that of a file kept in the database: it begins with "DB:\", in any case.
KIV_API bool Kiv_Valid_DBFilename(char const * name);

/// Whether a file can be opened for reading. False for folders and for files in the database.
KIV_API bool Kiv_FileExists(char const * name);

/// Whether somebody else has the file open. False for a file that is missing or cannot be opened for another reason,
/// and for files in the database.
KIV_API bool Kiv_FileIsInUse(char const * name);

/// Whether a character of the system's code page may stand in XML.
/// \param allowEuro      true: the byte 128 may
/// \param checkCodePage  true: all bytes may but those from 127 to 159 that the code page has no character for; control
///                       characters may. False: all but the control characters below 32, of which 0, tab, line feed and
///                       carriage return may
KIV_API bool Kiv_IsValidXMLChar(char c, bool allowEuro, bool checkCodePage);
/// @}

/// \name Characters of a text
/// @{

/// Replaces each \p from by \p to in place. A null text is left alone.
KIV_API void kiv_charreplace(char * text, char from, char to);

/// How often the character stands in the text; the NUL does not count.
KIV_API int kiv_charcount(char const * text, char c);

/// The text up to the first \p stop, with it; all of the text where there is none.
KIV_API void kiv_getuntil(char const * text, char stop, SV::String & out);
/// @}

/// \name Numbers in texts
/// They switch the locale of the whole runtime while they work: one thread at a time, while no other reads or writes
/// numbers. kiv_atof and kiv_ltoa LEAVE it at "C", whatever it was: nobody may rely on another one.
/// @{

/// The number at the start of the text, with a point or a comma for the decimal mark; 0 where there is none.
KIV_API double kiv_atof(char const * text);

/// Writes the number by a format of the runtime's sprintf with one conversion of a long. The caller sees to the room.
/// \return the characters written, without the NUL. A null buffer or format is an internal error and gives -1
KIV_API int kiv_ltoa(long value, char * buffer, char const * format);

/// The number with at most \p precision digits behind a point and without zeros at the end: 1.0 is "1" and 2.50 "2.5".
/// A negative precision counts as 6; a text has at most 511 characters. The locale is restored.
KIV_API SV::String kiv_ftoa_no_locale(double value, int precision);

/// The same, but one digit stays behind the point: 1.0 is "1.0". With a precision of 0 there is no point.
KIV_API SV::String kiv_ftoa_period(double value, int precision);
/// @}

/// \name Lexical order
/// The order of the user's locale without regard to case; texts that are equal so are ordered by case: where first two
/// letters differ in it, the upper-case one stands in front.
/// @{

/// \return -1, 0 or 1 as \p a stands before, with or behind \p b. Null is an internal error, and then counts as the
///         empty text
KIV_API int kiv_lexcmp(char const * a, char const * b);
KIV_API bool Kiv_IsLexGreater(SV::String const & a, SV::String const & b);
KIV_API bool Kiv_IsLexGreaterEqual(SV::String const & a, SV::String const & b);
/// @}

/// \name Names and terms
/// @{

/// The next name of a series: "Model" becomes "Model (2)", that becomes "Model (3)". What stands in parentheses at the
/// end and is no number counts as 0; a ')' without a '(' as part of the name.
KIV_API void Kiv_MakeNextName(SV::String & name);

/// The text in parentheses, unless one pair already holds all of it but blanks, tabs and line ends.
KIV_API SV::String Kiv_EnsureSurroundingParentheses(SV::String const & text);
/// @}

/// \name Keys
/// @{

/// The code of a key by its name, which is that of the system's constant without "VK_": "RETURN" is 13. Case counts. Any
/// other name is judged by its first character: 'A' to 'Z' and what stands up to '0' in the code page give their code,
/// the digits '1' to '9' and all others -1.
KIV_API long Kiv_GetVirtualKeyFromString(SV::String const & name);

/// The window library's code of a key with modifiers, such as "CONTROL SHIFT A": names with blanks between them.
/// \param keyCode    0 for a key that the window library has no code for. With several keys the one whose name comes
///                   first in byte order counts
/// \param modifiers  the sum of 4096 for SHIFT, 8192 for CONTROL and 16384 for MENU
KIV_API void Kiv_GetSVKeysFromWinKeys(SV::String const & keys, long & keyCode, long & modifiers);
/// @}

/// The text of an error in the language of the program; it stays where it is until the program ends. A code without a
/// text is treated as a text that is missing from the language pack. Main thread.
KIV_API SV::String const & Kiv_GetErrorString(KivErrorCode code);
