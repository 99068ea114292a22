#include "background/plugins.hpp"

#include "support/data/files.hpp"

#include <gtest/gtest.h>

#include <string>

using SV::String;

namespace {

/// With the plug-ins of the build, and the program's texts.
class ModelerPlugins : public testing::Test {
protected:
  ModelerPlugins() {
    static char program[] = "modeler.exe";
    static char journalOption[] = "-journalout.log";
    static char * words[] = {program, journalOption};
    KivCmdline::init(2, words, true, "log");
    KivInternational::SetCurrentLanguageID(2057);
    KivInternational::createResourceManager("kivara", true);
    KivInternational::createResourceManager("modeler", true);
    journal_.Open();
  }

  modeler::Journal journal_;
  modeler::Plugins plugins;

  std::string journalText() {
    journal_.Close();
    return support::readFile("out.log").value_or("");
  }
  static std::string file(char const * name) { return support::binFolder() + "plugins\\" + name; }
};

TEST_F(ModelerPlugins, AreShownWithNameKindAndFile) {
  plugins.Load(journal_);
  ISequence<modeler::Fact> const facts = plugins.Facts();
  ASSERT_EQ(facts.size(), 2u);
  EXPECT_STREQ(facts[0].name.c_str(), "Plug-in textcommands");
  EXPECT_EQ(facts[0].value.c_str(), "KivScript, " + file("textcommands.dll"));
  EXPECT_STREQ(facts[1].name.c_str(), "Plug-in userwatch");
  EXPECT_EQ(facts[1].value.c_str(), "General, " + file("userwatch.dll"));
}

TEST_F(ModelerPlugins, AreNotedInTheJournal) {
  plugins.Load(journal_);
  std::string const text = journalText();
  EXPECT_NE(text.find(": plug-in: KivScript: " + file("textcommands.dll") + "\r\n"), std::string::npos) << text;
  EXPECT_NE(text.find(": plug-in: General: " + file("userwatch.dll") + "\r\n"), std::string::npos) << text;
}

TEST_F(ModelerPlugins, AreSaidToBeNoneWhereThereAreNone) {
  ISequence<modeler::Fact> const facts = plugins.Facts();
  ASSERT_EQ(facts.size(), 1u);
  EXPECT_STREQ(facts[0].name.c_str(), "Plug-ins");
  EXPECT_STREQ(facts[0].value.c_str(), "none");
  EXPECT_TRUE(plugins.Commands().empty());
}

TEST_F(ModelerPlugins, OfferTheirCommandsAndExecuteThem) {
  plugins.Load(journal_);
  ASSERT_EQ(plugins.Commands().size(), 2u);
  EXPECT_STREQ(plugins.Commands()[0].c_str(), "CountLines");
  EXPECT_STREQ(plugins.Commands()[1].c_str(), "CountWords");
  support::writeFile("a text.txt", "one two\r\n\r\n\tthree\r\n");
  String answer;
  EXPECT_TRUE(plugins.Execute("CountLines", "a text.txt", answer));
  EXPECT_STREQ(answer.c_str(), "3");
  EXPECT_TRUE(plugins.Execute("CountWords", "a text.txt", answer));
  EXPECT_STREQ(answer.c_str(), "3");
  support::writeFile("a text.txt", "one two\r\nthree four\r\n");
  EXPECT_TRUE(plugins.Execute("CountWords", "a text.txt", answer));
  EXPECT_STREQ(answer.c_str(), "4");
}

TEST_F(ModelerPlugins, DoNotExecuteWhatTheyCannotOrDoNotKnow) {
  plugins.Load(journal_);
  String answer;
  EXPECT_FALSE(plugins.Execute("CountLines", "", answer));
  EXPECT_FALSE(plugins.Execute("CountLines", "not there.txt", answer));
  EXPECT_FALSE(plugins.Execute("CountTrees", "", answer));
}

} // namespace
