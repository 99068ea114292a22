#include "aparser.hpp"

#include "text/parser/charclass.hpp"
#include "text/parser/rawtext.hpp"
#include "text/sparetexts.hpp"

#include "tools/winapi.hpp"

#include <algorithm>
#include <cstring>

using kivara::CharClasses;
using kivara::GatheredText;

/// For tokens, white space and what is left of lines. Three of each length: the look-ahead token, the token that the caller
/// overwrites and the white space may have the same one.
class kivara::TokenSpares : public SpareTexts<52, 3> {};

namespace {

char const * afterSpaces(char const * text, CharClasses classes) {
  while (classes.isSpace(*text))
    ++text;
  return text;
}

char const * afterToken(char const * text, CharClasses classes) {
  char const * end = text;
  while (classes.isWord(*end))
    ++end;
  return end != text ? end : text + 1;
}

std::int32_t lengthOf(std::string const & text) {
  return static_cast<std::int32_t>(std::min(text.size(), std::size_t{SV::STRING_MAXLEN}));
}

bool sameCharacters(char const * text, SV::String const & s) {
  return std::memcmp(text, s.c_str(), static_cast<std::size_t>(s.Len())) == 0;
}

/// Whether the characters before \p place are \p first and then \p second. There must be enough of them.
bool standBefore(char const * place, SV::String const & first, SV::String const & second) {
  char const * const middle = place - second.Len();
  return sameCharacters(middle, second) && sameCharacters(middle - first.Len(), first);
}

struct EndReader {
  void operator()(KivLineReader * reader) const {
    reader->Done();
    delete reader;
  }
};
using OwnedReader = std::unique_ptr<KivLineReader, EndReader>;

} // namespace

KivTextParser::KivTextParser(KivLineReader * reader, int commaFlag)
    : lineReader(reader), okay(false), commaSeparates((commaFlag & 1) != 0) {
  OwnedReader owner(reader); // what throws in here leaves no parser whose destructor would end the reader
  spares_ = std::make_unique<kivara::TokenSpares>();
  okay = reader != nullptr && reader->Init();
  if (okay)
    _ImpGetNextLookAhead();
  static_cast<void>(owner.release());
}

KivTextParser::~KivTextParser() { OwnedReader const ended(lineReader); }

bool KivTextParser::GetNextToken(SV::String & token) {
  _ImpJoinSpaces();
  char const * const spaces = spacesToken.c_str();
  lastLineNumber = lookAheadLineNumber - std::count(spaces, spaces + spacesToken.Len(), '\n');
  if (!keepTokenOffset)
    tokenOffset = nextTokenOffset - spacesToken.Len();
  if (!okay && lookAheadToken.Len() == 0)
    return false;
  spares_->release(token);
  token = lookAheadToken;
  _ImpGetNextLookAhead();
  keepTokenOffset = false;
  return true;
}

void KivTextParser::SkipToken() { _ImpGetNextLookAhead(); }

void KivTextParser::SkipLine() {
  _ImpSetRest(SV::String());
  _ImpGetNextLookAhead();
}

bool KivTextParser::ExpectToken(char c) {
  if (!IsNext(c))
    return false;
  SkipToken();
  return true;
}

bool KivTextParser::ExpectToken(char const * s) {
  if (!IsNext(s))
    return false;
  SkipToken();
  return true;
}

bool KivTextParser::IsNext(char c) const { return lookAheadToken.Len() != 0 && lookAheadToken.charAt(0) == c; }

bool KivTextParser::IsNext(char const * s) { return s != nullptr && lookAheadToken == s; }

bool KivTextParser::IsNexti(char const * s) {
  if (s == nullptr || (lookAheadToken.Len() == 0) != (*s == '\0'))
    return false;
  return CompareStringA(LOCALE_USER_DEFAULT, NORM_IGNORECASE, lookAheadToken.c_str(), -1, s, -1) == CSTR_EQUAL;
}

void KivTextParser::GetUntil(char stop, SV::String & text, bool consume, char escape) {
  text = SV::String();
  _ImpPutLookAheadBack();
  GatheredText gathered;
  std::int32_t index;
  while ((index = kivara::findUnescaped(_ImpRest(), _ImpRestLen(), stop, escape)) < 0) {
    gathered.append(_ImpRest(), _ImpRestLen());
    _ImpGetNextLine();
    if (!okay) {
      gathered.moveTo(text);
      return;
    }
  }
  gathered.append(_ImpRest(), index);
  gathered.moveTo(text);
  restStart_ += index + (consume ? 1 : 0);
  _ImpGetNextLookAhead();
}

