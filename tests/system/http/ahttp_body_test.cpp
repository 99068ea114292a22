// Bodies of all sizes and forms, whole, cut and too large for the memory.

#include "httpclient.hpp"

#include "support/imports/import_hook.hpp"
#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

using namespace kivtest;

namespace {

/// The body of so many bytes that a server fills an answer with.
std::string filling(std::size_t size) {
  std::string bytes(size, '\0');
  for (std::size_t i = 0; i < size; ++i)
    bytes[i] = static_cast<char>(i);
  return bytes;
}

HttpAnswer filled(std::uint64_t size, std::string const & headers = "") {
  return {.bytes = "HTTP/1.1 200 OK\r\n" + headers + "\r\n", .fill = size};
}

std::string lengthHeader(std::uint64_t size) { return "Content-Length: " + std::to_string(size) + "\r\n"; }

class HttpBody : public testing::Test {
protected:
  HttpServer server;
  KivHTTPClient client{wide(server.url("/")), nullptr};
};

class HttpBodySize : public testing::TestWithParam<unsigned> {
protected:
  HttpServer server;
};

TEST_P(HttpBodySize, ArrivesWholeWithANulAfterIt) {
  server.answer("/", filled(GetParam(), lengthHeader(GetParam())));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetRawResponseReceivedContentLength(), GetParam());
  EXPECT_EQ(body(client), filling(GetParam()));
  EXPECT_EQ(client.GetRawResponseContent()[GetParam()], 0);
  EXPECT_EQ(client.GetResponseContent().Len(), static_cast<int>(GetParam()));
  EXPECT_EQ(client.GetLastError(), 0u);
}

TEST_P(HttpBodySize, ArrivesWholeWithoutALength) {
  server.answer("/", filled(GetParam()));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  EXPECT_TRUE(get(client));
  EXPECT_EQ(body(client), filling(GetParam()));
}
// The buffer starts with 10,240 bytes and doubles.
INSTANTIATE_TEST_SUITE_P(Bytes, HttpBodySize,
                         testing::Values(0, 1, 4'096, 8'192, 10'239, 10'240, 10'241, 20'479, 20'480, 20'481, 65'536,
                                         1'000'000));

TEST_F(HttpBody, OfNoBytesReplacesTheFormerOne) {
  ClientWithFormerAnswer former(server);
  server.answer("/empty", okWith(""));
  former.UpdateUrl(wide(server.url("/empty")));
  EXPECT_TRUE(get(former));
  EXPECT_NE(former.GetRawResponseContent(), nullptr);
  EXPECT_EQ(former.GetRawResponseReceivedContentLength(), 0u);
  EXPECT_EQ(former.GetResponseContent(), L"");
}

TEST_F(HttpBody, InChunksIsPutTogether) {
  server.answer("/", {.bytes = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                               "5\r\nhello\r\n1\r\n,\r\nA;name=value\r\n0123456789\r\n0\r\nX-Trailer: 1\r\n\r\n"});
  EXPECT_TRUE(get(client));
  EXPECT_EQ(body(client), "hello,0123456789");
}

TEST_F(HttpBody, InManyChunksIsPutTogether) {
  std::string bytes = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
  std::string expected;
  for (unsigned size = 1; size < 600; ++size) {
    char line[16];
    std::snprintf(line, sizeof line, "%x\r\n", size);
    bytes += line + std::string(size, static_cast<char>('a' + size % 26)) + "\r\n";
    expected += std::string(size, static_cast<char>('a' + size % 26));
  }
  server.answer("/", {.bytes = bytes + "0\r\n\r\n"});
  EXPECT_TRUE(get(client));
  EXPECT_EQ(body(client), expected);
}

TEST_F(HttpBody, WithNulsIsKeptInBothForms) {
  server.answer("/", okWith(std::string("a\0b\0\0c", 6)));
  EXPECT_TRUE(get(client));
  EXPECT_EQ(body(client), std::string("a\0b\0\0c", 6));
  EXPECT_EQ(client.GetResponseContent(), WString(L"a\0b\0\0c", 6));
}

