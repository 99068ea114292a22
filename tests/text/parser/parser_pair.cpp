#include "parser_pair.hpp"

namespace {

char anyChar(std::mt19937 & random) {
  static constexpr char kChars[] = "\"\\a;,( \n\0\xE4"
                                   "b";
  return kChars[random() % (sizeof kChars - 1)];
}

} // namespace

std::string ParserPair::operateOnToken(unsigned kind, std::mt19937 & random) {
  if (kind == 0) {
    parser_.SkipToken();
    model_.skipToken();
    return "SkipToken";
  }
  if (kind == 1) {
    parser_.SkipLine();
    model_.skipLine();
    return "SkipLine";
  }
  if (kind == 2) {
    char const c = random() % 2 == 0 || model_.lookAhead.empty() ? anyChar(random) : model_.lookAhead[0];
    sameAnswer_ = parser_.IsNext(c) == (!model_.lookAhead.empty() && model_.lookAhead[0] == c) &&
                  parser_.ExpectToken(c) == model_.expectToken(c);
    return "ExpectToken(char)";
  }
  if (kind == 3) {
    std::string const s = random() % 2 == 0 ? "ab" : model_.lookAhead;
    sameAnswer_ =
        parser_.IsNext(s.c_str()) == (model_.lookAhead == s) && parser_.ExpectToken(s.c_str()) == model_.expectToken(s);
    return "ExpectToken(text)";
  }
  SV::String token("untouched");
  std::string expected = "untouched";
  sameAnswer_ = parser_.GetNextToken(token) == model_.getNextToken(expected) && bytesOf(token) == expected;
  return "GetNextToken";
}

std::string ParserPair::operateOnText(unsigned kind, std::mt19937 & random) {
  char const stop = anyChar(random);
  bool const consume = random() % 2 == 0;
  if (kind == 0) {
    parser_.SkipUntil(stop, consume);
    model_.skipUntil(stop, consume);
    return "SkipUntil " + testing::PrintToString(stop);
  }
  char const escape = random() % 4 == 0 ? anyChar(random) : '\\';
  SV::String text("old");
  std::string expected;
  parser_.GetUntil(stop, text, consume, escape);
  model_.getUntil(stop, expected, consume, escape);
  sameAnswer_ = bytesOf(text) == expected;
  return "GetUntil " + testing::PrintToString(stop) + " escape " + testing::PrintToString(escape);
}

std::string ParserPair::operate(std::mt19937 & random) {
  unsigned const kind = random() % 40;
  if (kind == 0) {
    auto const offset = static_cast<std::int64_t>(random() % (size_ + 6)) - 3;
    auto const line = static_cast<std::int64_t>(random() % 100);
    sameAnswer_ = parser_.MoveTo(offset, line) == model_.moveTo(offset, line);
    return "MoveTo " + std::to_string(offset);
  }
  if (kind <= 2) {
    parser_.KeepTokenOffset();
    model_.keepTokenOffset = true;
    return "KeepTokenOffset";
  }
  if (kind <= 4) {
    parser_.SaveOffset();
    model_.saveOffset();
    return "SaveOffset";
  }
  return kind <= 12 ? operateOnText(random() % 2, random) : operateOnToken(random() % 8, random);
}

std::string ParserPair::difference() const {
  SV::String lookAhead, spaces;
  parser_.GetLookAheadToken(lookAhead);
  parser_.GetSpacesToken(spaces);
  auto const sameOffset = [](std::int64_t is, std::int64_t expected) {
    return ParserModel::meaningless(expected) || is == expected;
  };
  std::string names;
  auto const check = [&names](bool same, char const * name) { names += same ? "" : std::string(" ") + name; };
  check(sameAnswer_, "answer");
  check(bytesOf(lookAhead) == model_.lookAhead, "lookAheadToken");
  check(bytesOf(spaces) == model_.spaces, "spacesToken");
  check(parser_.IsOkay() == model_.okay, "okay");
  check(parser_.GetTokenCount() == model_.tokenCount, "tokenCount");
  check(parser_.GetLastLineNumber() == model_.lastLineNumber, "lastLineNumber");
  check(parser_.GetLookAheadLineNumber() == model_.lookAheadLineNumber, "lookAheadLineNumber");
  check(sameOffset(parser_.GetTokenOffset(), model_.tokenOffset), "tokenOffset");
  check(sameOffset(parser_.GetNextTokenOffset(), model_.nextTokenOffset), "nextTokenOffset");
  check(sameOffset(parser_.GetSavedOffset(), model_.savedOffset), "savedOffset");
  check(parser_.GetSavedLineNum() == model_.savedLineNum, "savedLineNum");
  check(parser_.GetCurrentLineOffset() == model_.currentLineOffset, "currentLineOffset");
  return names;
}

testing::AssertionResult ParserPair::step(std::mt19937 & random) {
  sameAnswer_ = true;
  std::string const operation = operate(random);
  std::string const names = difference();
  if (names.empty())
    return testing::AssertionSuccess();
  return testing::AssertionFailure() << operation << ":" << names;
}
