// The way through proxies: what the system is given in each step, and a proxy with an account for real.

#include "fakewinhttp.hpp"
#include "httpclient.hpp"
#include "support/harness/wine.hpp"

#include <winhttp.h>

#include <gtest/gtest.h>

using namespace kivtest;

namespace {

using Calls = std::vector<std::string>;
using UserProxy = FakeWinHttp::UserProxy;

constexpr wchar_t kUrl[] = L"http://host/path";
constexpr char kSend[] = "send request - 0 - 0 0 0";
constexpr char kScript[] = "script session http://host/path 0x3 0x1 http://pac/ logon";

/// Requests whose direct attempt fails, unless the test has it otherwise.
class HttpProxy : public testing::Test {
protected:
  HttpProxy() { http.failures["send"] = {ERROR_WINHTTP_CANNOT_CONNECT}; }
  ~HttpProxy() override { EXPECT_TRUE(http.openTexts.empty()); }

  /// The calls that have to do with the way.
  Calls calls() const { return http.callsOf({"option", "send", "user", "script", "receive"}); }

  FakeWinHttp http;
  KivHTTPClient client{kUrl, nullptr};
};

// The proxy of the client

TEST_F(HttpProxy, OfTheClientIsSetWithoutABypassList) {
  http.failures.clear();
  client.SetProxy(L"proxy:8080");
  EXPECT_TRUE(get(client));
  EXPECT_EQ(calls(), (Calls{"option 38 3 proxy:8080 -", kSend, "receive request"}));
}

TEST_F(HttpProxy, OfTheClientIsCutTo260Characters) {
  http.failures.clear();
  client.SetProxy(std::wstring(261, L'p').c_str());
  EXPECT_TRUE(get(client));
  EXPECT_EQ(http.callsOf({"option"}), Calls{"option 38 3 " + std::string(260, 'p') + " -"});
}

TEST_F(HttpProxy, AnAccountHasItsLengthsInBytes) {
  http.failures.clear();
  client.SetProxy(L"proxy");
  client.SetProxyUsername(L"user");
  client.SetProxyPassword(L"secret");
  EXPECT_TRUE(get(client));
  EXPECT_EQ(http.callsOf({"option"}),
            (Calls{"option 38 3 proxy -", "option 4098 user of 8", "option 4099 secret of 12"}));
}

TEST_F(HttpProxy, AnEmptyPasswordIsNotSet) {
  http.failures.clear();
  client.SetProxy(L"proxy");
  client.SetProxyUsername(L"user");
  EXPECT_TRUE(get(client));
  EXPECT_EQ(http.callsOf({"option"}), (Calls{"option 38 3 proxy -", "option 4098 user of 8"}));
}

TEST_F(HttpProxy, APasswordWithoutANameIsNotSet) {
  http.failures.clear();
  client.SetProxy(L"proxy");
  client.SetProxyPassword(L"secret");
  EXPECT_TRUE(get(client));
  EXPECT_EQ(http.callsOf({"option"}), Calls{"option 38 3 proxy -"});
}

TEST_F(HttpProxy, AnAccountWithoutAProxyIsNotSet) {
  http.failures.clear();
  client.SetProxyUsername(L"user");
  client.SetProxyPassword(L"secret");
  EXPECT_TRUE(get(client));
  EXPECT_EQ(http.callsOf({"option"}), Calls{});
}

TEST_F(HttpProxy, ThatIsRefusedLeavesTheErrorAndTheAccountIsStillSet) {
  http.failures = {{"option 38", {87}}};
  client.SetProxy(L"proxy");
  client.SetProxyUsername(L"user");
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetLastError(), 87u);
  EXPECT_EQ(http.callsOf({"option"}), (Calls{"option 38 3 proxy -", "option 4098 user of 8"}));
}

// The user's settings

TEST_F(HttpProxy, SettingsOfTheUserAreNotAskedForAfterASuccess) {
  http.failures.clear();
  http.user.proxy = L"proxy";
  EXPECT_TRUE(get(client));
  EXPECT_EQ(calls(), (Calls{kSend, "receive request"}));
}

TEST_F(HttpProxy, SettingsOfTheUserAreNotAskedForWhenTheAnswerFails) {
  http.failures = {{"receive", {ERROR_WINHTTP_TIMEOUT}}};
  http.user.proxy = L"proxy";
  EXPECT_FALSE(get(client));
  EXPECT_EQ(calls(), (Calls{kSend, "receive request"}));
}

