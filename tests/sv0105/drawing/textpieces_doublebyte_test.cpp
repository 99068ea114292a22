#include "sv/virtualdevice.hpp"
#include "sv0105/doublebyte.hpp"

namespace {

class DoubleByteDrawing : public svtest::DoubleByteTest {};

TEST_F(DoubleByteDrawing, MeasuresALongTextByWholeCharacters) {
  SV::VirtualDevice const device;
  std::string const text = 'a' + characters(4000); // the 8,000th byte is the first half of one
  EXPECT_EQ(device.GetTextSize(text.c_str()).width,
            device.GetTextSize("a").width + 4000 * device.GetTextSize(characters(1).c_str()).width);
}

} // namespace
