// Runs with LC_ALL=ja_JP.UTF-8: code page 932, whose characters have one or two bytes.

#include "sv/virtualdevice.hpp"
#include "sv0105/application/testapplication.hpp"

#include <string>

namespace {

using SV::String;

class DoubleByteDrawing : public ToolkitTest {
protected:
  void SetUp() override {
    if (GetACP() != 932)
      GTEST_SKIP() << "the system does not take the code page from LC_ALL";
  }
};

TEST_F(DoubleByteDrawing, MeasuresALongTextByWholeCharacters) {
  SV::VirtualDevice const device;
  char const character[] = "\x95\x5C"; // U+8868
  std::string text = "a";
  for (int i = 0; i < 4000; ++i)
    text += character; // the 8,000th byte is the first half of one
  EXPECT_EQ(device.GetTextSize(text.c_str()).width,
            device.GetTextSize("a").width + 4000 * device.GetTextSize(character).width);
}

} // namespace
