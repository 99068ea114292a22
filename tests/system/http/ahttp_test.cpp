// The HTTP client beside a real server: methods, URLs, answers and what is saved of them.

#include "httpclient.hpp"

#include "support/data/files.hpp"
#include "tools/winapi.hpp"

#include <winhttp.h>

#include <cstdio>

using namespace kivtest;

namespace {

constexpr unsigned long kPathNotFound = 3;
constexpr unsigned long kInvalidParameter = 87;

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
  server.answer("/from", support::redirectTo("/to"));
  server.answer("/to", okWith("new"));
  KivHTTPClient client(wide(server.url("/from")), nullptr);
  EXPECT_TRUE(client.SendHttpRequest(L"GET", false));
  EXPECT_EQ(client.GetResponseStatusCode(), L"200");
  EXPECT_EQ(client.GetResponseContent(), L"new");
}

TEST_F(HttpClient, ARedirectMayLeadToAnotherHost) {
  HttpServer other;
  other.answer("/to", okWith("elsewhere"));
  server.answer("/from", support::redirectTo(other.url("/to", "localhost")));
  KivHTTPClient client(wide(server.url("/from")), nullptr);
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetResponseContent(), L"elsewhere");
  EXPECT_EQ(client.GetRequestHost(), L"127.0.0.1"); // the one that was asked
}

TEST_F(HttpClient, ARedirectIsTheAnswerWhereNoneIsWanted) {
  server.answer("/from", support::redirectTo("/to"));
  server.answer("/to", okWith("new"));
  KivHTTPClient client(wide(server.url("/from")), nullptr);
  EXPECT_TRUE(client.SendHttpRequest(L"GET", true));
  EXPECT_EQ(client.GetResponseStatusCode(), L"302");
  EXPECT_EQ(client.GetResponseContent(), L"old");
  EXPECT_TRUE(holds(client.GetResponseHeader(), L"\r\nLocation: /to\r\n"));
  EXPECT_EQ(client.GetResponseLocation(), L"");
}

TEST_F(HttpClient, NoRedirectsHoldsForOneRequestOnly) {
  server.answer("/from", support::redirectTo("/to"));
  server.answer("/to", okWith("new"));
  KivHTTPClient client(wide(server.url("/from")), nullptr);
  EXPECT_TRUE(client.SendHttpRequest(L"GET", true));
  EXPECT_TRUE(client.SendHttpRequest(L"GET", false));
  EXPECT_EQ(client.GetResponseContent(), L"new");
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

} // namespace
