#include "acolor.hpp"

#include "css_colors.hpp"
#include "tools/ctext.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

using kivtest::CssColor;
using kivtest::kCssColors;
using SV::Color;
using SV::String;

namespace {

/// The values of a text, and whether it is a name.
struct Answer {
  unsigned red;
  unsigned green;
  unsigned blue;
  bool isName;

  bool operator==(Answer const &) const = default;
};
std::ostream & operator<<(std::ostream & out, Answer const & answer) {
  return out << answer.red << ' ' << answer.green << ' ' << answer.blue << (answer.isName ? " of a name" : "");
}

Answer valuesOf(String const & text) {
  unsigned char red = 1;
  unsigned char green = 2;
  unsigned char blue = 3;
  bool const isName = getRGBValuesOfColorName(text, red, green, blue);
  return {red, green, blue, isName};
}

Answer valuesOfDigits(char const * text) {
  unsigned char red = 1;
  unsigned char green = 2;
  unsigned char blue = 3;
  getRGBValuesFromColorString(text, red, green, blue);
  return {red, green, blue, false};
}

Color colorOf(unsigned red, unsigned green, unsigned blue) {
  auto const channel = [](unsigned value) { return static_cast<unsigned short>(value << 8); };
  return {channel(red), channel(green), channel(blue)};
}

/// The names that there are here: those of CSS without British spellings, with two values of their own and one more
/// name.
std::vector<CssColor> ourColors() {
  std::vector<CssColor> colors;
  for (CssColor color : kCssColors) {
    if (color.name.find("grey") != std::string::npos)
      continue;
    if (color.name == "gray")
      color = {"gray", 0xbe, 0xbe, 0xbe};
    if (color.name == "khaki")
      color = {"khaki", 0xf0, 0xd5, 0x8c};
    colors.push_back(color);
  }
  colors.push_back({"lightmagenta", 0xff, 0x00, 0xff});
  return colors;
}

struct Digits {
  char const * text;
  Answer values;
};
std::ostream & operator<<(std::ostream & out, Digits const & row) { return out << '"' << row.text << '"'; }

class ColorDigits : public testing::TestWithParam<Digits> {};
TEST_P(ColorDigits, AreReadUpToTheSixthPlace) { EXPECT_EQ(valuesOfDigits(GetParam().text), GetParam().values); }

constexpr Digits kDigits[] = {
    {"ff8000", {255, 128, 0, false}},
    {"FF8000", {255, 128, 0, false}},
    {"aBcDeF", {0xab, 0xcd, 0xef, false}},
    {"012345", {0x01, 0x23, 0x45, false}},
    {"6789ab", {0x67, 0x89, 0xab, false}},
    {"", {0, 0, 0, false}},
    {"f", {0xf0, 0, 0, false}},
    {"ff", {255, 0, 0, false}},
    {"ff8", {255, 0x80, 0, false}},
    {"ff80f", {255, 128, 0xf0, false}},
    {"ff8000ff", {255, 128, 0, false}},
    {"gg0000", {0, 0, 0, false}},
    {"1g2g3g", {0x10, 0x20, 0x30, false}},
    {"g1g2g3", {0x01, 0x02, 0x03, false}},
    {" ff800", {0x0f, 0xf8, 0x00, false}},
    {"#12345", {0x01, 0x23, 0x45, false}},
    {"@`/:GZ", {0, 0, 0, false}}, // neighbours of the digits
    {"\xC4\xE4\xFFxx1", {0, 0, 1, false}},
};
INSTANTIATE_TEST_SUITE_P(Table, ColorDigits, testing::ValuesIn(kDigits));

TEST(ColorDigitsOfNull, AreThoseOfTheEmptyText) { EXPECT_EQ(valuesOfDigits(nullptr), (Answer{0, 0, 0, false})); }

class ColorText : public testing::TestWithParam<Digits> {};
TEST_P(ColorText, GivesValuesAndWhetherItIsAName) { EXPECT_EQ(valuesOf(GetParam().text), GetParam().values); }
TEST_P(ColorText, GivesAUserColourWithTheValuesInTheHighBytes) {
  Color const color = getColorOfColorName(GetParam().text);
  EXPECT_EQ(color.GetColorName(), SV::COL_USER);
  EXPECT_EQ(color.GetRed(), GetParam().values.red << 8);
  EXPECT_EQ(color.GetGreen(), GetParam().values.green << 8);
  EXPECT_EQ(color.GetBlue(), GetParam().values.blue << 8);
}

constexpr Digits kTexts[] = {
    {"#ff8000", {255, 128, 0, false}},
    {"$ff8000", {255, 128, 0, false}},
    {"#ff", {255, 0, 0, false}},
    {"#gg0000", {0, 0, 0, false}},
    {"#", {0, 0, 0, false}},
    {"$", {0, 0, 0, false}},
    {"##12345", {0x01, 0x23, 0x45, false}},
    {"16711680", {255, 0, 0, false}},
    {"65280", {0, 255, 0, false}},
    {"255", {0, 0, 255, false}},
    {"0", {0, 0, 0, false}},
    {"9", {0, 0, 9, false}},
    {"/255", {0, 0, 0, false}},
    {":255", {0, 0, 0, false}},
    {"4294967295", {255, 255, 255, false}},
    {"2164195328", {255, 0, 0, false}}, // 0x80FF0000: the upper byte takes no part
    {"255red", {0, 0, 255, false}},
    {"red", {255, 0, 0, true}},
    {"Red", {0, 0, 0, false}},
    {"RED", {0, 0, 0, false}},
    {"red ", {0, 0, 0, false}},
    {" red", {0, 0, 0, false}},
    {"re", {0, 0, 0, false}},
    {"black", {0, 0, 0, true}},
    {"ff8000", {0, 0, 0, false}},
    {"", {0, 0, 0, false}},
    {"nosuchcolour", {0, 0, 0, false}},
};
INSTANTIATE_TEST_SUITE_P(Table, ColorText, testing::ValuesIn(kTexts));

TEST(ColorNames, AreThoseOfCssWithTheirOwnGrayAndKhakiAndALightMagenta) {
  std::vector<CssColor> const colors = ourColors();
  EXPECT_EQ(colors.size(), 141u);
  for (CssColor const & color : colors)
    EXPECT_EQ(valuesOf(color.name.c_str()), (Answer{color.red, color.green, color.blue, true})) << color.name;
}

TEST(ColorNames, GrayAndKhakiHaveOtherValuesThanInCss) {
  EXPECT_EQ(valuesOf("gray"), (Answer{0xbe, 0xbe, 0xbe, true}));
  EXPECT_EQ(valuesOf("khaki"), (Answer{0xf0, 0xd5, 0x8c, true}));
  EXPECT_EQ(valuesOf("lightmagenta"), (Answer{0xff, 0x00, 0xff, true}));
}

TEST(ColorNames, TheBritishGreysAreUnknown) {
  for (char const * const name :
       {"darkgrey", "darkslategrey", "dimgrey", "grey", "lightgrey", "lightslategrey", "slategrey"}) {
    EXPECT_EQ(valuesOf(name), (Answer{0, 0, 0, false})) << name;
    std::string american(name);
    american.replace(american.find("grey"), 4, "gray");
    EXPECT_TRUE(valuesOf(american.c_str()).isName) << american;
  }
}

TEST(ColorNames, KnowNoneButThose) {
  std::set<std::string> names;
  for (CssColor const & color : ourColors())
    names.insert(color.name);
  for (CssColor const & color : ourColors()) // all names with one character off, on or changed
    for (std::size_t at = 0; at < color.name.size(); ++at) {
      std::string const front = color.name.substr(0, at);
      std::string const rest = color.name.substr(at + 1);
      for (std::string const & near : {front + rest, front + "_" + rest, color.name + color.name[at]})
        EXPECT_EQ(valuesOf(near.c_str()).isName, names.count(near) != 0) << near;
    }
}

TEST(ColorNames, TheFirstInTheAlphabetIsShownForAValue) {
  std::map<unsigned, std::string> first;
  for (CssColor const & color : ourColors()) {
    unsigned const value = color.red << 16 | color.green << 8 | color.blue;
    if (first.count(value) == 0 || color.name < first[value])
      first[value] = color.name;
  }
  for (CssColor const & color : ourColors()) {
    unsigned const value = color.red << 16 | color.green << 8 | color.blue;
    EXPECT_EQ(getLeoTextOfColor(colorOf(color.red, color.green, color.blue)).c_str(), first[value]);
  }
  EXPECT_STREQ(getLeoTextOfColor(colorOf(0, 255, 255)).c_str(), "aqua");
  EXPECT_STREQ(getLeoTextOfColor(colorOf(255, 0, 255)).c_str(), "fuchsia");
}

TEST(ColorNames, ALowByteOfAChannelTakesNoPart) {
  EXPECT_STREQ(getLeoTextOfColor({0xFFFF, 0x00FF, 0x0001}).c_str(), "red");
  EXPECT_STREQ(getLeoTextOfColor({0x12FF, 0x34FF, 0x56FF}).c_str(), "$123456");
}

TEST(ColorNames, AColourWithoutAnyIsShownInDigits) {
  EXPECT_STREQ(getLeoTextOfColor(colorOf(1, 2, 3)).c_str(), "$010203");
  EXPECT_STREQ(getLeoTextOfColor(colorOf(0xAB, 0xCD, 0xEF)).c_str(), "$abcdef");
  EXPECT_STREQ(getLeoTextOfColor(colorOf(0x80, 0x80, 0x80)).c_str(), "$808080"); // "gray" has another value here
}

TEST(ColorNames, ANumberedColourHasOneToo) {
  EXPECT_STREQ(getLeoTextOfColor(SV::COL_LIGHTRED).c_str(), "red");
  EXPECT_STREQ(getLeoTextOfColor(SV::COL_BLUE).c_str(), "navy");
  EXPECT_STREQ(getLeoTextOfColor(SV::COL_GRAY).c_str(), "$808080");
}

TEST(ColorNames, EveryTextThatIsShownIsReadBack) {
  for (unsigned step = 0; step < 1u << 18; ++step) { // six bits of each channel
    unsigned const red = (step >> 12 & 63) * 255 / 63;
    unsigned const green = (step >> 6 & 63) * 255 / 63;
    unsigned const blue = (step & 63) * 255 / 63;
    Color const color = colorOf(red, green, blue);
    ASSERT_EQ(getColorOfColorName(getLeoTextOfColor(color)).GetRGB(), color.GetRGB()) << step;
  }
}

} // namespace
