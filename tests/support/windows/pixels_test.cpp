#include "support/windows/pixels.hpp"

#include "support/windows/windows.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

using support::Pixels;

TEST(Pixels, ADeviceIsReadExactly) {
  HDC const screen = GetDC(nullptr);
  HDC const device = CreateCompatibleDC(screen);
  HBITMAP const bitmap = CreateCompatibleBitmap(screen, 8, 4);
  HGDIOBJ const former = SelectObject(device, bitmap);
  PatBlt(device, 0, 0, 8, 4, WHITENESS);
  SetPixel(device, 2, 1, 0x302010);
  Pixels const read = support::readPixels(device, {1, 1, 5, 4});
  EXPECT_EQ(read.width(), 4);
  EXPECT_EQ(read.height(), 3);
  EXPECT_EQ(read.at(1, 0), 0x302010u);
  EXPECT_EQ(read.count(0xFFFFFF), 11u);
  EXPECT_EQ(read.colours(), 2u);
  EXPECT_EQ(read.at(4, 0), 0xFFFFFFFFu);
  EXPECT_EQ(support::readPixels(device, {3, 3, 3, 9}).width(), 0);
  SelectObject(device, former);
  DeleteObject(bitmap);
  DeleteDC(device);
  ReleaseDC(nullptr, screen);
}

TEST(Pixels, AlikeComparesEachChannel) {
  EXPECT_TRUE(support::alike(0x102030, 0x112031));
  EXPECT_FALSE(support::alike(0x102030, 0x102032));
  EXPECT_TRUE(support::alike(0x102030, 0x102032, 2));
  EXPECT_FALSE(support::alike(0x0000FF, 0x000100));
}

TEST(Pixels, AWindowOfAnotherProcessIsReadFromTheScreen) {
  support::ChildProcess child({.program = "painted_window"});
  HWND const window = support::waitForWindow({.processId = child.processId(), .title = "Painted"});
  ASSERT_TRUE(window);
  Pixels const read = support::readWindow(window);
  EXPECT_EQ(read.width(), 60);
  EXPECT_EQ(read.height(), 40);
  EXPECT_EQ(read.count(0x0000FF), 100u);
  EXPECT_EQ(read.count(0xFF0000), 60u * 40 - 100);
}
