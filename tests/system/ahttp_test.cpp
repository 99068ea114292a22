// The HTTP client beside a real server: what is sent, what comes back, and what a failure leaves.

#include "httpclient.hpp"

#include "support/child_process.hpp"
#include "support/files.hpp"
#include "tools/winapi.hpp"

#include <winhttp.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <thread>
#include <vector>

using namespace kivtest;

namespace {

constexpr unsigned long kPathNotFound = 3;
constexpr unsigned long kInvalidParameter = 87;

int progressCalls = 0;
double lastProgress = -1;
bool noteProgress(double percent) {
  ++progressCalls;
  lastProgress = percent;
  return false;
}

class HttpClient : public testing::Test {
protected:
  /// Sends the server's next request and gives it as it arrived.
  std::string sent(KivHTTPClient & client, wchar_t const * method = L"GET") {
    std::size_t const before = server.requests().size();
    EXPECT_TRUE(client.SendHttpRequest(method, false)) << client.GetLastError();
    return server.requests().substr(before);
  }

  HttpServer server;
};

// Methods

struct Method {
  wchar_t const * given;
  char const * sent;
};
void PrintTo(Method const & method, std::ostream * out) { *out << testing::PrintToString(method.given); }

class HttpMethod : public testing::TestWithParam<Method> {};
class HttpOtherMethod : public testing::TestWithParam<wchar_t const *> {};

TEST_P(HttpMethod, IsSentInUpperCase) {
  HttpServer server;
  server.answer("*", okWith(""));
  KivHTTPClient client(wide(server.url("/path")), nullptr);
  EXPECT_TRUE(client.SendHttpRequest(GetParam().given, false));
  EXPECT_TRUE(server.requests().starts_with(GetParam().sent)) << server.requests();
  EXPECT_EQ(client.GetLastError(), 0u);
}
INSTANTIATE_TEST_SUITE_P(Supported, HttpMethod,
                         testing::Values(Method{L"GET", "GET /path HTTP/1.1\r\n"},
                                         Method{L"get", "GET /path HTTP/1.1\r\n"},
                                         Method{L"Post", "POST /path HTTP/1.1\r\n"},
                                         Method{L"POST", "POST /path HTTP/1.1\r\n"}));

TEST_P(HttpOtherMethod, Gives87) {
  KivHTTPClient client(L"http://127.0.0.1/", nullptr);
  EXPECT_FALSE(client.SendHttpRequest(GetParam(), false));
  EXPECT_EQ(client.GetLastError(), kInvalidParameter);
  EXPECT_EQ(client.GetRequestHost(), L"");
}
INSTANTIATE_TEST_SUITE_P(NotSupported, HttpOtherMethod,
                         testing::Values(L"PUT", L"", L"HEAD", L"GETS", L"GE", L" GET", L"DELETE"));

// URLs

TEST(HttpUrl, EmptyGives3WhateverTheMethod) {
  KivHTTPClient client(L"", nullptr);
  EXPECT_FALSE(client.SendHttpRequest(L"GET", false));
  EXPECT_EQ(client.GetLastError(), kPathNotFound);
  EXPECT_FALSE(client.SendHttpRequest(L"PUT", false));
  EXPECT_EQ(client.GetLastError(), kPathNotFound);
}

struct UnusableUrl {
  char const * why;
  std::wstring url;
};
void PrintTo(UnusableUrl const & url, std::ostream * out) { *out << url.why; }

class HttpUnusableUrl : public testing::TestWithParam<UnusableUrl> {};

TEST_P(HttpUnusableUrl, GivesTrueWithAnEmptyStatusAndTheFormerError) {
  KivHTTPClient client(GetParam().url.c_str(), nullptr);
  client.SendHttpRequest(L"PUT", false);
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetResponseStatusCode(), L"");
  EXPECT_EQ(client.GetLastError(), kInvalidParameter);
  EXPECT_EQ(client.GetRequestHost(), L"");
  EXPECT_EQ(client.GetRawResponseContent(), nullptr);
}
INSTANTIATE_TEST_SUITE_P(Values, HttpUnusableUrl,
                         testing::Values(UnusableUrl{"word", L"nonsense"}, UnusableUrl{"FTP", L"ftp://127.0.0.1/"},
                                         UnusableUrl{"scheme alone", L"http://"}, UnusableUrl{"no scheme", L"://"},
                                         UnusableUrl{"host alone", L"127.0.0.1/path"},
                                         UnusableUrl{"port", L"http://127.0.0.1:99999/"},
                                         UnusableUrl{"long path", L"http://127.0.0.1/" + std::wstring(1'300, L'a')},
                                         UnusableUrl{"long host", L"http://" + std::wstring(261, L'a') + L"/"}));

TEST_F(HttpClient, AnUnusableUrlLeavesTheFormerAnswer) {
  ClientWithFormerAnswer client(server);
  client.UpdateUrl(L"nonsense");
  EXPECT_TRUE(get(client));
  EXPECT_TRUE(hasFormerAnswer(client));
  EXPECT_EQ(client.GetRequestHost(), L"127.0.0.1");
}

TEST_F(HttpClient, APathOf1300CharactersIsTheLongest) {
  server.answer("*", okWith(""));
  std::string const path = "/path?" + std::string(1'294, 'q');
  KivHTTPClient client(wide(server.url(path)), nullptr);
  EXPECT_TRUE(sent(client).starts_with("GET " + path + " HTTP/1.1\r\n"));
}

TEST(HttpUrl, AHostOf260CharactersIsTheLongest) {
  WString const host = std::wstring(260, L'a').c_str();
  KivHTTPClient client((std::wstring(L"http://") + host.c_str() + L"/").c_str(), nullptr);
  EXPECT_FALSE(get(client));
  EXPECT_EQ(client.GetRequestHost(), host);
  EXPECT_EQ(client.GetLastError(), ERROR_WINHTTP_NAME_NOT_RESOLVED);
}

TEST_F(HttpClient, WithoutAPathAsksForTheRoot) {
  server.answer("*", okWith(""));
  KivHTTPClient client(wide(server.url("")), nullptr);
  EXPECT_TRUE(sent(client).starts_with("GET / HTTP/1.1\r\n"));
}

TEST_F(HttpClient, UpdateUrlGoesToAnotherPath) {
  ClientWithFormerAnswer client(server);
  server.answer("/other", okWith("other"));
  EXPECT_TRUE(client.UpdateUrl(wide(server.url("/other", "localhost"))));
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetResponseContent(), L"other");
  EXPECT_EQ(client.GetRequestHost(), L"localhost");
}

// What is sent

TEST_F(HttpClient, NamesItselfKivara) {
  server.answer("*", okWith(""));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  EXPECT_TRUE(holds(sent(client), "User-Agent: KIVARA\r\n"));
}

TEST_F(HttpClient, TakesAnotherUserAgentOnlyBeforeTheFirstRequest) {
  server.answer("*", okWith(""));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  EXPECT_TRUE(client.SetUserAgent(L"first"));
  EXPECT_TRUE(holds(sent(client), "User-Agent: first\r\n"));
  EXPECT_TRUE(client.SetUserAgent(L"second"));
  EXPECT_TRUE(holds(sent(client), "User-Agent: first\r\n"));
}

TEST_F(HttpClient, HeadersAndCookiesGoOutWithEachLaterRequest) {
  server.answer("*", okWith(""));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  EXPECT_TRUE(client.SetAdditionalRequestHeaders(L"X-First: 1\r\nX-Second: 2"));
  EXPECT_TRUE(client.SetAdditionalRequestCookies(L"name=value; other=more"));
  for (int i = 0; i < 2; ++i) {
    std::string const request = sent(client);
    EXPECT_TRUE(holds(request, "X-First: 1\r\n")) << request;
    EXPECT_TRUE(holds(request, "X-Second: 2\r\n")) << request;
    EXPECT_TRUE(holds(request, "Cookie: name=value; other=more\r\n")) << request;
  }
}

TEST_F(HttpClient, EmptyHeadersAndCookiesAreNone) {
  server.answer("*", okWith(""));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  client.SetAdditionalRequestHeaders(L"X-First: 1");
  client.SetAdditionalRequestCookies(L"name=value");
  client.SetAdditionalRequestHeaders(L"");
  client.SetAdditionalRequestCookies(L"");
  std::string const request = sent(client);
  EXPECT_FALSE(holds(request, "X-First")) << request;
  EXPECT_FALSE(holds(request, "Cookie")) << request;
}

TEST_F(HttpClient, HeadersThatCannotBeAddedLeaveTheErrorAndTheRequestGoesOn) {
  server.answer("*", okWith("here"));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  client.SetAdditionalRequestHeaders(L"no header line");
  EXPECT_TRUE(get(client));
  EXPECT_NE(client.GetLastError(), 0u);
  EXPECT_EQ(client.GetResponseContent(), L"here");
}

// A body for the request

TEST_F(HttpClient, ABodyArrivesWhenTheHeadersHoldItsLength) {
  server.answer("*", okWith(""));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  unsigned char data[] = {'a', 0, 'b', 0xFF, '\n'};
  EXPECT_TRUE(client.SetAdditionalDataToSend(data, sizeof data));
  data[0] = 'x'; // it was copied
  client.SetAdditionalRequestHeaders(L"Content-Length: 5");
  std::string const request = sent(client, L"POST");
  EXPECT_TRUE(request.ends_with(std::string("\r\n\r\na\0b\xFF\n", 9))) << request;
}

TEST_F(HttpClient, ABodyOfAMegabyteArrives) {
  server.answer("*", okWith(""));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  std::string data(1 << 20, 'd');
  client.SetAdditionalDataToSend(reinterpret_cast<unsigned char *>(data.data()), 1 << 20);
  client.SetAdditionalRequestHeaders(L"Content-Length: 1048576");
  std::string const request = sent(client, L"POST");
  EXPECT_TRUE(request.ends_with("\r\n\r\n" + data)) << request.size();
}

TEST_F(HttpClient, WithoutItsLengthTheBodyIsNoPartOfTheRequest) {
  server.answer("*", okWith("here"));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  unsigned char data[] = "12345";
  client.SetAdditionalDataToSend(data, 5);
  std::string const request = sent(client, L"POST");
  EXPECT_TRUE(holds(request, "Content-Length: 0\r\n")) << request;
  EXPECT_FALSE(holds(request, "12345")) << request;
}

TEST_F(HttpClient, NullDataAreRefusedAndTheFormerStay) {
  server.answer("*", okWith(""));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  unsigned char data[] = "12345";
  EXPECT_TRUE(client.SetAdditionalDataToSend(data, 5));
  EXPECT_FALSE(client.SetAdditionalDataToSend(nullptr, 5));
  client.SetAdditionalRequestHeaders(L"Content-Length: 5");
  EXPECT_TRUE(sent(client, L"POST").ends_with("\r\n\r\n12345"));
}

TEST_F(HttpClient, LaterDataReplaceTheFormer) {
  server.answer("*", okWith(""));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  unsigned char data[] = "12345";
  client.SetAdditionalDataToSend(data, 5);
  client.SetAdditionalDataToSend(data + 2, 3);
  client.SetAdditionalRequestHeaders(L"Content-Length: 3");
  EXPECT_TRUE(sent(client, L"POST").ends_with("\r\n\r\n345"));
}

TEST_F(HttpClient, ResetAndAnotherUrlDropTheData) {
  server.answer("*", okWith(""));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  unsigned char data[] = "12345";
  for (bool const byUrl : {false, true}) {
    client.SetAdditionalDataToSend(data, 5);
    EXPECT_TRUE(byUrl ? client.UpdateUrl(wide(server.url("/"))) : client.ResetAdditionalDataToSend());
    client.SetAdditionalRequestHeaders(L"Content-Length: 0");
    EXPECT_TRUE(sent(client, L"POST").ends_with("\r\n\r\n"));
  }
}

TEST_F(HttpClient, DataOfNoBytesAreNone) {
  server.answer("*", okWith(""));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  unsigned char nothing = 0;
  EXPECT_TRUE(client.SetAdditionalDataToSend(&nothing, 0));
  EXPECT_TRUE(sent(client, L"POST").ends_with("\r\n\r\n"));
  EXPECT_EQ(client.GetLastError(), 0u);
}

// The answer

TEST_F(HttpClient, AStatusIsNotInterpreted) {
  for (std::string const status : {"404", "500", "299"}) {
    server.answer('/' + status,
                  {.bytes = "HTTP/1.1 " + status + " Some words\r\nContent-Length: 8\r\n\r\npage " + status});
    KivHTTPClient client(wide(server.url('/' + status)), nullptr);
    EXPECT_TRUE(get(client));
    EXPECT_EQ(client.GetResponseStatusCode(), wide(status));
    EXPECT_EQ(client.GetResponseContent(), wide("page " + status));
    EXPECT_EQ(client.GetLastError(), 0u);
  }
}

TEST_F(HttpClient, TheHeaderHasAllItsLines) {
  server.answer("*", okWith("", "X-Some: thing\r\nSet-Cookie: a=1\r\nSet-Cookie: b=2\r\n"));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetResponseHeader(),
            L"HTTP/1.1 200 OK\r\nContent-Length: 0\r\nX-Some: thing\r\nSet-Cookie: a=1\r\nSet-Cookie: b=2\r\n\r\n");
}

TEST_F(HttpClient, CookiesCharsetAndLengthAreNotTakenFromTheHeader) {
  server.answer("*", okWith("body", "Set-Cookie: a=1\r\nContent-Type: text/plain; charset=utf-8\r\n"));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetResponseCookies(), L"");
  EXPECT_EQ(client.GetResponseCharset(), L"");
  EXPECT_EQ(client.GetRawResponseContentLength(), 0u);
  EXPECT_EQ(client.GetRawResponseReceivedContentLength(), 4u);
}

