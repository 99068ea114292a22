#include "support/servers/http_server.hpp"

#include <winsock2.h>

#include "tools/winapi.hpp"

#include <stdexcept>

namespace support {
namespace {

constexpr long kSecondsToStart = 60;

[[noreturn]] void failed(std::string const & what) {
  throw std::runtime_error(what + ": error " + std::to_string(WSAGetLastError()));
}

/// A path of the build's machine as this process can open it: under Wine that may be one of Unix.
std::string pathOf(std::string const & path) { return path.starts_with('/') ? "\\\\?\\unix" + path : path; }

/// A socket that no child process inherits: one that did would keep it open.
SOCKET newSocket() {
  WSADATA data;
  WSAStartup(MAKEWORD(2, 2), &data);
  SOCKET const made =
      WSASocketW(AF_INET, SOCK_STREAM, IPPROTO_TCP, nullptr, 0, WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT);
  if (made == INVALID_SOCKET)
    failed("no socket");
  return made;
}

int bindToFreePort(SOCKET socket) {
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  int size = sizeof address;
  if (bind(socket, reinterpret_cast<sockaddr *>(&address), size) != 0 ||
      getsockname(socket, reinterpret_cast<sockaddr *>(&address), &size) != 0)
    failed("no free port");
  return ntohs(address.sin_port);
}

SOCKET newListener() {
  SOCKET const made = newSocket();
  bindToFreePort(made);
  if (listen(made, 1) != 0)
    failed("listening");
  return made;
}

int portOf(SOCKET socket) {
  sockaddr_in address = {};
  int size = sizeof address;
  getsockname(socket, reinterpret_cast<sockaddr *>(&address), &size);
  return ntohs(address.sin_port);
}

void startPython(std::string const & arguments) {
  // Nothing but the sockets connects the two: a program outside of Wine has no handle, and gets no pipe. By its first argument
  // it finds its modules: without a folder there, it would take those of the first python3 in PATH, which may be another.
  std::string commandLine = "\"" KIVARA_PYTHON "\" -I -S \"" KIVARA_HTTP_SERVER "\" " + arguments;
  STARTUPINFOA start = {};
  start.cb = sizeof start;
  PROCESS_INFORMATION process = {};
  if (!CreateProcessA(pathOf(KIVARA_PYTHON).c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                      &start, &process))
    failed("starting " KIVARA_PYTHON);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

/// Starts the server and gives the connection to it.
SOCKET startServer(SOCKET listener, std::string const & certificate) {
  std::string arguments = std::to_string(portOf(listener));
  if (!certificate.empty())
    arguments += " \"" KIVARA_CERTIFICATES "/" + certificate + ".pem\"";
  startPython(arguments);
  fd_set waiting;
  FD_ZERO(&waiting);
  FD_SET(listener, &waiting);
  timeval limit{kSecondsToStart, 0};
  if (select(0, &waiting, nullptr, nullptr, &limit) != 1)
    failed("the server did not start");
  SOCKET const control = accept(listener, nullptr, nullptr);
  if (control == INVALID_SOCKET)
    failed("no connection from the server");
  SetHandleInformation(reinterpret_cast<HANDLE>(control), HANDLE_FLAG_INHERIT, 0);
  return control;
}

char const * nameOf(HttpAnswer::End end) {
  switch (end) {
  case HttpAnswer::End::keep: return "keep";
  case HttpAnswer::End::hold: return "hold";
  case HttpAnswer::End::reset: return "reset";
  default: return "close";
  }
}

} // namespace

HttpAnswer okWith(std::string const & body, std::string const & headers) {
  return {.bytes =
              "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\n" + headers + "\r\n" + body,
          .end = HttpAnswer::End::keep};
}

HttpAnswer redirectTo(std::string const & path) {
  return {.bytes = "HTTP/1.1 302 Found\r\nLocation: " + path + "\r\nContent-Length: 3\r\n\r\nold",
          .end = HttpAnswer::End::keep};
}

std::string testAuthorityFile() { return pathOf(KIVARA_CERTIFICATES "/authority.der"); }

Socket::~Socket() { closesocket(socket_); }

RefusingPort::RefusingPort() : socket_(newSocket()), port_(bindToFreePort(socket_.get())) {}

HttpServer::HttpServer(std::string const & certificate)
    : isSecure_(!certificate.empty()), listener_(newListener()), control_(startServer(listener_.get(), certificate)),
      port_(std::stoi(readLine())) {}

std::string HttpServer::url(std::string const & path, std::string const & host) const {
  return (isSecure_ ? "https://" : "http://") + host + ':' + std::to_string(port_) + path;
}

void HttpServer::answer(std::string const & path, HttpAnswer const & answer) {
  send("answer " + path + ' ' + std::to_string(answer.bytes.size()) + ' ' + std::to_string(answer.fill) + ' ' +
       nameOf(answer.end) + ' ' + std::to_string(answer.delay) + '\n' + answer.bytes);
  readLine();
}

std::string HttpServer::requests() const {
  send("requests\n");
  std::string bytes(std::stoul(readLine()), '\0');
  for (std::size_t got = 0; got < bytes.size();) {
    int const count = recv(control_.get(), bytes.data() + got, static_cast<int>(bytes.size() - got), 0);
    if (count <= 0)
      failed("the server is gone");
    got += static_cast<std::size_t>(count);
  }
  return bytes;
}

int HttpServer::connections() const {
  send("connections\n");
  return std::stoi(readLine());
}

int HttpServer::fullPort() const {
  send("full\n");
  return std::stoi(readLine());
}

void HttpServer::send(std::string const & bytes) const {
  for (std::size_t sent = 0; sent < bytes.size();) {
    int const count = ::send(control_.get(), bytes.data() + sent, static_cast<int>(bytes.size() - sent), 0);
    if (count <= 0)
      failed("the server is gone");
    sent += static_cast<std::size_t>(count);
  }
}

std::string HttpServer::readLine() const {
  std::string line;
  for (char c = '\0'; recv(control_.get(), &c, 1, 0) == 1 && c != '\n';)
    line += c;
  if (line.empty())
    failed("the server is gone");
  return line;
}

} // namespace support
