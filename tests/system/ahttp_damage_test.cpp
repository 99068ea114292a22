// Answers that are damaged by chance: whatever a server sends, the client comes back, with bytes that are there.

#include "httpclient.hpp"

#include "support/allocation.hpp"

#include <gtest/gtest.h>

#include <random>

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

/// Changes of one kind each, in the places where a parser decides.
class Damage {
public:
  explicit Damage(unsigned seed) : random_(seed) {}

  std::string answer() {
    std::string bytes = kAnswers[below(std::size(kAnswers))];
    if (below(10) == 0)
      return noise(below(2'000));
    for (unsigned changes = 1 + below(4); changes > 0; --changes)
      change(bytes);
    return bytes;
  }

private:
  unsigned below(std::size_t limit) { return static_cast<unsigned>(random_() % limit); }

  std::string noise(std::size_t size) {
    std::string bytes(size, '\0');
    for (char & c : bytes)
      c = static_cast<char>(random_());
    return bytes;
  }

  void change(std::string & bytes) {
    static std::string const kPieces[] = {"\r\n",
                                          "\n",
                                          "\r",
                                          ":",
                                          "\r\n\r\n",
                                          std::string(1, '\0'),
                                          "-1",
                                          "99999999999999999999",
                                          "FFFFFFFFFFFFFFFF\r\n",
                                          "4294967296",
                                          "2147483648",
                                          "\xFF\xFE",
                                          "Content-Length: 3\r\n",
                                          "Transfer-Encoding: chunked\r\n",
                                          "Location: ?\r\n",
                                          "Content-Encoding: gzip\r\n"};
    std::size_t const at = below(bytes.size() + 1);
    switch (below(6)) {
    case 0: bytes.resize(at); break;
    case 1: bytes.insert(at, kPieces[below(std::size(kPieces))]); break;
    case 2: bytes.erase(at, below(40)); break;
    case 3: bytes.insert(at, noise(below(20))); break;
    case 4: bytes.insert(at, bytes.substr(below(bytes.size() + 1), below(200))); break;
    default:
      if (at < bytes.size())
        bytes[at] = static_cast<char>(random_());
    }
  }

  std::mt19937 random_;
};

class HttpDamage : public testing::TestWithParam<unsigned> {};

TEST_P(HttpDamage, IsNoFault) {
  constexpr int kAnswersOfOne = 250;
  HttpServer server;
  Damage damage(GetParam());
  for (int i = 0; i < kAnswersOfOne; ++i)
    server.answer("/", {.bytes = damage.answer()});
  support::GuardPages const guard;
  KivHTTPClient client(wide(server.url("/")), nullptr);
  client.SetTimeouts(1'000, 1'000, 1'000, 1'000);
  int answered = 0;
  for (int i = 0; i < kAnswersOfOne; ++i) {
    client.SetForceCharset(i % 2 == 0 ? L"utf-8" : L"");
    answered += client.SendHttpRequest(L"GET", i % 3 == 0) ? 1 : 0;
    std::string const bytes = body(client);
    EXPECT_LE(bytes.size(), 4'000u);
    EXPECT_LE(client.GetResponseContent().Len(), 4'000);
  }
  EXPECT_GT(answered, kAnswersOfOne / 4);
}
INSTANTIATE_TEST_SUITE_P(Seed, HttpDamage, testing::Range(1u, 9u));

} // namespace
