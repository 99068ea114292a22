// Runs with LC_ALL=ja_JP.UTF-8: code page 932, whose characters have one or two bytes.

#include "sv0105/application/testapplication.hpp"

#include <string>

namespace {

class DoubleByteBox : public ToolkitTest {
protected:
  void SetUp() override {
    if (GetACP() != 932)
      GTEST_SKIP() << "the system does not take the code page from LC_ALL";
  }

  /// U+8868, that many times.
  static std::string characters(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
      text += "\x95\x5C";
    return text;
  }

  /// The text that a box shows for one.
  static std::string shown(std::string const & text) {
    SV::MessBox const box(nullptr, SV::WB_OK, text.c_str());
    for (HWND child = GetWindow(box.GethWnd(), GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
      std::string label(20000, '\0');
      label.resize(static_cast<std::size_t>(GetWindowTextA(child, label.data(), 20000)));
      if (label.size() > 100)
        return label;
    }
    return "no text";
  }
};

TEST_F(DoubleByteBox, CutsALongTextBetweenTwoCharacters) {
  EXPECT_TRUE(shown(characters(4096)) == characters(4096)) << "8,192 bytes are not too long";
  EXPECT_TRUE(shown(characters(4097)) == characters(4096) + "...");
  EXPECT_TRUE(shown('a' + characters(4095)) == 'a' + characters(4095));
  EXPECT_TRUE(shown('a' + characters(4096)) == 'a' + characters(4095) + "...")
      << "8,192 bytes would end in half of one";
}

} // namespace
