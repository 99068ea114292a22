// The Windows account of the process: what is asked of the system, in which order, and what each failure leaves.

#include "currentuser.hpp"

#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string>
#include <vector>

using SV::String;

namespace {

using kivtest::CurrentUser;

using Lines = std::vector<std::string>;

TEST_F(CurrentUser, IsTheOneOfTheProcess) {
  EXPECT_TRUE(ask());
  EXPECT_EQ(user, "worker");
  EXPECT_EQ(domain, "SALES");
  EXPECT_EQ(security.calls,
            (Lines{"load advapi32", "load secur32", "thread token 8 as self", "process token 8", "token size 1",
                   "allocate 28", "token record 1", "lookup 260 260 here", "close", "unload", "unload"}));
  EXPECT_TRUE(security.nothingIsLeft());
}

TEST_F(CurrentUser, IsTheOneOfTheThreadWhereThatHasOne) {
  security.results.clear();
  EXPECT_TRUE(ask());
  EXPECT_EQ(user, "worker");
  EXPECT_EQ(security.count("thread token"), 1u);
  EXPECT_EQ(security.count("process token"), 0u);
  EXPECT_TRUE(security.nothingIsLeft());
}

TEST_F(CurrentUser, IsSearchedForOnce) {
  EXPECT_TRUE(ask());
  security.user = "another";
  security.domain = "OTHER";
  std::size_t const calls = security.calls.size();
  std::size_t const lines = debug.all().size();
  user = domain = "former";
  EXPECT_TRUE(ask());
  EXPECT_EQ(user, "worker");
  EXPECT_EQ(domain, "SALES");
  EXPECT_EQ(security.calls.size(), calls);
  EXPECT_EQ(debug.all().size(), lines);
}

TEST_F(CurrentUser, IsSearchedForAgainAfterAFailure) {
  security.results["lookup"] = {ERROR_NONE_MAPPED};
  EXPECT_FALSE(ask());
  security.results["thread token"] = {ERROR_NO_TOKEN};
  EXPECT_TRUE(ask());
  EXPECT_EQ(user, "worker");
}

TEST_F(CurrentUser, IsShownInTheDebugOutputBetweenTheLibraries) {
  EXPECT_TRUE(ask());
  EXPECT_EQ(debug.all(), (Lines{"[kivdll] Load 'advapi32'\n", "[kivdll] Load 'secur32'\n", "[alu] Using domain SALES\n",
                                "[kivdll] Unload 'secur32'\n", "[kivdll] Unload 'advapi32'\n"}));
}

// Failures

/// A call that fails, and how many of those after it are made.
struct Failure {
  char const * call;
  long code;
  char const * next; ///< what is not asked any more
};
void PrintTo(Failure const & failure, std::ostream * out) { *out << failure.call << ' ' << failure.code; }

class CurrentUserAfterAFailure : public CurrentUser, public testing::WithParamInterface<Failure> {};
TEST_P(CurrentUserAfterAFailure, IsEmptyAndNothingIsLeft) {
  security.results[GetParam().call] = {GetParam().code};
  EXPECT_FALSE(ask());
  EXPECT_EQ(user, "");
  EXPECT_EQ(domain, "");
  EXPECT_EQ(security.count(GetParam().call), 1u);
  EXPECT_EQ(security.count(GetParam().next), 0u);
  EXPECT_EQ(debug.of("[alu]"), Lines{"[alu] Using domain \n"});
  EXPECT_EQ(debug.of("[kivdll] Unload").size(), 2u);
  EXPECT_TRUE(security.nothingIsLeft());
}
INSTANTIATE_TEST_SUITE_P(Of, CurrentUserAfterAFailure,
                         testing::Values(Failure{"thread token", ERROR_ACCESS_DENIED, "process token"},
                                         Failure{"process token", ERROR_ACCESS_DENIED, "token size"},
                                         Failure{"token size", ERROR_INVALID_HANDLE, "allocate"},
                                         Failure{"token size", 0, "allocate"}, // a size that is none
                                         Failure{"allocate", ERROR_OUTOFMEMORY, "token record"},
                                         Failure{"token record", ERROR_INSUFFICIENT_BUFFER, "lookup"},
                                         Failure{"lookup", ERROR_NONE_MAPPED, "name"}));

class CurrentUserWithout : public CurrentUser, public testing::WithParamInterface<char const *> {};
TEST_P(CurrentUserWithout, IsNotSearchedFor) {
  security.missing = {GetParam()};
  EXPECT_FALSE(ask());
  EXPECT_EQ(user, "");
  EXPECT_EQ(domain, "");
  EXPECT_EQ(security.count("thread token"), 0u);
  EXPECT_EQ(debug.of("[alu]"), Lines{"[alu] Using domain \n"});
  EXPECT_TRUE(security.nothingIsLeft());
}
INSTANTIATE_TEST_SUITE_P(EntryPoint, CurrentUserWithout,
                         testing::Values("OpenThreadToken", "OpenProcessToken", "GetTokenInformation",
                                         "LookupAccountSidA", "GetUserNameExA"));
INSTANTIATE_TEST_SUITE_P(Library, CurrentUserWithout, testing::Values("advapi32", "secur32"));

// The full form of the domain

class FullDomain : public CurrentUser {
protected:
  FullDomain() { start("program -getfulldomainname"); }
};

TEST_F(FullDomain, FollowsTheAtOfThePrincipalName) {
  EXPECT_TRUE(ask());
  EXPECT_EQ(user, "worker");
  EXPECT_EQ(domain, "sales.example.com");
  EXPECT_EQ(security.count("name 8 1024"), 1u);
  EXPECT_EQ(debug.of("[alu]"), Lines{"[alu] Using domain sales.example.com\n"});
  EXPECT_TRUE(security.nothingIsLeft());
}

TEST_F(FullDomain, IsEmptyWithoutAnAt) {
  security.principal = "worker";
  EXPECT_TRUE(ask());
  EXPECT_EQ(user, "worker");
  EXPECT_EQ(domain, "");
}

TEST_F(FullDomain, IsThePieceUpToAnotherAt) {
  security.principal = "worker@sales@example.com";
  EXPECT_TRUE(ask());
  EXPECT_EQ(domain, "sales");
}

TEST_F(FullDomain, ThatIsNotFoundFailsAndTheNextCallGivesTheUserAlone) {
  security.results["name"] = {ERROR_NONE_MAPPED};
  EXPECT_FALSE(ask());
  EXPECT_EQ(user, "worker");
  EXPECT_EQ(domain, "");
  EXPECT_EQ(debug.of("[alu]"), Lines{"[alu] Using domain \n"});
  EXPECT_TRUE(security.nothingIsLeft());
  EXPECT_TRUE(ask());
  EXPECT_EQ(user, "worker");
  EXPECT_EQ(domain, "");
}

TEST_F(CurrentUser, HasTheShortDomainWithoutFlagAndFile) {
  EXPECT_TRUE(ask());
  EXPECT_EQ(security.count("name"), 0u);
}

TEST_F(CurrentUser, HasTheFullDomainByAnOptionThatOnlyBeginsWithTheFlag) {
  start("program -getfulldomainnames"); // options are compared by their beginnings
  EXPECT_TRUE(ask());
  EXPECT_EQ(domain, "sales.example.com");
}

/// A file beside the program, and whether it asks for the full domain.
struct LoginFile {
  char const * why;
  std::string bytes;
  bool isFull;
};
void PrintTo(LoginFile const & file, std::ostream * out) { *out << file.why; }

class FullDomainByFile : public CurrentUser, public testing::WithParamInterface<LoginFile> {};
TEST_P(FullDomainByFile, IsSwitchedOnByTheOneEntry) {
  writeLoginFile(GetParam().bytes);
  EXPECT_TRUE(ask());
  EXPECT_EQ(domain, GetParam().isFull ? "sales.example.com" : "SALES");
}
std::string const kEntry = "getfulldomainname=1";
INSTANTIATE_TEST_SUITE_P(
    Of, FullDomainByFile,
    testing::Values(
        LoginFile{"the entry", kEntry + "\n", true}, LoginFile{"without a line end", kEntry, true},
        LoginFile{"with a carriage return", kEntry + "\r\n", true},
        LoginFile{"with two carriage returns", kEntry + "\r\r\n", true},
        LoginFile{"with three of them", kEntry + "\r\r\r\n", false},
        LoginFile{"after other lines", "# a comment\n\na=b\na=b=c\n" + kEntry + "\nmore\n", true},
        LoginFile{"after one that does not switch it on", "getfulldomainname=0\n" + kEntry + "\n", true},
        LoginFile{"value 0", "getfulldomainname=0\n", false},
        LoginFile{"another value", "getfulldomainname=yes\n", false}, LoginFile{"value 10", kEntry + "0\n", false},
        LoginFile{"no value", "getfulldomainname=\n", false}, LoginFile{"no equal sign", "getfulldomainname1\n", false},
        LoginFile{"two equal signs", "getfulldomainname==1\n", false},
        LoginFile{"two equal signs in another place", kEntry + "=\n", false},
        LoginFile{"three pieces", "a=b=c\n", false}, LoginFile{"a blank in front", " " + kEntry + "\n", false},
        LoginFile{"a blank after", kEntry + " \n", false},
        LoginFile{"blanks around the equal sign", "getfulldomainname = 1\n", false},
        LoginFile{"other letters", "GetFullDomainName=1\n", false}, LoginFile{"a comment", "#" + kEntry + "\n", false},
        LoginFile{"nothing", "", false}, LoginFile{"a byte-order mark", "\xEF\xBB\xBF" + kEntry + "\n", false},
        // A longer line counts as several.
        LoginFile{"after 2,048 bytes of its line", std::string(2'048, 'x') + kEntry + "\n", true},
        LoginFile{"after 2,047 bytes of its line", std::string(2'047, 'x') + kEntry + "\n", false},
        LoginFile{"after 2,049 bytes of its line", std::string(2'049, 'x') + kEntry + "\n", false}));

TEST_F(CurrentUser, IsNotAffectedByALaterChangeOfTheFile) {
  EXPECT_TRUE(ask());
  writeLoginFile(kEntry);
  EXPECT_TRUE(ask());
  EXPECT_EQ(domain, "SALES");
}

TEST_F(CurrentUser, LeavesTheLoginFileOpen) {
  writeLoginFile(kEntry);
  EXPECT_TRUE(ask());
  EXPECT_FALSE(DeleteFileA((folder / "login.ini").c_str()));
}

TEST_F(CurrentUser, LeavesALoginFileWithoutTheEntryOpenToo) {
  writeLoginFile("# nothing\n");
  EXPECT_TRUE(ask());
  EXPECT_EQ(domain, "SALES");
  EXPECT_FALSE(DeleteFileA((folder / "login.ini").c_str()));
}

TEST_F(FullDomain, ByTheFlagDoesNotTouchTheLoginFile) {
  writeLoginFile("getfulldomainname=0");
  EXPECT_TRUE(ask());
  EXPECT_EQ(domain, "sales.example.com");
  EXPECT_TRUE(DeleteFileA((folder / "login.ini").c_str()));
}

} // namespace
