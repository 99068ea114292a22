// The numbers in the code and the bitmaps in the resource scripts of both languages are the same.
#include "base/pictureids.hpp"

#include "support/data/files.hpp"

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>

namespace pictures = kivara::pictures;

namespace {

/// The names of the bitmaps by their numbers, from lines such as `0x2BBB BITMAP "closecross.bmp"`.
std::map<unsigned long, std::string> bitmapsOf(std::string const & language) {
  std::istringstream script(support::readFile(std::string(KIVARA_RESOURCES) + "/" + language + "/kivara.rc").value());
  std::map<unsigned long, std::string> found;
  for (std::string line; std::getline(script, line);) {
    std::size_t const word = line.find(" BITMAP \"");
    if (word != std::string::npos)
      found.emplace(std::stoul(line, nullptr, 0), line.substr(word + 9, line.rfind('"') - word - 9));
  }
  return found;
}

TEST(PictureNumbers, AreThoseOfTheBitmapsInBothLanguages) {
  std::map<unsigned long, std::string> const expected = {{pictures::kCloseCross & 0xFFFF, "closecross.bmp"},
                                                         {pictures::kTreeGlyphClosed & 0xFFFF, "treeclosed.bmp"},
                                                         {pictures::kTreeGlyphOpen & 0xFFFF, "treeopen.bmp"}};
  EXPECT_EQ(bitmapsOf("1031"), expected);
  EXPECT_EQ(bitmapsOf("2057"), expected);
}

TEST(PictureNumbers, HaveTheTypeOfTheLibraryInTheirHighPart) {
  for (unsigned long const id : {pictures::kCloseCross, pictures::kTreeGlyphClosed, pictures::kTreeGlyphOpen})
    EXPECT_EQ(id >> 16, 0x200u);
}

} // namespace
