#pragma once
/// \file
/// Deleted operations. Without them, the conversions between String and numbers would let mistakes compile, such as a string
/// as a condition. In its error message the compiler shows the line of the deleted operation, so the comment at the end of
/// that line says what to write instead.
/// Internal: string.hpp includes it.

#include <concepts>
#include <iosfwd>
#include <type_traits>

namespace SV {

class String;

namespace detail {

template <class T, class... Others> inline constexpr bool isOneOf = (std::is_same_v<T, Others> || ...);

/// A type that arithmetic accepts: numbers, characters, bool, enumerations.
template <class T>
concept Number = std::is_arithmetic_v<T> || std::is_enum_v<T>;

/// The integers that do not convert implicitly: NULL has such a type.
template <class T>
concept WideInteger = isOneOf<T, long long, unsigned long long>;

/// bool, floating-point numbers, bytes and wide characters: it is not clear which string they should give.
template <class T>
concept Unwritten = std::is_arithmetic_v<T> && !WideInteger<T> &&
                    !isOneOf<T, char, short, unsigned short, int, unsigned int, long, unsigned long>;

template <class T>
concept NumberToRead = std::is_arithmetic_v<T> && !isOneOf<T, bool, double>;
template <class T>
concept NumberToAppend = Number<T> && !std::same_as<T, char>;

template <class A, class B>
concept StringAndNumber = (std::same_as<A, String> && Number<B>) || (Number<A> && std::same_as<B, String>);
template <class A, class B>
concept StringsOrNumber = StringAndNumber<A, B> ||(std::same_as<A, String> && std::same_as<B, String>);

} // namespace detail

// The comments have to be on the lines that the compiler shows.
// clang-format off
template <class A, class B> requires detail::StringAndNumber<A, B>
void operator+(A const &, B const &) = delete; // append with +=, or write String(number); for a sum write double(text)
template <class A, class B> requires detail::StringsOrNumber<A, B>
void operator-(A const &, B const &) = delete; // for the number in a text write double(text)
template <class A, class B> requires detail::StringsOrNumber<A, B>
void operator*(A const &, B const &) = delete; // for the number in a text write double(text)
template <class A, class B> requires detail::StringsOrNumber<A, B>
void operator/(A const &, B const &) = delete; // for the number in a text write double(text)

template <class A, class B> requires detail::StringAndNumber<A, B>
bool operator==(A const &, B const &) = delete; // as texts or as numbers? write String(number) or double(text)
template <class A, class B> requires detail::StringAndNumber<A, B>
bool operator<(A const &, B const &) = delete; // as texts or as numbers? write String(number) or double(text)
template <class A, class B> requires detail::StringsOrNumber<A, B>
bool operator>(A const &, B const &) = delete; // texts have only <; for the number in a text write double(text)
template <class A, class B> requires detail::StringsOrNumber<A, B>
bool operator<=(A const &, B const &) = delete; // texts have only <; for the number in a text write double(text)
template <class A, class B> requires detail::StringsOrNumber<A, B>
bool operator>=(A const &, B const &) = delete; // texts have only <; for the number in a text write double(text)

template <class Char, class Traits>
void operator<<(std::basic_ostream<Char, Traits> &, String const &) = delete; // write text.c_str(), or all Len() bytes
// clang-format on

} // namespace SV
