#pragma once
/// \file
/// The block that texts share: its layout, its limits, and the functions that make and free it.
/// Internal: users take String and WString.

#include "tools/ctext.hpp"
#include "tools/export.hpp"

#include <cstddef>
#include <cstdint>

namespace SV {

/// One text: nLen characters and a NUL. nRefCount counts the owners besides the first.
struct StringData {
  std::int32_t nLen;
  std::uint32_t nRefCount;
  char aStr[1];
};

struct StringDataW {
  std::int32_t nLen;
  std::uint32_t nRefCount;
  wchar_t aStr[1];
};

/// The most characters that a text holds. Longer results are cut to it without a report.
inline constexpr std::int32_t STRING_MAXLEN = 0x7FFFFFF3;

/// As a length: the text ends at its NUL.
inline constexpr std::int32_t STRING_LEN_TO_NUL = 0x7FFFFFFF;

/// The one block of the empty text. It is never freed and never counted.
TL_API StringData * GetEmptyStrData();
TL_API StringDataW * GetEmptyStrDataW();

/// A block with one owner, room for \p length characters (brought into 0 to STRING_MAXLEN) and for those that its size
/// class still holds. The text is \p text, or undefined where that is null; the NUL is set. Throws std::bad_alloc.
TL_API StringData * CreateStringData(char const * text, std::int32_t length);
TL_API StringDataW * CreateStringData(wchar_t const * text, std::int32_t length);

/// Frees a block that CreateStringData made.
TL_API void DeleteStringData(StringData * block);
TL_API void DeleteStringData(StringDataW * block);

namespace detail {

template <class Char> struct TextBlock;
template <> struct TextBlock<char> {
  using Data = StringData;
  static Data * empty() { return GetEmptyStrData(); }
};
template <> struct TextBlock<wchar_t> {
  using Data = StringDataW;
  static Data * empty() { return GetEmptyStrDataW(); }
};

/// Bytes of a block that holds \p length characters.
template <class Char> constexpr std::size_t blockBytes(std::int32_t length) {
  return static_cast<std::size_t>(length) * sizeof(Char) + sizeof(typename TextBlock<Char>::Data);
}

/// Where size classes end, for each 0x20 bytes.
inline constexpr std::uint16_t kClassEnds[] = {0x20, 0x40, 0x80, 0x80, 0x100, 0x100, 0x100, 0x100};

/// What is allocated for a block of \p bytes, at least 1: the end of its size class, or the bytes themselves above the
/// last one.
constexpr std::size_t allocatedBytes(std::size_t bytes) {
  return bytes > 0x100 ? bytes : kClassEnds[(bytes - 1) / 0x20];
}

/// h_strlen, which the compiler answers for literals.
inline std::int32_t lengthOf(char const * text) {
  if (__builtin_constant_p(__builtin_strlen(text)))
    return static_cast<std::int32_t>(__builtin_strlen(text));
  return h_strlen(text);
}
inline std::int32_t lengthOf(wchar_t const * text) { return h_strlen(text); }

} // namespace detail
} // namespace SV
