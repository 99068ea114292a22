#include "ades.hpp"

#include "crypto/bytes.hpp"
#include "crypto/des_vectors.hpp"

#include <gtest/gtest.h>
#include <openssl/des.h>

#include <algorithm>
#include <bit>

using bytes::Bytes;
using bytes::Random;
using des_vectors::Vector;

namespace {

using Block = std::array<unsigned char, 8>;

Block blockOf(std::uint64_t number) {
  Block block;
  for (int i = 0; i < 8; ++i)
    block[static_cast<std::size_t>(i)] = static_cast<unsigned char>(number >> (56 - i * 8));
  return block;
}

std::uint64_t numberOf(Block const & block) {
  std::uint64_t number = 0;
  for (unsigned char const byte : block)
    number = number << 8 | byte;
  return number;
}

class Key {
public:
  explicit Key(std::uint64_t key) { ades_key(&ctx_, blockOf(key).data()); }

  std::uint64_t encrypted(std::uint64_t plain) { return through(ades_enc, plain); }
  std::uint64_t decrypted(std::uint64_t cipher) { return through(ades_dec, cipher); }
  des_ctx & context() { return ctx_; }

private:
  std::uint64_t through(void (*cipher)(des_ctx *, unsigned char *, int), std::uint64_t number) {
    Block block = blockOf(number);
    cipher(&ctx_, block.data(), 1);
    return numberOf(block);
  }

  des_ctx ctx_;
};

class PeerKey {
public:
  explicit PeerKey(std::uint64_t key) {
    Block const block = blockOf(key);
    DES_cblock bytes;
    std::copy(block.begin(), block.end(), bytes);
    DES_set_key_unchecked(&bytes, &schedule_);
  }

  std::uint64_t through(std::uint64_t number, int direction) {
    Block const block = blockOf(number);
    DES_cblock in;
    DES_cblock out;
    std::copy(block.begin(), block.end(), in);
    DES_ecb_encrypt(&in, &out, &schedule_, direction);
    Block result;
    std::copy(std::begin(out), std::end(out), result.begin());
    return numberOf(result);
  }

private:
  DES_key_schedule schedule_;
};

std::uint64_t oneBit(int index) { return std::uint64_t{1} << (63 - index); }

void checkBothWays(Vector const & vector) {
  Key key(vector.key);
  EXPECT_EQ(key.encrypted(vector.plain), vector.cipher) << std::hex << vector.key << " " << vector.plain;
  EXPECT_EQ(key.decrypted(vector.cipher), vector.plain) << std::hex << vector.key << " " << vector.cipher;
}

/// The key with each byte's lowest bit such that the byte's count of ones is odd.
std::uint64_t withOddParity(std::uint64_t key) {
  Block block = blockOf(key);
  for (auto & byte : block) {
    auto const upper = static_cast<unsigned char>(byte & 0xfe);
    byte = static_cast<unsigned char>(upper | (std::popcount(upper) % 2 == 0));
  }
  return numberOf(block);
}

} // namespace

TEST(DesCipher, VariablePlaintextGivesThePublishedAnswers) {
  for (int i = 0; i < 64; ++i)
    checkBothWays({des_vectors::kVariablePlaintextKey, oneBit(i), des_vectors::kVariablePlaintext[i]});
}

TEST(DesCipher, InversePermutationGivesThePublishedAnswers) {
  for (int i = 0; i < 64; ++i)
    checkBothWays({des_vectors::kVariablePlaintextKey, des_vectors::kVariablePlaintext[i], oneBit(i)});
}

TEST(DesCipher, VariableKeyGivesThePublishedAnswers) {
  for (auto const & vector : des_vectors::kVariableKey)
    checkBothWays(vector);
}

TEST(DesCipher, PermutationGivesThePublishedAnswers) {
  for (auto const & vector : des_vectors::kPermutation)
    checkBothWays(vector);
}

TEST(DesCipher, SubstitutionTablesGiveThePublishedAnswers) {
  for (auto const & vector : des_vectors::kSubstitution)
    checkBothWays(vector);
}

TEST(DesCipher, MonteCarloEncryptionGivesTheKnownEnd) {
  std::uint64_t key = 0x0123456789abcdef;
  std::uint64_t block = 0x4e6f772069732074;
  for (int outer = 0; outer < 400; ++outer) {
    Key ours(key);
    for (int inner = 0; inner < 10000; ++inner)
      block = ours.encrypted(block);
    if (outer == 0) {
      EXPECT_EQ(block, 0x6a2a19f41eca854bu);
    }
    key = withOddParity(key ^ block);
  }
  EXPECT_EQ(block, 0x74d8a695064ec574u);
}

