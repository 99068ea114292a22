#pragma once
/// \file
/// WString: a string of 16-bit characters, with the rules of String.

#include "tools/detail/shared_text.hpp"

#include <cstring>
#include <utility>

namespace SV {

/// A counted string of UTF-16 units followed by a NUL. Sharing, growth and limits are those of String; lengths and positions
/// are in units. The caller converts to and from 8-bit strings.
class WString {
public:
  WString() noexcept = default;

  /// The units up to the NUL; a null pointer gives the empty string.
  WString(wchar_t const * text) : text_(text, STRING_LEN_TO_NUL) {}

  /// \p length units; a null pointer or a length below 1 gives the empty string.
  WString(wchar_t const * text, std::int32_t length) : text_(text, length) {}

  /// \p length units of any value, to be written through writable(); below 1 the empty string.
  static WString ofLength(std::int32_t length) { return WString(detail::SharedText<wchar_t>::ofLength(length)); }

  /// One unit; the NUL unit gives the empty string.
  explicit WString(wchar_t c) : text_(&c, c != L'\0') {}

  WString & operator=(wchar_t const * text) { return Assign(text); } ///< null gives the empty string

  /// Like the operation of that name in String; so are those below.
  WString & Assign(wchar_t const * text, std::int32_t length = STRING_LEN_TO_NUL) {
    text_.assign(text, length);
    return *this;
  }

  /// Exchanges the two strings without copying; the blocks keep their counts of owners.
  void swap(WString & other) noexcept { text_.swap(other.text_); }

  std::int32_t Len() const { return text_.length(); } ///< in units, without the NUL
  wchar_t const * c_str() const { return text_.text(); }

  /// The unit at \p position; NUL where there is none.
  wchar_t charAt(std::int32_t position) const { return position >= 0 && position < Len() ? c_str()[position] : L'\0'; }

  /// A null pointer and the NUL unit append nothing.
  WString & operator+=(WString const & other) {
    if (Len() == 0)
      text_ = other.text_;
    else
      text_.append(other.c_str(), other.Len());
    return *this;
  }
  WString & operator+=(wchar_t const * text) {
    if (text != nullptr)
      text_.append(text, h_strlen(text));
    return *this;
  }
  WString & operator+=(wchar_t c) {
    text_.append(c);
    return *this;
  }

  /// \p count units from \p start on, clipped to what remains.
  WString substr(std::int32_t start, std::int32_t count = STRING_MAXLEN) const {
    return WString(text_.part(start, count));
  }

  /// For writing in place: call makeUnique, then write through writable.
  void makeUnique() { text_.makeUnique(); }
  wchar_t * writable() { return text_.writableText(); }

  /// The shared block, for tests of sharing.
  StringDataW const * block() const { return text_.block(); }

private:
  explicit WString(detail::SharedText<wchar_t> && text) noexcept : text_(std::move(text)) {}

  detail::SharedText<wchar_t> text_;
};

inline void swap(WString & a, WString & b) noexcept { a.swap(b); } ///< without changing the counts of owners

/// Equal in length and in every unit.
inline bool operator==(WString const & a, WString const & b) {
  return a.block() == b.block() ||
         (a.Len() == b.Len() &&
          std::memcmp(a.c_str(), b.c_str(), static_cast<std::size_t>(a.Len()) * sizeof(wchar_t)) == 0);
}

} // namespace SV
