// The HTTP client beside calls of WinHTTP without anything around them, which keep the header, the bytes and the text as well. The
// server is the one of the tests, on this machine.

#include "ahttp.hpp"

#include "support/ratio.hpp"
#include "support/servers/http_server.hpp"
#include "tools/winapi.hpp"

#include <winhttp.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <utility>

namespace {

constexpr unsigned kSmall = 1024;
constexpr unsigned kLarge = 64u << 20;

support::HttpServer & server() {
  static auto * const theServer = [] {
    auto * const made = new support::HttpServer; // ends with the process
    for (unsigned const size : {kSmall, kLarge}) {
      support::HttpAnswer answer = support::okWith("");
      answer.bytes = "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(size) + "\r\n\r\n";
      answer.fill = size;
      made->answer("/" + std::to_string(size), answer);
    }
    return made;
  }();
  return *theServer;
}

struct Ours {
  explicit Ours(std::wstring const & url) : client(url.c_str(), nullptr) {}
  std::size_t request() {
    return client.SendHttpRequest(L"GET", false) ? static_cast<std::size_t>(client.GetResponseContent().Len()) : 0;
  }
  KivHTTPClient client;
};

/// The buffer doubles too, and is read into without a detour.
class Bare {
public:
  explicit Bare(std::wstring url)
      : url_(std::move(url)), session_(WinHttpOpen(L"KIVARA", WINHTTP_ACCESS_TYPE_DEFAULT_PROXY, nullptr, nullptr, 0)) {
  }
  Bare(Bare const &) = delete;
  Bare & operator=(Bare const &) = delete;
  ~Bare() {
    std::free(bytes_);
    WinHttpCloseHandle(session_);
  }

  std::size_t request() {
    wchar_t host[64] = L"";
    wchar_t path[64] = L"";
    URL_COMPONENTS parts = {};
    parts.dwStructSize = sizeof parts;
    parts.lpszHostName = host;
    parts.dwHostNameLength = 64;
    parts.lpszUrlPath = path;
    parts.dwUrlPathLength = 64;
    WinHttpCrackUrl(url_.c_str(), 0, 0, &parts);
    HINTERNET const connection = WinHttpConnect(session_, host, parts.nPort, 0);
    HINTERNET const request = WinHttpOpenRequest(connection, L"GET", path, nullptr, nullptr, nullptr, 0);
    WinHttpSendRequest(request, nullptr, 0, nullptr, 0, 0, 0);
    WinHttpReceiveResponse(request, nullptr);
    header_ = query(request, WINHTTP_QUERY_RAW_HEADERS_CRLF);
    status_ = query(request, WINHTTP_QUERY_STATUS_CODE);
    std::size_t const size = read(request);
    WinHttpCloseHandle(request);
    WinHttpCloseHandle(connection);
    return convert(size);
  }

private:
  static std::wstring query(HINTERNET request, DWORD level) {
    wchar_t text[1024] = L"";
    DWORD size = sizeof text;
    WinHttpQueryHeaders(request, level, nullptr, text, &size, nullptr);
    return text;
  }

  std::size_t read(HINTERNET request) {
    std::size_t size = 0;
    std::size_t capacity = 10'240;
    std::free(bytes_);
    bytes_ = static_cast<char *>(std::malloc(capacity));
    for (DWORD available = 0; WinHttpQueryDataAvailable(request, &available) && available != 0;) {
      while (size + available > capacity)
        grow(size, capacity *= 2);
      DWORD count = 0;
      WinHttpReadData(request, bytes_ + size, available, &count);
      size += count;
    }
    return size;
  }

  // The runtime's realloc takes longer under Wine.
  void grow(std::size_t size, std::size_t capacity) {
    auto * const larger = static_cast<char *>(std::malloc(capacity));
    std::memcpy(larger, bytes_, size);
    std::free(std::exchange(bytes_, larger));
  }

  std::size_t convert(std::size_t size) {
    int const bytes = static_cast<int>(size);
    int const count = MultiByteToWideChar(CP_ACP, MB_PRECOMPOSED, bytes_, bytes, nullptr, 0);
    text_.reset(new wchar_t[static_cast<std::size_t>(count)]);
    return static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, MB_PRECOMPOSED, bytes_, bytes, text_.get(), count));
  }

  std::wstring url_;
  HINTERNET session_;
  std::wstring header_, status_;
  char * bytes_ = nullptr;
  std::unique_ptr<wchar_t[]> text_;
};

template <class Client> bench::Body requesting(unsigned size) {
  return [size](benchmark::State & state) {
    std::string const url = server().url("/" + std::to_string(size));
    Client client(std::wstring(url.begin(), url.end()));
    for (auto _ : state)
      if (client.request() != size)
        state.SkipWithError("another answer");
  };
}

bench::Pair const small{"HTTP client: a request of 1 kB", bench::atMost(1.10), requesting<Ours>(kSmall), "bare WinHTTP",
                        requesting<Bare>(kSmall)};
bench::Pair const large{"HTTP client: a request of 64 MB", bench::atMost(1.10), requesting<Ours>(kLarge),
                        "bare WinHTTP", requesting<Bare>(kLarge)};

} // namespace
