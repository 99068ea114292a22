#pragma once
/// \file
/// Texts that are written into a markup file: SGML with the entities of a character map, or XML.
///
/// The character map is a table of 256 replacements, one for each byte value, for the whole process. It is built at the first
/// conversion, from the language pack, or read from a stream by SetCharacterMap. XML has fixed rules and needs no map.
///
/// \code
///   std::ifstream map("charmaps\\central-european.map");
///   if (!KivSGMLString::SetCharacterMap(&map))
///     warn("The character map is damaged.");
///   file << "<name>" << KivSGMLString(name) << "</name>";
///
///   KivSGMLString::SetExportFileType(KIV_EXPORT_XML);
///   file << "<name>" << KivSGMLString(name) << "</name>"; // the same statement now writes XML
/// \endcode
///
/// Threads: there are no locks. SetCharacterMap must not run while another thread converts, and the first conversion builds the
/// table. XMLStr uses no map; its first call must not run beside another one.

#include "export.hpp"
#include "tools/string.hpp"

#include <iosfwd>

/// What the inserter of KivSGMLString writes. Every value but KIV_EXPORT_XML means the character map.
enum KivExportFileType : int { KIV_EXPORT_SGML = 0, KIV_EXPORT_XML = 1 };

/// A text that writes itself into a markup file.
///
/// A conversion reads a text up to its first NUL, except XMLStr, which reads all of it. A result longer than STRING_MAXLEN
/// throws std::length_error, lack of memory std::bad_alloc; nothing is changed then.
class KIV_API KivSGMLString {
public:
  /// Holds the text; a null pointer gives the empty text.
  /// @{
  KivSGMLString(SV::String const & text);
  KivSGMLString(char const * text);
  /// @}
  KivSGMLString(KivSGMLString const & other);
  KivSGMLString & operator=(KivSGMLString const & other);
  ~KivSGMLString();

  /// Replaces the table by that of a stream, from its current position on; null means the map of the language pack.
  ///
  /// The stream is a text with one item per line. Blanks are removed, also within an item, then "//" with all that follows;
  /// empty lines do not count. The items are, in this order:
  /// - "MAP128" or "MAP256", optional: the entries begin with byte 128, or with byte 0. Without either, with byte 128.
  /// - The name of the map.
  /// - The replacements of consecutive bytes; "0" for a byte that stands for itself. A MAP128 map has 128 of them, a MAP256
  ///   map 256, unless EnableWarning allows fewer.
  ///
  /// A line of 1,000 characters or more ends the reading. A MAP128 map always replaces the characters " & < > too; a MAP256 map
  /// has to name them itself.
  /// \return false when the number of items is wrong. The map of the language pack is then in force, its first entry at the
  ///         byte where the damaged map was to begin
  static bool SetCharacterMap(std::istream * stream);

  /// The name of the map; "DEFAULT" for that of the language pack, empty before the first use. Valid until the map changes.
  static char const * GetLanguage();

  /// \param strict  whether a MAP256 map must have all 256 entries (the default). Otherwise those that are missing are bytes that
  ///                stand for themselves, and those beyond 256 are ignored. Nothing is shown in either case.
  static void EnableWarning(bool strict);

  /// What the inserter writes from now on, for the whole process.
  static void SetExportFileType(KivExportFileType type);

  /// The text with the replacements of the map. Carriage returns are dropped, line feeds stay. When a text has a carriage return
  /// or a byte with a replacement, control characters other than tab and line feed are dropped too; any other text is returned
  /// as it is.
  static SV::String GetSGMLString(SV::String const & text);

  /// The text for XML, as content or as the value of an attribute, in UTF-8: < > & " as entities, the bytes 1 to 31 as character
  /// references such as "&#9;", byte 128 as "&#8364;". A text that is not valid in the system's code page stays in that code page.
  /// \param all  true: control characters below 32 are written, of which XML 1.0 allows only 9, 10 and 13; dropped are
  ///             the bytes from 127 to 159 that are no printable character in the code page. False: control characters
  ///             below 32 are dropped, except 0, tab, line feed and carriage return
  static SV::String XMLStr(SV::String const & text, bool all);

private:
  friend KIV_API std::ostream & operator<<(std::ostream & out, KivSGMLString const & text);

  static int GetSGMLStringLen(SV::String const & text);
  static char * GetpSGMLString(SV::String const & text);
  static char * GetpSGMLStringExt(SV::String const & text, bool & changed);

  static bool ReadSGMLMapping(std::istream * stream, SV::String & mapping);
  static bool __initCharMap(std::istream * stream);
  static void __createSub128Mapping();
  static int __getConvertedLen(unsigned char const * text, bool & changed);
  static void __convertToBuf(unsigned char const * text, unsigned char * buffer);

  static SV::String g_aEntities[256];
  static int g_nMappingStartOffset;
  static bool g_bInitedCharMap;
  static SV::String g_sLanguage;
  static bool g_bWarn;
  static KivExportFileType g_eCurExportFileType;

  SV::String text_;
};

/// Writes the text as KivSGMLString::SetExportFileType says: with the character map, or as XMLStr(text, true). It is written as a
/// C string, with the stream's width, fill and adjustment. An empty text writes nothing and leaves the width; in XML, it is filled
/// up like any other.
KIV_API std::ostream & operator<<(std::ostream & out, KivSGMLString const & text);
