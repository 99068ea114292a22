#pragma once
/// \file
/// String: the 8-bit text at every interface.

#include "tools/detail/compare.hpp"
#include "tools/detail/shared_text.hpp"

#include <algorithm>
#include <utility>

namespace SV {

/// A counted 8-bit text with a NUL behind it. It may hold NUL characters; c_str() then shows the part before the first.
///
/// Copies share one block, which is copied before the first write. The count of owners is not locked: a text that
/// another thread gets must be a copy built from its characters. Lengths and positions are in characters and count from
/// 0. A result beyond STRING_MAXLEN characters is cut to it without a report. What cannot allocate throws
/// std::bad_alloc and changes nothing.
///
/// \code
///   SV::String name("report");
///   name += '-';
///   name += SV::String(7);          // "report-7"
///   if (name.substr(0, 6) == "report") ...
/// \endcode
class String {
public:
  /// The empty text: all of them are one block.
  String() noexcept = default;

  /// The characters up to the NUL; a null pointer gives the empty text.
  String(char const * text) : text_(text, STRING_LEN_TO_NUL) {}

  /// \p length characters; with STRING_LEN_TO_NUL those up to the NUL. A null pointer or a length below 1 gives the
  /// empty text.
  String(char const * text, std::int32_t length) : text_(text, length) {}

  /// \p length characters of any value, to be written through writable(); below 1 the empty text.
  static String ofLength(std::int32_t length) { return String(detail::SharedText<char>::ofLength(length)); }

  /// One character; the NUL character gives the empty text.
  explicit String(char c) : text_(&c, c != '\0') {}

  /// Decimal text of a number.
  TL_API explicit String(int number);
  TL_API explicit String(long number);
  TL_API explicit String(long long number);
  TL_API explicit String(unsigned short number);
  TL_API explicit String(unsigned int number);
  TL_API explicit String(unsigned long number);
  TL_API explicit String(unsigned long long number);

  /// The number at the start of the text, as the runtime's atof reads it.
  TL_API explicit operator double() const;

  String & operator=(char const * text) { return Assign(text); } ///< null gives the empty text

  /// Replaces the text. An unshared block is overwritten in place when the length stays the same and is above 0.
  String & Assign(char const * text, std::int32_t length = STRING_LEN_TO_NUL) {
    text_.assign(text, length);
    return *this;
  }

  /// Exchanges the two texts; each keeps its block and all the owners of that.
  void swap(String & other) noexcept { text_.swap(other.text_); }

  std::int32_t Len() const { return text_.length(); } ///< in bytes, without the NUL

  /// The characters and a NUL; valid until the text is changed or dies.
  char const * c_str() const { return text_.text(); }

  /// The character at \p position; NUL where there is none.
  char charAt(std::int32_t position) const { return position >= 0 && position < Len() ? c_str()[position] : '\0'; }

  /// The last character; NUL for the empty text, which debug form also reports.
  char lastChar() const {
    SV_DEBUG_CHECK(Len() > 0, "pData->nLen > 0");
    return charAt(Len() - 1);
  }

  /// Appending to an empty text shares the other block; a text may be appended to itself.
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

  /// \p count characters from \p start on, clipped to what remains. The empty text for a start at or past the end or
  /// below 0 and for a count below 1. The whole text shares the block.
  String substr(std::int32_t start, std::int32_t count = STRING_MAXLEN) const { return String(*this, start, count); }

  /// The piece with this index between separators; the empty text where there are fewer pieces.
  TL_API String token(std::int32_t index, char separator) const;

  /// Copies a shared block, so that this text alone is written to. It reports lengths that look like freed memory.
  void makeUnique() { text_.makeUnique(); }

  /// The characters for writing in place; call makeUnique first. The text keeps its length.
  char * writable() { return text_.writableText(); }

  /// Replaces each \p from by \p to.
  TL_API String & replaceAll(char from, char to);

  /// Removes each \p c.
  TL_API String & EraseAllChars(char c);

  /// Lowers or raises all characters by the runtime's current locale.
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

  /// The block, for those who look at sharing.
  StringData const * block() const { return text_.block(); }

private:
  explicit String(detail::SharedText<char> && text) noexcept : text_(std::move(text)) {}
  /// A part, built where it is to stay: a text that is moved from asks for the empty block.
  String(String const & whole, std::int32_t start, std::int32_t count) : text_(whole.text_.part(start, count)) {}

  detail::SharedText<char> text_;
};

inline void swap(String & a, String & b) noexcept { a.swap(b); } ///< without counting owners

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

/// The joined text, in one block. Where one side is empty, that of the other is shared if it is a String.
TL_API String operator+(String const & a, String const & b);
TL_API String operator+(String const & a, char const * b);
TL_API String operator+(char const * a, String const & b);

/// Writes the UTF-8 form of a text in the system's code page into \p utf8. Non-zero on success; on failure \p utf8 is
/// left as it was.
TL_API int ConvertStringToUTF8String(String const & text, String & utf8);

} // namespace SV