TEST_F(HttpProxy, SettingsThatCannotBeReadLeaveTheirError) {
  http.failures["user"] = {ERROR_FILE_NOT_FOUND};
  EXPECT_FALSE(get(client));
  EXPECT_EQ(client.GetLastError(), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(calls(), (Calls{kSend, "user"}));
}

TEST_F(HttpProxy, SettingsThatCannotBeReadDoNotKeepFromTheNextAttempt) {
  http.failures["user"] = {ERROR_FILE_NOT_FOUND};
  client.SetRetryTimes(2);
  EXPECT_TRUE(get(client));
  EXPECT_EQ(calls(), (Calls{kSend, "user", kSend, "receive request"}));
}

TEST_F(HttpProxy, WithoutAnySettingsTheErrorIsThatOfTheSending) {
  EXPECT_FALSE(get(client));
  EXPECT_EQ(client.GetLastError(), ERROR_WINHTTP_CANNOT_CONNECT);
  EXPECT_EQ(calls(), (Calls{kSend, "user"}));
}

TEST_F(HttpProxy, EmptySettingsAreNone) {
  http.user = {.script = L"", .proxy = L"", .bypass = L""};
  EXPECT_FALSE(get(client));
  EXPECT_EQ(calls(), (Calls{kSend, "user"}));
}

TEST_F(HttpProxy, AutomaticDetectionAloneIsNotLookedAt) {
  http.user = {.autoDetect = true};
  EXPECT_FALSE(get(client));
  EXPECT_EQ(calls(), (Calls{kSend, "user"}));
}

// A script

TEST_F(HttpProxy, OfAScriptIsTriedWithinTheAttempt) {
  http.user = {.script = L"http://pac/"};
  http.script = {.proxy = L"found:1", .bypass = L"<local>"};
  EXPECT_TRUE(get(client));
  EXPECT_EQ(calls(), (Calls{kSend, "user", kScript, "option 38 3 found:1 <local>", kSend, "receive request"}));
}

TEST_F(HttpProxy, OfAScriptGoesBeforeAFixedOne) {
  http.user = {.script = L"http://pac/", .proxy = L"fixed"};
  http.script = {.proxy = L"found:1"};
  EXPECT_TRUE(get(client));
  EXPECT_EQ(http.callsOf({"option"}), Calls{"option 38 3 found:1 -"});
}

TEST_F(HttpProxy, OfAScriptThatNamesNoneIsStillSet) {
  http.user = {.script = L"http://pac/"};
  EXPECT_TRUE(get(client));
  EXPECT_EQ(calls(), (Calls{kSend, "user", kScript, "option 38 1 - -", kSend, "receive request"}));
}

TEST_F(HttpProxy, AScriptThatFailsLeavesItsErrorWithoutASecondSending) {
  http.user = {.script = L"http://pac/", .proxy = L"fixed"};
  http.failures["script"] = {ERROR_WINHTTP_AUTODETECTION_FAILED};
  EXPECT_FALSE(get(client));
  EXPECT_EQ(client.GetLastError(), ERROR_WINHTTP_AUTODETECTION_FAILED);
  EXPECT_EQ(calls(), (Calls{kSend, "user", kScript}));
}

TEST_F(HttpProxy, AScriptThatFailsIsAskedAgainInTheNextAttempt) {
  http.user = {.script = L"http://pac/"};
  http.script = {.proxy = L"found:1"};
  http.failures["script"] = {ERROR_WINHTTP_AUTODETECTION_FAILED};
  http.failures["send"] = {1, 2};
  client.SetRetryTimes(2);
  EXPECT_TRUE(get(client));
  EXPECT_EQ(calls(),
            (Calls{kSend, "user", kScript, kSend, "user", kScript, "option 38 3 found:1 -", kSend, "receive request"}));
}

TEST_F(HttpProxy, OfAScriptThatCannotBeSetLeavesTheErrorWithoutASecondSending) {
  http.user = {.script = L"http://pac/"};
  http.script = {.proxy = L"found:1"};
  http.failures["option 38"] = {87};
  EXPECT_FALSE(get(client));
  EXPECT_EQ(client.GetLastError(), 87u);
  EXPECT_EQ(calls(), (Calls{kSend, "user", kScript, "option 38 3 found:1 -"}));
}

TEST_F(HttpProxy, OfAScriptThatFailsTooEndsTheAttemptWithItsError) {
  http.user = {.script = L"http://pac/"};
  http.script = {.proxy = L"found:1"};
  http.failures["send"] = {ERROR_WINHTTP_CANNOT_CONNECT, ERROR_WINHTTP_TIMEOUT};
  EXPECT_FALSE(get(client));
  EXPECT_EQ(client.GetLastError(), ERROR_WINHTTP_TIMEOUT);
  EXPECT_EQ(calls(), (Calls{kSend, "user", kScript, "option 38 3 found:1 -", kSend}));
}

TEST_F(HttpProxy, OfAScriptHasTheDataSentThroughIt) {
  http.user = {.script = L"http://pac/"};
  http.script = {.proxy = L"found:1"};
  unsigned char data[] = "12345";
  client.SetAdditionalDataToSend(data, 5);
  EXPECT_TRUE(client.SendHttpRequest(L"POST", false));
  EXPECT_EQ(http.callsOf({"send", "write"}), (Calls{kSend, kSend, "write 12345"}));
}

// A fixed proxy

TEST_F(HttpProxy, FixedByTheUserDoesNotHelpASingleAttempt) {
  http.user = {.proxy = L"fixed:3128", .bypass = L"local"};
  EXPECT_FALSE(get(client));
  EXPECT_EQ(client.GetLastError(), ERROR_WINHTTP_CANNOT_CONNECT);
  EXPECT_EQ(calls(), (Calls{kSend, "user", "option 38 3 fixed:3128 local"}));
}

TEST_F(HttpProxy, FixedByTheUserIsTakenByTheSecondAttempt) {
  http.user = {.proxy = L"fixed:3128", .bypass = L"local"};
  client.SetRetryTimes(2);
  EXPECT_TRUE(get(client));
  EXPECT_EQ(calls(), (Calls{kSend, "user", "option 38 3 fixed:3128 local", kSend, "receive request"}));
}

TEST_F(HttpProxy, FixedByTheUserGivesWayToThatOfTheClientInTheSecondAttempt) {
  http.user = {.proxy = L"fixed:3128"};
  client.SetProxy(L"own");
  client.SetRetryTimes(2);
  EXPECT_TRUE(get(client));
  EXPECT_EQ(calls(), (Calls{"option 38 3 own -", kSend, "user", "option 38 3 fixed:3128 -", "option 38 3 own -", kSend,
                            "receive request"}));
}

TEST_F(HttpProxy, FixedByTheUserIsCutTo260CharactersEach) {
  std::wstring const proxy(261, L'p');
  std::wstring const bypass(262, L'b');
  http.user = {.proxy = proxy.c_str(), .bypass = bypass.c_str()};
  EXPECT_FALSE(get(client));
  EXPECT_EQ(http.callsOf({"option"}), Calls{"option 38 3 " + std::string(260, 'p') + ' ' + std::string(260, 'b')});
}

TEST_F(HttpProxy, FixedByTheUserThatCannotBeSetLeavesTheError) {
  http.user = {.proxy = L"fixed:3128"};
  http.failures["option 38"] = {87};
  EXPECT_FALSE(get(client));
  EXPECT_EQ(client.GetLastError(), 87u);
}

// For real

constexpr char kAccountWanted[] = "HTTP/1.1 407 Account\r\nProxy-Authenticate: Basic realm=\"proxy\"\r\n"
                                  "Content-Length: 6\r\n\r\nrefuse";

/// A proxy of the environment, which wants an account, in front of a host that does not exist.
class HttpRealProxy : public testing::Test {
protected:
  HttpRealProxy() {
    proxy.answer("*", {.bytes = kAccountWanted, .end = HttpAnswer::End::keep});
    proxy.answer("*", okWith("through the proxy"));
    SetEnvironmentVariableA("http_proxy", ("http://127.0.0.1:" + std::to_string(proxy.port())).c_str());
  }
  ~HttpRealProxy() override { SetEnvironmentVariableA("http_proxy", nullptr); }

  void SetUp() override {
    if (!support::isWine())
      GTEST_SKIP() << "Windows takes no proxy from the environment";
  }

  HttpServer proxy;
  KivHTTPClient client{L"http://host.invalid/path", nullptr};
};

TEST_F(HttpRealProxy, TakesTheAccount) {
  client.SetProxy(L"127.0.0.1:1"); // Wine does not look at it
  client.SetProxyUsername(L"user");
  client.SetProxyPassword(L"secret");
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetResponseStatusCode(), L"200");
  EXPECT_EQ(client.GetResponseContent(), L"through the proxy");
  EXPECT_TRUE(holds(proxy.requests(), "GET http://host.invalid:80/path HTTP/1.1\r\n")) << proxy.requests();
  EXPECT_TRUE(holds(proxy.requests(), "Proxy-Authorization: Basic dXNlcjpzZWNyZXQ=\r\n")) << proxy.requests();
}

TEST_F(HttpRealProxy, RefusesWithoutAnAccount) {
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetResponseStatusCode(), L"407");
  EXPECT_EQ(client.GetResponseContent(), L"refuse");
  EXPECT_FALSE(holds(proxy.requests(), "Proxy-Authorization")) << proxy.requests();
}

} // namespace
