// Whether an account is good, call by call on both ways. The real services are asked in auser_process_test.cpp.

#include "auser.hpp"

#include "fakesecurity.hpp"
#include "support/data/files.hpp"
#include "support/processes/debug_lines.hpp"

#include <gtest/gtest.h>

#include <winerror.h>

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

class Logon : public testing::Test {
protected:
  bool ask() { return Kiv_LU(user, domain, password); }

  char user[8] = "worker";
  char domain[8] = "SALES";
  char password[8] = "secret";
  kivtest::FakeSecurity security;
  support::DebugLines const debug;
};

TEST_F(Logon, WithANullIsRefusedWithoutACall) {
  for (char const * const version : {"10.0", "5.0"}) {
    security.windows = version;
    EXPECT_FALSE(Kiv_LU(nullptr, domain, password));
    EXPECT_FALSE(Kiv_LU(user, nullptr, password));
    EXPECT_FALSE(Kiv_LU(user, domain, nullptr));
  }
  EXPECT_EQ(security.calls, Lines{});
}

struct Version {
  char const * number;
  bool isDirect;
};
void PrintTo(Version const & version, std::ostream * out) { *out << version.number; }

class LogonOnWindows : public Logon, public testing::WithParamInterface<Version> {};
TEST_P(LogonOnWindows, IsDirectFromXPOn) {
  security.windows = GetParam().number;
  EXPECT_TRUE(ask());
  EXPECT_EQ(security.count("log on") == 1, GetParam().isDirect);
  EXPECT_EQ(security.count("server goes on") == 1, !GetParam().isDirect);
}
INSTANTIATE_TEST_SUITE_P(Versions, LogonOnWindows,
                         testing::Values(Version{"4.0", false}, Version{"5.0", false}, Version{"5.1", true},
                                         Version{"6.1", true}, Version{"10.0", true}));

// The direct way

TEST_F(Logon, IsOneOverTheNetworkByTheUsualProvider) {
  EXPECT_TRUE(ask());
  EXPECT_EQ(security.calls, (Lines{"load advapi32", "log on worker SALES secret 3 0", "unload"}));
}

TEST_F(Logon, LeavesItsSessionOpen) {
  EXPECT_TRUE(ask());
  EXPECT_EQ(security.openTokens.size(), 1u);
  EXPECT_EQ(security.loaded, 0);
}

TEST_F(Logon, ThatIsRefusedIsFalse) {
  security.results["log on"] = {ERROR_LOGON_FAILURE};
  EXPECT_FALSE(ask());
  EXPECT_TRUE(security.nothingIsLeft());
}

TEST_F(Logon, WithoutTheFunctionIsFalse) {
  security.missing = {"LogonUserA"};
  EXPECT_FALSE(ask());
  EXPECT_EQ(security.calls, (Lines{"load advapi32", "unload"}));
}

TEST_F(Logon, WithoutTheLibraryIsFalse) {
  security.missing = {"advapi32"};
  EXPECT_FALSE(ask());
  EXPECT_EQ(security.calls, Lines{"cannot load advapi32"});
}

TEST_F(Logon, ShowsOnlyTheLibraryInTheDebugOutput) {
  EXPECT_TRUE(ask());
  EXPECT_EQ(debug.all(), (Lines{"[kivdll] Load 'advapi32'\n", "[kivdll] Unload 'advapi32'\n"}));
}

TEST_F(Logon, UsesAFunctionWhoseNameDoesNotStandInTheLibrary) {
  std::string const library = support::readFile(support::binFolder() + "kivara.dll").value_or("");
  EXPECT_NE(library.find("OpenThreadToken"), std::string::npos);
  for (char const * const name : {"LogonUser", "logonuser", "LOGONUSER"})
    EXPECT_EQ(library.find(name), std::string::npos) << name;
}

// The negotiation

class Negotiation : public Logon {
protected:
  Negotiation() { security.windows = "5.0"; }
  ~Negotiation() override { EXPECT_TRUE(security.nothingIsLeft()); } // on every way out
};