TEST(DesCipher, MonteCarloDecryptionGivesThePublishedAnswersAndThePeersToTheEnd) {
  std::uint64_t key = 0x0123456789abcdef;
  std::uint64_t block = 0x4e6f772069732074;
  std::uint64_t peerBlock = block;
  for (int outer = 0; outer < 400; ++outer) {
    Key ours(key);
    PeerKey peer(key);
    for (int inner = 0; inner < 10000; ++inner) {
      block = ours.decrypted(block);
      peerBlock = peer.through(peerBlock, DES_DECRYPT);
    }
    ASSERT_EQ(block, peerBlock) << outer;
    if (outer < 2) {
      EXPECT_EQ(block, outer == 0 ? 0xcdd64f2f9427c15du : 0x5bb675e3db3a7f3bu) << outer;
    }
    key = withOddParity(key ^ block);
  }
  EXPECT_EQ(block, 0xe5777d545f9067f6u);
}

TEST(DesCipher, RandomKeysAndBlocksEqualThePeer) {
  Random random(1);
  for (int i = 0; i < 100000; ++i) {
    Block raw;
    std::generate(raw.begin(), raw.end(), [&] { return random.byte(); });
    std::uint64_t const keyNumber = numberOf(raw);
    std::generate(raw.begin(), raw.end(), [&] { return random.byte(); });
    std::uint64_t const block = numberOf(raw);
    Key key(keyNumber);
    PeerKey peer(keyNumber);
    ASSERT_EQ(key.encrypted(block), peer.through(block, DES_ENCRYPT)) << std::hex << keyNumber << " " << block;
    ASSERT_EQ(key.decrypted(block), peer.through(block, DES_DECRYPT)) << std::hex << keyNumber << " " << block;
  }
}

TEST(DesCipher, ManyBlocksAreEachForItself) {
  Key key(0x133457799bbcdff1);
  constexpr std::size_t kBlocks = 33;
  Bytes const plain = Random(2).bytes(kBlocks * 8);
  for (std::size_t blocks = 0; blocks <= kBlocks; ++blocks) {
    Bytes data = plain;
    ades_enc(&key.context(), data.data(), static_cast<int>(blocks));
    for (std::size_t i = 0; i < kBlocks; ++i) {
      Bytes single(plain.data() + i * 8, plain.data() + i * 8 + 8);
      if (i < blocks)
        ades_enc(&key.context(), single.data(), 1);
      ASSERT_TRUE(std::equal(single.begin(), single.end(), data.data() + i * 8)) << blocks << " " << i;
    }
    ades_dec(&key.context(), data.data(), static_cast<int>(blocks));
    ASSERT_EQ(data, plain) << blocks;
  }
}

TEST(DesCipher, ACountBelowOneChangesNothing) {
  Key key(0x133457799bbcdff1);
  Block block = blockOf(0x0123456789abcdef);
  for (int const blocks : {0, -1, -2, INT_MIN}) {
    ades_enc(&key.context(), block.data(), blocks);
    ades_dec(&key.context(), block.data(), blocks);
    EXPECT_EQ(numberOf(block), 0x0123456789abcdefu) << blocks;
  }
}

TEST(DesKey, TheLowestBitOfEachByteIsIgnored) {
  Key even(0x1234567898765432);
  Key odd(0x1234567898765432 ^ 0x0101010101010101);
  EXPECT_TRUE(std::ranges::equal(even.context().encryption, odd.context().encryption));
  EXPECT_TRUE(std::ranges::equal(even.context().decryption, odd.context().decryption));
}

TEST(DesKey, EveryOtherBitCounts) {
  Key base(0);
  for (int i = 0; i < 64; ++i)
    EXPECT_EQ(Key(oneBit(i)).encrypted(0) == base.encrypted(0), i % 8 == 7) << i;
}

TEST(DesKey, TheDecryptionScheduleIsTheOtherWithItsRoundsInReverseOrder) {
  Key key(0x0123456789abcdef);
  auto const & context = key.context();
  for (int round = 0; round < 16; ++round)
    for (int word = 0; word < 2; ++word)
      EXPECT_EQ(context.decryption[round * 2 + word], context.encryption[(15 - round) * 2 + word]) << round;
}

TEST(DesKey, TheContextIsTwoSchedulesOf32Words) {
  static_assert(sizeof(des_ctx) == 256);
  static_assert(offsetof(des_ctx, encryption) == 0);
  static_assert(offsetof(des_ctx, decryption) == 128);
  static_assert(std::is_trivial_v<des_ctx>);
}
