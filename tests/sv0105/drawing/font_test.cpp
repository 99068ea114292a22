#include "sv0105/application/testapplication.hpp"

namespace {

using SV::Font;

LOGFONTA systemFontOf(Font const & font) {
  LOGFONTA description = {};
  HFONT const handle = font.CreateSystemFont();
  EXPECT_NE(handle, nullptr);
  EXPECT_EQ(GetObjectA(handle, sizeof description, &description), static_cast<int>(sizeof description));
  DeleteObject(handle);
  return description;
}

TEST(FontProperties, BeginWithTheWindowColours) {
  Font const font;
  EXPECT_EQ(font.GetName().Len(), 0);
  EXPECT_EQ(font.GetSize(), (SV::Size{0, 0}));
  EXPECT_EQ(font.GetCharSet(), 1);
  EXPECT_EQ(font.GetColor().GetColorName(), SV::COL_WINDOWTEXT);
  EXPECT_EQ(font.GetFillColor().GetColorName(), SV::COL_WINDOW);
  EXPECT_FALSE(font.IsTransparent());
}

TEST(FontProperties, GiveTheirFormerValueWhenChanged) {
  Font font("Arial", {5, 14});
  EXPECT_STREQ(font.ChangeName("Tahoma").c_str(), "Arial");
  EXPECT_EQ(font.ChangeSize({0, 20}), (SV::Size{5, 14}));
  EXPECT_EQ(font.ChangeCharSet(204), 1);
  EXPECT_EQ(font.ChangeColor(SV::COL_RED).GetColorName(), SV::COL_WINDOWTEXT);
  EXPECT_EQ(font.ChangeFillColor(SV::COL_BLUE).GetColorName(), SV::COL_WINDOW);
  EXPECT_FALSE(font.ChangeTransparent(true));
  EXPECT_STREQ(font.GetName().c_str(), "Tahoma");
  EXPECT_EQ(font.GetSize(), (SV::Size{0, 20}));
  EXPECT_EQ(font.GetCharSet(), 204);
  EXPECT_EQ(font.GetColor().GetColorName(), SV::COL_RED);
  EXPECT_EQ(font.GetFillColor().GetColorName(), SV::COL_BLUE);
  EXPECT_TRUE(font.IsTransparent());
}

TEST(SystemFont, HasFaceCharacterHeightWidthAndCharSet) {
  Font font("Arial", {7, 14});
  font.ChangeCharSet(238);
  LOGFONTA const description = systemFontOf(font);
  EXPECT_STREQ(description.lfFaceName, "Arial");
  EXPECT_EQ(description.lfHeight, -14);
  EXPECT_EQ(description.lfWidth, 7);
  EXPECT_EQ(description.lfCharSet, 238);
}

struct WeightRow {
  SV::FontWeight weight;
  LONG system;
};

TEST(SystemFont, HasTheWeight) {
  for (auto const & [weight, system] :
       {WeightRow{SV::WEIGHT_DONTKNOW, FW_DONTCARE}, WeightRow{SV::WEIGHT_LIGHT, FW_LIGHT},
        WeightRow{SV::WEIGHT_NORMAL, FW_NORMAL}, WeightRow{SV::WEIGHT_BOLD, FW_BOLD},
        WeightRow{static_cast<SV::FontWeight>(9), FW_NORMAL}}) {
    Font font("Arial", {0, 14});
    font.ChangeWeight(weight);
    EXPECT_EQ(font.GetWeight(), weight);
    EXPECT_EQ(systemFontOf(font).lfWeight, system) << weight;
  }
}

TEST(SystemFont, WithCharactersOfOneWidthIsAskedForAsSuch) {
  Font font("No such face", {0, 14});
  EXPECT_EQ(systemFontOf(font).lfPitchAndFamily, DEFAULT_PITCH | FF_DONTCARE);
  EXPECT_EQ(font.ChangePitch(SV::PITCH_FIXED), SV::PITCH_DONTKNOW);
  EXPECT_EQ(systemFontOf(font).lfPitchAndFamily, FIXED_PITCH | FF_MODERN);
  EXPECT_EQ(font.ChangePitch(SV::PITCH_VARIABLE), SV::PITCH_FIXED);
  EXPECT_EQ(systemFontOf(font).lfPitchAndFamily, VARIABLE_PITCH | FF_DONTCARE);
}

TEST(SystemFont, TakesADefaultForACharSetBeyondTheSystems) {
  Font font("Arial", {0, 14});
  font.ChangeCharSet(255);
  EXPECT_EQ(systemFontOf(font).lfCharSet, 255);
  font.ChangeCharSet(256);
  EXPECT_EQ(systemFontOf(font).lfCharSet, DEFAULT_CHARSET);
}

TEST(SystemFont, CutsALongFaceName) {
  std::string const name(40, 'x');
  EXPECT_EQ(systemFontOf(Font(name.c_str(), {0, 12})).lfFaceName, name.substr(0, LF_FACESIZE - 1));
}

TEST(SystemFont, IsThereForAnySize) {
  for (long size : {0L, 1L, -12L, 0x7FFFFFFFL, -0x7FFFFFFFL})
    systemFontOf(Font("Arial", {size, size}));
}

} // namespace
