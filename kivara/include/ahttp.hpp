#pragma once
/// \file
/// HTTP and HTTPS requests, one at a time, answered in memory.
///
/// \code
///   KivHTTPClient client(L"https://server.example/list?all=1", nullptr);
///   client.SetRequireValidSslCertificates(true);
///   if (!client.SendHttpRequest(L"GET", false))
///     return fail(client.GetLastError());
///   if (client.GetResponseStatusCode() == L"200")
///     client.SaveResponseToFile(L"C:\\list.xml");
/// \endcode
///
/// A request runs on the calling thread and returns when the answer is complete, which takes as long as the timeouts, the attempts
/// and the server allow. The answer is in memory twice, as bytes and as text, so a body takes about four times its size, and more
/// while it is received. There are no locks: an object is for one thread at a time; several threads may use an object each.
///
/// **Certificates are not checked by default**, see SetRequireValidSslCertificates.

#include "export.hpp"
#include "tools/wstring.hpp"

namespace kivara {
class HttpCall;
}

/// A client that can be used for any number of requests. Nothing is cleared between them: a request that fails leaves the
/// answer of the previous one, and GetLastError returns the most recent failure, even if later requests have succeeded.
class KIV_API KivHTTPClient {
public:
  /// \param url       "http://" or "https://", a host of up to 260 characters and a path with its query of up to 1,300
  /// \param progress  kept; it is not called, since the length of the answer is not known while it arrives. May be null
  KivHTTPClient(SV::WString const & url, bool (*progress)(double));
  KivHTTPClient(KivHTTPClient const &) = delete;
  KivHTTPClient & operator=(KivHTTPClient const &) = delete;
  /// Frees the answer and the data to send, and closes the session with its connections.
  virtual ~KivHTTPClient();

  /// Sends the request and receives the answer.
  /// \param method       "GET" or "POST" in upper or lower case
  /// \param noRedirects  true: an answer with a Location is the answer; false: it is followed
  /// \return
  /// | what happened | result | GetLastError | the answer's fields |
  /// |---|---|---|---|
  /// | an answer came, whatever its status: 404 too | true | as it was, or that of an option or a part that failed | new |
  /// | the URL is empty | false | 3 | as they were |
  /// | another method | false | 87 | as they were |
  /// | the URL cannot be parsed or is too long, or the system refuses it | **true** | as it was | as they were: empty status in a new object |
  /// | no attempt got an answer, or there was none | false | the system's code; as it was without an attempt | as they were |
  /// | no memory for the body, or one of 2 GiB and more | false | as it was | new, with as much as was kept |
  ///
  /// A body that ends too early is not a failure. Only lack of memory throws.
  bool SendHttpRequest(SV::WString const & method, bool noRedirects);

  /// \name The answer
  /// References and pointers are valid until the next request, or until the object is destroyed.
  /// @{

  /// The status line and all header lines, each with a line end. A Location or Set-Cookie is found here.
  SV::WString const & GetResponseHeader() const { return responseHeader_; }
  /// The body as text: from UTF-8 after SetForceCharset(L"utf-8") or the like, otherwise from the ANSI code page, whatever
  /// the server says. Bytes that are not valid UTF-8 become U+FFFD.
  SV::WString const & GetResponseContent() const { return responseContent_; }
  /// The argument of SetForceCharset; empty by default.
  SV::WString const & GetResponseCharset() const { return responseCharset_; }
  /// As in the status line: "200".
  SV::WString const & GetResponseStatusCode() const { return responseStatusCode_; }
  /// Always empty: look in the header.
  SV::WString const & GetResponseLocation() const { return responseLocation_; }
  /// The host of the last URL that could be parsed.
  SV::WString const & GetRequestHost() const { return requestHost_; }
  /// Always empty: look in the header.
  SV::WString const & GetResponseCookies() const { return responseCookies_; }
  /// The body as received, followed by a NUL; null before the first answer.
  unsigned char const * GetRawResponseContent() const { return rawResponse_; }
  /// Always 0: the length is GetRawResponseReceivedContentLength.
  unsigned int GetRawResponseContentLength() const { return rawContentLength_; }
  /// The length of the body in bytes.
  unsigned int GetRawResponseReceivedContentLength() const { return receivedLength_; }

