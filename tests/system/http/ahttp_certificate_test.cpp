// HTTPS with certificates that no system trusts. Those of an authority that is trusted are in ahttp_registry_test.cpp.

#include "httpclient.hpp"

#include "support/harness/wine.hpp"

#include <gtest/gtest.h>

using namespace kivtest;

namespace {

class HttpCertificate : public testing::TestWithParam<char const *> {
protected:
  HttpCertificate() { server.answer("*", okWith("secret")); }

  HttpServer server{GetParam()};
  KivHTTPClient client{wide(server.url("/", "localhost")), nullptr};
};

TEST_P(HttpCertificate, IsAcceptedWhateverItIs) {
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetResponseContent(), L"secret");
  EXPECT_EQ(client.GetLastError(), 0u);
}

TEST_P(HttpCertificate, IsRefusedWhereAValidOneIsRequired) {
  EXPECT_TRUE(client.SetRequireValidSslCertificates(true));
  EXPECT_FALSE(get(client));
  EXPECT_NE(client.GetLastError(), 0u);
  EXPECT_EQ(client.GetResponseStatusCode(), L"");
  EXPECT_EQ(server.requests(), "");
}

TEST_P(HttpCertificate, OfANewConnectionIsLookedAtWhenThatIsRequired) {
  HttpServer const other(GetParam());
  EXPECT_TRUE(get(client));
  client.SetRequireValidSslCertificates(true);
  client.UpdateUrl(wide(other.url("/", "localhost")));
  EXPECT_FALSE(get(client));
  EXPECT_EQ(other.requests(), "");
}

INSTANTIATE_TEST_SUITE_P(Kinds, HttpCertificate, testing::Values("self-signed", "expired", "wrong-name"));

class HttpKeptConnection : public HttpCertificate {};

// Wine keeps a connection for the next request to the same place.
TEST_P(HttpKeptConnection, IsNotLookedAtAgainUnderWine) {
  if (!support::isWine())
    GTEST_SKIP() << "what Windows does is not known";
  EXPECT_TRUE(get(client));
  client.SetRequireValidSslCertificates(true);
  EXPECT_TRUE(get(client)) << client.GetLastError();
  EXPECT_EQ(server.connections(), 1);
}
INSTANTIATE_TEST_SUITE_P(Kinds, HttpKeptConnection, testing::Values("self-signed", "expired", "wrong-name"));

TEST(HttpSecureServer, ServesALargeBody) {
  constexpr unsigned kSize = 3'000'000;
  HttpServer server("self-signed");
  server.answer("*", {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 3000000\r\n\r\n", .fill = kSize});
  KivHTTPClient client(wide(server.url("/")), nullptr);
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetRawResponseReceivedContentLength(), kSize);
}

TEST(HttpSecureServer, ThatIsRefusedLeavesTheFormerAnswer) {
  HttpServer plain;
  HttpServer const secure("self-signed");
  ClientWithFormerAnswer client(plain);
  client.SetRequireValidSslCertificates(true);
  client.UpdateUrl(wide(secure.url("/", "localhost")));
  EXPECT_FALSE(get(client));
  EXPECT_TRUE(hasFormerAnswer(client));
  EXPECT_EQ(client.GetRequestHost(), L"localhost");
}

TEST(HttpSecureServer, ThatSpeaksNoTlsFailsTheRequest) {
  HttpServer server;
  server.answer("*", okWith("plain"));
  KivHTTPClient client(wide("https://127.0.0.1:" + std::to_string(server.port()) + "/"), nullptr);
  client.SetTimeouts(2'000, 2'000, 2'000, 2'000);
  EXPECT_FALSE(get(client));
  EXPECT_NE(client.GetLastError(), 0u);
  EXPECT_EQ(client.GetResponseContent(), L"");
}

} // namespace
