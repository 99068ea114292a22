#include "ades.hpp"

#include "crypto/ades_tables.hpp"

#include <cstring>
#include <utility>

namespace {

using std::uint32_t;

constexpr kivara::des::CombinedTables kCombined = kivara::des::combinedTables();

uint32_t firstByteHighest(uint32_t word) { return __builtin_bswap32(word); }

// What runs sixteen times for each block is inlined by order: called, it would pass the halves through memory.

/// The two halves of so many blocks side by side: the processor works on one while the other waits for its tables.
template <int Blocks> struct Halves {
  uint32_t left[Blocks];
  uint32_t right[Blocks];
};

/// Exchanges the bits of \p low that \p mask names with those of \p high that stand \p distance further left.
[[gnu::always_inline]] inline void exchange(uint32_t & high, uint32_t & low, int distance, uint32_t mask) {
  uint32_t const difference = (high >> distance ^ low) & mask;
  low ^= difference;
  high ^= difference << distance;
}

// The initial permutation moves whole rows and columns of an 8 by 8 square of bits, so five exchanges do it, and the same five
// in reverse order undo it. Behind it both halves are turned right by one, as the combined tables want them.

[[gnu::always_inline]] inline void permuteInitially(uint32_t & left, uint32_t & right) {
  exchange(left, right, 4, 0x0f0f0f0f);
  exchange(left, right, 16, 0x0000ffff);
  exchange(right, left, 2, 0x33333333);
  exchange(right, left, 8, 0x00ff00ff);
  exchange(left, right, 1, 0x55555555);
  left = std::rotr(left, 1);
  right = std::rotr(right, 1);
}

[[gnu::always_inline]] inline void permuteFinally(uint32_t & left, uint32_t & right) {
  left = std::rotl(left, 1);
  right = std::rotl(right, 1);
  exchange(left, right, 1, 0x55555555);
  exchange(right, left, 8, 0x00ff00ff);
  exchange(right, left, 2, 0x33333333);
  exchange(left, right, 16, 0x0000ffff);
  exchange(left, right, 4, 0x0f0f0f0f);
}

[[gnu::always_inline]] inline uint32_t roundChange(uint32_t half, uint32_t const * key) {
  uint32_t const even = half ^ key[0];
  uint32_t const odd = std::rotl(half, 4) ^ key[1];
  return kCombined[0][even >> 26] ^ kCombined[2][even >> 18 & 63] ^ kCombined[4][even >> 10 & 63] ^
         kCombined[6][even >> 2 & 63] ^ kCombined[1][odd >> 26] ^ kCombined[3][odd >> 18 & 63] ^
         kCombined[5][odd >> 10 & 63] ^ kCombined[7][odd >> 2 & 63];
}

template <int Blocks> Halves<Blocks> load(unsigned char const * data) {
  Halves<Blocks> halves;
  for (int i = 0; i < Blocks; ++i, data += 8) {
    uint32_t words[2];
    std::memcpy(words, data, sizeof words);
    halves.left[i] = firstByteHighest(words[0]);
    halves.right[i] = firstByteHighest(words[1]);
    permuteInitially(halves.left[i], halves.right[i]);
  }
  return halves;
}

// The halves change places behind the last round.
template <int Blocks> void store(Halves<Blocks> & halves, unsigned char * data) {
  for (int i = 0; i < Blocks; ++i, data += 8) {
    permuteFinally(halves.right[i], halves.left[i]);
    uint32_t const words[2] = {firstByteHighest(halves.right[i]), firstByteHighest(halves.left[i])};
    std::memcpy(data, words, sizeof words);
  }
}

template <int Blocks> void cipher(uint32_t const * schedule, unsigned char * data) {
  Halves<Blocks> halves = load<Blocks>(data);
  for (uint32_t const * key = schedule; key != schedule + 32; key += 4) {
    for (int i = 0; i < Blocks; ++i)
      halves.left[i] ^= roundChange(halves.right[i], key);
    for (int i = 0; i < Blocks; ++i)
      halves.right[i] ^= roundChange(halves.left[i], key + 2);
  }
  store(halves, data);
}

void cipherAll(uint32_t const * schedule, unsigned char * data, int blocks) {
  for (; blocks >= 2; blocks -= 2, data += 16)
    cipher<2>(schedule, data);
  if (blocks == 1)
    cipher<1>(schedule, data);
}

} // namespace

void ades_enc(des_ctx * ctx, unsigned char * data, int blocks) { cipherAll(ctx->encryption, data, blocks); }
void ades_dec(des_ctx * ctx, unsigned char * data, int blocks) { cipherAll(ctx->decryption, data, blocks); }