  /// Writes the body, as received, to a file and replaces its content.
  /// \return false without a file when there is no body or it is empty; false when the file cannot be opened or written
  bool SaveResponseToFile(SV::WString const & path) const;
  /// @}

  /// \name The request
  /// What is set holds for all later requests.
  /// @{

  /// Another URL; also drops the data to send.
  bool UpdateUrl(SV::WString const & url);
  /// The value of a Cookie header: "name=value; other=value". Empty: none.
  bool SetAdditionalRequestCookies(SV::WString const & cookies);
  /// Header lines, separated by "\r\n". Empty: none. A line that the request has already is joined to it with a semicolon;
  /// each attempt after the first thus repeats them.
  bool SetAdditionalRequestHeaders(SV::WString const & headers);
  /// A body for the request, copied. **The additional headers must hold its length**, as "Content-Length: 5": without it the
  /// body is announced as empty, and the server does not read it.
  /// \return false, and the former data stay, when \p data is null or there is no memory for them
  bool SetAdditionalDataToSend(unsigned char * data, unsigned int size);
  /// No body from now on.
  bool ResetAdditionalDataToSend();
  /// The name in the User-Agent header, "KIVARA" at first. Only before the first request.
  bool SetUserAgent(SV::WString const & userAgent);
  /// The character set of the answers' bodies: one that begins with "utf-8", or any other text for the ANSI code page.
  bool SetForceCharset(SV::WString const & charset);
  /// @}

  /// \name The way to the server
  /// @{

  /// True: HTTPS requires a valid certificate for this host from an authority that the system trusts. False, the default: any
  /// certificate is accepted, so **anyone between the two can read and change** what is sent and received.
  bool SetRequireValidSslCertificates(bool require);
  /// A proxy in place of the system's: "host:port", of which 260 characters are used. Empty: the system's.
  bool SetProxy(SV::WString const & proxy);
  /// The account at the proxy of SetProxy. Without a name the password is not used; without a proxy neither is.
  bool SetProxyUsername(SV::WString const & name);
  bool SetProxyPassword(SV::WString const & password);
  /// In milliseconds; 0 means no limit. The defaults are 0, 60,000, 30,000 and 30,000.
  bool SetTimeouts(unsigned int resolve, unsigned int connect, unsigned int send, unsigned int receive);
  /// The number of attempts; 1 by default. With 0 each request fails. The user's own proxy settings are used after a failure:
  /// their script (PAC) within the same attempt, a fixed proxy in the next one.
  /// **A POST may reach the server once for each attempt.**
  void SetRetryTimes(unsigned int times);
  /// @}

  /// The Win32 code of the most recent failure of a request; 0 before the first one.
  unsigned long GetLastError() const { return lastError_; }

private:
  friend class kivara::HttpCall;

  bool failed(unsigned long error);
  bool openSession();
  bool SetProgress(unsigned int received);

  void * session_ = nullptr; ///< from the first request on
  bool requireValidCertificates_ = false;
  SV::WString url_;
  SV::WString requestHost_;
  SV::WString responseHeader_;
  SV::WString responseContent_;
  SV::WString responseCharset_;
  unsigned char * rawResponse_ = nullptr; ///< from malloc
  unsigned int receivedLength_ = 0;
  bool (*progress_)(double);
  unsigned int rawContentLength_ = 0; ///< never set, like the cookies and the location: headers are not searched
  SV::WString responseCookies_;
  SV::WString requestCookies_;
  unsigned char * data_ = nullptr; ///< from malloc
  unsigned int dataSize_ = 0;
  SV::WString requestHeaders_;
  SV::WString proxy_;
  unsigned long lastError_ = 0;
  SV::WString responseStatusCode_;
  SV::WString userAgent_ = L"KIVARA";
  bool charsetForced_ = false;
  SV::WString proxyUsername_;
  SV::WString proxyPassword_;
  SV::WString responseLocation_;
  unsigned int resolveTimeout_ = 0; ///< this and the next in milliseconds
  unsigned int connectTimeout_ = 60'000;
  unsigned int sendTimeout_ = 30'000;
  unsigned int receiveTimeout_ = 30'000;
  unsigned int retryTimes_ = 1;
};
