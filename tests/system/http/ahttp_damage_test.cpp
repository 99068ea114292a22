// Answers that are damaged by chance: whatever a server sends, the client comes back, with bytes that are there.

#include "httpclient.hpp"

#include "support/data/damage.hpp"
#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

using namespace kivtest;

namespace {

/// Valid answers of all kinds, to be damaged.
std::string const kAnswers[] = {
    "HTTP/1.1 200 OK\r\nContent-Length: 12\r\nContent-Type: text/plain; charset=utf-8\r\n\r\nhello, world",
    "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n7;x=y\r\n, world\r\n0\r\nX-Trailer: 1\r\n\r\n",
    "HTTP/1.0 200 OK\r\nSet-Cookie: name=value; path=/\r\nX-Long: " + std::string(600, 'x') + "\r\n\r\nhello, world",
    "HTTP/1.1 301 Moved\r\nLocation: ?elsewhere\r\nContent-Length: 5\r\n\r\nmoved",
    "HTTP/1.1 404 Not Found\r\nConnection: close\r\nContent-Length: 4\r\n\r\nnone",
    "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 204 No Content\r\n\r\n",
    "HTTP/1.1 401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"here\"\r\nContent-Length: 0\r\n\r\n",
};

/// Put in where a parser decides.
support::WeakPlaces const kMarks = {.pieces = {"\r\n", "\n", "\r", ":", "\r\n\r\n", "FFFFFFFFFFFFFFFF\r\n",
                                               "Content-Length: 3\r\n", "Transfer-Encoding: chunked\r\n",
                                               "Location: ?\r\n", "Content-Encoding: gzip\r\n"}};

constexpr std::size_t kAnswersOfOne = 50; // the server has them all before the first request

/// No more comes than was sent.
void expectAnswers(support::Random & random) {
  HttpServer server;
  std::size_t longest = 0;
  for (std::size_t i = 0; i < kAnswersOfOne; ++i) {
    std::string const bytes = support::damaged(kAnswers[random() % std::size(kAnswers)], random, kMarks);
    longest = std::max(longest, bytes.size());
    server.answer("/", {.bytes = bytes});
  }
  support::GuardPages const guard;
  KivHTTPClient client(wide(server.url("/")), nullptr);
  client.SetTimeouts(1'000, 1'000, 1'000, 1'000);
  std::size_t answered = 0;
  for (std::size_t i = 0; i < kAnswersOfOne; ++i) {
    client.SetForceCharset(i % 2 == 0 ? L"utf-8" : L"");
    answered += client.SendHttpRequest(L"GET", i % 3 == 0) ? 1 : 0;
    std::string const bytes = body(client);
    ASSERT_LE(bytes.size(), longest);
    ASSERT_LE(static_cast<std::size_t>(client.GetResponseContent().Len()), longest);
  }
  EXPECT_GT(answered, kAnswersOfOne / 4);
}

class HttpDamage : public testing::TestWithParam<unsigned> {};

TEST_P(HttpDamage, IsNoFault) {
  support::Random random(GetParam());
  for (std::size_t i = 0; i < support::times(2); ++i)
    ASSERT_NO_FATAL_FAILURE(expectAnswers(random));
}
INSTANTIATE_TEST_SUITE_P(Seed, HttpDamage, testing::Range(1u, 9u));

} // namespace
