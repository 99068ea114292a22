// Base64 by OpenSSL.

#include "acrypto.hpp"

#include "crypto/cryptoresult.hpp"

#include <openssl/bio.h>
#include <openssl/buffer.h>
#include <openssl/evp.h>

#include <cstring>

using namespace kivara::crypto;

namespace {

struct ChainRelease {
  void operator()(BIO * chain) const { BIO_free_all(chain); }
};
using Chain = std::unique_ptr<BIO, ChainRelease>;

/// The filter before \p end; null if either is missing. If there is no filter, \p end is released.
Chain filterBefore(BIO * end) {
  Chain owned(end);
  Chain filter(owned != nullptr ? BIO_new(BIO_f_base64()) : nullptr);
  if (filter != nullptr)
    BIO_push(filter.get(), owned.release());
  return filter;
}

} // namespace

std::pair<char *, int> KivCryptoUtils::Base64Encode(unsigned char const * data, int length) {
  if (data == nullptr || length < 0)
    return {nullptr, kBadArgument};
  Chain const chain = filterBefore(BIO_new(BIO_s_mem()));
  BUF_MEM * memory = nullptr;
  if (chain == nullptr || (length > 0 && BIO_write(chain.get(), data, length) != length) ||
      BIO_ctrl(chain.get(), BIO_CTRL_FLUSH, 0, nullptr) <= 0 ||
      BIO_ctrl(chain.get(), BIO_C_GET_BUF_MEM_PTR, 0, &memory) <= 0)
    return {nullptr, kFailed};
  auto text = newBuffer<char>(memory->length);
  if (text == nullptr)
    return {nullptr, kFailed};
  if (memory->length != 0)
    std::memcpy(text.get(), memory->data, memory->length);
  text[memory->length] = '\0';
  return result(text, memory->length);
}

std::pair<unsigned char *, int> KivCryptoUtils::Base64Decode(char const * text) {
  if (text == nullptr)
    return {nullptr, kBadArgument};
  std::size_t const length = std::strlen(text);
  auto data = newBuffer<unsigned char>(length);
  if (data == nullptr)
    return {nullptr, kFailed};
  Chain const chain = filterBefore(BIO_new_mem_buf(text, static_cast<int>(length)));
  int const count = chain != nullptr ? BIO_read(chain.get(), data.get(), static_cast<int>(length)) : kFailed;
  if (count < 0)
    return {nullptr, kFailed};
  return result(data, static_cast<std::size_t>(count));
}
