#include "ades.hpp"

#include "crypto/bytes.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

using bytes::Bytes;

namespace {

class DesStream : public testing::Test {
protected:
  DesStream() {
    unsigned char const key[8] = {0x13, 0x34, 0x57, 0x79, 0x9b, 0xbc, 0xdf, 0xf1};
    ades_key(&ctx, key);
  }
  ~DesStream() override { std::fclose(file); }

  Bytes content() {
    std::rewind(file);
    Bytes result;
    for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file))
      result.push_back(static_cast<unsigned char>(c));
    return result;
  }

  void setContent(Bytes const & data) {
    std::rewind(file);
    std::fwrite(data.data(), 1, data.size(), file);
    std::rewind(file);
  }

  std::string readBack() {
    std::rewind(file);
    des_reader reader(file, &ctx);
    std::string result;
    for (int c = reader.get(); c != -1; c = reader.get())
      result += static_cast<char>(c);
    return result;
  }

  Bytes encrypted(std::string const & block) {
    Bytes data(block.begin(), block.end());
    ades_enc(&ctx, data.data(), static_cast<int>(data.size() / 8));
    return data;
  }

  FILE * file = std::fopen("stream.des", "w+b");
  des_ctx ctx;
};

std::size_t bytesOnDisk() {
  FILE * const other = std::fopen("stream.des", "rb");
  char data[100];
  std::size_t const count = std::fread(data, 1, sizeof data, other);
  std::fclose(other);
  return count;
}

} // namespace

TEST_F(DesStream, IsNothingButTheBlocksOfTheBytes) {
  des_writer writer(file, &ctx);
  EXPECT_EQ(writer.put("0123456789abcdef"), 0);
  EXPECT_EQ(writer.flush(), 0);
  EXPECT_EQ(content(), encrypted("0123456789abcdef"));
}

TEST_F(DesStream, EqualPlainBlocksGiveEqualCipherBlocks) {
  des_writer writer(file, &ctx);
  writer.put("same8888same8888");
  writer.flush();
  Bytes const data = content();
  ASSERT_EQ(data.size(), 16u);
  EXPECT_TRUE(std::equal(data.begin(), data.begin() + 8, data.begin() + 8));
}

TEST_F(DesStream, NineBytesAndFlushGiveSixteenThatReadAsTheNineAndSevenBlanks) {
  des_writer writer(file, &ctx);
  EXPECT_EQ(writer.put("nine byte"), 0);
  EXPECT_EQ(writer.flush(), 0);
  EXPECT_EQ(content().size(), 16u);
  EXPECT_EQ(readBack(), "nine byte       ");
}

TEST_F(DesStream, ATrailingPartOfABlockIsIgnored) {
  Bytes data = encrypted("8 bytes!");
  data.insert(data.end(), {1, 2, 3, 4});
  setContent(data);
  des_reader reader(file, &ctx);
  std::string read;
  for (int i = 0; i < 8; ++i)
    read += static_cast<char>(reader.get());
  EXPECT_EQ(read, "8 bytes!");
  EXPECT_EQ(reader.get(), -1);
  EXPECT_EQ(reader.get(), -1);
}

TEST_F(DesStream, AnEmptyFileIsAtItsEnd) { EXPECT_EQ(readBack(), ""); }

TEST_F(DesStream, BytesComeBackAs0To255) {
  des_writer writer(file, &ctx);
  for (int i = 0; i < 256; ++i)
    EXPECT_EQ(writer.put(static_cast<unsigned char>(i)), 0);
  writer.flush();
  std::rewind(file);
  des_reader reader(file, &ctx);
  for (int i = 0; i < 256; ++i)
    EXPECT_EQ(reader.get(), i);
  EXPECT_EQ(reader.get(), -1);
}

TEST_F(DesStream, ABlockIsWrittenWhenItIsFullAndNotBefore) {
  std::setvbuf(file, nullptr, _IONBF, 0);
  des_writer writer(file, &ctx);
  writer.put("1234567");
  EXPECT_EQ(content().size(), 0u);
  writer.put(static_cast<unsigned char>('8'));
  EXPECT_EQ(content(), encrypted("12345678"));
}

