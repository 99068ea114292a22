// Who is at work.
#include "apps/modeler/in_process.hpp"
#include "apps/modeler/languages.hpp"
#include "background/userfacts.hpp"
#include "support/data/files.hpp"
#include "support/processes/child_process.hpp"

#include <map>

namespace modeler {
namespace {

class UserFacts : public InProcess {
protected:
  std::string accountOf(std::string const & file) {
    KivDBUserUtils account((folder / file).c_str());
    return accountText(account).c_str();
  }
};

TEST_F(UserFacts, NameTheUserAndTheMachine) {
  std::vector<std::string> names;
  std::map<std::string, std::string> values;
  for (Fact const & fact : userFacts()) {
    names.emplace_back(fact.name.c_str());
    values[fact.name.c_str()] = fact.value.c_str();
  }
  EXPECT_EQ(names, (std::vector<std::string>{"User", "Domain", "Full name", "Administrator of this computer",
                                             "Database account", "Network adapter", "Installation of Windows"}));
  char user[256] = "";
  DWORD size = sizeof user;
  GetUserNameA(user, &size);
  EXPECT_EQ(values["User"], user);
  EXPECT_NE(values["Domain"], "");
  std::string const isAdministrator = values["Administrator of this computer"];
  EXPECT_TRUE(isAdministrator == "yes" || isAdministrator == "no") << isAdministrator;
  SV::String const installation = Kiv_GetSystemIDAsString();
  EXPECT_EQ(values["Installation of Windows"], installation.Len() > 0 ? installation.c_str() : "not known");
}

TEST_F(UserFacts, ShowTheNameThatTheProductHasSet) {
  Kiv_SetCurrentUserDisplayName("Ada Smith");
  EXPECT_STREQ(userFacts()[2].value.c_str(), "Ada Smith");
}

TEST_F(UserFacts, ShowTheDatabaseAccountWithoutItsPassword) {
  auto const written = support::runProgram({.program = "kivuser",
                                            .arguments = "write \"" + folder / "account.txt" + "\" scott",
                                            .input = "secret-password\r\n"});
  ASSERT_EQ(written.exitCode, 0u) << written.errors;
  EXPECT_EQ(accountOf("account.txt"), "scott");
}

TEST_F(UserFacts, SayWhyThereIsNoDatabaseAccount) {
  EXPECT_EQ(accountOf("missing.txt"), "none: there is no file adbuser.txt");
  support::writeFile(folder / "bad.txt", "no account");
  EXPECT_EQ(accountOf("bad.txt"), "none: the file adbuser.txt cannot be used");
  useTexts(kGerman);
  EXPECT_EQ(accountOf("missing.txt"), "keines: die Datei adbuser.txt gibt es nicht");
}

} // namespace
} // namespace modeler