void KivTextParser::SkipUntil(char stop, bool consume) {
  _ImpPutLookAheadBack();
  std::int32_t index;
  while ((index = kivara::findPlain(_ImpRest(), _ImpRestLen(), stop)) < 0) {
    _ImpGetNextLine();
    if (!okay)
      return;
  }
  restStart_ += index + (consume ? 1 : 0);
  _ImpGetNextLookAhead();
}

bool KivTextParser::MoveTo(std::int64_t offset, std::int64_t lineNumber) {
  auto * const file = dynamic_cast<KivFileReader *>(lineReader);
  if (file == nullptr || !file->MoveTo(offset))
    return false;
  nextTokenOffset = -1;
  lastLineNumber = lookAheadLineNumber = lineNumber;
  tokenOffset = nextLineOffset = offset;
  _ImpSetRest(SV::String());
  spacesToken = SV::String();
  lookAheadToken = SV::String();
  okay = true;
  return _ImpGetNextLookAhead();
}

void KivTextParser::GetSpacesToken(SV::String & spaces) const {
  spaces = spacesToken;
  if (!laterSpaces_.empty())
    spaces += SV::String(laterSpaces_.data(), lengthOf(laterSpaces_));
}

void KivTextParser::SaveOffset() {
  savedOffset = tokenOffset;
  savedLineNum = lastLineNumber;
}

void KivTextParser::_ImpSetRest(SV::String const & rest) {
  currentLine = rest;
  restStart_ = 0;
}

void KivTextParser::_ImpGetNextLine() {
  if (!okay)
    return;
  currentLineOffset = nextLineOffset;
  ++lookAheadLineNumber;
  _ImpEraseFront(); // the reader may append to the line, or fail and leave it unchanged
  okay = lineReader->GetLine(currentLine);
  nextLineOffset = currentLineOffset + currentLine.Len() + (lineReader->Is2CharsForNewline() ? 1 : 0);
}

bool KivTextParser::_ImpGetNextLookAhead() {
  spares_->release(spacesToken);
  laterSpaces_.clear();
  for (;;) {
    CharClasses const classes(commaSeparates);
    char const * const token = afterSpaces(_ImpRest(), classes);
    _ImpAppendSpaces(token);
    if (*token != '\0') {
      _ImpJoinSpaces();
      _ImpTakeLookAhead(token, afterToken(token, classes));
      return true;
    }
    _ImpGetNextLine();
    if (!okay) {
      _ImpJoinSpaces();
      lookAheadToken = SV::String();
      return false;
    }
  }
}

/// Appends the characters from the start of the rest to \p end to the white space. From the second line on they are collected
/// outside of spacesToken, since SV::String copies itself for each piece that is appended.
void KivTextParser::_ImpAppendSpaces(char const * end) {
  char const * const spaces = _ImpRest();
  if (spacesToken.Len() == 0)
    spares_->assign(spacesToken, spaces, static_cast<std::int32_t>(end - spaces));
  else
    laterSpaces_.append(spaces, end);
}

/// At the next token, as a rule. A reader that throws leaves it to the operation that comes next.
void KivTextParser::_ImpJoinSpaces() {
  if (laterSpaces_.empty())
    return;
  GetSpacesToken(spacesToken);
  laterSpaces_.clear();
}

/// The characters from \p token to \p end, in the current line, become the look-ahead token.
void KivTextParser::_ImpTakeLookAhead(char const * token, char const * end) {
  if (!keepTokenOffset)
    nextTokenOffset = lineReader->GetCurrentOffset();
  spares_->assign(lookAheadToken, token, static_cast<std::int32_t>(end - token));
  restStart_ = static_cast<std::int32_t>(end - currentLine.c_str());
  ++tokenCount;
}

/// Done once for each line and not for each token, since all that follows has to be moved. erasedLine_ keeps a reference to the
/// block, so that the reader does not free it and the next line can use it again.
void KivTextParser::_ImpEraseFront() {
  if (restStart_ == 0)
    return;
  spares_->assign(erasedLine_, _ImpRest(), _ImpRestLen());
  _ImpSetRest(erasedLine_);
}

/// Puts the white space and the look-ahead token back before the rest. In most cases they are still there, since the line
/// is not erased for each token, and nothing is copied.
void KivTextParser::_ImpPutLookAheadBack() {
  _ImpJoinSpaces();
  std::int64_t const length = std::int64_t{spacesToken.Len()} + lookAheadToken.Len();
  if (length <= restStart_ && standBefore(_ImpRest(), spacesToken, lookAheadToken))
    restStart_ -= static_cast<std::int32_t>(length);
  else
    _ImpSetRest(spacesToken + lookAheadToken + currentLine.substr(restStart_));
  lookAheadToken = SV::String();
}
