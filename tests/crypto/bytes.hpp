#pragma once
/// \file
/// Bytes of the tests: from and to digits, random ones, results that release themselves.

#include "acrypto.hpp"

#include "support/data/random.hpp"

#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace bytes {

using Bytes = std::vector<unsigned char>;

inline Bytes fromHex(std::string const & digits) {
  Bytes result;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
    result.push_back(static_cast<unsigned char>(std::stoi(digits.substr(i, 2), nullptr, 16)));
  return result;
}

inline std::string toHex(unsigned char const * data, std::size_t length) {
  std::string result;
  for (std::size_t i = 0; i < length; ++i)
    for (int const half : {data[i] >> 4, data[i] & 15})
      result += "0123456789ABCDEF"[half];
  return result;
}
inline std::string toHex(Bytes const & data) { return toHex(data.data(), data.size()); }

/// The same bytes in each run.
class Random {
public:
  explicit Random(unsigned seed) : engine_(seed) {}

  std::size_t below(std::size_t end) { return std::uniform_int_distribution<std::size_t>(0, end - 1)(engine_); }
  unsigned char byte() { return static_cast<unsigned char>(engine_()); }

  Bytes bytes(std::size_t count) {
    Bytes result(count);
    for (auto & each : result)
      each = byte();
    return result;
  }

  /// Mostly characters of \p alphabet, now and then any other but NUL.
  std::string text(std::size_t length, std::string const & alphabet) {
    std::string result(length, 'x');
    bool const clean = below(4) == 0;
    for (auto & each : result)
      each = clean || below(40) != 0 ? alphabet[below(alphabet.size())] : static_cast<char>(1 + below(255));
    return result;
  }

private:
  support::Random engine_;
};

/// A result of KivCryptoUtils that is released at the end.
template <class T> class Result {
public:
  Result(std::pair<T *, int> const & pair) : data_(pair.first), length(pair.second) {}
  ~Result() { KivCryptoUtils::Free(data_); }
  Result(Result const &) = delete;
  Result & operator=(Result const &) = delete;

  T * data() const { return data_; }
  std::string hex() const {
    return toHex(reinterpret_cast<unsigned char const *>(data_), static_cast<std::size_t>(length));
  }
  std::string text() const {
    return std::string(reinterpret_cast<char const *>(data_), static_cast<std::size_t>(length));
  }
  bool failedWith(int code) const { return data_ == nullptr && length == code; }

private:
  T * const data_;

public:
  int const length;
};
template <class T> Result(std::pair<T *, int>) -> Result<T>;

} // namespace bytes
