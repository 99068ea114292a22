#include "background/webrequest.hpp"

#include "ahttp.hpp"
#include "tools/winapi.hpp"

#include <algorithm>
#include <atomic>
#include <new>
#include <system_error>
#include <thread>

namespace modeler {
namespace {

constexpr unsigned kStepTime = 10'000; // milliseconds for each step of a request
constexpr std::size_t kMostBytes = 16'384;
constexpr std::size_t kMostLines = 40;
constexpr std::size_t kMostCharacters = 200; // of a line

/// Nothing when the bytes are not valid in that code page.
std::optional<std::wstring> decoded(std::string const & bytes, UINT codePage, DWORD flags) {
  int const size = static_cast<int>(bytes.size());
  int const length = MultiByteToWideChar(codePage, flags, bytes.data(), size, nullptr, 0);
  if (length <= 0)
    return std::nullopt;
  std::wstring text(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(codePage, flags, bytes.data(), size, text.data(), length);
  return text;
}

/// In the system's code page, with a question mark or the like for what it lacks.
std::string encoded(std::wstring const & text) {
  int const size = static_cast<int>(text.size());
  int const length = WideCharToMultiByte(CP_ACP, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_ACP, 0, text.data(), size, bytes.data(), length, nullptr, nullptr);
  return bytes;
}

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

/// As many bytes as are looked at, without a part of a character of UTF-8 at the end.
std::string beginningOf(std::string const & body) {
  std::size_t size = std::min(body.size(), kMostBytes);
  for (int step = 0; step < 3 && size > 0 && size < body.size() && isContinuation(body[size]); ++step)
    --size;
  return body.substr(0, size);
}

std::wstring shown(std::wstring line) {
  if (!line.empty() && line.back() == L'\r')
    line.pop_back();
  std::replace_if(
      line.begin(), line.end(), [](wchar_t c) { return c < L' ' || c == 0x7F; }, L' ');
  return line;
}

std::string trimmed(std::string const & text) {
  std::size_t const first = text.find_first_not_of(" \t");
  return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

WebAnswer read(KivHTTPClient const & client) {
  WebAnswer answer;
  for (wchar_t const * c = client.GetResponseStatusCode().c_str(); *c != 0; ++c)
    answer.status += static_cast<char>(*c);
  std::wstring const header = client.GetResponseHeader().c_str();
  answer.headerBytes = header.size();
  answer.headerLines = static_cast<std::size_t>(std::count(header.begin(), header.end(), L'\n'));
  answer.bodyBytes = client.GetRawResponseReceivedContentLength();
  // One byte more than is looked at shows that the body goes on.
  std::size_t const size = std::min(answer.bodyBytes, kMostBytes + 1);
  if (size > 0)
    answer.lines = firstLines({reinterpret_cast<char const *>(client.GetRawResponseContent()), size}, answer.goesOn);
  return answer;
}

} // namespace

std::vector<std::string> firstLines(std::string const & body, bool & goesOn) {
  std::string const bytes = beginningOf(body);
  goesOn = bytes.size() < body.size();
  std::optional<std::wstring> text = decoded(bytes, CP_UTF8, MB_ERR_INVALID_CHARS);
  if (!text)
    text = decoded(bytes, CP_ACP, 0);
  std::vector<std::string> lines;
  for (std::size_t begin = 0; text && begin < text->size() && lines.size() < kMostLines;) {
    std::size_t const end = std::min(text->find(L'\n', begin), text->size());
    std::wstring line = shown(text->substr(begin, end - begin));
    goesOn |= line.size() > kMostCharacters;
    lines.push_back(encoded(line.substr(0, kMostCharacters)));
    begin = end + 1;
    goesOn |= lines.size() == kMostLines && begin < text->size();
  }
  return lines;
}

WebAnswer fetched(std::string const & url) {
  KivHTTPClient client(decoded(trimmed(url), CP_ACP, 0).value_or(L"").c_str(), nullptr);
  client.SetRequireValidSslCertificates(true);
  client.SetTimeouts(kStepTime, kStepTime, kStepTime, kStepTime);
  bool const isAnswered = client.SendHttpRequest(L"GET", false);
  if (isAnswered && client.GetResponseStatusCode().Len() > 0)
    return read(client);
  // Without a status the URL could not be used; without a code there was no memory for the body.
  WebAnswer failure;
  failure.error = isAnswered ? ERROR_INVALID_NAME : client.GetLastError();
  if (failure.error == 0)
    failure.error = ERROR_NOT_ENOUGH_MEMORY;
  return failure;
}

/// Shared by the program and the thread: each may be the last one that has it.
struct WebRequest::State {
  WebAnswer answer;
  std::atomic<bool> isDone = false;
};

void WebRequest::Start(std::string const & url) {
  state_ = std::make_shared<State>();
  // The library's texts are shared without locks, so the thread makes its own.
  auto const run = [state = state_, url] {
    try {
      state->answer = fetched(url);
    } catch (std::bad_alloc const &) {
      state->answer.error = ERROR_NOT_ENOUGH_MEMORY;
    }
    state->isDone = true;
  };
  try {
    std::thread(run).detach();
  } catch (std::system_error const &) { // there are too many threads
    state_->answer.error = ERROR_NOT_ENOUGH_MEMORY;
    state_->isDone = true;
  }
}

std::optional<WebAnswer> WebRequest::TakeAnswer() {
  if (!state_ || !state_->isDone)
    return std::nullopt;
  WebAnswer answer = std::move(state_->answer);
  Drop();
  return answer;
}

} // namespace modeler
