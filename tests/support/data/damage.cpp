#include "support/data/damage.hpp"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace support {
namespace {

constexpr std::uint64_t kExtremes[] = {0,          1,          0x7F,       0x80,       0xFF,       0xFFFF,
                                       0x7FFFFFFF, 0x80000000, 0xFFFFFFF0, 0xFFFFFFFF, ~0ull >> 1, ~0ull};

char const * const kNumbers[] = {
    "0",          "-1",         "00000000001", "255",   "256", "65536", "2147483647",
    "2147483648", "4294967295", "4294967296",  "1e308", "-",   "0x7F",  "99999999999999999999",
    "-2147483648"};

/// Bytes that are no UTF-8, and characters that few expect.
char const * const kStrays[] = {"\x80",         "\xFF\xFE",     "\xC3", "\xEF\xBB\xBF",
                                "\xE2\x80\xA8", "\xED\xA0\x80", "\x1A", "\x7F"};

template <class Row, std::size_t count> Row const & anyOf(Row const (&rows)[count], std::mt19937 & random) {
  return rows[random() % count];
}

class Change {
public:
  Change(std::string & bytes, std::mt19937 & random, WeakPlaces const & places)
      : bytes_(bytes), random_(random), places_(places) {}

  void make() {
    switch (random_() % 14) {
    case 0:
    case 1: flipBits(); break;
    case 2:
    case 3: replaceByte(); break;
    case 4: bytes_.resize(place()); break;
    case 5: bytes_.erase(place(), length()); break;
    case 6: bytes_.insert(place(), bytes_.substr(place(), length())); break;
    case 7: swap(); break;
    case 8: replaceBinaryNumber(); break;
    case 9: replaceNumber(); break;
    case 10: bytes_.insert(place(), 1 + random_() % 4, '\0'); break;
    case 11: recode(); break;
    case 12: insertRun(); break;
    default: insertPiece();
    }
  }

private:
  /// From the first byte to the one after the last.
  std::size_t place() {
    bool const isAtEnd = places_.end > 0 && random_() % 2 == 0;
    std::size_t const range = isAtEnd ? std::min(places_.end, bytes_.size()) : bytes_.size();
    return bytes_.size() - random_() % (range + 1);
  }

  /// Mostly short.
  std::size_t length() { return 1 + random_() % (random_() % 8 == 0 ? 400 : random_() % 2 == 0 ? 4 : 40); }

  void flipBits() {
    for (std::size_t count = 1 + random_() % 8; count > 0; --count)
      if (std::size_t const at = place(); at < bytes_.size())
        bytes_[at] ^= static_cast<char>(1 << random_() % 8);
  }

  void replaceByte() {
    if (std::size_t const at = place(); at < bytes_.size())
      bytes_[at] = static_cast<char>(random_() % 4 == 0 ? 0xFF : random_());
  }

  void swap() {
    std::size_t const size = length();
    std::size_t const one = place();
    std::size_t const other = place();
    std::size_t const first = std::min(one, other);
    std::size_t const second = std::max(one, other);
    if (first + size > second || second + size > bytes_.size())
      return;
    std::swap_ranges(bytes_.begin() + static_cast<std::ptrdiff_t>(first),
                     bytes_.begin() + static_cast<std::ptrdiff_t>(first + size),
                     bytes_.begin() + static_cast<std::ptrdiff_t>(second));
  }

  void replaceBinaryNumber() {
    std::uint64_t const number = anyOf(kExtremes, random_);
    static constexpr std::size_t kSizes[] = {2, 4, 4, 8};
    std::size_t const size = anyOf(kSizes, random_);
    std::size_t at = place();
    at -= random_() % 2 == 0 ? at % size : 0; // fields are mostly aligned
    if (at + size <= bytes_.size())
      std::memcpy(bytes_.data() + at, &number, size);
  }

  void replaceNumber() {
    constexpr char kDigits[] = "0123456789";
    std::size_t const start = bytes_.find_first_of(kDigits, place());
    if (start == std::string::npos)
      return;
    std::size_t const end = std::min(bytes_.find_first_not_of(kDigits, start), bytes_.size());
    bytes_.replace(start, end - start, anyOf(kNumbers, random_));
  }

  void recode() {
    if (random_() % 4 != 0) {
      bytes_.insert(place(), anyOf(kStrays, random_));
      return;
    }
    std::string wide = random_() % 2 == 0 ? "\xFF\xFE" : "";
    for (char const c : bytes_)
      (wide += c) += '\0';
    bytes_ = wide;
  }

  void insertRun() {
    if (random_() % 8 != 0) // long ones take time
      return insertPiece();
    bytes_.insert(place(), random_() % 10'000, static_cast<char>(random_()));
  }

  void insertPiece() {
    if (places_.pieces.empty())
      bytes_.insert(place(), 1 + random_() % 5, static_cast<char>(random_()));
    else
      bytes_.insert(place(), places_.pieces[random_() % places_.pieces.size()]);
  }

  std::string & bytes_;
  std::mt19937 & random_;
  WeakPlaces const & places_;
};

/// Nothing of the format is left.
std::string noise(std::size_t most, std::mt19937 & random) {
  std::string bytes(random() % (most + 1), '\0');
  std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random()); });
  return bytes;
}

} // namespace

std::string damaged(std::string const & bytes, std::mt19937 & random, WeakPlaces const & places) {
  std::string result = bytes;
  do {
    if (random() % 50 == 0)
      result = noise(bytes.size() + 8, random);
    else
      for (std::size_t count = 1 + random() % places.changes; count > 0; --count)
        Change(result, random, places).make();
  } while (result == bytes);
  return result;
}

std::string damagedText(std::string const & text, std::mt19937 & random, WeakPlaces const & places) {
  std::string result = damaged(text, random, places);
  result.resize(std::min(result.find('\0'), result.size()));
  return result;
}

std::unique_ptr<char[]> ownBlock(std::string const & bytes) {
  std::unique_ptr<char[]> block(new char[bytes.size() + 1]);
  std::memcpy(block.get(), bytes.c_str(), bytes.size() + 1);
  return block;
}

} // namespace support