TEST_F(HttpClient, ARedirectIsFollowed) {
  server.answer("/from", {.bytes = "HTTP/1.1 302 Found\r\nLocation: /to\r\nContent-Length: 3\r\n\r\nold"});
  server.answer("/to", okWith("new"));
  KivHTTPClient client(wide(server.url("/from")), nullptr);
  EXPECT_TRUE(client.SendHttpRequest(L"GET", false));
  EXPECT_EQ(client.GetResponseStatusCode(), L"200");
  EXPECT_EQ(client.GetResponseContent(), L"new");
}

TEST_F(HttpClient, ARedirectIsTheAnswerWhereNoneIsWanted) {
  server.answer("/from", {.bytes = "HTTP/1.1 302 Found\r\nLocation: /to\r\nContent-Length: 3\r\n\r\nold"});
  server.answer("/to", okWith("new"));
  KivHTTPClient client(wide(server.url("/from")), nullptr);
  EXPECT_TRUE(client.SendHttpRequest(L"GET", true));
  EXPECT_EQ(client.GetResponseStatusCode(), L"302");
  EXPECT_EQ(client.GetResponseContent(), L"old");
  EXPECT_TRUE(holds(client.GetResponseHeader(), L"\r\nLocation: /to\r\n"));
  EXPECT_EQ(client.GetResponseLocation(), L"");
}

