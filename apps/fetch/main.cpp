// fetch [options] URL FILE: saves what a URL gives to a file.
//
// A sample of the HTTP client. Exit codes:
//   0  the file holds the body of an answer of status 200, also where that is empty
//   1  no answer; the system's code is printed
//   2  the command line makes no sense
//   3  an answer of another status, which is printed; there is no file
//   4  the file cannot be written

#include "ahttp.hpp"
#include "options.hpp"

#include <cstdio>

namespace {

enum ExitCode { kSaved, kNoAnswer, kUsage, kOtherStatus, kNotWritten };

constexpr char kHelp[] = "usage: fetch [options] URL FILE\n"
                         "  -insecure         accept any certificate\n"
                         "  -noredirects      an answer that leads elsewhere is not followed\n"
                         "  -proxy HOST:PORT  in place of the system's proxy\n"
                         "  -timeout SECONDS  for connecting, sending and receiving; 30 without it\n"
                         "  -tries N          how often to try; 1 without it\n";

void prepare(KivHTTPClient & client, Options const & options) {
  unsigned const milliseconds = options.seconds * 1000;
  client.SetRequireValidSslCertificates(!options.acceptAnyCertificate);
  client.SetTimeouts(milliseconds, milliseconds, milliseconds, milliseconds);
  client.SetRetryTimes(options.tries);
  client.SetProxy(options.proxy);
  client.SetUserAgent(L"fetch");
}

/// The client writes no file for an empty body.
bool saveEmpty(wchar_t const * path) {
  FILE * const file = _wfopen(path, L"wb");
  return file != nullptr && std::fclose(file) == 0;
}

ExitCode save(KivHTTPClient const & client, SV::WString const & path) {
  unsigned const size = client.GetRawResponseReceivedContentLength();
  if (size != 0 ? !client.SaveResponseToFile(path) : !saveEmpty(path.c_str())) {
    std::fprintf(stderr, "fetch: cannot write %ls\n", path.c_str());
    return kNotWritten;
  }
  std::printf("%u bytes\n", size);
  return kSaved;
}

} // namespace

int wmain(int count, wchar_t ** words) {
  auto const options = readOptions(count, words);
  if (!options) {
    std::fputs(kHelp, stderr);
    return kUsage;
  }
  KivHTTPClient client(options->url, nullptr);
  prepare(client, *options);
  if (!client.SendHttpRequest(L"GET", options->noRedirects)) {
    std::fprintf(stderr, "fetch: no answer, system error %lu\n", client.GetLastError());
    return kNoAnswer;
  }
  if (client.GetResponseStatusCode() == L"200")
    return save(client, options->file);
  if (client.GetResponseStatusCode().Len() == 0) { // true even so: the URL could not be used
    std::fputs("fetch: this is no URL that can be used\n", stderr);
    return kNoAnswer;
  }
  std::fprintf(stderr, "fetch: status %ls\n", client.GetResponseStatusCode().c_str());
  return kOtherStatus;
}
