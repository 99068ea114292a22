// Where a request may go that was made with a certificate and with secrets.

#include "system/http/httpclient.hpp"
#include "tools/winapi.hpp"

#include <winhttp.h>

#include <gtest/gtest.h>

using namespace kivtest;

namespace {

/// A server that sends every request on to another one.
class RedirectedRequest : public testing::Test {
protected:
  HttpServer other;

  void redirectFrom(HttpServer & server) {
    other.answer("*", okWith("of the other server"));
    server.answer("*", support::redirectTo(other.url("/there")));
  }
};

TEST_F(RedirectedRequest, TakesHeadersAndCookiesAlong) {
  HttpServer server;
  redirectFrom(server);
  KivHTTPClient client(wide(server.url("/", "localhost")), nullptr);
  client.SetAdditionalRequestCookies(L"session=s3cret");
  client.SetAdditionalRequestHeaders(L"X-Key: tiger");
  EXPECT_TRUE(get(client));
  EXPECT_TRUE(holds(other.requests(), "Cookie: session=s3cret\r\n"));
  EXPECT_TRUE(holds(other.requests(), "X-Key: tiger\r\n"));
}

TEST_F(RedirectedRequest, TakesNothingAnywhereWhereRedirectsAreRefused) {
  HttpServer server;
  redirectFrom(server);
  KivHTTPClient client(wide(server.url("/", "localhost")), nullptr);
  client.SetAdditionalRequestCookies(L"session=s3cret");
  EXPECT_TRUE(client.SendHttpRequest(L"GET", true));
  EXPECT_EQ(client.GetResponseStatusCode(), L"302");
  EXPECT_EQ(other.requests(), "");
}

TEST_F(RedirectedRequest, DoesNotLeaveTheSecureConnection) {
  HttpServer server("self-signed");
  redirectFrom(server);
  KivHTTPClient client(wide(server.url("/", "localhost")), nullptr);
  EXPECT_FALSE(get(client));
  EXPECT_EQ(client.GetLastError(), DWORD{ERROR_WINHTTP_REDIRECT_FAILED});
  EXPECT_EQ(other.requests(), "");
}

} // namespace
