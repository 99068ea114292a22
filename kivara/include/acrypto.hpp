#pragma once
/// \file
/// Hiding short texts such as passwords, and the binary-to-text encodings around that.
///
/// The keys of the text forms are part of the library and the same for all its users. They hide a password from a casual look at
/// a screen or a file. They do not protect it from anyone who has the library: see docs/ciphers.md.
///
/// \code
///   auto const [hex, length] = KivCryptoUtils::HexEncode(data, size);
///   if (hex != nullptr) ...
///   KivCryptoUtils::Free(hex);
/// \endcode

#include "export.hpp"
#include "tools/object.hpp"
#include "tools/string.hpp"

#include <utility>

/// Hexadecimal digits, Base64 and AES. Any thread.
///
/// Each operation except Free returns a pair. On success it is a buffer, to be released with Free, and its length in bytes or
/// characters without a NUL. On failure the pointer is null, and the length gives the reason:
///
///     -2  a null pointer, a negative length, a key size that AES does not support, or text that is malformed
///     -1  out of memory, a result of 2 GiB or more, or invalid data
class KIV_API KivCryptoUtils {
public:
  KivCryptoUtils() = delete;

  /// Upper-case digits, two for each byte, and a NUL.
  static std::pair<char *, int> HexEncode(unsigned char const * data, int length);

  /// Reads pairs of digits in upper or lower case: -2 for an odd number of characters, -1 for one that is not a digit.
  /// The result is not terminated.
  static std::pair<unsigned char *, int> HexDecode(char const * text);

  /// Base64 in lines of 64 characters. Each line, including the last one, ends in a line feed, which counts. A NUL follows.
  static std::pair<char *, int> Base64Encode(unsigned char const * data, int length);

  /// Reads Base64 in lines of up to 1,000 characters; a line feed must end the first line, and leading white space and
  /// leading lines that are not Base64 are skipped. The text ends at a "-" or, as OpenSSL finds it, where it is not Base64:
  /// what precedes that place is then returned in part or not at all, mostly as 0 bytes, and this is a success. -1 when memory
  /// runs out and when OpenSSL's reader reports an error. The result is not terminated.
  static std::pair<unsigned char *, int> Base64Decode(char const * text);

  /// The text form: AES with 256 bits in CBC mode under the library's own key and vector, in upper-case digits.
  /// An incomplete block of 16 characters is padded with zeros.
  static std::pair<char *, int> AESEncrypt(char const * text);

  /// Reads the text form. The length is that of the blocks, including the padding. -2 for anything that is not hexadecimal
  /// text, bad digits included; -1 only when memory runs out. A NUL follows.
  static std::pair<char *, int> AESDecrypt(char const * text);

  /// CBC mode. The result is \p length rounded up to whole blocks of 16 bytes; an incomplete last block is
  /// padded with zeros, in the data to encrypt as well as in the data to decrypt.
  /// \param keyBits  size of the key: 128, 192 or 256
  /// \param iv       16 bytes, not changed
  /// Each call leaks a copy of the vector, which has as many bytes as the key has bits.
  static std::pair<unsigned char *, int> AESEncrypt(unsigned char const * data, int length, unsigned char const * key,
                                                    int keyBits, unsigned char const * iv);
  static std::pair<unsigned char *, int> AESDecrypt(unsigned char const * data, int length, unsigned char const * key,
                                                    int keyBits, unsigned char const * iv);

  /// One block: always the first 16 bytes are encrypted or decrypted, whatever the \p length. The result is \p length
  /// rounded up to whole blocks, with zeros after the first block: data beyond 16 bytes is neither protected nor kept.
  /// \param data      16 readable bytes, even if \p length is less; ignored for a length of 0
  /// \param keyBytes  size of the key: 16, 24 or 32
  static std::pair<unsigned char *, int> AESEncrypt(unsigned char const * data, int length, unsigned char const * key,
                                                    int keyBytes);
  static std::pair<unsigned char *, int> AESDecrypt(unsigned char const * data, int length, unsigned char const * key,
                                                    int keyBytes);