TEST_F(Negotiation, PlaysClientAndServerByTurns) {
  EXPECT_TRUE(ask());
  EXPECT_EQ(security.calls,
            (Lines{"load secur32.dll", "package NTLM", "allocate 100", "allocate 100",
                   "acquire NTLM 2 worker SALES secret 1", "client begins - 0 16", "acquire NTLM 1 -",
                   "server begins negotiate 0 16", "client goes on challenge 0 16", "server goes on authenticate 0 16",
                   "delete context", "free credentials", "delete context", "free credentials", "unload"}));
  EXPECT_TRUE(security.nothingIsLeft());
  EXPECT_EQ(debug.all(), Lines{});
}

TEST_F(Negotiation, TakesAnswersThatOnlyWantToGoOn) {
  security.results = {{"client", {SEC_I_CONTINUE_NEEDED}}, {"server", {SEC_I_CONTINUE_NEEDED}}};
  EXPECT_TRUE(ask());
}

TEST_F(Negotiation, ThatIsNotAtItsEndHasVerifiedNothing) {
  security.results["server goes on"] = {SEC_I_CONTINUE_NEEDED};
  EXPECT_FALSE(ask());
  EXPECT_TRUE(security.nothingIsLeft());
}

/// A step that fails: what is reported, and what was given back.
struct FailingStep {
  char const * call;
  char const * function;
  std::size_t contexts;
  std::size_t credentials;
};
void PrintTo(FailingStep const & step, std::ostream * out) { *out << step.call; }

class NegotiationStep : public Negotiation, public testing::WithParamInterface<FailingStep> {};
TEST_P(NegotiationStep, ThatFailsEndsItAndGivesBackWhatThereWas) {
  security.results[GetParam().call] = {SEC_E_LOGON_DENIED};
  EXPECT_FALSE(ask());
  EXPECT_EQ(debug.all(), Lines{"[alu] " + std::string(GetParam().function) + " failed with 8009030C\n"});
  EXPECT_EQ(security.count("delete context"), GetParam().contexts);
  EXPECT_EQ(security.count("free credentials"), GetParam().credentials);
  EXPECT_TRUE(security.nothingIsLeft());
  EXPECT_EQ(
      security.calls[security.calls.size() - 2 - GetParam().contexts - GetParam().credentials].find(GetParam().call),
      0u)
      << "nothing follows";
}
INSTANTIATE_TEST_SUITE_P(Of, NegotiationStep,
                         testing::Values(FailingStep{"acquire NTLM 2", "AcquireCredentialsHandle", 0, 0},
                                         FailingStep{"client begins", "InitializeSecurityContext", 0, 1},
                                         FailingStep{"acquire NTLM 1", "AcquireCredentialsHandle", 1, 1},
                                         FailingStep{"server begins", "AcceptSecurityContext", 1, 2},
                                         FailingStep{"client goes on", "InitializeSecurityContext", 2, 2},
                                         FailingStep{"server goes on", "AcceptSecurityContext", 2, 2}));

// Tokens that have to be completed

struct Completion {
  char const * step;
  long status;
  char const * token;
};
void PrintTo(Completion const & completion, std::ostream * out) { *out << completion.step << ' ' << completion.status; }

class NegotiationCompletion : public Negotiation, public testing::WithParamInterface<Completion> {
protected:
  NegotiationCompletion() { security.results[GetParam().step] = {GetParam().status}; }
};

TEST_P(NegotiationCompletion, IsMadeWhereTheAnswerAsksForIt) {
  EXPECT_TRUE(ask());
  EXPECT_EQ(security.count("complete"), 1u);
  EXPECT_EQ(security.count(std::string("complete ") + GetParam().token), 1u);
  EXPECT_EQ(debug.all(), Lines{});
}

TEST_P(NegotiationCompletion, ThatFailsEndsIt) {
  security.results["complete"] = {SEC_E_INVALID_TOKEN};
  EXPECT_FALSE(ask());
  EXPECT_EQ(debug.all(), Lines{"[alu] CompleteAuthToken failed with 80090308\n"});
  EXPECT_EQ(security.calls[security.calls.size() - 1], "unload");
  EXPECT_TRUE(security.nothingIsLeft());
}

