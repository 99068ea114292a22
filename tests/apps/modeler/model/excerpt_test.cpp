#include "model/excerpt.hpp"

#include <gtest/gtest.h>

using modeler::excerptOfFileName;
using modeler::excerptOfWord;
using SV::String;

TEST(Excerpt, LeavesAWordOfFortyCharactersWhole) {
  std::string const longest(40, 'x');
  EXPECT_EQ(excerptOfWord(longest.c_str()), longest.c_str());
  EXPECT_EQ(excerptOfWord((longest + 'y').c_str()), (longest + "...").c_str());
  EXPECT_EQ(excerptOfWord(""), "");
}

TEST(Excerpt, ShowsControlCharactersAsQuestionMarks) {
  EXPECT_EQ(excerptOfWord("a\x01\t\x7F z"), "a??? z");
  EXPECT_EQ(excerptOfWord("\xE4\xFF"), "\xE4\xFF");
}

TEST(Excerpt, LeavesAFileNameOfSixtyCharactersWholeAndKeepsTheEndOfALongerOne) {
  std::string const longest = "C:\\" + std::string(47, 'f') + "\\model.txt";
  ASSERT_EQ(longest.size(), 60u);
  EXPECT_EQ(excerptOfFileName(longest.c_str()), longest.c_str());
  EXPECT_EQ(excerptOfFileName(("D" + longest).c_str()), ("..." + longest).c_str());
}