TEST_F(HttpClient, NoRedirectsHoldsForOneRequestOnly) {
  server.answer("/from", {.bytes = "HTTP/1.1 301 Moved\r\nLocation: /to\r\nContent-Length: 0\r\n\r\n"});
  server.answer("/to", okWith("new"));
  KivHTTPClient client(wide(server.url("/from")), nullptr);
  EXPECT_TRUE(client.SendHttpRequest(L"GET", true));
  EXPECT_TRUE(client.SendHttpRequest(L"GET", false));
  EXPECT_EQ(client.GetResponseContent(), L"new");
}

TEST_F(HttpClient, TheProgressIsNotCalled) {
  server.answer("*", okWith(std::string(100'000, 'x')));
  KivHTTPClient client(wide(server.url("/")), noteProgress);
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetRawResponseReceivedContentLength(), 100'000u);
  EXPECT_EQ(progressCalls, 0);
}

// Saving

class HttpSaving : public HttpClient {
protected:
  bool save(KivHTTPClient & client, std::string const & path) const { return client.SaveResponseToFile(wide(path)); }
  support::TempFolder const folder;
};

TEST_F(HttpSaving, WritesTheBytesAsTheyCame) {
  std::string bytes;
  for (int i = 0; i < 1'000; ++i)
    bytes += static_cast<char>(i);
  server.answer("*", okWith(bytes));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  EXPECT_TRUE(get(client));
  support::writeFile(folder / "file", std::string(5'000, 'x'));
  EXPECT_TRUE(save(client, folder / "file"));
  EXPECT_EQ(support::readFile(folder / "file"), bytes);
}

TEST_F(HttpSaving, BeforeAnyRequestIsFalseWithoutAFile) {
  KivHTTPClient client(wide(server.url("/")), nullptr);
  EXPECT_FALSE(save(client, folder / "file"));
  EXPECT_FALSE(support::exists(folder / "file"));
}

TEST_F(HttpSaving, AnEmptyBodyIsFalseWithoutAFile) {
  server.answer("*", okWith(""));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  EXPECT_TRUE(get(client));
  EXPECT_FALSE(save(client, folder / "file"));
  EXPECT_FALSE(support::exists(folder / "file"));
}

TEST_F(HttpSaving, AFileThatCannotBeOpenedIsFalse) {
  ClientWithFormerAnswer client(server);
  EXPECT_FALSE(save(client, folder / "no folder\\file"));
  EXPECT_FALSE(save(client, folder.path()));
  EXPECT_FALSE(save(client, ""));
}

TEST_F(HttpSaving, AFileThatCannotBeWrittenIsFalse) {
  constexpr char kFullDevice[] = "Z:\\dev\\full";
  FILE * const device = std::fopen(kFullDevice, "wb");
  if (device == nullptr)
    GTEST_SKIP() << "there is no device that is always full";
  std::fclose(device);
  ClientWithFormerAnswer client(server);
  EXPECT_FALSE(save(client, kFullDevice));
}

TEST_F(HttpSaving, TakesANameInAnyLetters) {
  ClientWithFormerAnswer client(server);
  WString const name = (std::wstring(wide(folder / "").c_str()) + L"\u017D\u03A9.txt").c_str();
  EXPECT_TRUE(client.SaveResponseToFile(name));
  EXPECT_EQ(_wremove(name.c_str()), 0);
}

// Failures

/// No answer for one reason or another.
class HttpFailure : public HttpClient {
protected:
  /// A request that fails, after one that did not.
  void expectFormerAnswerAfter(HttpAnswer const & answer) {
    ClientWithFormerAnswer client(server);
    server.answer("/failing", answer);
    client.UpdateUrl(wide(server.url("/failing")));
    EXPECT_FALSE(get(client));
    EXPECT_NE(client.GetLastError(), 0u);
    EXPECT_TRUE(hasFormerAnswer(client));
    EXPECT_EQ(client.GetResponseCharset(), L"utf-8");
    EXPECT_EQ(client.GetRawResponseContentLength(), 0u);
    EXPECT_EQ(client.GetRequestHost(), L"127.0.0.1");
  }
};

TEST_F(HttpFailure, NobodyListensLeavesTheFormerAnswer) {
  support::RefusingPort const refusing;
  ClientWithFormerAnswer client(server);
  EXPECT_EQ(client.GetLastError(), 0u);
  client.UpdateUrl(wide("http://localhost:" + std::to_string(refusing.port()) + "/"));
  EXPECT_FALSE(get(client));
  EXPECT_EQ(client.GetLastError(), ERROR_WINHTTP_CANNOT_CONNECT);
  EXPECT_TRUE(hasFormerAnswer(client));
  EXPECT_EQ(client.GetRequestHost(), L"localhost");
}

TEST_F(HttpFailure, AServerThatClosesAtOnceLeavesTheFormerAnswer) { expectFormerAnswerAfter({.bytes = ""}); }

TEST_F(HttpFailure, AServerThatClosesInTheStatusLineLeavesTheFormerAnswer) {
  expectFormerAnswerAfter({.bytes = "HTTP/1.1 2"});
}

TEST_F(HttpFailure, AServerThatBreaksInTheStatusLineLeavesTheFormerAnswer) {
  expectFormerAnswerAfter({.bytes = "HTTP/1.1 2", .end = HttpAnswer::End::reset});
}

TEST_F(HttpFailure, WhatIsNoHttpLeavesTheFormerAnswer) { expectFormerAnswerAfter({.bytes = "SSH-2.0-server\r\n\r\n"}); }

TEST_F(HttpFailure, ASuccessDoesNotTakeTheErrorBack) {
  KivHTTPClient client(wide(server.url("/")), nullptr);
  server.answer("/", okWith("here"));
  EXPECT_FALSE(client.SendHttpRequest(L"PUT", false));
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetResponseContent(), L"here");
  EXPECT_EQ(client.GetLastError(), kInvalidParameter);
}

TEST_F(HttpFailure, ASecondAttemptIsAnswered) {
  server.answer("/", {.bytes = ""});
  server.answer("/", okWith("second"));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  client.SetRetryTimes(2);
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetResponseContent(), L"second");
  EXPECT_NE(client.GetLastError(), 0u); // that of the first attempt
}

TEST_F(HttpFailure, OneAttemptIsTheDefault) {
  server.answer("/", {.bytes = ""});
  server.answer("/", okWith("second"));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  EXPECT_FALSE(get(client));
  EXPECT_EQ(server.requests().find("GET"), server.requests().rfind("GET"));
}

TEST_F(HttpFailure, NoAttemptIsMadeWithoutRetryTimes) {
  server.answer("*", okWith("here"));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  client.SetRetryTimes(0);
  EXPECT_FALSE(get(client));
  EXPECT_EQ(server.connections(), 0);
  EXPECT_EQ(client.GetLastError(), 0u);
  EXPECT_EQ(client.GetRequestHost(), L"127.0.0.1");
}

TEST_F(HttpFailure, EachAttemptAddsTheHeadersAgain) {
  server.answer("/", {.bytes = ""});
  server.answer("/", okWith(""));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  client.SetRetryTimes(2);
  client.SetAdditionalRequestHeaders(L"X-Header: value");
  EXPECT_TRUE(get(client));
  EXPECT_TRUE(holds(server.requests(), "X-Header: value\r\n"));
  EXPECT_TRUE(holds(server.requests(), "X-Header: value; value\r\n")) << server.requests();
}

// Time

TEST_F(HttpFailure, ConnectingEndsByItsTimeout) {
  KivHTTPClient client(wide("http://127.0.0.1:" + std::to_string(server.fullPort()) + "/"), nullptr);
  EXPECT_TRUE(client.SetTimeouts(0, 400, 30'000, 30'000));
  ULONGLONG const start = GetTickCount64();
  EXPECT_FALSE(get(client));
  EXPECT_EQ(client.GetLastError(), ERROR_WINHTTP_TIMEOUT);
  EXPECT_GE(GetTickCount64() - start, 300u);
  EXPECT_LT(GetTickCount64() - start, 15'000u);
}

TEST_F(HttpFailure, TimeoutsAreAskedForAtEachRequest) {
  KivHTTPClient client(wide(server.url("/")), nullptr);
  server.answer("/", okWith(""));
  EXPECT_TRUE(get(client));
  client.UpdateUrl(wide("http://127.0.0.1:" + std::to_string(server.fullPort()) + "/"));
  client.SetTimeouts(0, 400, 30'000, 30'000);
  EXPECT_FALSE(get(client));
  EXPECT_EQ(client.GetLastError(), ERROR_WINHTTP_TIMEOUT);
}

TEST_F(HttpFailure, ABodyThatStopsComingEndsByTheTimeoutAndIsKept) {
  server.answer("*", {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 50\r\n\r\nhello", .end = HttpAnswer::End::hold});
  KivHTTPClient client(wide(server.url("/")), nullptr);
  client.SetTimeouts(0, 400, 400, 400);
  EXPECT_TRUE(get(client));
  EXPECT_NE(client.GetLastError(), 0u);
  EXPECT_EQ(client.GetResponseContent(), L"hello");
}

/// Wine waits for a header as long as the server likes.
bool isWine() { return GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr; }

TEST_F(HttpFailure, AHeaderThatDoesNotComeEndsByTheTimeoutButUnderWine) {
  HttpAnswer answer = okWith("late");
  answer.delay = 1'200;
  server.answer("*", answer);
  KivHTTPClient client(wide(server.url("/")), nullptr);
  client.SetTimeouts(0, 400, 400, 400);
  EXPECT_EQ(get(client), isWine());
  EXPECT_EQ(client.GetLastError(), isWine() ? 0u : ERROR_WINHTTP_TIMEOUT);
}

// Objects

TEST_F(HttpClient, DifferentObjectsServeDifferentThreads) {
  constexpr int kThreads = 4;
  constexpr int kRequests = 25;
  server.answer("*", okWith("same"));
  std::vector<std::thread> threads;
  int answers[kThreads] = {};
  for (int & count : answers)
    threads.emplace_back([this, &count] {
      KivHTTPClient client(wide(server.url("/")), nullptr);
      for (int i = 0; i < kRequests; ++i)
        count += get(client) && client.GetResponseContent() == L"same" ? 1 : 0;
    });
  for (auto & thread : threads)
    thread.join();
  for (int const count : answers)
    EXPECT_EQ(count, kRequests);
}

/// What an object looks like in memory: a program may have been built with another version of the header.
struct Fields {
  void * virtualTable;
  void * session;
  bool requireValidCertificates;
  WString url, requestHost, responseHeader, responseContent, responseCharset;
  unsigned char * rawResponse;
  unsigned int receivedLength;
  bool (*progress)(double);
  unsigned int rawContentLength;
  WString responseCookies, requestCookies;
  unsigned char * data;
  unsigned int dataSize;
  WString requestHeaders, proxy;
  unsigned long lastError;
  WString responseStatusCode, userAgent;
  bool charsetForced;
  WString proxyUsername, proxyPassword, responseLocation;
  unsigned int resolveTimeout, connectTimeout, sendTimeout, receiveTimeout, retryTimes;
};
static_assert(sizeof(Fields) == sizeof(KivHTTPClient));

Fields & fieldsOf(KivHTTPClient & client) { return *reinterpret_cast<Fields *>(&client); }

TEST(HttpObject, StartsWithItsFieldsInOrder) {
  KivHTTPClient client(L"http://url/", noteProgress);
  Fields const & fields = fieldsOf(client);
  EXPECT_EQ(fields.session, nullptr);
  EXPECT_FALSE(fields.requireValidCertificates);
  EXPECT_EQ(fields.url, L"http://url/");
  for (WString const * const text :
       {&fields.requestHost, &fields.responseHeader, &fields.responseContent, &fields.responseCharset,
        &fields.responseCookies, &fields.requestCookies, &fields.requestHeaders, &fields.proxy,
        &fields.responseStatusCode, &fields.proxyUsername, &fields.proxyPassword, &fields.responseLocation})
    EXPECT_EQ(*text, L"");
  EXPECT_EQ(fields.rawResponse, nullptr);
  EXPECT_EQ(fields.receivedLength, 0u);
  EXPECT_EQ(fields.progress, noteProgress);
  EXPECT_EQ(fields.rawContentLength, 0u);
  EXPECT_EQ(fields.data, nullptr);
  EXPECT_EQ(fields.dataSize, 0u);
  EXPECT_EQ(fields.lastError, 0u);
  EXPECT_EQ(fields.userAgent, L"KIVARA");
  EXPECT_FALSE(fields.charsetForced);
  EXPECT_EQ(fields.resolveTimeout, 0u);
  EXPECT_EQ(fields.connectTimeout, 60'000u);
  EXPECT_EQ(fields.sendTimeout, 30'000u);
  EXPECT_EQ(fields.receiveTimeout, 30'000u);
  EXPECT_EQ(fields.retryTimes, 1u);
}

TEST(HttpObject, SettersStoreWhatTheyAreGiven) {
  KivHTTPClient client(L"", nullptr);
  Fields const & fields = fieldsOf(client);
  EXPECT_TRUE(client.SetRequireValidSslCertificates(true));
  EXPECT_TRUE(client.SetForceCharset(L"utf-8"));
  EXPECT_TRUE(client.SetProxy(L"proxy"));
  EXPECT_TRUE(client.SetProxyUsername(L"name"));
  EXPECT_TRUE(client.SetProxyPassword(L"word"));
  EXPECT_TRUE(client.SetTimeouts(1, 2, 3, 4));
  client.SetRetryTimes(5);
  EXPECT_TRUE(fields.requireValidCertificates);
  EXPECT_EQ(client.GetResponseCharset(), L"utf-8");
  EXPECT_TRUE(fields.charsetForced);
  EXPECT_EQ(fields.proxy, L"proxy");
  EXPECT_EQ(fields.proxyUsername, L"name");
  EXPECT_EQ(fields.proxyPassword, L"word");
  EXPECT_EQ(fields.resolveTimeout, 1u);
  EXPECT_EQ(fields.connectTimeout, 2u);
  EXPECT_EQ(fields.sendTimeout, 3u);
  EXPECT_EQ(fields.receiveTimeout, 4u);
  EXPECT_EQ(fields.retryTimes, 5u);
}

TEST_F(HttpClient, TheProgressWouldBeAPercentageOfALengthThatWasKnown) {
  server.answer("*", okWith(std::string(100, 'x')));
  KivHTTPClient client(wide(server.url("/")), noteProgress);
  fieldsOf(client).rawContentLength = 400;
  EXPECT_TRUE(get(client)); // that the callback answers false changes nothing
  EXPECT_GE(progressCalls, 3);
  EXPECT_EQ(lastProgress, 25.0);
  fieldsOf(client).progress = nullptr;
  EXPECT_TRUE(get(client));
}

} // namespace
