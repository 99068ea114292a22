#pragma once
/// \file
/// What the tests of the HTTP client share.

#include "ahttp.hpp"
#include "support/servers/http_server.hpp"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace SV {
/// Shows a text in a failure.
inline void PrintTo(WString const & text, std::ostream * out) {
  *out << '"';
  for (int i = 0; i < text.Len() && i < 200; ++i)
    if (text.charAt(i) >= L' ' && text.charAt(i) < 0x7F)
      *out << static_cast<char>(text.charAt(i));
    else
      *out << "\\u" << static_cast<unsigned>(text.charAt(i));
  *out << '"';
}
} // namespace SV

namespace kivtest {

using support::HttpAnswer;
using support::HttpServer;
using support::okWith;
using SV::WString;

/// Texts of ASCII.
inline WString wide(std::string const & text) { return std::wstring(text.begin(), text.end()).c_str(); }

inline bool get(KivHTTPClient & client) { return client.SendHttpRequest(L"GET", false); }

/// The body as it came.
inline std::string body(KivHTTPClient const & client) {
  auto const * const bytes = reinterpret_cast<char const *>(client.GetRawResponseContent());
  return bytes != nullptr ? std::string(bytes, client.GetRawResponseReceivedContentLength()) : std::string();
}

inline bool holds(std::string const & text, std::string const & part) { return text.find(part) != std::string::npos; }
inline bool holds(WString const & text, wchar_t const * part) {
  return std::wstring(text.c_str()).find(part) != std::wstring::npos;
}

/// Tests beside a server that each of them has for itself.
class HttpClient : public testing::Test {
protected:
  /// Sends the server's next request and gives it as it arrived.
  std::string sent(KivHTTPClient & client, wchar_t const * method = L"GET") const {
    std::size_t const before = server.requests().size();
    EXPECT_TRUE(client.SendHttpRequest(method, false)) << client.GetLastError();
    return server.requests().substr(before);
  }

  HttpServer server;
};

/// A client that has had an answer of status 200 with the body "former" from \p server.
class ClientWithFormerAnswer : public KivHTTPClient {
public:
  explicit ClientWithFormerAnswer(HttpServer & server) : KivHTTPClient(wide(server.url("/former")), nullptr) {
    server.answer("/former", okWith("former", "X-Which: former\r\n"));
    SetForceCharset(L"utf-8");
    SendHttpRequest(L"GET", false);
  }
};

/// Each field of the answer still is that of the one above.
inline bool hasFormerAnswer(KivHTTPClient const & client) {
  return client.GetResponseStatusCode() == L"200" && client.GetResponseContent() == L"former" &&
         body(client) == "former" && holds(client.GetResponseHeader(), L"X-Which: former") &&
         client.GetResponseCookies() == L"" && client.GetResponseLocation() == L"";
}

} // namespace kivtest
