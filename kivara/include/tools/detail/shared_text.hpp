#pragma once
/// \file
/// How strings share, grow and release their block. Internal: users have String and WString.

#include "tools/assert.hpp"
#include "tools/detail/text_block.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

namespace SV::detail {

/// Owns one reference to a block.
template <class Char> class SharedText {
public:
  using Data = typename TextBlock<Char>::Data;

  SharedText() noexcept : data_(TextBlock<Char>::empty()) {}
  SharedText(Char const * text, std::int32_t length) : data_(build(text, effectiveLength(text, length))) {}
  static SharedText ofLength(std::int32_t length) {
    SharedText fresh;
    fresh.data_ = build(nullptr, std::clamp(length, 0, STRING_MAXLEN));
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

  void swap(SharedText & other) noexcept { std::swap(data_, other.data_); }

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

  /// \p text may be part of this string.
  void append(Char const * text, std::int32_t length) {
    std::int32_t const old = data_->nLen;
    if (length > STRING_MAXLEN - old)
      length = STRING_MAXLEN - old;
    if (length <= 0)
      return;
    if (old != 0 && fitsInPlace(old + length)) {
      putAfter(data_, old, text, length);
      return;
    }
    Data * const grown = CreateStringData(static_cast<Char const *>(nullptr), old + length);
    std::memcpy(grown->aStr, data_->aStr, static_cast<std::size_t>(old) * sizeof(Char));
    putAfter(grown, old, text, length);
    release(std::exchange(data_, grown));
  }

  /// \p count characters from \p start on, or as many as there are; the whole string shares the block.
  SharedText part(std::int32_t start, std::int32_t count) const {
    if (start < 0 || start >= data_->nLen || count <= 0)
      return SharedText();
    if (count > data_->nLen - start)
      count = data_->nLen - start;
    return count == data_->nLen ? *this : SharedText(data_->aStr + start, count);
  }

  /// The NUL character appends nothing.
  void append(Char c) {
    std::int32_t const old = data_->nLen;
    if (c == Char() || old == 0 || !fitsInPlace(old + 1)) {
      append(&c, c != Char());
      return;
    }
    data_->aStr[old] = c;
    data_->aStr[old + 1] = Char();
    data_->nLen = old + 1;
  }

  /// Copies a shared block, so that the string may be written to.
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
      return lengthOf(text);
    return length < STRING_MAXLEN ? length : STRING_MAXLEN;
  }

  static Data * build(Char const * text, std::int32_t length) {
    return length == 0 ? TextBlock<Char>::empty() : CreateStringData(text, length);
  }

  static void putAfter(Data * block, std::int32_t old, Char const * text, std::int32_t length) {
    std::memcpy(block->aStr + old, text, static_cast<std::size_t>(length) * sizeof(Char));
    block->aStr[old + length] = Char();
    block->nLen = old + length;
  }

  /// Above the size classes a longer string never fits.
  bool fitsInPlace(std::int32_t newLength) const {
    return data_->nRefCount == 0 && blockBytes<Char>(newLength) <= allocatedBytes(blockBytes<Char>(data_->nLen));
  }

  /// Called for each copy and each destruction. If there are characters, the empty block need not be fetched.
  static bool isEmptyBlock(Data const * block) noexcept {
    return block->nLen == 0 && block == TextBlock<Char>::empty();
  }

  void share() const noexcept {
    if (!isEmptyBlock(data_))
      ++data_->nRefCount;
  }

  static void release(Data * block) noexcept {
    if (isEmptyBlock(block))
      return;
    if ((block->nRefCount & 0x7FFFFFFF) != 0)
      --block->nRefCount;
    else
      DeleteStringData(block);
  }

  Data * data_;
};

} // namespace SV::detail
