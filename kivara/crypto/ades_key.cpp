// The key schedules.

#include "ades.hpp"

#include "crypto/ades_tables.hpp"

#include <algorithm>
#include <cstring>
#include <emmintrin.h>

namespace {

using Schedule = std::array<std::uint32_t, 32>;

/// The 28 bits of a half, the first one highest, rotated left.
constexpr std::uint32_t turned(std::uint32_t half, int places) {
  return (half << places | half >> (28 - places)) & 0x0fffffff;
}

constexpr std::uint64_t chosenKeyBits(std::uint64_t key) {
  std::uint64_t chosen = 0;
  for (int const bit : kivara::des::kKeyChoice1)
    chosen = chosen << 1 | (key >> (64 - bit) & 1);
  return chosen;
}

/// The two words of a round, with the six bits of each selection function in the place where the round needs them.
constexpr void addRoundKey(Schedule & schedule, std::size_t round, std::uint64_t halves) {
  for (int i = 0; i < 48; ++i) {
    auto const bit = static_cast<std::uint32_t>(halves >> (56 - kivara::des::kKeyChoice2[i]) & 1);
    int const box = i / 6;
    schedule[round * 2 + static_cast<std::size_t>(box % 2)] |= bit << (kivara::des::selectionShift(box) + 5 - i % 6);
  }
}

constexpr Schedule scheduleOf(std::uint64_t key) {
  Schedule schedule{};
  std::uint64_t const chosen = chosenKeyBits(key);
  auto first = static_cast<std::uint32_t>(chosen >> 28);
  auto second = static_cast<std::uint32_t>(chosen & 0x0fffffff);
  for (std::size_t round = 0; round < 16; ++round) {
    first = turned(first, kivara::des::kKeyShifts[round]);
    second = turned(second, kivara::des::kKeyShifts[round]);
    addRoundKey(schedule, round, static_cast<std::uint64_t>(first) << 28 | second);
  }
  return schedule;
}

constexpr void mix(Schedule & into, Schedule const & other) {
  for (std::size_t i = 0; i < into.size(); ++i)
    into[i] ^= other[i];
}

/// Each bit of a schedule is one bit of the key. So the schedule of a key is the combination of the schedules for each four of
/// its bits, and those are computed when the library is compiled.
using ScheduleOfFour = std::array<std::array<Schedule, 16>, 16>;

constexpr ScheduleOfFour schedulesOfFours() {
  ScheduleOfFour schedules{};
  for (std::size_t place = 0; place < 16; ++place)
    for (std::size_t bit = 0; bit < 4; ++bit) {
      Schedule const single = scheduleOf(std::uint64_t{1} << (60 - place * 4 + bit));
      for (std::size_t four = 0; four < 16; ++four)
        if ((four >> bit & 1) != 0)
          mix(schedules[place][four], single);
    }
  return schedules;
}

constexpr ScheduleOfFour kSchedulesOfFours = schedulesOfFours();

// One area for the whole process, which is why two threads must not make keys at the same time.
Schedule scratch;

// When unrolled, the whole schedule stays in registers until all parts are combined.
void makeEncryptionSchedule(unsigned char const * key) {
  constexpr int kParts = sizeof(Schedule) / sizeof(__m128i);
  __m128i parts[kParts] = {};
  for (std::size_t place = 0; place < 16; ++place) {
    unsigned const four = place % 2 == 0 ? key[place / 2] >> 4 : key[place / 2] & 15;
    auto const * const added = reinterpret_cast<__m128i const *>(kSchedulesOfFours[place][four].data());
#pragma GCC unroll 8
    for (int i = 0; i < kParts; ++i)
      parts[i] = _mm_xor_si128(parts[i], _mm_loadu_si128(added + i));
  }
  std::memcpy(scratch.data(), parts, sizeof parts);
}

/// The same rounds in reverse order.
void makeDecryptionSchedule() {
  for (std::size_t round = 0; round < 8; ++round)
    std::swap_ranges(&scratch[round * 2], &scratch[round * 2] + 2, &scratch[(15 - round) * 2]);
}

} // namespace

void ades_key(des_ctx * ctx, unsigned char const * key) {
  makeEncryptionSchedule(key);
  std::copy(scratch.begin(), scratch.end(), ctx->encryption);
  makeDecryptionSchedule();
  std::copy(scratch.begin(), scratch.end(), ctx->decryption);
}
