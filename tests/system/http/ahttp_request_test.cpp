// What the HTTP client sends, as it arrives at a real server.

#include "httpclient.hpp"

using namespace kivtest;

namespace {

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

TEST_F(HttpClient, HeadersAndCookiesGoOutToAnotherHostToo) {
  HttpServer other;
  server.answer("*", okWith(""));
  other.answer("*", okWith(""));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  client.SetAdditionalRequestHeaders(L"X-First: 1");
  client.SetAdditionalRequestCookies(L"name=value");
  EXPECT_TRUE(get(client));
  client.UpdateUrl(wide(other.url("/", "localhost")));
  EXPECT_TRUE(get(client));
  EXPECT_TRUE(holds(other.requests(), "X-First: 1\r\n")) << other.requests();
  EXPECT_TRUE(holds(other.requests(), "Cookie: name=value\r\n")) << other.requests();
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

} // namespace
