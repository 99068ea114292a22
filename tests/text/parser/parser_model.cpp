#include "parser_model.hpp"

#include <cctype>

namespace {

unsigned char byte(char c) { return static_cast<unsigned char>(c); }

} // namespace

ParserModel::ParserModel(std::string bytes, bool commaIsToken)
    : source_(std::move(bytes)), commaIsToken_(commaIsToken) {
  lookFurther();
}

bool ParserModel::isWord(char c) const {
  if (c == ',')
    return !commaIsToken_;
  return std::isalnum(byte(c)) || c == '+' || c == '-' || c == '.' || c == '_';
}

void ParserModel::readLine() {
  if (!okay)
    return;
  currentLineOffset = nextLineOffset_;
  lookAheadLineNumber += 1;
  auto const line = source_.next();
  okay = line.has_value();
  if (okay)
    line_ = *line;
  nextLineOffset_ = currentLineOffset + static_cast<std::int64_t>(line_.size());
  if (source_.pair())
    nextLineOffset_ += 1;
}

bool ParserModel::lookFurther() {
  spaces = "";
  std::size_t blank = 0;
  while (true) {
    for (blank = 0; blank < line_.size() && std::isspace(byte(line_[blank])); ++blank)
      spaces += line_[blank];
    if (blank < line_.size() && line_[blank] != '\0')
      break;
    readLine();
    if (!okay) {
      lookAhead = "";
      return false;
    }
  }
  if (!keepTokenOffset)
    nextTokenOffset = source_.lost() ? kNoMeaning : source_.offset();
  line_.erase(0, blank);
  lookAhead = "";
  while (lookAhead.size() < line_.size() && isWord(line_[lookAhead.size()]))
    lookAhead += line_[lookAhead.size()];
  if (lookAhead.empty())
    lookAhead = line_.substr(0, 1);
  line_.erase(0, lookAhead.size());
  tokenCount += 1;
  return true;
}

bool ParserModel::getNextToken(std::string & token) {
  lastLineNumber = lookAheadLineNumber;
  for (char const c : spaces)
    lastLineNumber -= c == '\n' ? 1 : 0;
  if (!keepTokenOffset)
    tokenOffset = nextTokenOffset - static_cast<std::int64_t>(spaces.size());
  if (!okay && lookAhead.empty())
    return false;
  token = lookAhead;
  lookFurther();
  keepTokenOffset = false;
  return true;
}

void ParserModel::skipLine() {
  line_ = "";
  lookFurther();
}

bool ParserModel::expectToken(char c) {
  bool const next = lookAhead.substr(0, 1) == std::string(1, c);
  if (next)
    lookFurther();
  return next;
}

bool ParserModel::expectToken(std::string const & s) {
  bool const next = lookAhead == s;
  if (next)
    lookFurther();
  return next;
}

void ParserModel::putBack() {
  line_ = spaces + lookAhead + line_;
  lookAhead = "";
}

void ParserModel::getUntil(char stop, std::string & text, bool consume, char escape) {
  text = "";
  putBack();
  while (true) {
    std::size_t found = std::string::npos;
    if (!line_.empty() && line_[0] == stop)
      found = 0;
    bool escaped = false;
    for (std::size_t i = 1; found != 0 && i < line_.size() && line_[i] != '\0'; ++i) {
      escaped = line_[i - 1] == escape && !escaped;
      if (line_[i] == stop && !escaped) {
        found = i;
        break;
      }
    }
    if (found != std::string::npos) {
      text += line_.substr(0, found);
      line_.erase(0, found + (consume ? 1 : 0));
      lookFurther();
      return;
    }
    text += line_;
    readLine();
    if (!okay)
      return;
  }
}

void ParserModel::skipUntil(char stop, bool consume) {
  putBack();
  while (line_.find(stop) == std::string::npos) {
    readLine();
    if (!okay)
      return;
  }
  line_.erase(0, line_.find(stop) + (consume ? 1 : 0));
  lookFurther();
}

bool ParserModel::moveTo(std::int64_t offset, std::int64_t lineNumber) {
  if (offset < 0)
    return false;
  source_.moveTo(offset);
  nextTokenOffset = -1;
  lastLineNumber = lookAheadLineNumber = lineNumber;
  tokenOffset = nextLineOffset_ = offset;
  line_ = spaces = lookAhead = "";
  okay = true;
  return lookFurther();
}

void ParserModel::saveOffset() {
  savedOffset = tokenOffset;
  savedLineNum = lastLineNumber;
}
