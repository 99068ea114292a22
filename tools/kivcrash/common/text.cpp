#include "common/text.hpp"

#include "tools/winapi.hpp"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <stdexcept>

namespace kivcrash {
namespace {

/// The system's functions count in int.
int lengthOf(std::size_t size) {
  if (size > static_cast<std::size_t>(std::numeric_limits<int>::max()))
    throw std::runtime_error("a text of more than 2 GiB cannot be shown");
  return static_cast<int>(size);
}

std::wstring widened(std::string_view text, UINT codePage) {
  int const length = lengthOf(text.size());
  std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(codePage, 0, text.data(), length, nullptr, 0)), L'\0');
  MultiByteToWideChar(codePage, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

/// The bytes of the control character that the text begins with; 0: it begins with none. Those from U+0080 on have two.
std::size_t controlLength(std::string_view text) {
  auto const first = static_cast<unsigned char>(text[0]);
  if (first < ' ' || first == 0x7F)
    return 1;
  return first == 0xC2 && text.size() > 1 && (static_cast<unsigned char>(text[1]) & 0xE0) == 0x80 ? 2 : 0;
}

} // namespace

std::string toUtf8(std::wstring_view wide) {
  int const length = lengthOf(wide.size());
  auto const size = WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, text.data(), size, nullptr, nullptr);
  return text;
}

std::wstring toWide(std::string_view utf8) { return widened(utf8, CP_UTF8); }
std::string toUtf8(std::filesystem::path const & path) { return toUtf8(std::wstring_view(path.native())); }
std::string fromSystem(std::string_view text) { return toUtf8(std::wstring_view(widened(text, CP_ACP))); }
std::string fromConsole(std::string_view text) { return toUtf8(std::wstring_view(widened(text, CP_OEMCP))); }
std::string validUtf8(std::string_view text) { return toUtf8(std::wstring_view(toWide(text))); }

std::string hex(std::uint64_t value) { return hex(value, 1); }

std::string hex(std::uint64_t value, int digits) {
  char text[32];
  std::snprintf(text, sizeof text, "0x%0*llX", digits, static_cast<unsigned long long>(value));
  return text;
}

std::string_view fileName(std::string_view path) {
  std::size_t const separator = path.find_last_of("\\/");
  return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

std::string lowerCase(std::string_view text) {
  std::wstring wide = toWide(text);
  CharLowerBuffW(wide.data(), static_cast<DWORD>(wide.size()));
  return toUtf8(std::wstring_view(wide));
}

bool hasControlCharacter(std::string_view text) { return printable(text) != text; }

std::string printable(std::string_view text) {
  std::string shown;
  while (!text.empty()) {
    std::size_t const length = controlLength(text);
    shown += length == 0 ? text[0] : '?';
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return shown;
}

} // namespace kivcrash
