#include "aappinfo.hpp"

#include "acmdline.hpp"
#include "sv/resource.hpp"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace {

/// Takes over a command line of one word after the program's name. The word must outlive the test.
void giveWord(char * word) {
  static char program[] = "tool.exe";
  static char * words[] = {program, nullptr, nullptr};
  words[1] = word;
  KivCmdline::init(2, words, true, "log");
}

std::string toolName(bool reset) { return Kiv_GetToolName(reset).c_str(); }

char withoutName[] = "-trace";
char withName[] = "-toolnameMy tool";
char withOtherName[] = "/toolnameOther";

std::string packOf(int language) { return "language\\" + std::to_string(language) + "\\kivara72.dll"; }

/// The texts of one language, active as long as this lives.
class Texts {
public:
  explicit Texts(int language) : manager_(packOf(language).c_str()) { SV::Resource::SetResManager(&manager_); }
  ~Texts() { SV::Resource::SetResManager(nullptr); }

private:
  SV::ResMgr manager_;
};

struct Kind {
  int type;
  unsigned long text;
};
std::ostream & operator<<(std::ostream & out, Kind const & kind) { return out << kind.type; }

class ToolNameOfKind : public testing::TestWithParam<Kind> {};

TEST_P(ToolNameOfKind, IsItsTextInTheResources) {
  giveWord(withoutName);
  Texts const texts(2057);
  Kiv_SetApplicationType(static_cast<KivApplicationType>(GetParam().type));
  std::string const expected = SV::Resource::LoadString(GetParam().text).c_str();
  EXPECT_FALSE(expected.empty());
  EXPECT_EQ(toolName(false), expected);
}

INSTANTIATE_TEST_SUITE_P(Kind, ToolNameOfKind,
                         testing::Values(Kind{0, 0x2002913}, Kind{1, 0x2002914}, Kind{2, 0x2002927},
                                         Kind{-1, 0x2002927}));

TEST(ToolName, IsThatOfTheCommandLineFirstOfAll) {
  giveWord(withName);
  Texts const texts(2057);
  EXPECT_EQ(toolName(false), "My tool");
}

TEST(ToolName, IsKeptUntilItIsAskedForAnew) {
  giveWord(withName);
  EXPECT_EQ(toolName(false), "My tool");
  giveWord(withOtherName);
  EXPECT_EQ(toolName(false), "My tool");
  EXPECT_EQ(toolName(true), "Other");
  EXPECT_EQ(toolName(false), "Other");
}

TEST(ToolName, OfTheResourcesIsReadAgainOnReset) {
  giveWord(withoutName);
  std::string english;
  {
    Texts const texts(2057);
    Kiv_SetApplicationType(KIV_APPLICATION_RUNTIME);
    english = toolName(false);
    Kiv_SetApplicationType(KIV_APPLICATION_TOOLKIT);
    EXPECT_EQ(toolName(false), english);
    EXPECT_NE(toolName(true), english);
    Kiv_SetApplicationType(KIV_APPLICATION_RUNTIME);
    EXPECT_EQ(toolName(true), english);
  }
  Texts const texts(1031);
  EXPECT_EQ(toolName(false), english);
  EXPECT_NE(toolName(true), english);
}

TEST(ToolName, IsEmptyWithoutResourcesAndAskedForAgain) {
  giveWord(withoutName);
  EXPECT_EQ(toolName(false), "");
  Texts const texts(2057);
  EXPECT_NE(toolName(false), "");
}

} // namespace
