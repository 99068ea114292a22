// Runs with LC_ALL=ja_JP.UTF-8: code page 932, whose characters have one or two bytes.

#include "ui/themes/captiontext.hpp"

#include "sv0105/application/testapplication.hpp"

#include <string>

namespace {

class DoubleByteCaption : public ToolkitTest {
protected:
  void SetUp() override {
    if (GetACP() != 932)
      GTEST_SKIP() << "the system does not take the code page from LC_ALL";
    device.SetOutputSizePixel({400, 20});
  }

  SV::VirtualDevice device;
};

TEST_F(DoubleByteCaption, IsCutBetweenTwoCharacters) {
  std::string const pair = "\x95\x5C"; // U+8868; its second byte alone would be a backslash
  std::string text = "a";
  for (int i = 0; i < 30; ++i)
    text += pair;
  std::size_t lengths = 0;
  for (long width = 0; width < 400; ++width) {
    std::string const shown = textOf(kivara::fittingText(device, text.c_str(), width));
    if (shown == text)
      continue;
    ASSERT_TRUE(shown.ends_with("..."));
    std::size_t const kept = shown.size() - 3;
    ASSERT_TRUE(kept == 0 || kept % 2 == 1) << width << ": " << kept;
    ASSERT_EQ(shown.substr(0, kept), text.substr(0, kept));
    lengths = std::max(lengths, kept);
  }
  EXPECT_GT(lengths, 10u);
}

} // namespace
