// The paint buffer of a program whose display gets another resolution. Wine changes that of a virtual desktop alone, and for
// all programs of the prefix.

#include "support/data/files.hpp"
#include "support/processes/child_process.hpp"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

TEST(PaintBufferOnARealDisplay, FollowsItsResolution) {
  support::TempFolder const folder;
  std::string const report = folder / "report.txt";
  std::string const shell = std::string(std::getenv("SystemRoot")) + "\\explorer.exe";
  std::string const program = support::binFolder() + "paintbuffer_display.exe";
  support::ChildProcess const desktop(
      {.program = shell, .arguments = "/desktop=paintbuffer,800x600 \"" + program + "\" " + report});
  std::string text;
  EXPECT_TRUE(support::eventually([&] {
    text = support::readFile(report).value_or("");
    return text.find("end") != std::string::npos;
  }));
  EXPECT_EQ(text, "screens 800 x 600, buffer 800 x 600\r\n"
                  "changed 0\r\n"
                  "screens 640 x 480, buffer 640 x 480\r\n"
                  "changed 0\r\n"
                  "screens 1024 x 768, buffer 1024 x 768\r\n"
                  "end\r\n");
}

} // namespace
