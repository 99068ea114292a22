#include "ahttp.hpp"

#include "base/openfile.hpp"
#include "system/http/httpcall.hpp"

#include <cstdlib>
#include <cstring>

using SV::WString;

namespace {

/// The method as servers know it; null for one that is not supported.
wchar_t const * supportedMethod(WString const & method) {
  for (wchar_t const * const supported : {L"GET", L"POST"})
    if (_wcsicmp(method.c_str(), supported) == 0)
      return supported;
  return nullptr;
}

/// Loads the library for good. The first call into it would do so too, but would end the program where there is none.
bool loadWinHttp() { return LoadLibraryA("winhttp.dll") != nullptr; }

} // namespace

KivHTTPClient::KivHTTPClient(WString const & url, bool (*progress)(double)) : url_(url), progress_(progress) {}

KivHTTPClient::~KivHTTPClient() {
  std::free(rawResponse_);
  std::free(data_);
  if (session_ != nullptr)
    WinHttpCloseHandle(session_);
}

bool KivHTTPClient::failed(unsigned long error) {
  lastError_ = error;
  return false;
}

bool KivHTTPClient::openSession() {
  if (session_ != nullptr)
    return true;
  if (loadWinHttp())
    session_ = WinHttpOpen(userAgent_.c_str(), WINHTTP_ACCESS_TYPE_DEFAULT_PROXY, WINHTTP_NO_PROXY_NAME,
                           WINHTTP_NO_PROXY_BYPASS, 0);
  return session_ != nullptr || failed(::GetLastError());
}

bool KivHTTPClient::SendHttpRequest(WString const & method, bool noRedirects) {
  if (url_.Len() == 0)
    return failed(ERROR_PATH_NOT_FOUND);
  wchar_t const * const supported = supportedMethod(method);
  if (supported == nullptr)
    return failed(ERROR_INVALID_PARAMETER);
  if (!openSession())
    return false;
  WinHttpSetTimeouts(session_, static_cast<int>(resolveTimeout_), static_cast<int>(connectTimeout_),
                     static_cast<int>(sendTimeout_), static_cast<int>(receiveTimeout_));
  kivara::HttpCall call(*this);
  // A caller finds out by the status: products count on true for a URL that cannot be used.
  return !call.open(supported) || call.perform(noRedirects);
}

bool KivHTTPClient::SetProgress(unsigned int received) {
  if (progress_ == nullptr || rawContentLength_ == 0)
    return false;
  progress_(received * 100.0 / rawContentLength_);
  return true;
}

bool KivHTTPClient::SaveResponseToFile(WString const & path) const {
  if (rawResponse_ == nullptr || receivedLength_ == 0)
    return false;
  kivara::OpenFile const file(_wfopen(path.c_str(), L"wb"));
  if (!file)
    return false;
  bool const isTaken = std::fwrite(rawResponse_, 1, receivedLength_, file.get()) == receivedLength_;
  return std::fflush(file.get()) == 0 && isTaken; // what closing writes may fail without a word
}

bool KivHTTPClient::SetAdditionalDataToSend(unsigned char * data, unsigned int size) {
  if (data == nullptr)
    return false;
  auto * const copy = static_cast<unsigned char *>(std::malloc(size));
  if (copy == nullptr)
    return false;
  std::memcpy(copy, data, size);
  std::free(data_);
  data_ = copy;
  dataSize_ = size;
  return true;
}

bool KivHTTPClient::ResetAdditionalDataToSend() {
  std::free(data_);
  data_ = nullptr;
  dataSize_ = 0;
  return true;
}

bool KivHTTPClient::UpdateUrl(WString const & url) {
  url_ = url;
  return ResetAdditionalDataToSend();
}

bool KivHTTPClient::SetAdditionalRequestCookies(WString const & cookies) {
  requestCookies_ = cookies;
  return true;
}

bool KivHTTPClient::SetAdditionalRequestHeaders(WString const & headers) {
  requestHeaders_ = headers;
  return true;
}

bool KivHTTPClient::SetUserAgent(WString const & userAgent) {
  userAgent_ = userAgent;
  return true;
}

bool KivHTTPClient::SetForceCharset(WString const & charset) {
  responseCharset_ = charset;
  charsetForced_ = true;
  return true;
}

bool KivHTTPClient::SetRequireValidSslCertificates(bool require) {
  requireValidCertificates_ = require;
  return true;
}

bool KivHTTPClient::SetProxy(WString const & proxy) {
  proxy_ = proxy;
  return true;
}

bool KivHTTPClient::SetProxyUsername(WString const & name) {
  proxyUsername_ = name;
  return true;
}

bool KivHTTPClient::SetProxyPassword(WString const & password) {
  proxyPassword_ = password;
  return true;
}

bool KivHTTPClient::SetTimeouts(unsigned int resolve, unsigned int connect, unsigned int send, unsigned int receive) {
  resolveTimeout_ = resolve;
  connectTimeout_ = connect;
  sendTimeout_ = send;
  receiveTimeout_ = receive;
  return true;
}

void KivHTTPClient::SetRetryTimes(unsigned int times) { retryTimes_ = times; }
