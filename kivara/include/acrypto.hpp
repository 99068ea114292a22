#pragma once
/// \file
/// Hiding short texts such as passwords, and the binary-to-text encodings around that.
///
/// The keys of the text forms lie in the library, the same for everybody: they keep a password from being read over a
/// shoulder or in a file that is opened by chance. They do not keep it from anybody who has the library: see docs/ciphers.md.
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
/// Each operation but Free gives a pair. On success it holds a buffer, to be released with Free, and its length in
/// bytes or characters without a NUL. Otherwise the pointer is null, and the length says why:
///
///     -2  a null pointer, a negative length, a key size that AES does not have, or a text whose form cannot be decoded
///     -1  out of memory, a result of 2 GiB or more, or invalid data
class KIV_API KivCryptoUtils {
public:
  KivCryptoUtils() = delete;

  /// Upper-case digits, two for each byte, and a NUL.
  static std::pair<char *, int> HexEncode(unsigned char const * data, int length);

  /// Reads pairs of digits of either case: -2 for an odd number of characters, -1 for one that is no digit.
  /// The result is not terminated.
  static std::pair<unsigned char *, int> HexDecode(char const * text);

  /// Base64 in lines of 64 characters, each with a line feed, the last one too; the line feeds count. A NUL follows.
  static std::pair<char *, int> Base64Encode(unsigned char const * data, int length);

  /// Reads Base64 in lines of up to 1,000 characters; a line feed must end the first line, and leading white space and
  /// leading lines that are not Base64 are skipped. The text ends at a "-" or, as OpenSSL finds it, where it is not Base64:
  /// what precedes that place is then given in part or not at all, mostly as 0 bytes, which is no failure. -1 when memory
  /// runs out and when OpenSSL's reader reports an error. The result is not terminated.
  static std::pair<unsigned char *, int> Base64Decode(char const * text);

  /// The text form: AES with 256 bits in CBC mode under the library's own key and vector, in upper-case digits.
  /// An incomplete block of 16 characters is padded with zeros.
  static std::pair<char *, int> AESEncrypt(char const * text);

  /// Reads the text form. The length is that of the blocks: the text with its zeros. -2 for anything that is not hexadecimal
  /// text, bad digits included; -1 only when memory runs out. A NUL follows.
  static std::pair<char *, int> AESDecrypt(char const * text);

  /// CBC mode. The result is \p length rounded up to whole blocks of 16 bytes; an incomplete last block is
  /// padded with zeros, in the data to encrypt as well as in the data to decrypt.
  /// \param keyBits  size of the key: 128, 192 or 256
  /// \param iv       16 bytes, not changed
  /// A copy of the vector, of as many bytes as the key has bits, stays allocated with each call.
  static std::pair<unsigned char *, int> AESEncrypt(unsigned char const * data, int length, unsigned char const * key,
                                                    int keyBits, unsigned char const * iv);
  static std::pair<unsigned char *, int> AESDecrypt(unsigned char const * data, int length, unsigned char const * key,
                                                    int keyBits, unsigned char const * iv);

  /// One block: exactly the first 16 bytes are encrypted or decrypted, whatever \p length says. The result is \p length
  /// rounded up to whole blocks, with zeros after the first block: data beyond 16 bytes is neither protected nor kept.
  /// \param data      16 readable bytes even where \p length is less; none for a length of 0
  /// \param keyBytes  size of the key: 16, 24 or 32
  static std::pair<unsigned char *, int> AESEncrypt(unsigned char const * data, int length, unsigned char const * key,
                                                    int keyBytes);
  static std::pair<unsigned char *, int> AESDecrypt(unsigned char const * data, int length, unsigned char const * key,
                                                    int keyBytes);

  /// Releases a result; null is allowed.
  static void Free(void * buffer);
};

/// Encrypts short texts in the form that was chosen for the whole process.
///
/// There is one object: the first call of Instance makes it, it lives until the process ends, and it is not copied.
/// Main thread: making it is not guarded, and the old form works in the one area of ades_key.
///
/// A type below 2 is the old form, Kiv_Encrypt and Kiv_Decrypt; 2 and above is the AES form of KivCryptoUtils. A
/// failure gives a null text and a negative length, which the caller tests: in the AES form the values of
/// KivCryptoUtils, in the old form -1 when memory runs out. No exceptions. Texts are released with delete[]; null counts
/// as the empty text in the old form and is refused in the AES form.
class KIV_API KivEncryption : public KivObject {
public:
  static KivEncryption & Instance(); ///< the only one; it is made at the first call
  KivEncryption(KivEncryption const &) = delete;
  KivEncryption & operator=(KivEncryption const &) = delete;
  ~KivEncryption() override;

  /// 0 until it is set.
  void SetEncryptionType(long type) { encryptionType = type; }

  /// Encrypts \p text into a new text \p out and gives its length.
  /// \param maxLength  the old form is cut after this many characters, even though it cannot be decrypted then; negative
  ///                   for no limit. The AES form ignores it
  long Encrypt(char * text, char *& out, long maxLength);
  long Encrypt(long type, char * text, char *& out, long maxLength);

  /// Decrypts into a new text \p out. In the old form the padding stays at its end, and the result is the length up to
  /// the first byte 0; with each call an array for the encrypted text stays allocated. In the AES form the result is
  /// the length of the blocks, the zeros after the text included.
  long Decrypt(char * text, char *& out);
  long Decrypt(long type, char * text, char *& out);

protected:
  KivEncryption() = default;

private:
  long encryptionType = 0;
};

/// \name Base64 without line feeds
/// The old form leaves the last group short: "TQ". The new form pads it with "=": "TQ==". Neither decodes the other's
/// texts, except those of whole groups.
///
/// Lengths are in bytes or characters. \p out is a new array that the caller releases with delete[], also when false is
/// returned. On success a byte 0, which \p outLength does not count, follows the last character or byte that was
/// written. False with a null \p out and a length of 0 for a null argument of some length, for a result beyond 4 GiB
/// and when memory runs out. Any thread. No exceptions.
/// @{
KIV_API bool Kiv_OldBase64Encode(char * data, unsigned long length, char *& out, unsigned long & outLength);
KIV_API bool Kiv_NewBase64Encode(char const * data, unsigned long length, char *& out, unsigned long & outLength);

/// False at the first character that is not of the alphabet, "=" included; \p out is then not terminated. A single
/// character after the last whole group is dropped without being looked at.
KIV_API bool Kiv_OldBase64Decode(char * text, unsigned long length, char *& out, unsigned long & outLength);

/// Takes all "=" off the end, then decodes the rest as the old form does. \p outLength is 3 for each whole 4 of
/// \p length, less one for each "=". Where the text lacks some or has too many, that is less than the bytes decoded:
/// they all lie in \p out, and the byte 0 lies behind the last of them, not at \p outLength. The empty text is not a
/// valid one; it gives 0 bytes.
KIV_API bool Kiv_NewBase64Decode(char const * text, unsigned long length, char *& out, unsigned long & outLength);
/// @}

/// The password in \p cipherText: one AES block in the new Base64 form, padded as in PKCS#7, which is not checked.
/// \param key  16, 24 or 32 characters, taken as bytes
/// The empty string where the cipher text, the key's length or the padding makes no sense, and when memory runs out; a
/// wrong key may also give any other text. What is decoded beyond 16 bytes comes back as zeros. Any thread. No exceptions.
KIV_API SV::String Kiv_DecryptPasswordForAPP(SV::String const & cipherText, SV::String const & key);
