// What the HTTP client asks of the system, call by call, and what it makes of each failure.

#include "fakewinhttp.hpp"
#include "httpclient.hpp"

#include "support/imports/import_hook.hpp"
#include "support/memory/allocation.hpp"

#include <winhttp.h>

#include <gtest/gtest.h>

using namespace kivtest;

namespace {

using Calls = std::vector<std::string>;

class HttpCalls : public testing::Test {
protected:
  ~HttpCalls() override {
    EXPECT_TRUE(http.openTexts.empty());
    EXPECT_EQ(http.openHandles.size(), 0u);
  }

  FakeWinHttp http;
};

constexpr wchar_t kUrl[] = L"http://host:81/path?query";
constexpr wchar_t kSecureUrl[] = L"https://host/path";

TEST_F(HttpCalls, OfAPlainRequestAreThese) {
  http.parts = {"hello", ", world"};
  {
    KivHTTPClient client(kUrl, nullptr);
    EXPECT_TRUE(get(client));
    EXPECT_EQ(body(client), "hello, world");
  }
  EXPECT_EQ(http.calls,
            (Calls{"open KIVARA 0 - - 0x0", "timeouts session 0 60000 30000 30000", "connect host 81",
                   "request GET /path?query - - - 0x0", "send request - 0 - 0 0 0", "receive request", "query 22 size",
                   "query 22 text", "query 19 size", "query 19 text", "available 5", "read 5", "available 7", "read 7",
                   "available 0", "close request", "close connection", "close session"}));
}

TEST_F(HttpCalls, OfAPostHaveTheDataBetweenRequestAndAnswer) {
  KivHTTPClient client(kUrl, nullptr);
  unsigned char data[] = "12345";
  client.SetAdditionalDataToSend(data, 5);
  EXPECT_TRUE(client.SendHttpRequest(L"post", false));
  EXPECT_EQ(
      http.callsOf({"request", "send", "write", "receive"}),
      (Calls{"request POST /path?query - - - 0x0", "send request - 0 - 0 0 0", "write 12345", "receive request"}));
}

TEST_F(HttpCalls, OpenOneSessionForAllRequests) {
  KivHTTPClient client(kUrl, nullptr);
  EXPECT_TRUE(get(client));
  client.SetTimeouts(1, 2, 3, 4);
  EXPECT_TRUE(get(client));
  EXPECT_EQ(http.callsOf({"open", "timeouts", "close"}),
            (Calls{"open KIVARA 0 - - 0x0", "timeouts session 0 60000 30000 30000", "close request", "close connection",
                   "timeouts session 1 2 3 4", "close request", "close connection"}));
}

TEST_F(HttpCalls, SetAllOptionsInOrderInEachAttempt) {
  KivHTTPClient client(kUrl, nullptr);
  client.SetAdditionalRequestHeaders(L"X-Header: 1");
  client.SetAdditionalRequestCookies(L"a=b");
  client.SetProxy(L"proxy:8080");
  client.SetProxyUsername(L"name");
  client.SetProxyPassword(L"secret");
  client.SetRetryTimes(2);
  http.failures["receive"] = {ERROR_WINHTTP_TIMEOUT};
  EXPECT_TRUE(client.SendHttpRequest(L"GET", true));
  Calls const attempt{"headers X-Header: 1 0x1000000", "headers Cookie: a=b 0x1000000", "option 38 3 proxy:8080 -",
                      "option 4098 name of 8",         "option 4099 secret of 12",      "option 63 0x2 of 4",
                      "send request - 0 - 0 0 0"};
  Calls both = attempt;
  both.insert(both.end(), attempt.begin(), attempt.end());
  EXPECT_EQ(http.callsOf({"headers", "option", "send"}), both);
}

// Certificates

TEST_F(HttpCalls, AcceptAnyCertificateOnceBeforeTheAttempts) {
  KivHTTPClient client(kSecureUrl, nullptr);
  client.SetRetryTimes(2);
  http.failures["receive"] = {ERROR_WINHTTP_TIMEOUT};
  EXPECT_TRUE(get(client));
  EXPECT_EQ(http.callsOf({"connect", "request", "option", "send"}),
            (Calls{"connect host 443", "request GET /path - - - 0x800000", "option 31 0x3100 of 4",
                   "send request - 0 - 0 0 0", "send request - 0 - 0 0 0"}));
}

TEST_F(HttpCalls, LeaveCertificatesToTheSystemWhereTheyHaveToBeValid) {
  KivHTTPClient client(kSecureUrl, nullptr);
  client.SetRequireValidSslCertificates(true);
  EXPECT_TRUE(get(client));
  EXPECT_EQ(http.callsOf({"option"}), Calls{});
}

TEST_F(HttpCalls, SayNothingOfCertificatesWithoutHttps) {
  KivHTTPClient client(kUrl, nullptr);
  EXPECT_TRUE(get(client));
  EXPECT_EQ(http.callsOf({"option"}), Calls{});
}

// Failures

TEST_F(HttpCalls, OfASessionThatDoesNotOpenEndWithItsError) {
  KivHTTPClient client(kUrl, nullptr);
  http.failures["open"] = {ERROR_OUTOFMEMORY};
  EXPECT_FALSE(get(client));
  EXPECT_EQ(client.GetLastError(), ERROR_OUTOFMEMORY);
  EXPECT_EQ(http.calls, Calls{"open KIVARA 0 - - 0x0"});
  EXPECT_TRUE(get(client)); // the next request opens one
}

/// A call that fails before there is a request: true, and no error.
class HttpCallsToASilentFailure : public HttpCalls, public testing::WithParamInterface<char const *> {};
TEST_P(HttpCallsToASilentFailure, EndWithTrueAndTheFormerError) {
  KivHTTPClient client(kUrl, nullptr);
  http.failures[GetParam()] = {ERROR_OUTOFMEMORY};
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetLastError(), 0u);
  EXPECT_EQ(client.GetResponseStatusCode(), L"");
  EXPECT_EQ(client.GetRequestHost(), L"host");
  EXPECT_EQ(http.callsOf({"send"}), Calls{});
}
INSTANTIATE_TEST_SUITE_P(Of, HttpCallsToASilentFailure, testing::Values("connect", "request"));

