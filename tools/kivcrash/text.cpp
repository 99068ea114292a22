#include "text.hpp"

#include "tools/winapi.hpp"

#include <algorithm>
#include <cstdio>

namespace kivcrash {
namespace {

std::wstring widened(std::string_view text, UINT codePage) {
  auto const length = static_cast<int>(text.size());
  std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(codePage, 0, text.data(), length, nullptr, 0)), L'\0');
  MultiByteToWideChar(codePage, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

bool isControlCharacter(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }

} // namespace

std::string toUtf8(std::wstring_view wide) {
  auto const length = static_cast<int>(wide.size());
  auto const size = WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, text.data(), size, nullptr, nullptr);
  return text;
}

std::wstring toWide(std::string_view utf8) { return widened(utf8, CP_UTF8); }
std::string toUtf8(std::filesystem::path const & path) { return toUtf8(std::wstring_view(path.native())); }
std::string fromSystem(std::string_view text) { return toUtf8(std::wstring_view(widened(text, CP_ACP))); }

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

bool hasControlCharacter(std::string_view text) { return std::ranges::any_of(text, isControlCharacter); }

std::string printable(std::string_view text) {
  std::string shown(text);
  std::ranges::replace_if(shown, isControlCharacter, '?');
  return shown;
}

} // namespace kivcrash
