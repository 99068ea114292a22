#pragma once
/// \file
/// A web server for one client at a time, on loopback only.

#include <functional>
#include <optional>
#include <string>

namespace service {

/// The first line of a request.
struct Request {
  std::string method;
  std::string path;
};

struct Response {
  int status; ///< 200, 404, ...
  std::string text;
  bool isLast = false; ///< the server ends once it is sent
};

/// The first line of the head of a request; nothing when it is none.
std::optional<Request> parseRequest(std::string const & head);

/// The bytes of a response with a plain text in the system's code page.
std::string responseBytes(Response const & response);

class WebServer {
public:
  using Handler = std::function<Response(std::optional<Request> const &)>;

  WebServer();
  WebServer(WebServer const &) = delete;
  WebServer & operator=(WebServer const &) = delete;
  ~WebServer();

  /// Takes a port of 127.0.0.1.
  /// \param port  0: one that is free; it then gets its number
  /// \return 0, or the system's error code
  int listen(int & port);

  /// Answers requests until a response is the last, or \p stop is set; a request that has been read is then still answered. A
  /// client that sends nothing for 5 seconds, or a head above 8 KB, is dropped; what is not a request reaches the handler as
  /// nothing.
  /// \param stop  an event
  /// \return 0, or the system's error code
  int serve(Handler const & handler, void * stop);

private:
  unsigned long long socket_;
  void * connected_;
};

} // namespace service
