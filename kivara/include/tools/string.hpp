#pragma once
/// \file
/// String: the 8-bit string of every interface.

#include "tools/detail/compare.hpp"
#include "tools/detail/number_mistakes.hpp"
#include "tools/detail/shared_text.hpp"

#include <algorithm>
#include <utility>

namespace SV {

/// A counted 8-bit string followed by a NUL. It may contain NUL characters; as a C string it then ends at the first.
///
/// Copies share one block, which is copied before the first write. The count of owners is not locked: to pass a string to
/// another thread, build a new one from its characters. Lengths and positions are in characters, positions count from 0. A
/// result longer than STRING_MAXLEN is cut to that length; this is not reported. An operation that cannot allocate throws
/// std::bad_alloc and changes nothing.
///
/// \code
///   SV::String name("report");
///   name += '-';
///   name += SV::String(7);                   // "report-7"
///   bool const isReport = name.substr(0, 6) == "report";
///   double const length = SV::String("7.5"); // 7.5
/// \endcode
///
/// An integer or a character converts to a string, and a string converts to a double, the number at its start. Code that
/// would only compile because of these conversions is rejected: a string as a condition or an integer, a string written to a
/// stream, arithmetic with a string, a comparison with a number. The error message says what to write instead.
class String {
public:
  /// The empty string; all empty strings share one block.
  String() noexcept = default;

  /// The characters up to the NUL; a null pointer gives the empty string.
  String(char const * text) : text_(text, STRING_LEN_TO_NUL) {}

  /// \p length characters, or those up to the NUL if it is STRING_LEN_TO_NUL. A null pointer or a length below 1 gives the
  /// empty string.
  String(char const * text, std::int32_t length) : text_(text, length) {}

  /// \p length characters of any value, to be written through writable(); below 1 the empty string.
  static String ofLength(std::int32_t length) { return String(detail::SharedText<char>::ofLength(length)); }

  /// One character; the NUL character gives the empty string.
  String(char c) : text_(&c, c != '\0') {}

  /// The decimal form of a number. 64-bit numbers do not convert implicitly, since NULL is one of them.
  TL_API String(int number);
  TL_API String(long number);
  TL_API String(unsigned short number);
  TL_API String(unsigned int number);
  TL_API String(unsigned long number);
  TL_API explicit String(long long number);
  TL_API explicit String(unsigned long long number);

  /// The number at the start of the string, as the runtime's atof reads it.
  TL_API operator double() const;

  // clang-format off
  /// Deleted, since it would only compile by accident. The comment has to be on the line that the compiler shows.
  template <detail::WideInteger T> String(T) = delete; // write String(number); for the empty string write nullptr
  template <detail::Unwritten T> String(T) = delete; // which text is it? write a char or an int; format fractions first
  operator bool() const = delete; // for "not empty" write text.Len() > 0; for the number in a text write double(text)
  template <detail::NumberToRead T> operator T() const = delete; // write double(text); for characters text.c_str()
  // clang-format on

  String & operator=(char const * text) { return Assign(text); } ///< null gives the empty string
  /// From a number that converts implicitly. So 0 gives "0" here too, and is not taken for a null pointer.
  template <detail::Number T>
  requires std::convertible_to<T, String> String & operator=(T number) { return *this = String(number); }

  /// Replaces the characters. An unshared block is overwritten in place if the length stays the same and is above 0.
  String & Assign(char const * text, std::int32_t length = STRING_LEN_TO_NUL) {
    text_.assign(text, length);
    return *this;
  }

  /// Exchanges the two strings without copying; the blocks keep their counts of owners.
  void swap(String & other) noexcept { text_.swap(other.text_); }

  std::int32_t Len() const { return text_.length(); } ///< in bytes, without the NUL

  /// The characters and a NUL; valid until the string is changed or destroyed.
  char const * c_str() const { return text_.text(); }

  /// The character at \p position; NUL if there is none.
  char charAt(std::int32_t position) const { return position >= 0 && position < Len() ? c_str()[position] : '\0'; }

  /// The last character. For the empty string it is NUL, and debug builds report a failed assertion.
  char lastChar() const {
    SV_DEBUG_CHECK(Len() > 0, "pData->nLen > 0");
    return charAt(Len() - 1);
  }

