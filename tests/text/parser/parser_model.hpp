#pragma once
/// \file
/// Model of a text parser over a file: slow and simple, over std::string, one rule after the other.

#include "text/readers/line_model.hpp"

#include <cstdint>
#include <string>

class ParserModel {
public:
  /// An offset that a reader returned after a failed read.
  static constexpr std::int64_t kNoMeaning = INT64_MIN / 2;
  static bool meaningless(std::int64_t offset) { return offset < INT64_MIN / 4; }

  ParserModel(std::string bytes, bool commaIsToken);

  bool getNextToken(std::string & token);
  void skipToken() { lookFurther(); }
  void skipLine();
  bool expectToken(char c);
  bool expectToken(std::string const & s);
  void getUntil(char stop, std::string & text, bool consume, char escape);
  void skipUntil(char stop, bool consume);
  bool moveTo(std::int64_t offset, std::int64_t lineNumber);
  void saveOffset();

  std::int64_t lastLineNumber = 0;
  std::int64_t lookAheadLineNumber = 0;
  std::int64_t tokenOffset = -1;
  std::int64_t nextTokenOffset = -1;
  std::int64_t savedOffset = -1;
  std::int64_t savedLineNum = -1;
  std::int64_t currentLineOffset = 0;
  std::int64_t tokenCount = 0;
  std::string spaces;
  std::string lookAhead;
  bool keepTokenOffset = false;
  bool okay = true;

private:
  bool isWord(char c) const;
  bool lookFurther();
  void readLine();
  void putBack();

  LineModel source_;
  bool commaIsToken_;
  std::int64_t nextLineOffset_ = 0;
  std::string line_;
};