TEST_F(HttpCalls, GoOnWithoutTimeouts) {
  KivHTTPClient client(kUrl, nullptr);
  http.failures["timeouts"] = {ERROR_INVALID_PARAMETER};
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetLastError(), 0u);
  EXPECT_EQ(client.GetResponseStatusCode(), L"200");
}

/// A call that fails, and what the request makes of it. Every option is set.
struct Failure {
  char const * call;
  bool result;
  char const * status;
  char const * body;
};
void PrintTo(Failure const & failure, std::ostream * out) { *out << failure.call; }

class HttpCallsToAFailure : public HttpCalls, public testing::WithParamInterface<Failure> {};

TEST_P(HttpCallsToAFailure, LeaveItsError) {
  constexpr DWORD kCode = 12'345;
  KivHTTPClient client(kSecureUrl, nullptr);
  client.SetAdditionalRequestHeaders(L"X-Header: 1");
  client.SetAdditionalRequestCookies(L"a=b");
  client.SetProxy(L"proxy:8080");
  client.SetProxyUsername(L"name");
  client.SetProxyPassword(L"secret");
  unsigned char data[] = "12345";
  client.SetAdditionalDataToSend(data, 5);
  http.parts = {"hello", "more"};
  http.failures[GetParam().call] = {kCode};
  EXPECT_EQ(client.SendHttpRequest(L"POST", true), GetParam().result);
  EXPECT_EQ(client.GetLastError(), kCode);
  EXPECT_EQ(client.GetResponseStatusCode(), wide(GetParam().status));
  EXPECT_EQ(body(client), GetParam().body);
  EXPECT_EQ(http.openHandles.size(), 1u); // the session
}
INSTANTIATE_TEST_SUITE_P(
    Of, HttpCallsToAFailure,
    testing::Values(Failure{"option 31", true, "200", "hellomore"}, Failure{"headers X", true, "200", "hellomore"},
                    Failure{"headers C", true, "200", "hellomore"}, Failure{"option 38", true, "200", "hellomore"},
                    Failure{"option 4098", true, "200", "hellomore"}, Failure{"option 4099", true, "200", "hellomore"},
                    Failure{"option 63", true, "200", "hellomore"}, Failure{"send", false, "", ""},
                    Failure{"write", true, "200", "hellomore"}, Failure{"receive", false, "", ""},
                    Failure{"query 22 size", true, "200", "hellomore"},
                    Failure{"query 22 text", true, "200", "hellomore"}, Failure{"query 19 size", true, "", "hellomore"},
                    Failure{"query 19 text", true, "", "hellomore"}, Failure{"available", true, "200", ""},
                    Failure{"available 4", true, "200", "hello"}, Failure{"read 4", true, "200", "hello"}));

TEST_F(HttpCalls, TryAgainOnTheSameRequestAsOftenAsAllowed) {
  KivHTTPClient client(kUrl, nullptr);
  client.SetRetryTimes(3);
  http.failures["receive"] = {1, 2, 3};
  EXPECT_FALSE(get(client));
  EXPECT_EQ(client.GetLastError(), 3u);
  EXPECT_EQ(http.callsOf({"request", "send", "receive"}),
            (Calls{"request GET /path?query - - - 0x0", "send request - 0 - 0 0 0", "receive request",
                   "send request - 0 - 0 0 0", "receive request", "send request - 0 - 0 0 0", "receive request"}));
}

