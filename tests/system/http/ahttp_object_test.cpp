// Objects of the HTTP client: their fields, their progress, and several at a time.

#include "httpclient.hpp"

#include <thread>
#include <vector>

using namespace kivtest;

namespace {

int progressCalls = 0;
double lastProgress = -1;
bool noteProgress(double percent) {
  ++progressCalls;
  lastProgress = percent;
  return false;
}

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
  fieldsOf(client).rawContentLength = 300;
  EXPECT_TRUE(get(client)); // that the callback answers false changes nothing
  EXPECT_GE(progressCalls, 3);
  EXPECT_EQ(lastProgress, 100 * 100.0 / 300); // not in whole percent
  fieldsOf(client).progress = nullptr;
  EXPECT_TRUE(get(client));
}

TEST_F(HttpClient, TheProgressIsNotCalled) {
  server.answer("*", okWith(std::string(100'000, 'x')));
  KivHTTPClient client(wide(server.url("/")), noteProgress);
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetRawResponseReceivedContentLength(), 100'000u);
  EXPECT_EQ(progressCalls, 0);
}

} // namespace
