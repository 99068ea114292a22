// Hexadecimal digits and Base64 beside OpenSSL's block functions and beside loops over the runtime's formats. Both
// sides allocate their result.

#include "acrypto.hpp"

#include "support/ratio.hpp"

#include <openssl/evp.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int kLength = 3000;

std::vector<unsigned char> const data = [] {
  std::vector<unsigned char> bytes(kLength);
  for (std::size_t i = 0; i < bytes.size(); ++i)
    bytes[i] = static_cast<unsigned char>(i * 167 + i / 256);
  return bytes;
}();

std::string hexOfData() {
  auto const [text, length] = KivCryptoUtils::HexEncode(data.data(), kLength);
  std::string const result(text, static_cast<std::size_t>(length));
  KivCryptoUtils::Free(text);
  return result;
}

std::string base64OfData() {
  char * text = nullptr;
  unsigned long length = 0;
  Kiv_NewBase64Encode(reinterpret_cast<char const *>(data.data()), kLength, text, length);
  std::unique_ptr<char[]> const owned(text);
  return std::string(text, length);
}

/// Runs what gives an array from new[] and releases that.
template <class Make> bench::Body making(Make make) {
  return [make = std::move(make)](benchmark::State & state) mutable {
    for (auto _ : state) {
      auto * const result = make();
      benchmark::DoNotOptimize(*result);
      benchmark::ClobberMemory();
      delete[] result;
    }
  };
}

template <class Text>
bench::Body kivBase64(bool (*code)(Text, unsigned long, char *&, unsigned long &), std::string in) {
  return making([code, in = std::move(in)]() mutable {
    char * out = nullptr;
    unsigned long length = 0;
    code(in.data(), static_cast<unsigned long>(in.size()), out, length);
    return out;
  });
}

std::string dataText() { return std::string(data.begin(), data.end()); }

bench::Body hexEncode() {
  return making([] { return KivCryptoUtils::HexEncode(data.data(), kLength).first; });
}
bench::Body hexDecode() {
  return making([text = hexOfData()] { return KivCryptoUtils::HexDecode(text.c_str()).first; });
}

bench::Body peersEncode() {
  return making([] {
    auto * const text = new unsigned char[kLength / 3 * 4 + 1];
    EVP_EncodeBlock(text, data.data(), kLength);
    return text;
  });
}
bench::Body peersDecode() {
  return making([text = base64OfData()] {
    auto * const bytes = new unsigned char[kLength + 1];
    EVP_DecodeBlock(bytes, reinterpret_cast<unsigned char const *>(text.data()), static_cast<int>(text.size()));
    return bytes;
  });
}

bench::Body sprintfLoop() {
  return making([] {
    auto * const text = new char[kLength * 2 + 1];
    for (int i = 0; i < kLength; ++i)
      std::sprintf(text + i * 2, "%02X", static_cast<unsigned>(data[static_cast<std::size_t>(i)]));
    return text;
  });
}
bench::Body sscanfLoop() {
  return making([text = hexOfData()] {
    auto * const bytes = new unsigned char[kLength];
    for (int i = 0; i < kLength; ++i) {
      // A pair of its own: some runtimes look for the end of the whole text with each call.
      char const pair[3] = {text[static_cast<std::size_t>(i) * 2], text[static_cast<std::size_t>(i) * 2 + 1], '\0'};
      unsigned value = 0;
      std::sscanf(pair, "%2x", &value);
      bytes[i] = static_cast<unsigned char>(value);
    }
    return bytes;
  });
}

bench::Pair const pairs[] = {
    {"Base64, old form: encoding 3,000 bytes", bench::atMost(1), kivBase64(Kiv_OldBase64Encode, dataText()),
     "EVP_EncodeBlock", peersEncode()},
    {"Base64, new form: encoding 3,000 bytes", bench::atMost(1), kivBase64(Kiv_NewBase64Encode, dataText()),
     "EVP_EncodeBlock", peersEncode()},
    {"Base64, old form: decoding 3,000 bytes", bench::atMost(1), kivBase64(Kiv_OldBase64Decode, base64OfData()),
     "EVP_DecodeBlock", peersDecode()},
    {"Base64, new form: decoding 3,000 bytes", bench::atMost(1), kivBase64(Kiv_NewBase64Decode, base64OfData()),
     "EVP_DecodeBlock", peersDecode()},
    {"Base64, old form: encoding 3,000 bytes, and a loop", bench::timesAsFast(3),
     kivBase64(Kiv_OldBase64Encode, dataText()), "sprintf of digits", sprintfLoop()},
    {"Base64, old form: decoding 3,000 bytes, and a loop", bench::timesAsFast(3),
     kivBase64(Kiv_OldBase64Decode, base64OfData()), "sscanf of digits", sscanfLoop()},
    {"Base64, new form: encoding 3,000 bytes, and a loop", bench::timesAsFast(3),
     kivBase64(Kiv_NewBase64Encode, dataText()), "sprintf of digits", sprintfLoop()},
    {"Base64, new form: decoding 3,000 bytes, and a loop", bench::timesAsFast(3),
     kivBase64(Kiv_NewBase64Decode, base64OfData()), "sscanf of digits", sscanfLoop()},
    {"Hex: encoding 3,000 bytes", bench::atMost(1), hexEncode(), "EVP_EncodeBlock", peersEncode()},
    {"Hex: decoding 3,000 bytes", bench::atMost(1), hexDecode(), "EVP_DecodeBlock", peersDecode()},
    {"Hex: encoding 3,000 bytes, and a loop", bench::timesAsFast(3), hexEncode(), "sprintf", sprintfLoop()},
    {"Hex: decoding 3,000 bytes, and a loop", bench::timesAsFast(3), hexDecode(), "sscanf", sscanfLoop()},
};

} // namespace
