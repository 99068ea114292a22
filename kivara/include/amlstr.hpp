#pragma once
/// \file
/// Texts that have to be recognised in every installed language, whatever language the program runs in.
///
/// Each language of KivInternational::GetAvailableLanguages has a table from a 16-bit resource identifier to a text, read
/// at the start from the file "language\<language>\kivml.dll" in the program's folder: a file of records, no library,
/// which the tool kivml packs. Searches go through the languages in the order of their identifiers, whatever the order of
/// "lang.ini".
///
/// \code
///   int length = 0;
///   if (Kiv_MultiLangStartsWith(text, RES_DECISION, &length))   // "Decision: ..." or "Entscheidung: ..."
///     text = text.substr(length);
/// \endcode
///
/// All of it is for the main thread. Look-ups before the tables are loaded find nothing. A null text counts as empty; a
/// null matchLength gets nothing.

#include "export.hpp"
#include "tools/object.hpp"
#include "tools/string.hpp"

#include <map>

/// The texts of one language by their resource identifiers.
class KIV_API KivStringContainer {
public:
  using Map = std::map<unsigned short, SV::String>;

  /// Adds a text; the first one of an identifier stays.
  void Add(unsigned short resId, SV::String const & text);

  /// The text of an identifier; null when there is none. It is valid as long as the table.
  SV::String const * Find(unsigned short resId) const;

  Map const & GetTexts() const { return texts_; } ///< valid as long as the table
  void Clear() { texts_.clear(); }

private:
  Map texts_;
};

/// The tables of all languages by language identifier; it owns them.
class KIV_API KivLanguageContainer : public std::map<unsigned short, KivStringContainer *> {
public:
  KivLanguageContainer();
  KivLanguageContainer(KivLanguageContainer const &) = delete;
  KivLanguageContainer & operator=(KivLanguageContainer const &) = delete;
  virtual ~KivLanguageContainer();

  /// The table of a language, made when there is none.
  KivStringContainer & Get(unsigned short language);

  /// Deletes all tables.
  void DeleteAll();
};

/// Reads one file of texts into a table.
///
/// The file is binary, with its low bytes first: the magic 0x0C1B0C1B and the version 0x39000, 4 bytes each; then records
/// of 4 bytes length, 4 bytes resource identifier, of which the low 16 bits count, and the text in the code page of the
/// program, each byte combined by exclusive-or with the mask of the build; a length of 0 ends the file.
class KIV_API KivMLResFileReader : public KivObject {
public:
  /// \param language   whose folder the file lies in
  /// \param container  gets the texts; not owned
  /// \param fileName   the name of the file
  KivMLResFileReader(unsigned short language, KivStringContainer * container, SV::String const & fileName);
  ~KivMLResFileReader() override;

  /// \return true when the file was read to its end record. False when it can't be opened or is not of this format, with
  ///         no text added, and when it ends early or a length leads beyond its end: the texts in front of that stay.
  bool Read();

private:
  KivStringContainer * container_;
  SV::String path_;
};

/// Loads the tables of all languages. A file that is missing or bad leaves its table empty or cut, and nothing is said.
KIV_API void Kiv_InitializeMultiLanguageStrings();

/// Deletes all tables.
KIV_API void Kiv_DeinitializeMultiLanguageStrings();

/// The text of an identifier in one language, sharing the table's; empty when that language has none: no other is asked.
/// A language without a table gets an empty one.
KIV_API SV::String Kiv_MultiLangGet(unsigned short resId, unsigned short const & language);

/// Whether \p text is the identifier's text in any language, byte for byte.
/// \param matchLength  gets its length; stays as it is when nothing matches
/// @{
KIV_API bool Kiv_MultiLangEquals(SV::String const & text, unsigned short resId, int * matchLength);
KIV_API bool Kiv_MultiLangEquals(char const * text, unsigned short resId, int * matchLength);
/// @}

/// Whether \p text begins with the identifier's text in any language. The first language that matches wins, even if a
/// later one matches with more characters; an empty text of the table matches every text.
/// \param matchLength  gets the length of the match; stays as it is when nothing matches
/// @{
KIV_API bool Kiv_MultiLangStartsWith(SV::String const & text, unsigned short resId, int * matchLength);
KIV_API bool Kiv_MultiLangStartsWith(char const * text, unsigned short resId, int * matchLength);
/// @}

/// The first place in \p text at which the identifier's text of any language stands; of two at the same place the one of
/// the lower language counts. An empty text of the table is found nowhere.
/// \param matchLength  gets the length of what was found. When nothing is found it holds some length, too: the result
///                     says whether there is a match
/// \return the position, or 0x7FFFFFFF
KIV_API int Kiv_MultiLangSearchForAny(SV::String const & text, unsigned short resId, int * matchLength);

/// The identifier of a text: of several the highest one in the highest language; 0 when there is none. It goes through
/// all texts of all languages.
/// @{
KIV_API unsigned short Kiv_MultiLangFindResId(SV::String const & text);
KIV_API unsigned short Kiv_MultiLangFindResId(char const * text);
/// @}
