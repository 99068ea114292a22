// Users as the real services of the system know them, asked by a real program.

#include "auser.hpp"

#include "support/harness/wine.hpp"
#include "support/processes/debugger.hpp"
#include "system/copied_program.hpp"
#include "userfile.hpp"

#define SECURITY_WIN32
#include <sspi.h>

#include <secext.h>

#include <gtest/gtest.h>

#include <string>

using kivtest::CopiedProgram;
using kivtest::encrypted;

namespace {

// The account of the process

/// As the system knows it.
struct Account {
  Account() {
    DWORD size = sizeof user;
    GetUserNameA(user, &size);
    BYTE sid[SECURITY_MAX_SID_SIZE];
    DWORD sidSize = sizeof sid;
    DWORD domainSize = sizeof domain;
    SID_NAME_USE use;
    EXPECT_TRUE(LookupAccountNameA(nullptr, user, sid, &sidSize, domain, &domainSize, &use));
    ULONG principalSize = sizeof principal;
    hasPrincipal = GetUserNameExA(NameUserPrincipal, principal, &principalSize) != FALSE;
  }

  char user[300] = "";
  char domain[300] = "";
  char principal[1'024] = "";
  bool hasPrincipal;
};

std::string line(bool isFound, std::string const & user, std::string const & domain) {
  return "found=" + std::to_string(isFound) + " user=" + user + " domain=" + domain + "\n";
}

/// Both answers where the full domain is wanted: an account without one is not found at first.
std::string fullAnswers(Account const & account) {
  std::string const principal = account.principal;
  std::string const domain = principal.substr(std::min(principal.find('@'), principal.size() - 1) + 1);
  return line(account.hasPrincipal, account.user, account.hasPrincipal ? domain : "") +
         line(true, account.user, account.hasPrincipal ? domain : "");
}

TEST(RealUser, IsTheOneThatTheSystemNames) {
  Account const account;
  std::string const answer = line(true, account.user, account.domain);
  EXPECT_EQ(CopiedProgram("user_questions", "users").answers("current"), answer + answer);
  EXPECT_NE(account.user[0], '\0');
  EXPECT_NE(account.domain[0], '\0');
}

TEST(RealUser, HasTheFullDomainByTheFileBesideTheProgram) {
  CopiedProgram const program("user_questions", "users");
  support::writeFile(program.beside("login.ini"), "getfulldomainname=1\r\n");
  EXPECT_EQ(program.answers("current"), fullAnswers(Account()));
}

TEST(RealUser, HasTheFullDomainByTheFlag) {
  EXPECT_EQ(CopiedProgram("user_questions", "users").answers("current -getfulldomainname"), fullAnswers(Account()));
}

// The database account

TEST(RealAccount, IsReadFromTheFileBesideTheProgram) {
  CopiedProgram const program("user_questions", "users");
  EXPECT_EQ(program.answers("account"), "external=0 name= password=\n");
  support::writeFile(program.beside("adbuser.txt"), encrypted("\nscott\ntiger"));
  EXPECT_EQ(program.answers("account"), "external=1 name=scott password=tiger\n");
}

TEST(RealAccount, OfANamedFileIsReadFromThere) {
  CopiedProgram const program("user_questions", "users");
  support::writeFile(program.beside("adbuser.txt"), encrypted("\nscott\ntiger"));
  support::writeFile("other.txt", encrypted("\nother\nword"));
  EXPECT_EQ(program.answers("account other.txt"), "external=1 name=other password=word\n");
}

// Whether an account is good

/// A program to which Wine reports Windows 2000.
class OldWindows {
public:
  OldWindows() {
    constexpr char kVersion[] = "win2k";
    EXPECT_EQ(RegSetKeyValueA(HKEY_CURRENT_USER, kKey, "Version", REG_SZ, kVersion, sizeof kVersion), ERROR_SUCCESS);
  }
  OldWindows(OldWindows const &) = delete;
  OldWindows & operator=(OldWindows const &) = delete;
  ~OldWindows() { RegDeleteKeyA(HKEY_CURRENT_USER, kKey); }

  CopiedProgram const program{"user_questions", kName};

private:
  static constexpr char kName[] = "kivara_old_windows";
  static constexpr char kKey[] = "Software\\Wine\\AppDefaults\\kivara_old_windows.exe";
};

class RealLogon : public testing::Test {
protected:
  void SetUp() override {
    if (!support::isWine())
      GTEST_SKIP() << "the accounts of these tests are those of the tests' own ntlm_auth, which Wine runs";
  }
};

struct Try {
  char const * words;
  bool isGood;
};
void PrintTo(Try const & attempt, std::ostream * out) { *out << attempt.words; }

class RealNegotiation : public RealLogon, public testing::WithParamInterface<Try> {};
TEST_P(RealNegotiation, IsDecidedByThePassword) {
  OldWindows const windows;
  EXPECT_EQ(windows.program.answers(std::string("logon ") + GetParam().words),
            "xp=0 good=" + std::to_string(GetParam().isGood) + "\nmore handles=0\n");
}
INSTANTIATE_TEST_SUITE_P(Of, RealNegotiation,
                         testing::Values(Try{"worker TESTS \"open sesame\"", true},
                                         Try{"worker \"\" \"open sesame\"", true},
                                         Try{"worker TESTS \"Open sesame\"", false}, Try{"worker TESTS open", false},
                                         Try{"worker TESTS \"open sesame \"", false}, Try{"worker TESTS \"\"", false}));

TEST_F(RealLogon, ThatTheServerRefusesIsShownInTheDebugOutput) {
  OldWindows const windows;
  support::Debugger debugger(windows.program.start("logon worker TESTS wrong"));
  EXPECT_EQ(debugger.waitForEnd(), 0u);
  EXPECT_NE(debugger.text().find("[alu] AcceptSecurityContext failed with 8009030C\n"), std::string::npos)
      << debugger.text();
}

// Wine grants every account that way: only Windows distinguishes good ones from others.
TEST_F(RealLogon, IsGrantedDirectly) {
  CopiedProgram const program("user_questions", "users");
  EXPECT_TRUE(program.answers("logon worker TESTS \"open sesame\"").starts_with("xp=1 good=1\n"));
}

} // namespace