TEST_P(NegotiationCompletion, ThatIsNotSupportedEndsIt) {
  security.missing = {"CompleteAuthToken"};
  EXPECT_FALSE(ask());
  EXPECT_EQ(debug.all(), Lines{"[alu] CompleteAuthToken not supported.\n"});
  EXPECT_TRUE(security.nothingIsLeft());
}

INSTANTIATE_TEST_SUITE_P(Of, NegotiationCompletion,
                         testing::Values(Completion{"client begins", SEC_I_COMPLETE_AND_CONTINUE, "negotiate"},
                                         Completion{"client begins", SEC_I_COMPLETE_NEEDED, "negotiate"},
                                         Completion{"server begins", SEC_I_COMPLETE_AND_CONTINUE, "challenge"},
                                         Completion{"client goes on", SEC_I_COMPLETE_NEEDED, "authenticate"},
                                         Completion{"server goes on", SEC_I_COMPLETE_NEEDED, ""}));

TEST_F(Negotiation, ThatIsCompletedButNotAtItsEndHasVerifiedNothing) {
  security.results["server goes on"] = {SEC_I_COMPLETE_AND_CONTINUE};
  EXPECT_FALSE(ask());
  EXPECT_EQ(security.count("complete"), 1u);
  EXPECT_EQ(debug.all(), Lines{});
  EXPECT_TRUE(security.nothingIsLeft());
}

// What is missing

class NegotiationWithout : public Negotiation, public testing::WithParamInterface<char const *> {};
TEST_P(NegotiationWithout, AnEntryPointIsFalseAndTheLibraryGoes) {
  security.missing = {GetParam()};
  EXPECT_FALSE(ask());
  EXPECT_EQ(security.calls, (Lines{"load secur32.dll", "unload"}));
}
INSTANTIATE_TEST_SUITE_P(Named, NegotiationWithout,
                         testing::Values("AcceptSecurityContext", "AcquireCredentialsHandleA", "DeleteSecurityContext",
                                         "FreeContextBuffer", "FreeCredentialsHandle", "InitializeSecurityContextA",
                                         "QuerySecurityPackageInfoA"));

TEST_F(Negotiation, NeedsNoCompletionWhereNoneIsAskedFor) {
  security.missing = {"CompleteAuthToken"};
  EXPECT_TRUE(ask());
}

TEST_F(Negotiation, WithoutTheLibraryIsFalse) {
  security.missing = {"secur32.dll"};
  EXPECT_FALSE(ask());
  EXPECT_EQ(security.calls, Lines{"cannot load secur32.dll"});
}

TEST_F(Negotiation, WithoutThePackageIsFalse) {
  security.results["package"] = {SEC_E_SECPKG_NOT_FOUND};
  EXPECT_FALSE(ask());
  EXPECT_EQ(security.calls, (Lines{"load secur32.dll", "package NTLM", "unload"}));
}

TEST_F(Negotiation, WithoutMemoryForAnyOfItsTokensIsFalse) {
  for (std::deque<long> const & results : {std::deque<long>{ERROR_OUTOFMEMORY}, {0, ERROR_OUTOFMEMORY}}) {
    security.results["allocate"] = results;
    EXPECT_FALSE(ask());
    EXPECT_EQ(security.count("acquire"), 0u);
    EXPECT_TRUE(security.nothingIsLeft());
  }
}

TEST_F(Negotiation, HasRoomForTheLargestToken) {
  security.largestToken = 12'000;
  EXPECT_TRUE(ask());
  EXPECT_EQ(security.count("allocate 12000"), 2u);
  EXPECT_EQ(security.count("another"), 0u);
}

TEST_F(Negotiation, TakesEmptyTexts) {
  char nothing[] = "";
  EXPECT_TRUE(Kiv_LU(nothing, nothing, nothing));
  EXPECT_EQ(security.count("acquire NTLM 2    1"), 1u);
}

} // namespace
