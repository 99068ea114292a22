#pragma once
/// \file
/// The shared block of String and WString, and the rules by which texts share, grow and release it.
/// Internal: users take String and WString.

#include "tools/assert.hpp"
#include "tools/ctext.hpp"
#include "tools/export.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>

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

/// A block with one owner, room for \p length characters (at least 1, at most STRING_MAXLEN) and for those that its size
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

/// What is allocated for a block of \p bytes: the end of its size class; above the last class the bytes themselves.
constexpr std::size_t allocatedBytes(std::size_t bytes) {
  if (bytes <= 0x20)
    return 0x20;
  if (bytes <= 0x40)
    return 0x40;
  if (bytes <= 0x80)
    return 0x80;
  return bytes <= 0x100 ? 0x100 : bytes;
}

/// Owner of one reference to a block.
template <class Char> class SharedText {
public:
  using Data = typename TextBlock<Char>::Data;

  SharedText() noexcept : data_(TextBlock<Char>::empty()) {}
  SharedText(Char const * text, std::int32_t length) : data_(build(text, effectiveLength(text, length))) {}
  static SharedText ofLength(std::int32_t length) {
    SharedText fresh;
    fresh.data_ = CreateStringData(static_cast<Char const *>(nullptr), length);
    return fresh;
  }

  SharedText(SharedText const & other) noexcept : data_(other.data_) { share(); }
  SharedText(SharedText && other) noexcept : data_(std::exchange(other.data_, TextBlock<Char>::empty())) {}
  ~SharedText() { release(data_); }

  // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): the count goes up before it goes down
  SharedText & operator=(SharedText const & other) noexcept {
    other.share();
    release(std::exchange(data_, other.data_));
    return *this;
  }
  SharedText & operator=(SharedText && other) noexcept {
    release(std::exchange(data_, std::exchange(other.data_, TextBlock<Char>::empty())));
    return *this;
  }

  std::int32_t length() const { return data_->nLen; }
  Char const * text() const { return data_->aStr; }
  Char * writableText() { return data_->aStr; }
  Data const * block() const { return data_; }

  void assign(Char const * text, std::int32_t length) {
    length = effectiveLength(text, length);
    if (data_->nRefCount == 0 && length == data_->nLen && length > 0)
      std::memmove(data_->aStr, text, static_cast<std::size_t>(length) * sizeof(Char));
    else
      release(std::exchange(data_, build(text, length)));
  }

  /// \p text may lie in this very text.
  void append(Char const * text, std::int32_t length) {
    std::int32_t const old = data_->nLen;
    if (length > STRING_MAXLEN - old)
      length = STRING_MAXLEN - old;
    if (length <= 0)
      return;
    if (old != 0 && fitsInPlace(old + length)) {
      putBehind(data_, old, text, length);
      return;
    }
    Data * const grown = CreateStringData(static_cast<Char const *>(nullptr), old + length);
    std::memcpy(grown->aStr, data_->aStr, static_cast<std::size_t>(old) * sizeof(Char));
    putBehind(grown, old, text, length);
    release(std::exchange(data_, grown));
  }

  /// The text of \p count characters from \p start on, clipped to what is there; the whole text shares the block.
  SharedText part(std::int32_t start, std::int32_t count) const {
    if (start < 0 || start >= data_->nLen || count <= 0)
      return SharedText();
    if (count > data_->nLen - start)
      count = data_->nLen - start;
    return count == data_->nLen ? *this : SharedText(data_->aStr + start, count);
  }

  /// Copies a shared block, so that the text may be written to.
  void makeUnique() {
    SharedText const * const pString = this;
    SV_CHECK((static_cast<unsigned long>(pString->length()) & 0xff000000) != 0xcd000000,
             "(unsigned long (pString->Len ()) & 0xff000000) != 0xcd000000");
    SV_CHECK((static_cast<unsigned long>(pString->length()) & 0x00ff0000) != 0x00cd0000,
             "(unsigned long (pString->Len ()) & 0x00ff0000) != 0x00cd0000");
    if (data_->nRefCount != 0)
      release(std::exchange(data_, build(data_->aStr, data_->nLen)));
  }

private:
  static std::int32_t effectiveLength(Char const * text, std::int32_t length) {
    if (text == nullptr || length <= 0)
      return 0;
    if (length == STRING_LEN_TO_NUL)
      return h_strlen(text);
    return length < STRING_MAXLEN ? length : STRING_MAXLEN;
  }

  static Data * build(Char const * text, std::int32_t length) {
    return length == 0 ? TextBlock<Char>::empty() : CreateStringData(text, length);
  }

  static void putBehind(Data * block, std::int32_t old, Char const * text, std::int32_t length) {
    std::memcpy(block->aStr + old, text, static_cast<std::size_t>(length) * sizeof(Char));
    block->aStr[old + length] = Char();
    block->nLen = old + length;
  }

  bool fitsInPlace(std::int32_t newLength) const {
    std::size_t const allocated = allocatedBytes(blockBytes<Char>(data_->nLen));
    return data_->nRefCount == 0 && allocated <= 0x100 && blockBytes<Char>(newLength) <= allocated;
  }

  void share() const noexcept {
    if (data_ != TextBlock<Char>::empty())
      ++data_->nRefCount;
  }

  static void release(Data * block) noexcept {
    if (block == TextBlock<Char>::empty())
      return;
    if ((block->nRefCount & 0x7FFFFFFF) != 0)
      --block->nRefCount;
    else
      DeleteStringData(block);
  }

  Data * data_;
};

} // namespace detail
} // namespace SV
