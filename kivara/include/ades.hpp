#pragma once
/// \file
/// The Data Encryption Standard block by block, byte streams of such blocks, and the old text form of passwords.
///
/// Blocks are independent (electronic codebook mode): equal plain blocks give equal cipher blocks. DES keys can be found by
/// trying all of them, and the text form has one key for all users: see docs/ciphers.md.
///
/// \code
///   des_ctx ctx;
///   ades_key(&ctx, key);                       // 8 bytes; the lowest bit of each is ignored
///   des_writer writer(file, &ctx);
///   if (writer.put("nine chars") == 0 && writer.flush() == 0) ...
/// \endcode

#include "export.hpp"

#include <cstdint>
#include <cstdio>

/// A key, set by ades_key: the 16 round keys of two words each, in the order of use, for encryption and decryption.
struct des_ctx {
  std::uint32_t encryption[32];
  std::uint32_t decryption[32];
};

/// Computes the two schedules of \p ctx from the 8 bytes at \p key. Parity bits are ignored and not checked.
/// It uses one work area for the whole process: ades_key, Kiv_Encrypt and Kiv_Decrypt must not run on two threads at the same
/// time. ades_enc and ades_dec may run on any number of threads.
KIV_API void ades_key(des_ctx * ctx, unsigned char const * key);

/// Encrypts or decrypts \p blocks blocks of 8 bytes in place. Does nothing for a count below 1.
KIV_API void ades_enc(des_ctx * ctx, unsigned char * data, int blocks);
KIV_API void ades_dec(des_ctx * ctx, unsigned char * data, int blocks);

/// Reads the plain bytes of a file of DES blocks. The file has no header, length or checksum.
/// The caller owns file and key, which must outlive the reader. One thread at a time.
class KIV_API des_reader {
public:
  /// \param stream  open for reading in binary form, not null
  /// \param key     not null
  des_reader(FILE * stream, des_ctx * key) : file(stream), ctx(key) {}
  des_reader(des_reader const &) = default;

  /// Copies the other's state, including the bytes that it has read ahead. The position in the file is shared.
  des_reader & operator=(des_reader const &) = default;

  /// The next byte, 0 to 255; -1 at the end, when no complete block is left. The blanks with which a writer has padded the
  /// last block are returned like any other byte.
  int get();

private:
  FILE * file;
  unsigned char block[8] = {};
  std::int32_t count = 0;
  des_ctx * ctx;
};

/// Writes bytes as a file of DES blocks. Only flush writes an incomplete last block.
/// The caller owns file and key, which must outlive the writer. One thread at a time.
class KIV_API des_writer {
public:
  /// \param stream  open for writing in binary form, not null
  /// \param key     not null
  des_writer(FILE * stream, des_ctx * key) : file(stream), ctx(key) {}
  des_writer(des_writer const &) = default;

  /// Copies the other's state, including the bytes that it has not written yet.
  des_writer & operator=(des_writer const &) = default;

  /// Adds one byte, or the characters of a string without its NUL; null adds nothing.
  /// \return 0, or -1 when the file has an error
  int put(unsigned char byte);
  int put(char const * text);

  /// Pads an incomplete block with blanks, writes it, and flushes the file. 0, or -1 when the file has an error.
  /// It ends the stream: after a flush that has written a block nothing more may be put, and a second flush would write another
  /// block.
  int flush();

private:
  void _put(unsigned char byte);
  int chk();
  void writeBlock();

  FILE * file;
  unsigned char block[8] = {};
  std::int32_t count = 0;
  des_ctx * ctx;
};

/// Writes \p text as lower-case hexadecimal digits of its DES blocks under the library's own key, and a NUL.
/// The last block is padded with characters of the text itself, so store its length elsewhere.
/// \param text  a null pointer counts as the empty string, which gives an empty result
/// \param hex   room for 16 characters for every 8 of the text, rounded up, and for the NUL
/// Each call leaks a work area of the length of the text. Threads: as ades_key. Throws std::bad_alloc.
KIV_API void Kiv_Encrypt(char const * text, char * hex);

/// Reads what Kiv_Encrypt wrote. The padding stays at the end of the text; nothing is checked.
/// \param hex   pairs of hexadecimal digits; a single last character is ignored, and bytes after the last whole block
///              stay as they were read. A pair that is not a number repeats the byte before it, 0 at the start. A null
///              pointer counts as the empty string
/// \param text  receives half as many bytes as \p hex is long, and a NUL; the caller releases it with delete[]
/// Threads: as ades_key. Throws std::bad_alloc; \p text is then unchanged.
KIV_API void Kiv_Decrypt(char * hex, unsigned char *& text);
