#include "aparser.hpp"

#include "charclass.hpp"
#include "rawtext.hpp"
#include "sparetexts.hpp"

#include "tools/winapi.hpp"

#include <algorithm>
#include <cstring>
#include <memory>

using kivara::CharClasses;
using kivara::GatheredText;

/// For tokens and white space. Three: the look-ahead token, the one handed out, and a blank may have the same length.
class kivara::TokenSpares : public SpareTexts<52, 3> {};

namespace {

char const * behindSpaces(char const * text, CharClasses classes) {
  while (classes.isSpace(*text))
    ++text;
  return text;
}

char const * behindToken(char const * text, CharClasses classes) {
  char const * end = text;
  while (classes.isWord(*end))
    ++end;
  return end != text ? end : text + 1;
}

bool sameCharacters(char const * text, SV::String const & s) {
  return std::memcmp(text, s.c_str(), static_cast<std::size_t>(s.Len())) == 0;
}

/// Whether \p first and \p second are the last characters in front of \p place, of which there are enough.
bool standsInFrontOf(char const * place, SV::String const & first, SV::String const & second) {
  char const * const middle = place - second.Len();
  return sameCharacters(middle, second) && sameCharacters(middle - first.Len(), first);
}

} // namespace

KivTextParser::KivTextParser(KivLineReader * reader, int commaFlag)
    : lineReader(reader), okay(reader != nullptr && reader->Init()), commaSeparates((commaFlag & 1) != 0),
      spares(std::make_unique<kivara::TokenSpares>()) {
  if (okay)
    _ImpGetNextLookAhead();
}

KivTextParser::~KivTextParser() {
  if (lineReader == nullptr)
    return;
  lineReader->Done();
  delete lineReader;
}

bool KivTextParser::GetNextToken(SV::String & token) {
  char const * const spaces = spacesToken.c_str();
  lastLineNumber = lookAheadLineNumber - std::count(spaces, spaces + spacesToken.Len(), '\n');
  if (!keepTokenOffset)
    tokenOffset = nextTokenOffset - spacesToken.Len();
  if (!okay && lookAheadToken.Len() == 0)
    return false;
  CharClasses const classes(commaSeparates);
  char const * const next = behindSpaces(_ImpRest(), classes);
  if (*next != '\0') {
    token.swap(lookAheadToken); // the old text of the caller lends its block to the next token
  } else {
    spares->keep(token);
    token = lookAheadToken; // which is still to be seen while further lines are read
  }
  _ImpGetLookAheadFrom(next, classes);
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
  workedOff += index + (consume ? 1 : 0);
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
  workedOff += index + (consume ? 1 : 0);
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

void KivTextParser::SaveOffset() {
  savedOffset = tokenOffset;
  savedLineNum = lastLineNumber;
}

void KivTextParser::_ImpSetRest(SV::String const & rest) {
  currentLine = rest;
  workedOff = 0;
}

void KivTextParser::_ImpGetNextLine() {
  if (!okay)
    return;
  currentLineOffset = nextLineOffset;
  ++lookAheadLineNumber;
  SV::StringData const * const before = currentLine.block();
  okay = lineReader->GetLine(currentLine);
  // A reader that fails leaves the old line, and later operations meet the rest of it again.
  bool const left = !okay && currentLine.block() == before;
  workedOff = left ? std::min(workedOff, currentLine.Len()) : 0;
  nextLineOffset = currentLineOffset + _ImpRestLen() + (lineReader->Is2CharsForNewline() ? 1 : 0);
}

bool KivTextParser::_ImpGetNextLookAhead() {
  CharClasses const classes(commaSeparates);
  return _ImpGetLookAheadFrom(behindSpaces(_ImpRest(), classes), classes);
}

/// \p token is behind the white space of the rest.
bool KivTextParser::_ImpGetLookAheadFrom(char const * token, CharClasses classes) {
  char const * const rest = _ImpRest();
  spares->assign(spacesToken, rest, static_cast<std::int32_t>(token - rest));
  if (*token == '\0')
    return _ImpGetLookAheadFromLaterLine();
  _ImpTakeLookAhead(token, behindToken(token, classes));
  return true;
}

/// Goes on behind the white space that stands in spacesToken, to the first line that holds a token.
bool KivTextParser::_ImpGetLookAheadFromLaterLine() {
  GatheredText spaces;
  spaces.append(spacesToken.c_str(), spacesToken.Len());
  for (;;) {
    _ImpGetNextLine();
    if (!okay)
      break;
    char const * const line = _ImpRest();
    CharClasses const classes(commaSeparates);
    char const * const token = behindSpaces(line, classes);
    spaces.append(line, static_cast<std::int32_t>(token - line));
    if (*token == '\0')
      continue;
    spaces.moveTo(spacesToken);
    _ImpTakeLookAhead(token, behindToken(token, classes));
    return true;
  }
  spaces.moveTo(spacesToken);
  lookAheadToken = SV::String();
  return false;
}

/// The token stands in the current line.
void KivTextParser::_ImpTakeLookAhead(char const * token, char const * end) {
  if (!keepTokenOffset)
    nextTokenOffset = lineReader->GetCurrentOffset();
  spares->assign(lookAheadToken, token, static_cast<std::int32_t>(end - token));
  workedOff = static_cast<std::int32_t>(end - currentLine.c_str());
  ++tokenCount;
}

/// Puts the look-ahead token and the white space in front of it back to the front of the rest. They mostly stand there still,
/// in the part of the line that is worked off, and then nothing is copied.
void KivTextParser::_ImpPutLookAheadBack() {
  std::int64_t const length = std::int64_t{spacesToken.Len()} + lookAheadToken.Len();
  if (length <= workedOff && standsInFrontOf(_ImpRest(), spacesToken, lookAheadToken))
    workedOff -= static_cast<std::int32_t>(length);
  else
    _ImpSetRest(spacesToken + lookAheadToken + currentLine.substr(workedOff));
  lookAheadToken = SV::String();
}
