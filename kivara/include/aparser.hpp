#pragma once
/// \file
/// KivTextParser: cuts the lines of a reader into tokens.

#include "areader.hpp"
#include "export.hpp"
#include "tools/object.hpp"
#include "tools/string.hpp"

#include <cstdint>
#include <memory>
#include <string>

namespace kivara {
class TokenSpares;
}

/// A small tokeniser for any language, with one token of look-ahead.
///
/// A token is a word or one other character. Word characters are what isalnum accepts, "+", "-", ".", "_" and, unless it is a
/// separator, the comma; so "-1.5e3" and "a+b" are one token each, and "((" is two. White space is what isspace accepts; it
/// separates tokens and is kept, so that a client can rebuild the text. Both depend on the runtime's current locale. There are
/// no comments, quoted strings or numbers: GetUntil reads a quoted string. A NUL ends its line for the tokeniser. Line numbers
/// start at 1, offsets at 0; offsets are in bytes.
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
/// Errors are results; only lack of memory throws. What the reader throws passes through, and the parser then goes on with the
/// line that it had. A parser that is not okay is at the end of its source, which says nothing about syntax. One thread uses a
/// parser; for reading lines see the thread rule of areader.hpp.
///
/// While the reader is asked for a line or an offset, it may call the getters of its parser, but no other operation.
class KIV_API KivTextParser : public KivObject {
public:
  /// Initialises the reader and fetches the first look-ahead token.
  /// \param reader  made by new; owned by the parser from the call on, also when the constructor throws: the reader's Done is
  ///                called then, and it is deleted. A null pointer is an empty source
  /// \param commaSeparates  a flag of which only the lowest bit counts: 1 makes the comma a token, 0 a word character
  KivTextParser(KivLineReader * reader, int commaSeparates);
  KivTextParser(KivTextParser const &) = delete;
  KivTextParser & operator=(KivTextParser const &) = delete;

  /// Calls the reader's Done and deletes it.
  ~KivTextParser() override;

  /// Returns the look-ahead token, fetches the next one, and ends KeepTokenOffset. At the end of the input the result is
  /// false, at every call: \p token is unchanged, nothing is read, and KeepTokenOffset stays in force. GetLastLineNumber and
  /// GetTokenOffset are set in both cases; at the end they describe the white space after the last token.
  bool GetNextToken(SV::String & token);

  /// Drops the look-ahead token and fetches the next one, which is empty at the end of the input. GetLastLineNumber and
  /// GetTokenOffset are unchanged.
  void SkipToken();

  /// Drops the look-ahead token and the rest of its line; the next token comes from a later line.
  void SkipLine();

  /// As IsNext; when the result is true, the token is skipped.
  bool ExpectToken(char c);
  bool ExpectToken(char const * s);

  /// Whether the look-ahead token begins with \p c; the rest of the token is not compared.
  bool IsNext(char c) const;

  /// Whether the look-ahead token is exactly \p s. False for a null pointer.
  bool IsNext(char const * s);

  /// As IsNext(s), but not case-sensitive, by the rules of the user's locale.
  bool IsNexti(char const * s);

  /// Reads raw text, beginning with the white space before the look-ahead token, up to a \p stop character, over line ends.
  /// \param text     receives it, with one line feed for each line end; escape characters are kept
  /// \param consume  whether the stop character is skipped; otherwise it begins the next token
  /// \param escape   a stop character right after it does not stop, unless the escape character is itself escaped or ends
  ///                 the line before; a byte that cannot occur means none
  /// Without a stop character \p text receives everything up to the end, the look-ahead token is empty, and IsOkay turns
  /// false; the last line stays in place, so that SkipToken would find its tokens again. A stop character after a NUL in its
  /// line is not found.
  void GetUntil(char stop, SV::String & text, bool consume, char escape);

  /// As GetUntil without text and escape character, but a stop character after a NUL is found.
  void SkipUntil(char stop, bool consume);

  /// Continues at an offset in the file; the line that begins there gets the number \p lineNumber plus 1. The token count
  /// goes on; the saved offsets and KeepTokenOffset are unchanged. True: there is a token.
  /// False when there is no token from there on: the parser is then not okay, and otherwise as after a successful move.
  /// False, with the parser unchanged, when the source is not a file reader, refuses the offset or cannot read there. In the
  /// last case the reader is exhausted, and only the rest of the current line is still available.
  bool MoveTo(std::int64_t offset, std::int64_t lineNumber);

  /// Stores GetTokenOffset and GetLastLineNumber for GetSavedOffset and GetSavedLineNum.
  void SaveOffset();

  /// Freezes GetTokenOffset and GetNextTokenOffset up to and including the next GetNextToken that returns a token.
  void KeepTokenOffset() { keepTokenOffset = true; }

  /// False once the source is exhausted; only MoveTo makes it true again.
  bool IsOkay() const { return okay; }

  /// The next token; empty at the end of the input.
  void GetLookAheadToken(SV::String & token) const { token = lookAheadToken; }

  /// The white space before the look-ahead token, over any number of lines.
  void GetSpacesToken(SV::String & spaces) const;

  /// Look-ahead tokens produced so far; a token that GetUntil puts back and finds again counts twice.
  long GetTokenCount() const { return tokenCount; }

  /// The line on which the white space before the last returned token starts, which is the line of the token before it.
  std::int64_t GetLastLineNumber() const { return lastLineNumber; }

  /// Lines read so far, including the failed attempt at the end of the input.
  std::int64_t GetLookAheadLineNumber() const { return lookAheadLineNumber; }

  /// What GetNextTokenOffset was before the last GetNextToken, minus the length of the white space before that token.
  std::int64_t GetTokenOffset() const { return tokenOffset; }

  /// The reader's position when the look-ahead token was found: the end of that token's line.
  std::int64_t GetNextTokenOffset() const { return nextTokenOffset; }

  std::int64_t GetSavedOffset() const { return savedOffset; } ///< by the last SaveOffset; -1 before
  std::int64_t GetSavedLineNum() const { return savedLineNum; }

  /// Where the current line starts, computed from the lengths of the lines before it.
  std::int64_t GetCurrentLineOffset() const { return currentLineOffset; }

  /// The reader; the parser still owns it.
  KivLineReader * GetLineReader() const { return lineReader; }

private:
  void _ImpGetNextLine();
  bool _ImpGetNextLookAhead();
  void _ImpAppendSpaces(char const * end);
  void _ImpJoinSpaces();
  void _ImpTakeLookAhead(char const * token, char const * end);
  void _ImpPutLookAheadBack();
  char const * _ImpRest() const { return currentLine.c_str() + restStart_; }
  std::int32_t _ImpRestLen() const { return currentLine.Len() - restStart_; }
  void _ImpSetRest(SV::String const & rest);
  void _ImpEraseFront();

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
  SV::String currentLine; // what is left of the line begins at restStart_
  SV::String spacesToken; // while lines are read, the rest of it is in laterSpaces_
  SV::String lookAheadToken;
  bool keepTokenOffset = false;
  bool okay;
  bool commaSeparates;
  std::int32_t restStart_ = 0;
  SV::String erasedLine_;
  std::string laterSpaces_;
  std::unique_ptr<kivara::TokenSpares> spares_;
};