TEST_F(DesStream, FlushWithoutABegunBlockWritesNothingAndStillFlushesTheFile) {
  des_writer writer(file, &ctx);
  writer.put("12345678");
  EXPECT_EQ(bytesOnDisk(), 0u);
  EXPECT_EQ(writer.flush(), 0);
  EXPECT_EQ(bytesOnDisk(), 8u);
  EXPECT_EQ(writer.flush(), 0);
  EXPECT_EQ(bytesOnDisk(), 8u);
}

TEST_F(DesStream, ASecondFlushEncryptsTheSameBlockAgainAndWritesItOnceMore) {
  des_writer writer(file, &ctx);
  writer.put("abc");
  writer.flush();
  writer.flush();
  Bytes again = encrypted("abc     ");
  std::fill(again.begin() + 3, again.end(), ' ');
  ades_enc(&ctx, again.data(), 1);
  Bytes expected = encrypted("abc     ");
  expected.insert(expected.end(), again.begin(), again.end());
  EXPECT_EQ(content(), expected);
}

TEST_F(DesStream, ATextIsPutWithoutItsNulAndNullPutsNothing) {
  des_writer writer(file, &ctx);
  EXPECT_EQ(writer.put("abcd"), 0);
  EXPECT_EQ(writer.put(""), 0);
  EXPECT_EQ(writer.put(static_cast<char const *>(nullptr)), 0);
  EXPECT_EQ(writer.put("\x81zzz"), 0);
  EXPECT_EQ(content(), encrypted("abcd\x81zzz"));
}

TEST_F(DesStream, AnErrorOnTheFileGivesMinusOne) {
  FILE * const readOnly = std::fopen("stream.des", "rb");
  ASSERT_NE(readOnly, nullptr);
  des_writer writer(readOnly, &ctx);
  EXPECT_EQ(writer.put("1234567"), 0) << "nothing was written yet";
  EXPECT_EQ(writer.put(static_cast<unsigned char>('8')), -1);
  EXPECT_EQ(writer.put("x"), -1);
  EXPECT_EQ(writer.flush(), -1);
  std::fclose(readOnly);
}

TEST_F(DesStream, AssigningAReaderTakesOverTheBytesReadAhead) {
  setContent(encrypted("12345678abcdefgh"));
  des_reader first(file, &ctx);
  EXPECT_EQ(first.get(), '1');
  unsigned char const other[8] = {0xfe, 0xdc, 0xba, 0x98, 0x76, 0x54, 0x32, 0x10};
  des_ctx otherKey;
  ades_key(&otherKey, other);
  des_reader second(nullptr, &otherKey);
  second = first;
  for (char const expected : {'2', '3', '4', '5', '6', '7', '8', 'a'})
    EXPECT_EQ(second.get(), expected) << "of the other's file, under the other's key";
  EXPECT_EQ(first.get(), '2');
}

TEST_F(DesStream, AssigningAWriterTakesOverTheBytesNotYetWritten) {
  des_writer first(file, &ctx);
  first.put("1234");
  unsigned char const other[8] = {0xfe, 0xdc, 0xba, 0x98, 0x76, 0x54, 0x32, 0x10};
  des_ctx otherKey;
  ades_key(&otherKey, other);
  des_writer second(nullptr, &otherKey);
  second = first;
  second.put("5678");
  EXPECT_EQ(content(), encrypted("12345678"));
}

TEST_F(DesStream, BothClassesHoldFileBlockCountAndKeyInThisOrder) {
  struct Layout {
    FILE * file;
    unsigned char block[8];
    std::int32_t count;
    des_ctx * ctx;
  };
  static_assert(sizeof(des_reader) == sizeof(Layout) && sizeof(des_writer) == sizeof(Layout));
  static_assert(std::is_standard_layout_v<des_reader> && std::is_standard_layout_v<des_writer>);
  des_writer writer(file, &ctx);
  Layout layout;
  std::memcpy(&layout, static_cast<void const *>(&writer), sizeof layout);
  EXPECT_EQ(layout.file, file);
  EXPECT_EQ(layout.count, 0);
  EXPECT_EQ(layout.ctx, &ctx);
  writer.put("ab");
  std::memcpy(&layout, static_cast<void const *>(&writer), sizeof layout);
  EXPECT_EQ(layout.count, 2);
  EXPECT_EQ(std::memcmp(layout.block, "ab", 2), 0);
}
