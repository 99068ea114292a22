#pragma once
/// \file
/// A server for HTTP on this machine that answers as a test says, byte by byte: a program of Python outside of Wine.
///
///     support::HttpServer server;
///     server.answer("/list", support::okWith("hello"));
///     fetch(server.url("/list"));
///     EXPECT_TRUE(server.requests().starts_with("GET /list HTTP/1.1\r\n"));
///
/// Each has a port of its own and ends with this object, or with the process, however that ends. What cannot be done
/// throws std::runtime_error, which fails the test. One thread uses an object.

#include <cstdint>
#include <string>

namespace support {

/// What a server sends for one request.
struct HttpAnswer {
  enum class End {
    close, ///< the connection ends; a request that follows at once may meet the end of it
    keep,  ///< it waits for the next request
    hold,  ///< nothing more comes, and the connection stays
    reset, ///< the connection breaks
  };
  std::string bytes = {};
  std::uint64_t fill = 0; ///< so many bytes follow: 0, 1, ... 255, over and over
  End end = End::close;
  unsigned delay = 0; ///< milliseconds before the first byte
};

/// An answer of status 200 with that body; the connection is kept.
/// \param headers  lines, each with "\r\n"
HttpAnswer okWith(std::string const & body, std::string const & headers = "");

/// An answer of status 302 with a body of three bytes, "old"; the connection is kept, since the client goes on at once.
HttpAnswer redirectTo(std::string const & path);

/// One socket; closed with this object.
class Socket {
public:
  explicit Socket(std::uintptr_t socket) : socket_(socket) {}
  Socket(Socket const &) = delete;
  Socket & operator=(Socket const &) = delete;
  ~Socket();
  std::uintptr_t get() const { return socket_; }

private:
  std::uintptr_t socket_;
};

/// A port of this machine that refuses every connection while this object lives.
class RefusingPort {
public:
  RefusingPort();
  int port() const { return port_; }

private:
  Socket socket_;
  int port_;
};

class HttpServer {
public:
  /// \param certificate  empty, or for TLS one of those that make-certificates makes: "valid"
  explicit HttpServer(std::string const & certificate = "");

  int port() const { return port_; }
  /// "http://127.0.0.1:port" and the path, or "https://".
  std::string url(std::string const & path, std::string const & host = "127.0.0.1") const;

  /// Another answer for the path, the last one so far; "*" is any path that has none. For a request through a proxy the
  /// path is the whole URL. Without an answer the server says 500.
  void answer(std::string const & path, HttpAnswer const & answer);

  /// All requests so far, one after the other, as they came.
  std::string requests() const;
  /// How many connections were made to it.
  int connections() const;
  /// A port whose connections are neither taken nor refused.
  int fullPort() const;

private:
  void send(std::string const & bytes) const;
  std::string readLine() const;

  bool isSecure_;
  Socket listener_;
  Socket control_;
  int port_;
};

/// The file of the authority that the certificates are from.
std::string testAuthorityFile();

} // namespace support
