#pragma once
/// \file
/// The block that strings share: its layout, its limits, and the functions that create and free it. Internal: users have
/// String and WString.

#include "tools/ctext.hpp"
#include "tools/export.hpp"

#include <cstddef>
#include <cstdint>

namespace SV {

/// One string: nLen characters and a NUL. nRefCount is the number of owners besides the first.
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

/// The maximum length of a string. Longer results are cut to it; this is not reported.
inline constexpr std::int32_t STRING_MAXLEN = 0x7FFFFFF3;

/// A length that means: the string ends at its NUL.
inline constexpr std::int32_t STRING_LEN_TO_NUL = 0x7FFFFFFF;

/// The one block of the empty string. It is never freed, and its owners are not counted.
TL_API StringData * GetEmptyStrData();
TL_API StringDataW * GetEmptyStrDataW();

/// Creates a block with one owner and \p length characters, limited to 0 to STRING_MAXLEN. There is room up to the end of
/// its size class. The characters are those of \p text, or undefined if it is null; the NUL is set. Throws std::bad_alloc.
TL_API StringData * CreateStringData(char const * text, std::int32_t length);
TL_API StringDataW * CreateStringData(wchar_t const * text, std::int32_t length);

/// Frees a block from CreateStringData.
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

/// The size of a block with \p length characters, in bytes.
template <class Char> constexpr std::size_t blockBytes(std::int32_t length) {
  return static_cast<std::size_t>(length) * sizeof(Char) + sizeof(typename TextBlock<Char>::Data);
}

/// The end of the size class for each 0x20 bytes.
inline constexpr std::uint16_t kClassEnds[] = {0x20, 0x40, 0x80, 0x80, 0x100, 0x100, 0x100, 0x100};

/// The bytes to allocate for a block of \p bytes, at least 1: up to the end of its size class, or exactly \p bytes above the
/// last class.
constexpr std::size_t allocatedBytes(std::size_t bytes) {
  return bytes > 0x100 ? bytes : kClassEnds[(bytes - 1) / 0x20];
}

/// h_strlen, which is known at compile time for literals.
inline std::int32_t lengthOf(char const * text) {
  if (__builtin_constant_p(__builtin_strlen(text)))
    return static_cast<std::int32_t>(__builtin_strlen(text));
  return h_strlen(text);
}
inline std::int32_t lengthOf(wchar_t const * text) { return h_strlen(text); }

} // namespace detail
} // namespace SV
