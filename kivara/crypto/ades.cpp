#include "ades.hpp"

#include "crypto/ades_tables.hpp"

#include <cstring>
#include <emmintrin.h>

namespace {

using std::uint32_t;
using std::uint64_t;

constexpr kivara::des::CombinedTables kCombined = kivara::des::combinedTables();

// The code for each block is always inlined: a call would pass the halves through memory.

/// The two halves of several blocks: the processor works on one while another waits for its tables.
template <int Blocks> struct Halves {
  uint32_t left[Blocks];
  uint32_t right[Blocks];
};

// The initial permutation treats the block as a square of eight bytes by eight bits and turns each column into a byte: the
// even columns form the left half, the odd ones the right half. One instruction collects the highest bits of sixteen
// bytes, which contain the square twice, so it yields two columns. The final permutation does the reverse.

/// The square twice; in the lower bytes it is shifted to the left by \p apart more bits.
[[gnu::always_inline]] inline __m128i twice(__m128i square, int apart) {
  return _mm_unpacklo_epi64(_mm_slli_epi64(square, apart), square);
}

/// Four bytes: the lower two are the columns that a shift by \p low makes the highest, the others those of \p high.
[[gnu::always_inline]] inline uint32_t collected(__m128i squares, int low, int high) {
  return static_cast<uint32_t>(_mm_movemask_epi8(_mm_slli_epi64(squares, low))) |
         static_cast<uint32_t>(_mm_movemask_epi8(_mm_slli_epi64(squares, high))) << 16;
}

/// Returns both halves rotated right by one, as the combined tables need them.
[[gnu::always_inline]] inline void permuteInitially(unsigned char const * data, uint32_t & left, uint32_t & right) {
  __m128i const squares = twice(_mm_loadl_epi64(reinterpret_cast<__m128i const *>(data)), 2);
  left = std::rotr(collected(squares, 5, 1), 1);
  right = std::rotr(collected(squares, 4, 0), 1);
}

[[gnu::always_inline]] inline __m128i turnedBack(uint32_t half) {
  return _mm_cvtsi32_si128(static_cast<int>(std::rotl(half, 1)));
}

[[gnu::always_inline]] inline void permuteFinally(uint32_t left, uint32_t right, unsigned char * data) {
  __m128i const squares = twice(_mm_unpacklo_epi8(turnedBack(left), turnedBack(right)), 1);
  uint64_t const block = collected(squares, 6, 4) | uint64_t{collected(squares, 2, 0)} << 32;
  std::memcpy(data, &block, sizeof block);
}

[[gnu::always_inline]] inline uint32_t roundChange(uint32_t half, uint32_t const * key) {
  uint32_t const even = half ^ key[0];
  uint32_t const odd = std::rotl(half, 4) ^ key[1];
  return kCombined[0][even >> 26] ^ kCombined[2][even >> 18 & 63] ^ kCombined[4][even >> 10 & 63] ^
         kCombined[6][even >> 2 & 63] ^ kCombined[1][odd >> 26] ^ kCombined[3][odd >> 18 & 63] ^
         kCombined[5][odd >> 10 & 63] ^ kCombined[7][odd >> 2 & 63];
}

// The loops over blocks are unrolled: with a constant index, the halves stay in registers.
template <int Blocks> void cipher(uint32_t const * schedule, unsigned char * data) {
  Halves<Blocks> halves;
#pragma GCC unroll 8
  for (int i = 0; i < Blocks; ++i)
    permuteInitially(data + i * 8, halves.left[i], halves.right[i]);
  for (uint32_t const * key = schedule; key != schedule + 32; key += 4) {
#pragma GCC unroll 8
    for (int i = 0; i < Blocks; ++i)
      halves.left[i] ^= roundChange(halves.right[i], key);
#pragma GCC unroll 8
    for (int i = 0; i < Blocks; ++i)
      halves.right[i] ^= roundChange(halves.left[i], key + 2);
  }
  // The halves are swapped after the last round.
#pragma GCC unroll 8
  for (int i = 0; i < Blocks; ++i)
    permuteFinally(halves.right[i], halves.left[i], data + i * 8);
}

void cipherAll(uint32_t const * schedule, unsigned char * data, int blocks) {
  constexpr int kTogether = 3;
  for (; blocks >= kTogether; blocks -= kTogether, data += kTogether * 8)
    cipher<kTogether>(schedule, data);
  for (; blocks >= 1; --blocks, data += 8)
    cipher<1>(schedule, data);
}

} // namespace

void ades_enc(des_ctx * ctx, unsigned char * data, int blocks) { cipherAll(ctx->encryption, data, blocks); }
void ades_dec(des_ctx * ctx, unsigned char * data, int blocks) { cipherAll(ctx->decryption, data, blocks); }
