#include "system/http/httpcall.hpp"

#include "system/http/httpbody.hpp"

#include <cstdlib>
#include <utility>
#include <vector>

using SV::WString;

namespace kivara {
namespace {

constexpr int kMostInHost = 260;
constexpr int kMostInPath = 1'300;
constexpr int kMostInProxy = 260;

/// What the system allocated for its proxy settings; given back with this object.
template <class Settings> struct ProxySettings : Settings {
  ProxySettings() : Settings() {}
  ProxySettings(ProxySettings const &) = delete;
  ProxySettings & operator=(ProxySettings const &) = delete;
  ~ProxySettings() {
    if constexpr (requires { this->lpszAutoConfigUrl; })
      GlobalFree(this->lpszAutoConfigUrl);
    GlobalFree(this->lpszProxy);
    GlobalFree(this->lpszProxyBypass);
  }
};

bool isText(wchar_t const * text) { return text != nullptr && *text != L'\0'; }

} // namespace

bool HttpCall::note(BOOL result) {
  if (!result)
    client_.failed(::GetLastError());
  return result != FALSE;
}

bool HttpCall::open(wchar_t const * method) {
  wchar_t host[kMostInHost + 1] = L"";
  wchar_t path[kMostInPath + 1] = L"";
  URL_COMPONENTS parts = {};
  parts.dwStructSize = sizeof parts;
  parts.lpszHostName = host;
  parts.dwHostNameLength = kMostInHost + 1;
  parts.lpszUrlPath = path; // with the query, since that has no place of its own
  parts.dwUrlPathLength = kMostInPath + 1;
  if (!WinHttpCrackUrl(client_.url_.c_str(), 0, 0, &parts))
    return false;
  client_.requestHost_ = host;
  isSecure_ = parts.nScheme == INTERNET_SCHEME_HTTPS;
  connection_.reset(WinHttpConnect(client_.session_, host, parts.nPort, 0));
  if (connection_)
    request_.reset(WinHttpOpenRequest(connection_.get(), method, path, nullptr, WINHTTP_NO_REFERER,
                                      WINHTTP_DEFAULT_ACCEPT_TYPES, isSecure_ ? WINHTTP_FLAG_SECURE : 0));
  return static_cast<bool>(request_);
}

bool HttpCall::perform(bool noRedirects) {
  if (isSecure_ && !client_.requireValidCertificates_)
    acceptAnyCertificate();
  if (!reachAnswer(noRedirects))
    return false;
  queryHeader(WINHTTP_QUERY_RAW_HEADERS_CRLF, client_.responseHeader_);
  queryHeader(WINHTTP_QUERY_STATUS_CODE, client_.responseStatusCode_);
  return receiveBody();
}

void HttpCall::acceptAnyCertificate() {
  DWORD accepted =
      SECURITY_FLAG_IGNORE_UNKNOWN_CA | SECURITY_FLAG_IGNORE_CERT_DATE_INVALID | SECURITY_FLAG_IGNORE_CERT_CN_INVALID;
  note(WinHttpSetOption(request_.get(), WINHTTP_OPTION_SECURITY_FLAGS, &accepted, sizeof accepted));
}

bool HttpCall::reachAnswer(bool noRedirects) {
  for (unsigned int attempt = 0; attempt < client_.retryTimes_; ++attempt) {
    setOptions(noRedirects);
    if (!send())
      continue;
    sendData();
    if (note(WinHttpReceiveResponse(request_.get(), nullptr)))
      return true;
  }
  return false;
}

void HttpCall::setOptions(bool noRedirects) {
  if (client_.requestHeaders_.Len() != 0)
    addHeaders(client_.requestHeaders_);
  if (client_.requestCookies_.Len() != 0) {
    WString cookies = L"Cookie: ";
    cookies += client_.requestCookies_;
    addHeaders(cookies);
  }
  if (client_.proxy_.Len() != 0)
    setClientProxy();
  if (noRedirects) {
    DWORD disabled = WINHTTP_DISABLE_REDIRECTS;
    note(WinHttpSetOption(request_.get(), WINHTTP_OPTION_DISABLE_FEATURE, &disabled, sizeof disabled));
  }
}

void HttpCall::addHeaders(WString const & headers) {
  note(WinHttpAddRequestHeaders(request_.get(), headers.c_str(), static_cast<DWORD>(headers.Len()),
                                WINHTTP_ADDREQ_FLAG_COALESCE_WITH_SEMICOLON));
}

void HttpCall::setClientProxy() {
  setNamedProxy(client_.proxy_, WString());
  if (client_.proxyUsername_.Len() == 0)
    return;
  setProxyAccount(WINHTTP_OPTION_PROXY_USERNAME, client_.proxyUsername_);
  if (client_.proxyPassword_.Len() != 0)
    setProxyAccount(WINHTTP_OPTION_PROXY_PASSWORD, client_.proxyPassword_);
}

bool HttpCall::setNamedProxy(WString const & proxy, WString const & bypass) {
  WString proxyPart = proxy.substr(0, kMostInProxy);
  WString bypassPart = bypass.substr(0, kMostInProxy);
  WINHTTP_PROXY_INFO info = {};
  info.dwAccessType = WINHTTP_ACCESS_TYPE_NAMED_PROXY;
  info.lpszProxy = proxyPart.writable();
  info.lpszProxyBypass = bypassPart.Len() != 0 ? bypassPart.writable() : WINHTTP_NO_PROXY_BYPASS;
  return note(WinHttpSetOption(request_.get(), WINHTTP_OPTION_PROXY, &info, sizeof info));
}

void HttpCall::setProxyAccount(DWORD option, WString const & text) {
  WString copy = text;
  note(WinHttpSetOption(request_.get(), option, copy.writable(), static_cast<DWORD>(text.Len()) * sizeof(wchar_t)));
}

bool HttpCall::send() { return sendRequest() || sendByUserProxy(); }

bool HttpCall::sendRequest() {
  // The total length is 0 also where there is a body: its length is that of a Content-Length header.
  return note(WinHttpSendRequest(request_.get(), WINHTTP_NO_ADDITIONAL_HEADERS, 0, WINHTTP_NO_REQUEST_DATA, 0, 0, 0));
}

bool HttpCall::sendByUserProxy() {
  ProxySettings<WINHTTP_CURRENT_USER_IE_PROXY_CONFIG> user;
  if (!note(WinHttpGetIEProxyConfigForCurrentUser(&user)))
    return false;
  if (isText(user.lpszAutoConfigUrl))
    return setProxyOfScript(user.lpszAutoConfigUrl) && sendRequest();
  if (isText(user.lpszProxy))
    setNamedProxy(user.lpszProxy, user.lpszProxyBypass); // for the next attempt
  return false;
}

bool HttpCall::setProxyOfScript(wchar_t const * script) {
  WINHTTP_AUTOPROXY_OPTIONS options = {};
  options.dwFlags = WINHTTP_AUTOPROXY_AUTO_DETECT | WINHTTP_AUTOPROXY_CONFIG_URL;
  options.dwAutoDetectFlags = WINHTTP_AUTO_DETECT_TYPE_DHCP;
  options.lpszAutoConfigUrl = script;
  options.fAutoLogonIfChallenged = TRUE;
  ProxySettings<WINHTTP_PROXY_INFO> proxy;
  return note(WinHttpGetProxyForUrl(client_.session_, client_.url_.c_str(), &options, &proxy)) &&
         note(WinHttpSetOption(request_.get(), WINHTTP_OPTION_PROXY, static_cast<WINHTTP_PROXY_INFO *>(&proxy),
                               sizeof(WINHTTP_PROXY_INFO)));
}

void HttpCall::sendData() {
  DWORD written = 0;
  if (client_.dataSize_ != 0)
    note(WinHttpWriteData(request_.get(), client_.data_, client_.dataSize_, &written));
}

void HttpCall::queryHeader(DWORD level, WString & field) {
  DWORD bytes = 0;
  auto const query = [&](wchar_t * text) {
    return WinHttpQueryHeaders(request_.get(), level, WINHTTP_HEADER_NAME_BY_INDEX, text, &bytes,
                               WINHTTP_NO_HEADER_INDEX);
  };
  if (!query(nullptr) && ::GetLastError() != ERROR_INSUFFICIENT_BUFFER) {
    note(FALSE);
    return;
  }
  std::vector<wchar_t> text(bytes / sizeof(wchar_t) + 1);
  if (note(query(text.data())))
    field = text.data();
}

bool HttpCall::receiveBody() {
  std::free(std::exchange(client_.rawResponse_, nullptr));
  client_.receivedLength_ = 0;
  HttpBody body;
  if (!body.allocate())
    return false;
  bool const isWhole = receiveParts(body);
  client_.SetProgress(body.size());
  client_.receivedLength_ = body.size();
  client_.rawResponse_ = body.release();
  auto const * const bytes = reinterpret_cast<char const *>(client_.rawResponse_);
  if (auto text = textOfBody(bytes, client_.receivedLength_, client_.responseCharset_))
    client_.responseContent_ = std::move(*text);
  return isWhole;
}

bool HttpCall::receiveParts(HttpBody & body) {
  for (;;) {
    DWORD available = 0;
    if (!note(WinHttpQueryDataAvailable(request_.get(), &available)))
      available = 0;
    client_.SetProgress(body.size());
    if (available == 0)
      return true;
    std::unique_ptr<void, FreeBlock> const part(std::calloc(std::size_t{available} + 1, 1));
    DWORD read = 0;
    if (part == nullptr)
      return false;
    // A read that fails or gives nothing would do so for ever.
    if (!note(WinHttpReadData(request_.get(), part.get(), available, &read)) || read == 0)
      return true;
    if (!body.append(part.get(), read))
      return false;
  }
}

} // namespace kivara