TEST_F(HttpCalls, MakeNoAttemptWithoutRetryTimes) {
  KivHTTPClient client(kUrl, nullptr);
  client.SetRetryTimes(0);
  EXPECT_FALSE(get(client));
  EXPECT_EQ(http.calls, (Calls{"open KIVARA 0 - - 0x0", "timeouts session 0 60000 30000 30000", "connect host 81",
                               "request GET /path?query - - - 0x0", "close request", "close connection"}));
}

TEST_F(HttpCalls, SendTheDataAgainInEachAttempt) {
  KivHTTPClient client(kUrl, nullptr);
  unsigned char data[] = "12345";
  client.SetAdditionalDataToSend(data, 5);
  client.SetRetryTimes(2);
  http.failures["receive"] = {1};
  EXPECT_TRUE(client.SendHttpRequest(L"POST", false));
  EXPECT_EQ(http.callsOf({"write"}), (Calls{"write 12345", "write 12345"}));
}

TEST_F(HttpCalls, SendNoDataAfterAnotherUrlOrAReset) {
  KivHTTPClient client(kUrl, nullptr);
  unsigned char data[] = "12345";
  for (bool const byUrl : {false, true}) {
    client.SetAdditionalDataToSend(data, 5);
    EXPECT_TRUE(byUrl ? client.UpdateUrl(kUrl) : client.ResetAdditionalDataToSend());
    EXPECT_TRUE(client.SendHttpRequest(L"POST", false));
  }
  EXPECT_EQ(http.callsOf({"write"}), Calls{});
}

// The body

TEST_F(HttpCalls, TakeAPartThatIsLargerThanTwiceTheBuffer) {
  KivHTTPClient client(kUrl, nullptr);
  http.parts = {std::string(5, 'a'), std::string(100'000, 'b'), std::string(5, 'c')};
  EXPECT_TRUE(get(client));
  EXPECT_EQ(body(client), "aaaaa" + std::string(100'000, 'b') + "ccccc");
}

TEST_F(HttpCalls, TakeWhatAReadGivesThoughMoreWasReported) {
  KivHTTPClient client(kUrl, nullptr);
  http.parts = {"hello"};
  http.mostPerRead = 2;
  EXPECT_TRUE(get(client));
  EXPECT_EQ(body(client), "hello");
  EXPECT_EQ(http.callsOf({"read"}), (Calls{"read 5", "read 3", "read 1"}));
}

TEST_F(HttpCalls, EndWithAReadThatGivesNothing) {
  KivHTTPClient client(kUrl, nullptr);
  http.availableInstead = {7, 7};
  http.mostPerRead = 0;
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetRawResponseReceivedContentLength(), 0u);
  EXPECT_EQ(http.callsOf({"read"}), Calls{"read 7"});
}

TEST_F(HttpCalls, RefuseABodyOf2GigabytesAndKeepWhatWasBefore) {
  KivHTTPClient client(kUrl, nullptr);
  http.availableInstead = {3, 0x7FFFFFFF}; // bytes of value 0
  EXPECT_FALSE(get(client));
  EXPECT_EQ(body(client), std::string(3, '\0'));
  EXPECT_EQ(client.GetResponseContent().Len(), 3);
  EXPECT_EQ(client.GetLastError(), 0u);
}

TEST_F(HttpCalls, RefuseAPartThatHasNoRoom) {
  KivHTTPClient client(kUrl, nullptr);
  http.parts = {"hello"};
  http.availableInstead = {};
  EXPECT_TRUE(get(client));
  http.availableInstead = {3, 0xFFFFFFFF};
  support::AllocationLimit const limit(1u << 20);
  EXPECT_FALSE(get(client));
  EXPECT_EQ(body(client), std::string(3, '\0'));
}

// The library that is called

HMODULE WINAPI loadNothing(char const *) {
  SetLastError(ERROR_MOD_NOT_FOUND);
  return nullptr;
}

TEST(HttpLibrary, IsLoadedByTheFirstRequest) {
  EXPECT_EQ(GetModuleHandleA("winhttp.dll"), nullptr);
  KivHTTPClient client(L"nonsense", nullptr);
  EXPECT_EQ(GetModuleHandleA("winhttp.dll"), nullptr);
  EXPECT_TRUE(get(client));
  EXPECT_NE(GetModuleHandleA("winhttp.dll"), nullptr);
}

TEST(HttpLibrary, ThatIsMissingFailsTheRequest) {
  support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                          {{"LoadLibraryA", reinterpret_cast<void *>(loadNothing)}});
  KivHTTPClient client(L"http://127.0.0.1/", nullptr);
  EXPECT_FALSE(get(client));
  EXPECT_EQ(client.GetLastError(), ERROR_MOD_NOT_FOUND);
  EXPECT_EQ(client.GetRequestHost(), L"");
}

} // namespace
