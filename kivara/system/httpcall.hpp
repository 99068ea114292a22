#pragma once
/// \file
/// One request of the HTTP client, from its connection to the end of the answer. Internal.

#include "ahttp.hpp"
#include "tools/winapi.hpp"

#include <winhttp.h>

#include <memory>
#include <type_traits>

namespace kivara {

class HttpBody;

struct HttpHandleCloser {
  void operator()(HINTERNET handle) const { WinHttpCloseHandle(handle); }
};

/// A handle of WinHTTP, or null; closed with this object.
using HttpHandle = std::unique_ptr<std::remove_pointer_t<HINTERNET>, HttpHandleCloser>;

/// Takes what to do from the client and leaves there what came of it. From open on, each call of the system that fails
/// leaves its code in the client.
class HttpCall {
public:
  explicit HttpCall(KivHTTPClient & client) : client_(client) {}

  /// Makes connection and request, without any traffic. A failure leaves no code.
  bool open(wchar_t const * method);

  /// Sends the request and receives the answer, in as many attempts as the client allows.
  bool perform(bool noRedirects);

private:
  bool note(BOOL result);

  bool reachAnswer(bool noRedirects);
  void setOptions(bool noRedirects);
  void addHeaders(SV::WString const & headers);
  void acceptAnyCertificate();
  void setClientProxy();
  bool setNamedProxy(SV::WString const & proxy, SV::WString const & bypass);
  void setProxyAccount(DWORD option, SV::WString const & text);

  bool send();
  bool sendRequest();
  bool sendByUserProxy();
  bool setProxyOfScript(wchar_t const * script);
  void sendData();

  void queryHeader(DWORD level, SV::WString & field);
  bool receiveBody();
  bool receiveParts(HttpBody & body);

  KivHTTPClient & client_;
  bool isSecure_ = false;
  HttpHandle connection_; // outlives the request
  HttpHandle request_;
};

} // namespace kivara
