#pragma once
/// \file
/// Tests that run with LC_ALL=ja_JP.UTF-8: code page 932, whose characters have one or two bytes.

#include "sv0105/application/testapplication.hpp"

#include <string>

namespace svtest {

class DoubleByteTest : public ToolkitTest {
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
};

} // namespace svtest
