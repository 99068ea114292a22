#pragma once
/// \file
/// Strings that have to be recognised in every installed language, whatever language the program runs in.
///
/// Each language of KivInternational::GetAvailableLanguages has a table from 16-bit resource identifiers to strings. It is
/// read at the start from the file "language\<language>\kivml.dll" in the program's folder; that is a data file, not a
/// library, and the tool kivml writes it. Searches go through the languages by ascending identifier, whatever the order in
/// "lang.ini" is.
///
/// \code
///   int length = 0;
///   if (Kiv_MultiLangStartsWith(text, RES_DECISION, &length))   // "Decision: ..." or "Entscheidung: ..."
///     text = text.substr(length);
/// \endcode
///
/// Everything here is for the main thread. Before the tables are loaded, lookups find nothing. A null text counts as empty,
/// and matchLength may be null.

#include "export.hpp"
#include "tools/object.hpp"
#include "tools/string.hpp"

#include <map>

/// The strings of one language by their resource identifiers.
class KIV_API KivStringContainer {
public:
  using Map = std::map<unsigned short, SV::String>;

  /// Adds a string. If the identifier already has one, that one stays.
  void Add(unsigned short resId, SV::String const & text);

  /// The string of an identifier; null if there is none. It is valid as long as the table.
  SV::String const * Find(unsigned short resId) const;

  Map const & GetTexts() const { return texts_; } ///< valid as long as the table
  void Clear() { texts_.clear(); }

private:
  Map texts_;
};

/// The tables of all languages by language identifier. It owns the tables.
class KIV_API KivLanguageContainer : public std::map<unsigned short, KivStringContainer *> {
public:
  KivLanguageContainer();
  KivLanguageContainer(KivLanguageContainer const &) = delete;
  KivLanguageContainer & operator=(KivLanguageContainer const &) = delete;
  virtual ~KivLanguageContainer();

  /// The table of a language, created if there is none.
  KivStringContainer & Get(unsigned short language);

  /// Deletes all tables.
  void DeleteAll();
};

/// Reads one file of strings into a table.
///
/// The file is binary and little-endian. It begins with the magic number 0x0C1B0C1B and the version 0x39000, 4 bytes each.
/// Then come records: a length of 4 bytes; a resource identifier of 4 bytes, of which only the low 16 bits count; and that
/// many bytes of text in the code page of the program, each combined by exclusive-or with the mask of the build. A length of
/// 0 ends the file.
class KIV_API KivMLResFileReader : public KivObject {
public:
  /// \param language   the language whose folder holds the file
  /// \param container  the table to fill; not owned
  /// \param fileName   the name of the file, without a path
  KivMLResFileReader(unsigned short language, KivStringContainer * container, SV::String const & fileName);
  ~KivMLResFileReader() override;

  /// \return true if the file was read to its end record. False without any string added if the file cannot be opened or
  ///         has another format. False with the strings up to that point if the file ends early or a length exceeds what is
  ///         left of it.
  bool Read();

private:
  KivStringContainer * container_;
  SV::String path_;
};

/// Loads the tables of all languages. If a file is missing or damaged, its table stays empty or incomplete; that is not
/// reported.
KIV_API void Kiv_InitializeMultiLanguageStrings();

/// Deletes all tables.
KIV_API void Kiv_DeinitializeMultiLanguageStrings();

/// The string of an identifier in one language, sharing the table's characters. Empty if that language has none; no other
/// language is tried. A language without a table gets an empty one.
KIV_API SV::String Kiv_MultiLangGet(unsigned short resId, unsigned short const & language);

/// Whether \p text is the identifier's string in any language, byte for byte up to the first NUL.
/// \param matchLength  receives the length of that string; unchanged when nothing matches
/// @{
KIV_API bool Kiv_MultiLangEquals(SV::String const & text, unsigned short resId, int * matchLength);
KIV_API bool Kiv_MultiLangEquals(char const * text, unsigned short resId, int * matchLength);
/// @}

/// Whether \p text begins with the identifier's string in any language. The first language that matches wins, even if a
/// later one has a longer match; an empty string in a table matches any text.
/// \param matchLength  receives the length of the match; unchanged when nothing matches
/// @{
KIV_API bool Kiv_MultiLangStartsWith(SV::String const & text, unsigned short resId, int * matchLength);
KIV_API bool Kiv_MultiLangStartsWith(char const * text, unsigned short resId, int * matchLength);
/// @}

/// The earliest position in \p text at which the identifier's string of any language occurs. If two languages match at the
/// same position, the one with the lower identifier counts. An empty string in a table is never found.
/// \param matchLength  receives the length of the match. It is changed even when nothing is found, so test the result and
///                     not the length
/// \return the position, or 0x7FFFFFFF if nothing is found
KIV_API int Kiv_MultiLangSearchForAny(SV::String const & text, unsigned short resId, int * matchLength);

/// The identifier of a text. If there are several, it is the highest identifier in the language with the highest identifier;
/// 0 if there is none. The search goes through all strings of all languages.
/// @{
KIV_API unsigned short Kiv_MultiLangFindResId(SV::String const & text);
KIV_API unsigned short Kiv_MultiLangFindResId(char const * text);
/// @}
