#pragma once
/// \file
/// KivTextParser: lines as a stream of tokens.

#include "areader.hpp"
#include "export.hpp"
#include "tools/object.hpp"
#include "tools/string.hpp"

#include <cstdint>
#include <memory>

namespace kivara {
class CharClasses;
class TokenSpares;
} // namespace kivara

/// A small tokeniser for any language, with one token of look-ahead.
///
/// A token is a word or one other character. Word characters are what isalnum accepts, "+", "-", ".", "_" and, unless it
/// separates, the comma; so "-1.5e3" and "a+b" are one token each, and "((" is two. White space is what isspace accepts; it
/// stands between tokens and is kept, so that a client can rebuild the text. Both follow the runtime's locale in force. There
/// are no comments, quoted strings or numbers: GetUntil reads a quoted string. A byte of value 0 ends its line for the
/// tokeniser. Lines count from 1, offsets from 0 in bytes.
///
/// \code
///   KivTextParser parser(new KivTextFileReader("settings.txt"), 1);
///   SV::String name, value;
///   while (parser.GetNextToken(name))
///     if (!parser.ExpectToken('=') || !parser.ExpectToken('"'))
///       return complain(parser.GetLastLineNumber());
///     else
///       parser.GetUntil('"', value, true, '\\');
/// \endcode
///
/// There are no messages and no exceptions but for lack of memory. A parser that is not okay is at the end of its source; that
/// tells nothing about syntax. Threads: only one thread at a time may read lines, see areader.hpp.
class KIV_API KivTextParser : public KivObject {
public:
  /// Initialises the reader and fetches the first look-ahead token.
  /// \param reader  from new; owned from here on. A null pointer is an empty source
  /// \param commaSeparates  a flag of which only the lowest bit counts: 1 makes the comma a token, 0 a word character
  KivTextParser(KivLineReader * reader, int commaSeparates);
  KivTextParser(KivTextParser const &) = delete;
  KivTextParser & operator=(KivTextParser const &) = delete;

  /// Calls the reader's Done and deletes it.
  ~KivTextParser() override;

  /// Hands out the look-ahead token, fetches the next, and ends KeepTokenOffset. False at the end of the input, as often as
  /// it is called: \p token stays as it was, nothing is read, and KeepTokenOffset stays in force. GetLastLineNumber and
  /// GetTokenOffset are set in both cases; at the end they tell about the white space behind the last token.
  bool GetNextToken(SV::String & token);

  /// Drops the look-ahead token and fetches the next, which at the end of the input is empty; GetLastLineNumber and
  /// GetTokenOffset stay.
  void SkipToken();

  /// Drops the look-ahead token with the rest of its line; the next comes from a later line.
  void SkipLine();

  /// As IsNext; when true, the token is skipped.
  bool ExpectToken(char c);
  bool ExpectToken(char const * s);

  /// Whether the look-ahead token begins with \p c; what follows in it isn't looked at.
  bool IsNext(char c) const;

  /// Whether the look-ahead token is \p s. False for a null pointer.
  bool IsNext(char const * s);

  /// As IsNext(s), without regard to case by the rules of the user's locale.
  bool IsNexti(char const * s);

  /// Reads raw text, from the white space in front of the look-ahead token on, up to a \p stop character, over line ends.
  /// \param text     receives it, with a line feed for each line end and with the escape characters as they stood
  /// \param consume  whether the stop character is skipped; otherwise it becomes the next token
  /// \param escape   takes the meaning from a stop character behind it, unless it is escaped itself or stands at the end of
  ///                 the line before; a byte that can't occur means none
  /// Without a stop character \p text receives all that is left, there is no look-ahead token, and IsOkay turns false.
  void GetUntil(char stop, SV::String & text, bool consume, char escape);

  /// As GetUntil with neither text nor escape character.
  void SkipUntil(char stop, bool consume);

  /// Continues at an offset in the file; the line that begins there gets the number \p lineNumber plus 1.
  /// The token count goes on; the saved offsets and KeepTokenOffset stay. True: there is a token.
  /// False when no token is left there: the parser is then not okay, and all else is as after a move.
  /// False, with the parser as it was, when the source is no file reader, or when that refuses the offset or can't read
  /// there. In the last case the reader is exhausted, and the rest of the current line is all that still comes.
  bool MoveTo(std::int64_t offset, std::int64_t lineNumber);

  /// Remembers GetTokenOffset and GetLastLineNumber for GetSavedOffset and GetSavedLineNum.
  void SaveOffset();

  /// Freezes GetTokenOffset and GetNextTokenOffset up to and including the next GetNextToken that hands out a token.
  void KeepTokenOffset() { keepTokenOffset = true; }

  /// False once the source is exhausted; only MoveTo makes it true again.
  bool IsOkay() const { return okay; }

  /// Empty at the end of the input.
  void GetLookAheadToken(SV::String & token) const { token = lookAheadToken; }

  /// The white space in front of the look-ahead token, over any number of lines.
  void GetSpacesToken(SV::String & spaces) const { spaces = spacesToken; }

  /// Look-ahead tokens produced so far; a token that GetUntil puts back and meets again counts twice.
  long GetTokenCount() const { return tokenCount; }

  /// The line on which the white space in front of the token handed out last starts: the line of the token before it.
  std::int64_t GetLastLineNumber() const { return lastLineNumber; }

  /// Lines read so far, with the attempt that failed at the end of the input.
  std::int64_t GetLookAheadLineNumber() const { return lookAheadLineNumber; }

  /// GetNextTokenOffset as it was in front of the token handed out last, less the length of the white space there.
  std::int64_t GetTokenOffset() const { return tokenOffset; }

  /// The reader's position when the look-ahead token was found: behind that token's line.
  std::int64_t GetNextTokenOffset() const { return nextTokenOffset; }

  std::int64_t GetSavedOffset() const { return savedOffset; } ///< by the last SaveOffset
  std::int64_t GetSavedLineNum() const { return savedLineNum; }

  /// Where the current line starts, by the lengths of the lines in front.
  std::int64_t GetCurrentLineOffset() const { return currentLineOffset; }

  /// The parser stays its owner.
  KivLineReader * GetLineReader() const { return lineReader; }

private:
  void _ImpGetNextLine();
  bool _ImpGetNextLookAhead();
  bool _ImpGetLookAheadFrom(char const * token, kivara::CharClasses classes);
  bool _ImpGetLookAheadFromLaterLine();
  void _ImpTakeLookAhead(char const * token, char const * end);
  void _ImpPutLookAheadBack();
  char const * _ImpRest() const { return currentLine.c_str() + workedOff; }
  std::int32_t _ImpRestLen() const { return currentLine.Len() - workedOff; }
  void _ImpSetRest(SV::String const & rest);

  KivLineReader * lineReader;
  std::int64_t lastLineNumber = 0;
  std::int64_t lookAheadLineNumber = 0;
  std::int64_t tokenOffset = -1;
  std::int64_t nextTokenOffset = -1;
  std::int64_t savedOffset = -1;
  std::int64_t savedLineNum = -1;
  std::int64_t currentLineOffset = 0;
  std::int64_t nextLineOffset = 0;
  std::int32_t tokenCount = 0;
  SV::String currentLine; // what is left of the line begins at workedOff
  SV::String spacesToken;
  SV::String lookAheadToken;
  bool keepTokenOffset = false;
  bool okay;
  bool commaSeparates;
  std::int32_t workedOff = 0;
  std::unique_ptr<kivara::TokenSpares> const spares;
};
