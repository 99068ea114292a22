#pragma once
/// \file
/// One request of the HTTP client, from its connection to the end of the answer. Internal.

#include "ahttp.hpp"
#include "handles/handle.hpp"

#include <winhttp.h>

namespace kivara {

class HttpBody;

struct HttpKind : handles::NullKind<HINTERNET> {
  static void close(HINTERNET handle) { WinHttpCloseHandle(handle); }
};
using HttpHandle = handles::Handle<HttpKind>;

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
