#include "webserver.hpp"

#include "tools/winapi.hpp"

#include <winsock2.h>

namespace service {
namespace {

constexpr std::size_t kLongestHead = 8192;
constexpr DWORD kPatience = 5000; // milliseconds

bool isSet(WSAEVENT event) { return WaitForSingleObject(event, 0) == WAIT_OBJECT_0; }

/// One connection, closed with the object.
class Client {
public:
  Client(SOCKET socket, WSAEVENT stop) : socket_(socket), stop_(stop) {
    // It has the mode of the socket that listens, which never waits.
    WSAEventSelect(socket_, nullptr, 0);
    u_long noWait = 0;
    ioctlsocket(socket_, FIONBIO, &noWait);
    setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, reinterpret_cast<char const *>(&kPatience), sizeof kPatience);
    setsockopt(socket_, SOL_SOCKET, SO_SNDTIMEO, reinterpret_cast<char const *>(&kPatience), sizeof kPatience);
  }
  Client(Client const &) = delete;
  Client & operator=(Client const &) = delete;
  ~Client() { closesocket(socket_); }

  /// Up to the empty line; what came so far where that does not come.
  std::string readHead() const {
    std::string head;
    char block[1024];
    while (head.size() < kLongestHead && head.find("\r\n\r\n") == std::string::npos && !isSet(stop_)) {
      int const count = recv(socket_, block, sizeof block, 0);
      if (count <= 0)
        break;
      head.append(block, static_cast<std::size_t>(count));
    }
    return head;
  }

  void send(std::string const & bytes) const {
    for (std::size_t sent = 0; sent < bytes.size();) {
      int const count = ::send(socket_, bytes.data() + sent, static_cast<int>(bytes.size() - sent), 0);
      if (count <= 0)
        return;
      sent += static_cast<std::size_t>(count);
    }
    shutdown(socket_, SD_SEND);
  }

private:
  SOCKET socket_;
  WSAEVENT stop_;
};

char const * reasonOf(int status) {
  switch (status) {
  case 200: return "OK";
  case 400: return "Bad Request";
  case 404: return "Not Found";
  default: return "Error";
  }
}

} // namespace

std::optional<Request> parseRequest(std::string const & head) {
  std::size_t const end = head.find("\r\n");
  std::string const line = head.substr(0, end);
  std::size_t const first = line.find(' ');
  std::size_t const second = first == std::string::npos ? first : line.find(' ', first + 1);
  if (end == std::string::npos || second == std::string::npos || line.compare(second + 1, 5, "HTTP/") != 0)
    return std::nullopt;
  Request request{line.substr(0, first), line.substr(first + 1, second - first - 1)};
  if (request.method.empty() || !request.path.starts_with('/'))
    return std::nullopt;
  return request;
}

std::string responseBytes(Response const & response) {
  return "HTTP/1.0 " + std::to_string(response.status) + ' ' + reasonOf(response.status) +
         "\r\nContent-Type: text/plain\r\nContent-Length: " + std::to_string(response.text.size()) + "\r\n\r\n" +
         response.text;
}

WebServer::WebServer() : socket_(INVALID_SOCKET), connected_(nullptr) {
  WSADATA data;
  if (WSAStartup(MAKEWORD(2, 2), &data) == 0)
    socket_ = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
  connected_ = WSACreateEvent();
}

WebServer::~WebServer() {
  if (socket_ != INVALID_SOCKET)
    closesocket(socket_);
  WSACloseEvent(connected_);
  WSACleanup();
}

int WebServer::listen(int & port) {
  if (port < 0 || port > 65535)
    return WSAEADDRNOTAVAIL;
  BOOL const exclusive = TRUE;
  setsockopt(socket_, SOL_SOCKET, SO_EXCLUSIVEADDRUSE, reinterpret_cast<char const *>(&exclusive), sizeof exclusive);
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<u_short>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  int length = sizeof address;
  sockaddr * const generic = reinterpret_cast<sockaddr *>(&address);
  if (bind(socket_, generic, length) != 0 || ::listen(socket_, SOMAXCONN) != 0 ||
      getsockname(socket_, generic, &length) != 0 || WSAEventSelect(socket_, connected_, FD_ACCEPT) != 0)
    return WSAGetLastError();
  port = ntohs(address.sin_port);
  return 0;
}

int WebServer::serve(Handler const & handler, void * stop) {
  WSAEVENT const events[] = {stop, connected_};
  for (;;) {
    if (WSAWaitForMultipleEvents(2, events, FALSE, WSA_INFINITE, FALSE) == WSA_WAIT_FAILED)
      return WSAGetLastError();
    if (isSet(stop))
      return 0;
    WSAResetEvent(connected_); // accept sets it again when somebody else is waiting
    SOCKET const socket = accept(socket_, nullptr, nullptr);
    if (socket == INVALID_SOCKET && WSAGetLastError() == WSAEWOULDBLOCK)
      continue; // the client has gone
    if (socket == INVALID_SOCKET)
      return WSAGetLastError();
    Client const client(socket, stop);
    Response const response = handler(parseRequest(client.readHead()));
    client.send(responseBytes(response));
    if (response.isLast)
      return 0;
  }
}

} // namespace service
