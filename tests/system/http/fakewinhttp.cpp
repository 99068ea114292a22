#include "fakewinhttp.hpp"

#include "support/imports/import_hook.hpp"

#include <winhttp.h>

#include <algorithm>
#include <cstring>

namespace kivtest {
namespace {

FakeWinHttp * theFake = nullptr;

std::string narrow(wchar_t const * text) {
  if (text == nullptr)
    return "-";
  std::wstring const whole(text);
  return std::string(whole.begin(), whole.end());
}

std::string hex(DWORD value) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%lx", value);
  return text;
}

std::string number(std::uint64_t value) { return std::to_string(value); }

HINTERNET WINAPI open(wchar_t const * agent, DWORD access, wchar_t const * proxy, wchar_t const * bypass, DWORD flags) {
  std::string const call =
      "open " + narrow(agent) + ' ' + number(access) + ' ' + narrow(proxy) + ' ' + narrow(bypass) + ' ' + hex(flags);
  return theFake->note(call) ? theFake->newHandle("session") : nullptr;
}

BOOL WINAPI setTimeouts(HINTERNET handle, int resolve, int connect, int send, int receive) {
  return theFake->note("timeouts " + theFake->nameOf(handle) + ' ' + number(resolve) + ' ' + number(connect) + ' ' +
                       number(send) + ' ' + number(receive));
}

HINTERNET WINAPI connect(HINTERNET, wchar_t const * host, INTERNET_PORT port, DWORD) {
  return theFake->note("connect " + narrow(host) + ' ' + number(port)) ? theFake->newHandle("connection") : nullptr;
}

HINTERNET WINAPI openRequest(HINTERNET, wchar_t const * method, wchar_t const * path, wchar_t const * version,
                             wchar_t const * referrer, wchar_t const ** accepted, DWORD flags) {
  std::string const call = "request " + narrow(method) + ' ' + narrow(path) + ' ' + narrow(version) + ' ' +
                           narrow(referrer) + (accepted != nullptr ? " types " : " - ") + hex(flags);
  return theFake->note(call) ? theFake->newHandle("request") : nullptr;
}

std::string textOfOption(DWORD option, void const * value, DWORD size) {
  switch (option) {
  case WINHTTP_OPTION_PROXY: {
    auto const & info = *static_cast<WINHTTP_PROXY_INFO const *>(value);
    return number(info.dwAccessType) + ' ' + narrow(info.lpszProxy) + ' ' + narrow(info.lpszProxyBypass);
  }
  case WINHTTP_OPTION_PROXY_USERNAME:
  case WINHTTP_OPTION_PROXY_PASSWORD: return narrow(static_cast<wchar_t const *>(value)) + " of " + number(size);
  default: return hex(*static_cast<DWORD const *>(value)) + " of " + number(size);
  }
}

BOOL WINAPI setOption(HINTERNET, DWORD option, void * value, DWORD size) {
  return theFake->note("option " + number(option) + ' ' + textOfOption(option, value, size));
}

BOOL WINAPI addHeaders(HINTERNET, wchar_t const * headers, DWORD length, DWORD flags) {
  std::wstring const text = length == static_cast<DWORD>(-1) ? headers : std::wstring(headers, length);
  return theFake->note("headers " + narrow(text.c_str()) + ' ' + hex(flags));
}

BOOL WINAPI sendRequest(HINTERNET request, wchar_t const * headers, DWORD length, void * data, DWORD size, DWORD total,
                        DWORD_PTR context) {
  return theFake->note("send " + theFake->nameOf(request) + ' ' + narrow(headers) + ' ' + number(length) +
                       (data != nullptr ? " data " : " - ") + number(size) + ' ' + number(total) + ' ' +
                       number(context));
}

BOOL WINAPI userProxy(WINHTTP_CURRENT_USER_IE_PROXY_CONFIG * settings) {
  if (!theFake->note("user"))
    return FALSE;
  settings->fAutoDetect = theFake->user.autoDetect;
  settings->lpszAutoConfigUrl = theFake->newText(theFake->user.script);
  settings->lpszProxy = theFake->newText(theFake->user.proxy);
  settings->lpszProxyBypass = theFake->newText(theFake->user.bypass);
  return TRUE;
}

BOOL WINAPI proxyForUrl(HINTERNET handle, wchar_t const * url, WINHTTP_AUTOPROXY_OPTIONS * options,
                        WINHTTP_PROXY_INFO * info) {
  if (!theFake->note("script " + theFake->nameOf(handle) + ' ' + narrow(url) + ' ' + hex(options->dwFlags) + ' ' +
                     hex(options->dwAutoDetectFlags) + ' ' + narrow(options->lpszAutoConfigUrl) +
                     (options->fAutoLogonIfChallenged ? " logon" : "")))
    return FALSE;
  info->dwAccessType =
      theFake->script.proxy != nullptr ? WINHTTP_ACCESS_TYPE_NAMED_PROXY : WINHTTP_ACCESS_TYPE_NO_PROXY;
  info->lpszProxy = theFake->newText(theFake->script.proxy);
  info->lpszProxyBypass = theFake->newText(theFake->script.bypass);
  return TRUE;
}

BOOL WINAPI writeData(HINTERNET, void const * data, DWORD size, DWORD * written) {
  *written = size;
  return theFake->note("write " + std::string(static_cast<char const *>(data), size));
}

BOOL WINAPI receiveResponse(HINTERNET request, void *) { return theFake->note("receive " + theFake->nameOf(request)); }

BOOL WINAPI queryHeaders(HINTERNET, DWORD level, wchar_t const * name, void * buffer, DWORD * size, DWORD * index) {
  if (!theFake->note("query " + number(level) + (buffer != nullptr ? " text" : " size") +
                     (name != nullptr || index != nullptr ? " of one" : "")))
    return FALSE;
  std::wstring const & text = level == WINHTTP_QUERY_STATUS_CODE ? theFake->status : theFake->header;
  auto const bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  if (buffer == nullptr || *size < bytes + sizeof(wchar_t)) {
    *size = bytes + sizeof(wchar_t);
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return FALSE;
  }
  std::memcpy(buffer, text.c_str(), bytes + sizeof(wchar_t));
  *size = bytes;
  return TRUE;
}

BOOL WINAPI queryDataAvailable(HINTERNET, DWORD * available) {
  auto & instead = theFake->availableInstead;
  *available = !instead.empty() ? instead.front()
                                : static_cast<DWORD>(theFake->parts.empty() ? 0 : theFake->parts.front().size());
  return theFake->note("available " + number(*available));
}

BOOL WINAPI readData(HINTERNET, void * buffer, DWORD size, DWORD * read) {
  *read = 0;
  if (!theFake->note("read " + number(size)))
    return FALSE;
  if (auto & instead = theFake->availableInstead; !instead.empty()) {
    *read = static_cast<DWORD>(std::min<std::size_t>(instead.front(), theFake->mostPerRead));
    instead.pop_front();
    return TRUE;
  }
  if (theFake->parts.empty())
    return TRUE;
  std::string & part = theFake->parts.front();
  *read = static_cast<DWORD>(std::min({part.size(), std::size_t{size}, theFake->mostPerRead}));
  std::memcpy(buffer, part.data(), *read);
  part.erase(0, *read);
  if (part.empty())
    theFake->parts.pop_front();
  return TRUE;
}

BOOL WINAPI closeHandle(HINTERNET handle) {
  theFake->note("close " + theFake->nameOf(handle));
  return theFake->openHandles.erase(handle) == 1;
}

HGLOBAL WINAPI freeText(HGLOBAL text) {
  if (text != nullptr && theFake->openTexts.erase(text) != 1)
    theFake->note("free of something else");
  return GlobalFree(text);
}

template <class Function> support::Replacement replacement(char const * name, Function * function) {
  return {name, reinterpret_cast<void *>(function)};
}

} // namespace

