// What failures of the HTTP client leave, beside a real server that fails in every way, and how long they take.

#include "httpclient.hpp"

#include "support/harness/wine.hpp"
#include "tools/winapi.hpp"

#include <winhttp.h>

using namespace kivtest;
using support::isWine;

namespace {

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

TEST_F(HttpFailure, WithoutAServerLeavesTheFormerAnswer) {
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

TEST_F(HttpFailure, ARequestThatIsNotMadeLeavesTheFormerAnswer) {
  ClientWithFormerAnswer client(server);
  EXPECT_FALSE(client.SendHttpRequest(L"PUT", false));
  EXPECT_TRUE(hasFormerAnswer(client));
  client.SetRetryTimes(0);
  EXPECT_FALSE(get(client));
  EXPECT_EQ(client.GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_TRUE(hasFormerAnswer(client));
  client.UpdateUrl(L"");
  EXPECT_FALSE(get(client));
  EXPECT_EQ(client.GetLastError(), ERROR_PATH_NOT_FOUND);
  EXPECT_TRUE(hasFormerAnswer(client));
  EXPECT_EQ(client.GetRequestHost(), L"127.0.0.1");
}

TEST_F(HttpFailure, ASuccessDoesNotTakeTheErrorBack) {
  KivHTTPClient client(wide(server.url("/")), nullptr);
  server.answer("/", okWith("here"));
  EXPECT_FALSE(client.SendHttpRequest(L"PUT", false));
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetResponseContent(), L"here");
  EXPECT_EQ(client.GetLastError(), ERROR_INVALID_PARAMETER);
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

TEST_F(HttpFailure, APostReachesTheServerOnceForEachAttempt) {
  server.answer("/", {.bytes = ""});
  server.answer("/", okWith("second"));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  client.SetRetryTimes(2);
  unsigned char data[] = "12345";
  client.SetAdditionalDataToSend(data, 5);
  client.SetAdditionalRequestHeaders(L"Content-Length: 5");
  EXPECT_TRUE(client.SendHttpRequest(L"POST", false));
  std::string const requests = server.requests();
  EXPECT_NE(requests.find("POST"), requests.rfind("POST")) << requests;
  EXPECT_TRUE(holds(requests, "Content-Length: 5; 5\r\n")) << requests; // which other servers refuse
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

// Wine waits for a header as long as the server likes.
TEST_F(HttpFailure, AHeaderThatDoesNotComeEndsByTheTimeoutButUnderWine) {
  HttpAnswer answer = okWith("late");
  answer.delay = 1'200;
  server.answer("*", answer);
  KivHTTPClient client(wide(server.url("/")), nullptr);
  client.SetTimeouts(0, 400, 400, 400);
  EXPECT_EQ(get(client), isWine());
  EXPECT_EQ(client.GetLastError(), isWine() ? 0u : ERROR_WINHTTP_TIMEOUT);
}

} // namespace
