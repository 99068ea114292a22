// words FILE: the words of a text, each with its place: "line:column offset word", one word a line, in the order of the text.
// Lines and columns count from 1, offsets from 0; all are in bytes, so that an editor can go there.
//
// A sample of the text parser. It computes the places from the tokens and the white space between them, and has a reader of its
// own that prepares the lines for the parser.

#include "aparser.hpp"

#include <cctype>
#include <clocale>
#include <cstdio>
#include <cstring>

namespace {

/// Replaces NULs by blanks: for the parser a NUL ends its line, and the words after it would be lost.
class WordsReader : public KivTextFileReader {
public:
  using KivTextFileReader::KivTextFileReader;

  bool GetLine(SV::String & line) override {
    if (!KivTextFileReader::GetLine(line))
      return false;
    if (std::memchr(line.c_str(), '\0', static_cast<std::size_t>(line.Len())) != nullptr)
      line.replaceAll('\0', ' ');
    return true;
  }
};

struct Place {
  std::int64_t line;
  std::int64_t column; // from 0
  std::int64_t lineOffset;
};

bool isLetter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }

/// The parser's words also contain ".", "-", "+" and "_": around a word these are punctuation, inside they belong to it.
void reportWord(SV::String const & token, Place const & place) {
  std::int32_t start = 0;
  std::int32_t end = token.Len();
  while (start < end && !isLetter(token.charAt(start)))
    ++start;
  while (end > start && !isLetter(token.charAt(end - 1)))
    --end;
  if (start != end)
    std::printf("%lld:%lld %lld %s\n", place.line, place.column + start + 1, place.lineOffset + place.column + start,
                token.substr(start, end - start).c_str());
}

/// The place of the look-ahead token, when the token before it ended in \p endColumn.
Place placeOfLookAhead(KivTextParser const & parser, std::int64_t endColumn) {
  SV::String spaces;
  parser.GetSpacesToken(spaces);
  std::int64_t column = endColumn;
  for (std::int32_t i = 0; i < spaces.Len(); ++i)
    column = spaces.charAt(i) == '\n' ? 0 : column + 1;
  return {parser.GetLookAheadLineNumber(), column, parser.GetCurrentLineOffset()};
}

void reportWords(KivTextParser & parser) {
  SV::String token;
  for (std::int64_t endColumn = 0;;) {
    Place const place = placeOfLookAhead(parser, endColumn);
    if (!parser.GetNextToken(token))
      return;
    reportWord(token, place);
    endColumn = place.column + token.Len();
  }
}

} // namespace

int main(int count, char ** arguments) {
  std::setlocale(LC_CTYPE, ""); // letters of the user's language
  if (count != 2) {
    std::fputs("usage: words FILE\n", stderr);
    return 2;
  }
  KivTextParser parser(new WordsReader(arguments[1]), 1);
  if (!parser.IsOkay() && parser.GetLookAheadLineNumber() == 0) { // it did not even try to read a line
    std::fprintf(stderr, "words: cannot read %s\n", arguments[1]);
    return 1;
  }
  static char buffer[1 << 16]; // without it each word would be written alone
  std::setvbuf(stdout, buffer, _IOFBF, sizeof buffer);
  reportWords(parser);
  return 0;
}
