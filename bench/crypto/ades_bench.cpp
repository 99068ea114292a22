// DES beside OpenSSL's functions of it.

#include "ades.hpp"

#include "support/ratio.hpp"

#include <openssl/des.h>

#include <cstring>
#include <vector>

namespace {

unsigned char kKey[8] = {0x13, 0x34, 0x57, 0x79, 0x9b, 0xbc, 0xdf, 0xf1};

bench::Body ours(void (*cipher)(des_ctx *, unsigned char *, int), int blocks) {
  return [cipher, blocks](benchmark::State & state) {
    des_ctx ctx;
    ades_key(&ctx, kKey);
    std::vector<unsigned char> data(static_cast<std::size_t>(blocks) * 8, 'x');
    for (auto _ : state) {
      cipher(&ctx, data.data(), blocks);
      benchmark::ClobberMemory();
    }
  };
}

bench::Body peer(int direction, int blocks) {
  return [direction, blocks](benchmark::State & state) {
    DES_key_schedule schedule;
    DES_set_key_unchecked(&kKey, &schedule);
    std::vector<unsigned char> data(static_cast<std::size_t>(blocks) * 8, 'x');
    for (auto _ : state) {
      for (int i = 0; i < blocks; ++i) {
        auto * const block = reinterpret_cast<DES_cblock *>(data.data() + i * 8);
        DES_ecb_encrypt(block, block, &schedule, direction);
      }
      benchmark::ClobberMemory();
    }
  };
}

void makeKey(benchmark::State & state) {
  des_ctx ctx;
  for (auto _ : state) {
    ades_key(&ctx, kKey);
    benchmark::DoNotOptimize(ctx);
  }
}

void makePeersKey(benchmark::State & state) {
  DES_key_schedule schedule;
  for (auto _ : state) {
    DES_set_key_unchecked(&kKey, &schedule);
    benchmark::DoNotOptimize(schedule);
  }
}

bench::Pair const pairs[] = {
    {"DES: encryption of a block", bench::atMost(1), ours(ades_enc, 1), "DES_ecb_encrypt", peer(DES_ENCRYPT, 1)},
    {"DES: decryption of a block", bench::atMost(1), ours(ades_dec, 1), "DES_ecb_encrypt", peer(DES_DECRYPT, 1)},
    {"DES: encryption of 1,000 blocks", bench::atMost(1), ours(ades_enc, 1000), "DES_ecb_encrypt",
     peer(DES_ENCRYPT, 1000)},
    {"DES: decryption of 1,000 blocks", bench::atMost(1), ours(ades_dec, 1000), "DES_ecb_encrypt",
     peer(DES_DECRYPT, 1000)},
    {"DES: a key, both schedules (peer: one for both)", bench::atMost(1), makeKey, "DES_set_key_unchecked",
     makePeersKey},
};

} // namespace