FakeWinHttp::FakeWinHttp() {
  theFake = this;
  HMODULE const library = GetModuleHandleA("kivara.dll");
  support::replaceImports(
      library, "winhttp.dll",
      {replacement("WinHttpOpen", open), replacement("WinHttpSetTimeouts", setTimeouts),
       replacement("WinHttpConnect", connect), replacement("WinHttpOpenRequest", openRequest),
       replacement("WinHttpSetOption", setOption), replacement("WinHttpAddRequestHeaders", addHeaders),
       replacement("WinHttpSendRequest", sendRequest), replacement("WinHttpGetIEProxyConfigForCurrentUser", userProxy),
       replacement("WinHttpGetProxyForUrl", proxyForUrl), replacement("WinHttpWriteData", writeData),
       replacement("WinHttpReceiveResponse", receiveResponse), replacement("WinHttpQueryHeaders", queryHeaders),
       replacement("WinHttpQueryDataAvailable", queryDataAvailable), replacement("WinHttpReadData", readData),
       replacement("WinHttpCloseHandle", closeHandle)});
  support::replaceImports(library, "KERNEL32.dll", {replacement("GlobalFree", freeText)});
}

FakeWinHttp::~FakeWinHttp() = default;

FakeWinHttp & FakeWinHttp::current() { return *theFake; }

std::vector<std::string> FakeWinHttp::callsOf(std::vector<std::string> const & words) const {
  std::vector<std::string> result;
  for (auto const & call : calls)
    if (std::any_of(words.begin(), words.end(), [&call](auto const & word) { return call.starts_with(word); }))
      result.push_back(call);
  return result;
}

bool FakeWinHttp::note(std::string const & call) {
  calls.push_back(call);
  for (auto & [word, codes] : failures)
    if (call.starts_with(word) && !codes.empty()) {
      DWORD const code = codes.front();
      codes.pop_front();
      SetLastError(code);
      return code == 0;
    }
  return true;
}

void * FakeWinHttp::newHandle(std::string const & what) {
  void * const handle = reinterpret_cast<void *>(names_.size() + 1);
  names_[handle] = what;
  openHandles.insert(handle);
  return handle;
}

std::string FakeWinHttp::nameOf(void * handle) const {
  if (openHandles.count(handle) == 0)
    return "(closed)";
  return names_.at(handle);
}

wchar_t * FakeWinHttp::newText(wchar_t const * text) {
  if (text == nullptr)
    return nullptr;
  std::size_t const bytes = (std::wcslen(text) + 1) * sizeof(wchar_t);
  auto * const copy = static_cast<wchar_t *>(GlobalAlloc(GMEM_FIXED, bytes));
  std::memcpy(copy, text, bytes);
  openTexts.insert(copy);
  return copy;
}

} // namespace kivtest