  /// Releases a result; null is allowed.
  static void Free(void * buffer);
};

/// Encrypts short texts in the form that the process has chosen.
///
/// There is one object, created by the first call of Instance and destroyed when the process ends. Main thread only: its creation
/// is not guarded, and the old form uses the work area of ades_key.
///
/// A type below 2 is the old form, Kiv_Encrypt and Kiv_Decrypt; 2 and above is the AES form of KivCryptoUtils. A
/// failure gives a null text and a negative length, which the caller checks: in the AES form the values of
/// KivCryptoUtils, in the old form -1 when memory runs out. No exceptions. Texts are released with delete[]; null counts
/// as the empty string in the old form and is rejected in the AES form.
class KIV_API KivEncryption : public KivObject {
public:
  static KivEncryption & Instance(); ///< created on first use
  KivEncryption(KivEncryption const &) = delete;
  KivEncryption & operator=(KivEncryption const &) = delete;
  ~KivEncryption() override;

  /// 0 until it is set.
  void SetEncryptionType(long type) { encryptionType = type; }

  /// Encrypts \p text into a new string \p out and returns its length.
  /// \param maxLength  the old form is cut after this many characters, even though it cannot be decrypted then; negative
  ///                   for no limit. The AES form ignores it
  long Encrypt(char * text, char *& out, long maxLength);
  long Encrypt(long type, char * text, char *& out, long maxLength);

  /// Decrypts into a new string \p out. In the old form the padding stays at its end, the result is the length up to the
  /// first byte 0, and each call leaks an array for the encrypted text. In the AES form the result is the length of the
  /// blocks, including the zeros after the text.
  long Decrypt(char * text, char *& out);
  long Decrypt(long type, char * text, char *& out);

protected:
  KivEncryption() = default;

private:
  long encryptionType = 0;
};

/// \name Base64 without line feeds
/// In the old form the last group may be short: "TQ". The new form pads it with "=": "TQ==". Neither decodes the other's
/// text unless all groups are complete.
///
/// Lengths are in bytes or characters. \p out is a new array that the caller releases with delete[], even if the result is
/// false. On success a byte 0, which \p outLength does not count, follows the last character or byte. For a null argument
/// with a length, a result beyond 4 GiB, and lack of memory, the result is false, \p out is null and \p outLength is 0. Any thread. No exceptions.
/// @{
KIV_API bool Kiv_OldBase64Encode(char * data, unsigned long length, char *& out, unsigned long & outLength);
KIV_API bool Kiv_NewBase64Encode(char const * data, unsigned long length, char *& out, unsigned long & outLength);

/// False at the first character that is not in the alphabet, which "=" is not; \p out is then not terminated. A single
/// character after the last complete group is ignored.
KIV_API bool Kiv_OldBase64Decode(char * text, unsigned long length, char *& out, unsigned long & outLength);

/// Removes all "=" from the end and decodes the rest like the old form. \p outLength is 3 for each complete 4 of \p length,
/// minus one for each "=". If the text lacks some or has too many, more bytes than that are decoded: they are all in
/// \p out, and the byte 0 follows the last of them, not the byte at \p outLength. The empty string is invalid and gives 0 bytes.
KIV_API bool Kiv_NewBase64Decode(char const * text, unsigned long length, char *& out, unsigned long & outLength);
/// @}

/// The password in \p cipherText: one AES block in the new Base64 form, padded as in PKCS#7, which is not checked.
/// \param key  16, 24 or 32 characters, taken as bytes
/// The empty string if the cipher text, the key's length or the padding is invalid, or memory runs out; a wrong key may also
/// give any other string. Decoded data beyond 16 bytes is returned as zeros. Any thread. No exceptions.
KIV_API SV::String Kiv_DecryptPasswordForAPP(SV::String const & cipherText, SV::String const & key);