  /// Appending to an empty string shares the other one's block. A string may be appended to itself.
  String & operator+=(String const & other) {
    if (Len() == 0)
      text_ = other.text_;
    else
      text_.append(other.c_str(), other.Len());
    return *this;
  }
  String & operator+=(char const * text) {
    if (text != nullptr)
      text_.append(text, detail::lengthOf(text));
    return *this;
  }
  /// The NUL character appends nothing.
  String & operator+=(char c) {
    text_.append(c);
    return *this;
  }
  // clang-format off
  /// Deleted, since it would only compile by accident. The comment has to be on the line that the compiler shows.
  template <detail::NumberToAppend T> String & operator+=(T) = delete; // for digits write String(number); else a char
  // clang-format on

  /// \p count characters from \p start on, or as many as there are. The empty string if \p start is below 0, at the end or
  /// past it, or if \p count is below 1. The whole string shares the block.
  String substr(std::int32_t start, std::int32_t count = STRING_MAXLEN) const { return String(*this, start, count); }

  /// The piece with this index between the separators, from 0; the empty string if there are fewer pieces.
  TL_API String token(std::int32_t index, char separator) const;

  /// Copies a shared block, so that a write changes this string alone. Reports lengths that look like freed memory.
  void makeUnique() { text_.makeUnique(); }

  /// The characters for writing in place; call makeUnique first. The length stays the same.
  char * writable() { return text_.writableText(); }

  /// Replaces each \p from by \p to.
  TL_API String & replaceAll(char from, char to);

  /// Removes each \p c.
  TL_API String & EraseAllChars(char c);

  /// Converts all characters to lower or upper case in the runtime's current locale.
  String & toLower() {
    makeUnique();
    h_strlwr(writable(), Len());
    return *this;
  }
  String & toUpper() {
    makeUnique();
    h_strupr(writable(), Len());
    return *this;
  }

  /// The shared block, for tests of sharing.
  StringData const * block() const { return text_.block(); }

private:
  explicit String(detail::SharedText<char> && text) noexcept : text_(std::move(text)) {}
  /// A part, built in place: moving a string would fetch the empty block once more.
  String(String const & whole, std::int32_t start, std::int32_t count) : text_(whole.text_.part(start, count)) {}

  detail::SharedText<char> text_;
};

inline void swap(String & a, String & b) noexcept { a.swap(b); } ///< without changing the counts of owners

/// Equal in length and in every byte.
inline bool operator==(String const & a, String const & b) {
  return a.block() == b.block() ||
         (a.Len() == b.Len() && detail::areSame(a.c_str(), b.c_str(), static_cast<std::size_t>(a.Len())));
}
inline bool operator==(String const & a, char const * b) {
  if (b == nullptr)
    return a.Len() == 0;
  return a.Len() == detail::lengthOf(b) && detail::areSame(a.c_str(), b, static_cast<std::size_t>(a.Len()));
}

/// The order of h_strcmp: by bytes, up to the first NUL.
inline bool operator<(String const & a, String const & b) {
  return detail::compareUpToNul(a.c_str(), b.c_str(), static_cast<std::size_t>(std::min(a.Len(), b.Len()))) < 0;
}

/// Concatenates the two in one block. If one side is empty and the other is a String, the result shares its block.
TL_API String operator+(String const & a, String const & b);
TL_API String operator+(String const & a, char const * b);
TL_API String operator+(char const * a, String const & b);
/// A writable buffer counts as a C string. Without these, adding the string's number to the pointer would be as good a match.
template <std::same_as<char *> Buffer> String operator+(String const & a, Buffer b) {
  return a + static_cast<char const *>(b);
}
template <std::same_as<char *> Buffer> String operator+(Buffer a, String const & b) {
  return static_cast<char const *>(a) + b;
}

/// Converts a string from the system's code page to UTF-8. A result longer than STRING_MAXLEN is cut after the last whole
/// character that fits. Returns non-zero on success. The conversion fails if \p text is not valid in the code page; \p utf8 is
/// then unchanged.
TL_API int ConvertStringToUTF8String(String const & text, String & utf8);

} // namespace SV
