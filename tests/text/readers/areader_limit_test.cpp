// A line that is too long ends the process.

#include "fatal_exit.hpp"
#include "textfile.hpp"

#include "support/processes/child_process.hpp"
#include "support/windows/windows.hpp"

#include "tools/winapi.hpp"

using support::ChildProcess;

namespace {

std::string x(std::size_t count) { return std::string(count, 'x'); }

} // namespace

// The box comes although the program suppresses dialogs.
TEST(LineLimit, LineOf8192BytesEndsTheProcessWithItsMessage) {
  ChildProcess const child({.program = "line_reader", .arguments = writeText("short\n" + x(8192) + "\nnever read\n")});
  HWND const box = support::waitForWindow({.processId = child.processId(), .className = support::kBoxClass});
  ASSERT_TRUE(box);
  EXPECT_EQ(
      support::readBox(box).texts,
      std::vector<std::string>{"INTERNAL ERROR!\nThe maximum line length has been exceeded. Max. 8192 characters are "
                               "allowed per line! Aborting program.\n"});
  EXPECT_TRUE(support::pressButton(box, IDOK));
  EXPECT_EQ(child.waitForEnd(), 1u);
  EXPECT_EQ(child.output(), "6\r\n");
}

TEST(LineLimit, UnterminatedLineOf8192BytesAtTheEndOfTheFileEndsTheProcess) {
  ChildProcess const child({.program = "line_reader", .arguments = writeText(x(8192))});
  HWND const box = support::waitForWindow({.processId = child.processId(), .className = support::kBoxClass});
  ASSERT_TRUE(box);
  EXPECT_TRUE(support::pressButton(box, IDOK));
  EXPECT_EQ(child.waitForEnd(), 1u);
  EXPECT_EQ(child.output(), "");
}

TEST(LineLimit, LineOf8191BytesIsDelivered) {
  auto const result =
      support::runProgram({.program = "line_reader", .arguments = writeText("ab\n" + x(8191) + "\r\n" + x(8191))});
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_EQ(result.output, "3\r\n8192\r\n8192\r\nend\r\n");
}

TEST(LineLimit, GetLineIsFalseShouldTheEndOfTheProcessReturn) {
  Owned<> const reader(writeText(x(8193) + "\nnext\n"));
  ASSERT_TRUE(reader->Init());
  SV::String line("kept");
  EXPECT_FALSE(reader->GetLine(line));
  EXPECT_EQ(line, "kept");
  auto const exits = kivtest::takeFatalExits();
  ASSERT_EQ(exits.size(), 1u);
  EXPECT_EQ(exits[0].action, 1u);
  EXPECT_EQ(exits[0].text,
            "INTERNAL ERROR!\nThe maximum line length has been exceeded. Max. 8192 characters are allowed "
            "per line! Aborting program.\n");
}
