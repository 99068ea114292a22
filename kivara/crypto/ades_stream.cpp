// Byte streams of DES blocks.

#include "ades.hpp"

#include <cstring>

int des_reader::get() {
  constexpr int kEnd = -1;
  if (count == 0) {
    if (std::fread(block, sizeof block, 1, file) != 1)
      return kEnd;
    count = sizeof block;
    ades_dec(ctx, block, 1);
  }
  return block[static_cast<int>(sizeof block) - count--];
}

int des_writer::put(unsigned char byte) {
  _put(byte);
  return chk();
}

int des_writer::put(char const * text) {
  for (; text != nullptr && *text != '\0'; ++text)
    _put(static_cast<unsigned char>(*text));
  return chk();
}

int des_writer::flush() {
  if (count > 0) {
    // The count stays: programs flush once, at the end, and readers of their files rely on there being no block after that.
    std::memset(block + count, ' ', sizeof block - static_cast<std::size_t>(count));
    writeBlock();
  }
  std::fflush(file);
  return chk();
}

void des_writer::_put(unsigned char byte) {
  block[count++] = byte;
  if (count == sizeof block) {
    writeBlock();
    count = 0;
  }
}

int des_writer::chk() { return std::ferror(file) != 0 ? -1 : 0; }

void des_writer::writeBlock() {
  ades_enc(ctx, block, 1);
  std::fwrite(block, sizeof block, 1, file);
}