TEST_F(HttpBody, OfOneRequestIsFollowedByThatOfTheNext) {
  server.answer("/", filled(50'000, lengthHeader(50'000)));
  server.answer("/", okWith("short"));
  EXPECT_TRUE(get(client));
  EXPECT_TRUE(get(client));
  EXPECT_EQ(body(client), "short");
  EXPECT_EQ(client.GetResponseContent(), L"short");
}

TEST_F(HttpBody, ThatEndsEarlyIsAnAnswer) {
  server.answer("/", filled(30'000, lengthHeader(50'000)));
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetResponseStatusCode(), L"200");
  EXPECT_EQ(body(client), filling(30'000));
}

TEST_F(HttpBody, ThatEndsInAChunkIsAnAnswer) {
  server.answer("/", {.bytes = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n9\r\nwor"});
  EXPECT_TRUE(get(client));
  EXPECT_EQ(body(client), "hellowor");
}

TEST_F(HttpBody, LostWithTheConnectionIsStillAnAnswer) {
  server.answer("/", {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 50\r\n\r\n", .end = HttpAnswer::End::reset});
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetResponseStatusCode(), L"200");
  EXPECT_EQ(client.GetRawResponseReceivedContentLength(), 0u);
}

TEST_F(HttpBody, OfAHeaderThatEndsEarlyIsEmpty) {
  server.answer("/", {.bytes = "HTTP/1.1 200 OK\r\nContent-Le"});
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetResponseStatusCode(), L"200");
  EXPECT_EQ(client.GetRawResponseReceivedContentLength(), 0u);
}

/// Whether bytes and text are the filling, without another copy of it.
bool isFilling(KivHTTPClient const & client, unsigned size) {
  if (client.GetRawResponseReceivedContentLength() != size ||
      client.GetResponseContent().Len() != static_cast<int>(size))
    return false;
  unsigned char const * const bytes = client.GetRawResponseContent();
  wchar_t const * const text = client.GetResponseContent().c_str();
  for (unsigned i = 0; i < size; ++i)
    if (bytes[i] != i % 256 || (i % 256 < 128 && text[i] != i % 256))
      return false;
  return true;
}

TEST_F(HttpBody, Of256MegabytesArrives) {
  constexpr unsigned kSize = 256u << 20;
  server.answer("/", filled(kSize, lengthHeader(kSize)));
  EXPECT_TRUE(get(client));
  EXPECT_TRUE(isFilling(client, kSize));
}

// Memory

/// Counts what the library holds of the heap: blocks of its own, and strings, which are made by operator new.
struct Heap {
  static inline std::size_t held = 0, most = 0;
  static void * note(void * block) {
    held += block != nullptr ? _msize(block) : 0;
    most = std::max(most, held);
    return block;
  }
  static void * allocate(std::size_t size) { return note(std::malloc(size)); }
  static void * allocateZeroed(std::size_t count, std::size_t size) { return note(std::calloc(count, size)); }
  static void * resize(void * block, std::size_t size) {
    held -= block != nullptr ? std::min(held, _msize(block)) : 0;
    return note(std::realloc(block, size));
  }
  static void release(void * block) {
    held -= block != nullptr ? std::min(held, _msize(block)) : 0;
    std::free(block);
  }
  static void watch() {
    for (char const * const module : {"kivara.dll", "libstdc++-6.dll"})
      support::replaceImports(GetModuleHandleA(module), "msvcrt.dll",
                              {{"malloc", reinterpret_cast<void *>(allocate)},
                               {"calloc", reinterpret_cast<void *>(allocateZeroed)},
                               {"realloc", reinterpret_cast<void *>(resize)},
                               {"free", reinterpret_cast<void *>(release)}});
  }
};

TEST_F(HttpBody, Of64MegabytesTakesItsBufferAndItsText) {
  constexpr std::size_t kSize = 64u << 20;
  constexpr std::size_t kBuffer = 10'240u << 13; // the first doubling that holds it
  constexpr std::size_t kText = kSize * sizeof(wchar_t);
  constexpr std::size_t kRest = 1u << 20;
  server.answer("/", filled(kSize, lengthHeader(kSize)));
  Heap::watch();
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetRawResponseReceivedContentLength(), kSize);
  RecordProperty("most", std::to_string(Heap::most));
  EXPECT_GE(Heap::most, kBuffer + kText); // else something was not counted; growing takes one and a half buffers only
  EXPECT_LE(Heap::most, kBuffer + kText + kRest);
  EXPECT_LE(Heap::held, kBuffer + kText + kRest);
}

TEST_F(HttpBody, IsFreedForTheNextAndWithTheClient) {
  constexpr std::size_t kSize = 100'000;
  server.answer("/", filled(kSize, lengthHeader(kSize)));
  Heap::watch();
  std::size_t const before = Heap::held;
  {
    KivHTTPClient other(wide(server.url("/")), nullptr);
    EXPECT_TRUE(get(other));
    std::size_t const afterOne = Heap::held;
    EXPECT_GE(afterOne, before + 3 * kSize); // bytes and text
    EXPECT_TRUE(get(other));
    EXPECT_LT(Heap::held, afterOne + kSize);
  }
  EXPECT_EQ(Heap::held, before);
}

TEST_F(HttpBody, DataToSendAreFreedForTheNextByResetAndWithTheClient) {
  std::string data(100'000, 'x');
  auto * const bytes = reinterpret_cast<unsigned char *>(data.data());
  Heap::watch();
  std::size_t const before = Heap::held;
  {
    KivHTTPClient other(L"", nullptr);
    std::size_t const without = Heap::held;
    EXPECT_TRUE(other.SetAdditionalDataToSend(bytes, 100'000));
    EXPECT_TRUE(other.SetAdditionalDataToSend(bytes, 100'000));
    EXPECT_LT(Heap::held, without + 150'000);
    EXPECT_TRUE(other.ResetAdditionalDataToSend());
    EXPECT_EQ(Heap::held, without);
    EXPECT_TRUE(other.SetAdditionalDataToSend(bytes, 100'000));
  }
  EXPECT_EQ(Heap::held, before);
}

TEST_F(HttpBody, WithoutAnyMemoryIsFalseAndNothing) {
  ClientWithFormerAnswer former(server);
  server.answer("/other", okWith("other"));
  former.UpdateUrl(wide(server.url("/other")));
  support::AllocationLimit const limit(5'000);
  EXPECT_FALSE(get(former));
  EXPECT_EQ(former.GetRawResponseContent(), nullptr);
  EXPECT_EQ(former.GetRawResponseReceivedContentLength(), 0u);
  EXPECT_EQ(former.GetResponseContent(), L"former");
  EXPECT_EQ(former.GetResponseStatusCode(), L"200");
  EXPECT_FALSE(former.SaveResponseToFile(L"file"));
}

TEST_F(HttpBody, WithoutMemoryToGrowIsFalseAndWhatWasHeld) {
  server.answer("/", filled(60'000, lengthHeader(60'000)));
  {
    support::AllocationLimit const limit(40'960);
    EXPECT_FALSE(get(client));
  }
  unsigned const received = client.GetRawResponseReceivedContentLength();
  EXPECT_GT(received, 0u);
  EXPECT_LE(received, 20'480u);
  EXPECT_EQ(body(client), filling(received));
  EXPECT_EQ(client.GetResponseContent().Len(), static_cast<int>(received));
  EXPECT_EQ(client.GetResponseStatusCode(), L"200");
}

TEST_F(HttpBody, WithoutMemoryForTheTextThrowsAndTheClientGoesOn) {
  server.answer("/", filled(10'000, lengthHeader(10'000)));
  server.answer("/", okWith("next"));
  {
    support::AllocationLimit const limit(15'000);
    EXPECT_THROW(get(client), std::bad_alloc);
  }
  EXPECT_EQ(body(client), filling(10'000));
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetResponseContent(), L"next");
}

TEST_F(HttpBody, DataThatCannotBeCopiedAreRefusedAndTheFormerStay) {
  server.answer("/", okWith(""));
  std::string data(100'000, 'x');
  auto * const bytes = reinterpret_cast<unsigned char *>(data.data());
  EXPECT_TRUE(client.SetAdditionalDataToSend(bytes, 5));
  {
    support::AllocationLimit const limit(50'000);
    EXPECT_FALSE(client.SetAdditionalDataToSend(bytes, 100'000));
  }
  client.SetAdditionalRequestHeaders(L"Content-Length: 5");
  EXPECT_TRUE(client.SendHttpRequest(L"POST", false));
  EXPECT_TRUE(server.requests().ends_with("\r\n\r\nxxxxx"));
}

} // namespace
