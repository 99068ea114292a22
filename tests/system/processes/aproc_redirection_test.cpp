#include "aproc.hpp"

#include "process_child.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>

using kivtest::child;
using kivtest::end;
using kivtest::Facts;
using kivtest::Gate;
using SV::String;
using Bytes = std::optional<std::string>;

namespace {

class Redirection : public testing::Test {
protected:
  /// Runs process_child to its end.
  static void run(std::string const & words, bool isUsed = true) {
    KivSynchronousProcess process = child(words);
    process.SetUseRedirection(isUsed);
    ASSERT_TRUE(process.Execute(false));
    ASSERT_EQ(end(process), 0);
  }

  Bytes bytesOf(std::string const & file) const { return support::readFile(folder / file); }
  std::string quoted(std::string const & file) const { return '"' + folder / file + '"'; }

  /// Whether somebody holds the file open; it goes away otherwise.
  bool isOpen(std::string const & file) const { return !DeleteFileA((folder / file).c_str()); }

  /// The handles that a program had go some time after its end.
  bool becomesClosed(std::string const & file) const {
    return support::eventually([&] { return !isOpen(file); }, 10);
  }

  support::TempFolder const folder;
  std::string const out = folder / "out";
  std::string const err = folder / "err";
};

TEST_F(Redirection, PutsStandardOutputIntoAFile) {
  run("out:first err:lost 1>" + out + " out:second");
  EXPECT_EQ(bytesOf("out"), "firstsecond");
}

TEST_F(Redirection, PutsTheErrorStreamIntoAFile) {
  run("out:lost err:first 2>" + err + " err:second");
  EXPECT_EQ(bytesOf("err"), "firstsecond");
}

TEST_F(Redirection, TakesBothInEitherOrder) {
  run("out:1 err:2 1>" + out + " 2>" + err);
  EXPECT_EQ(bytesOf("out"), "1");
  EXPECT_EQ(bytesOf("err"), "2");
  run("2>" + err + " 1>" + out + " out:3 err:4");
  EXPECT_EQ(bytesOf("out"), "3");
  EXPECT_EQ(bytesOf("err"), "4");
}

TEST_F(Redirection, OfOneSignReplaces) {
  support::writeFile(out, "a longer text");
  support::writeFile(err, "a longer text");
  run("out:new err:new 1>" + out + " 2>" + err);
  EXPECT_EQ(bytesOf("out"), "new");
  EXPECT_EQ(bytesOf("err"), "new");
}

TEST_F(Redirection, OfTwoSignsAppends) {
  support::writeFile(out, "before ");
  support::writeFile(err, "before ");
  run("out:new err:new 1>>" + out + " 2>>" + err);
  EXPECT_EQ(bytesOf("out"), "before new");
  EXPECT_EQ(bytesOf("err"), "before new");
}

TEST_F(Redirection, OfTwoSignsMakesAFileThatIsNotThere) {
  run("out:new 1>>" + out);
  EXPECT_EQ(bytesOf("out"), "new");
}

TEST_F(Redirection, TakesAQuotedNameWithABlankWhole) {
  support::writeFile(folder / "b c", "before ");
  run("out:1 err:2 1>" + quoted("a b") + " 2>>" + quoted("b c"));
  EXPECT_EQ(bytesOf("a b"), "1");
  EXPECT_EQ(bytesOf("b c"), "before 2");
}

TEST_F(Redirection, TakesANameWithoutItsClosingQuoteToTheEndOfTheLine) {
  run("out:1 1>\"" + folder / "a b");
  EXPECT_EQ(bytesOf("a b"), "1");
}

TEST_F(Redirection, LeavesTheRestOfTheLineAsItIs) {
  Facts facts;
  run("a  1>" + out + "  b 2>>" + quoted("e r") + " c");
  EXPECT_EQ(facts.take("line"), kivtest::childPath() + " a    b  c");
}

TEST_F(Redirection, NotUsedIsStillTakenOutAndOpensNoFile) {
  Facts facts;
  run("a 1>" + out + " b 2>>" + err, false);
  EXPECT_EQ(facts.take("line"), kivtest::childPath() + " a  b ");
  EXPECT_EQ(bytesOf("out"), std::nullopt);
  EXPECT_EQ(bytesOf("err"), std::nullopt);
}

TEST_F(Redirection, IsNotUsedUnlessItIsSet) {
  KivSynchronousProcess process = child("out:1 1>" + out);
  ASSERT_TRUE(process.Execute(false));
  EXPECT_EQ(end(process), 0);
  EXPECT_EQ(bytesOf("out"), std::nullopt);
}

TEST_F(Redirection, WithAnEmptyNameIsNone) {
  Facts facts;
  run("a 1> " + out);
  EXPECT_EQ(facts.take("line"), kivtest::childPath() + " a  " + out);
  EXPECT_EQ(bytesOf("out"), std::nullopt);
}

TEST_F(Redirection, WithEmptyQuotesOpensNothing) {
  Facts facts;
  run("out:1 1>\"\" 2>" + err + " err:2");
  EXPECT_EQ(facts.take("line"), kivtest::childPath() + " out:1   err:2");
  EXPECT_EQ(bytesOf("err"), "2");
}

TEST_F(Redirection, ToAFileThatCannotBeOpenedLeavesThatStreamAlone) {
  CreateDirectoryA(out.c_str(), nullptr);
  run("out:1 err:2 1>" + out + " 2>" + err);
  EXPECT_EQ(bytesOf("err"), "2");
}

TEST_F(Redirection, InsideOfTheNameOfTheOtherOneBelongsToThatName) {
  Facts facts;
  run("a 1>" + quoted("x2>y") + " b"); // no file can bear this name
  EXPECT_EQ(facts.take("line"), kivtest::childPath() + " a  b");
  EXPECT_EQ(bytesOf("y"), std::nullopt);
}

TEST_F(Redirection, FilesMayBeReadAndWrittenByOthersMeanwhile) {
  Gate gate;
  Facts facts;
  KivSynchronousProcess process = child("out:1 1>" + out + " wait:" + gate.name());
  process.SetUseRedirection(true);
  ASSERT_TRUE(process.Execute(false));
  facts.take();
  EXPECT_TRUE(support::eventually([this] { return bytesOf("out") == "1"; }, 10));
  EXPECT_NO_THROW(support::writeFile(out, "2"));
  EXPECT_TRUE(isOpen("out"));
  gate.open();
  EXPECT_EQ(end(process), 0);
}

TEST_F(Redirection, FilesAreClosedWhenTheEndIsSeen) {
  KivSynchronousProcess process = child("1>" + out + " 2>" + err);
  process.SetUseRedirection(true);
  ASSERT_TRUE(process.Execute(false));
  EXPECT_TRUE(isOpen("out"));
  EXPECT_TRUE(isOpen("err"));
  EXPECT_EQ(end(process), 0);
  EXPECT_TRUE(becomesClosed("out"));
  EXPECT_TRUE(becomesClosed("err"));
}

// Callers read the output of a program that they no longer wait for, and the program may still be writing.
TEST_F(Redirection, FilesStayOpenWhenTheObjectGoesWithoutTheEnd) {
  Gate gate;
  int const before = support::countHandles();
  {
    KivSynchronousProcess process = child("wait:" + gate.name() + " out:alive 1>" + out);
    process.SetUseRedirection(true);
    ASSERT_TRUE(process.Execute(false));
  }
  gate.open();
  EXPECT_TRUE(support::eventually([this] { return bytesOf("out") == "alive"; }, 30)) << "the program runs on";
  EXPECT_EQ(support::countHandles(), before + 1) << "the file is open, and nothing else";
}

TEST_F(Redirection, FilesOfAProgramThatDidNotStartStayOpenForTheNextOne) {
  std::string const program = folder / "later.exe";
  KivSynchronousProcess process(program.c_str(), String(("out:1 1>" + out).c_str()), KIV_CMDSHOW_NORMAL);
  process.SetUseRedirection(true);
  SetLastError(0);
  EXPECT_FALSE(process.Execute(false));
  EXPECT_EQ(GetLastError(), unsigned{ERROR_FILE_NOT_FOUND});
  EXPECT_EQ(bytesOf("out"), "");
  EXPECT_TRUE(isOpen("out"));
  CopyFileA(kivtest::childPath().c_str(), program.c_str(), TRUE);
  process.SetUseRedirection(false);
  EXPECT_TRUE(process.Execute(false));
  EXPECT_EQ(end(process), 0);
  EXPECT_EQ(bytesOf("out"), "1");
  EXPECT_TRUE(becomesClosed("out"));
}

TEST_F(Redirection, OpensOneHandleForEachFileAndClosesIt) {
  run("1>" + out + " 2>" + err);
  int const before = support::countHandles();
  KivSynchronousProcess process = child("1>" + out + " 2>" + err);
  process.SetUseRedirection(true);
  ASSERT_TRUE(process.Execute(false));
  EXPECT_EQ(support::countHandles(), before + 3);
  EXPECT_EQ(end(process), 0);
  EXPECT_EQ(support::countHandles(), before);
}

} // namespace
