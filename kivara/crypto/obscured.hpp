#pragma once
/// \file
/// Fixed keys are stored in another form, so that a search for them in the binary finds nothing.

#include <array>
#include <cstddef>
#include <cstdint>

namespace kivara::fixed {

consteval unsigned char digitValue(char digit) {
  if (digit >= '0' && digit <= '9')
    return static_cast<unsigned char>(digit - '0');
  char const lower = static_cast<char>(digit | 0x20);
  return lower >= 'a' && lower <= 'f' ? static_cast<unsigned char>(lower - 'a' + 10)
                                      : throw "a key holds something else than hexadecimal digits";
}

/// Bytes written as two hexadecimal digits each.
template <std::size_t Count> struct BytesOf {
  std::array<unsigned char, Count> bytes{};

  consteval explicit BytesOf(char const (&digits)[Count * 2 + 1]) {
    for (std::size_t i = 0; i < Count; ++i)
      bytes[i] = static_cast<unsigned char>(digitValue(digits[i * 2]) << 4 | digitValue(digits[i * 2 + 1]));
  }
};

/// Bytes that are stored in another form and only decoded on request.
template <std::size_t Count> class Obscured {
public:
  consteval explicit Obscured(char const (&digits)[Count * 2 + 1]) : stored_(BytesOf<Count>(digits).bytes) {
    for (std::size_t i = 0; i < Count; ++i)
      stored_[i] ^= cover(i);
  }

  std::array<unsigned char, Count> revealed() const {
    // The bytes are read one by one in a way that the compiler cannot evaluate: it would otherwise store the result too.
    unsigned char const volatile * const stored = stored_.data();
    std::array<unsigned char, Count> result;
    for (std::size_t i = 0; i < Count; ++i)
      result[i] = static_cast<unsigned char>(stored[i] ^ cover(i));
    return result;
  }

private:
  static constexpr unsigned char cover(std::size_t i) { return static_cast<unsigned char>(i * 73 + 0xa5); }

  std::array<unsigned char, Count> stored_;
};

/// A key of eight bytes as two little-endian values, which become part of the code that uses them.
struct DesKey {
  std::uint32_t low;
  std::uint32_t high;

  consteval explicit DesKey(BytesOf<8> const & key) : low(word(key, 0)), high(word(key, 4)) {}

private:
  static consteval std::uint32_t word(BytesOf<8> const & key, std::size_t first) {
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;)
      value = value << 8 | key.bytes[first + i];
    return value;
  }
};

} // namespace kivara::fixed
