#pragma once
/// \file
/// A text parser over a file and its model, kept in step.

#include "aparser.hpp"
#include "parser_model.hpp"
#include "text/readers/textfile.hpp"

#include <random>

class ParserPair {
public:
  ParserPair(std::string const & bytes, bool commaSeparates)
      : parser_(new KivTextFileReader(writeText(bytes).c_str()), commaSeparates ? 1 : 0), model_(bytes, commaSeparates),
        size_(bytes.size()) {}

  /// Does one random operation on both and compares their results and getters. The failure names the operation.
  testing::AssertionResult step(std::mt19937 & random);

private:
  std::string operate(std::mt19937 & random);
  std::string operateOnToken(unsigned kind, std::mt19937 & random);
  std::string operateOnText(unsigned kind, std::mt19937 & random);
  std::string difference() const;

  KivTextParser parser_;
  ParserModel model_;
  std::size_t size_;
  bool sameAnswer_ = true;
};
