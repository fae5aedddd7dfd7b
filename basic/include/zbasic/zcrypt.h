// Hexadecimal and base64 texts, AES, and the schemes that keep passwords out of plain sight.

#pragma once

#include <cstdint>
#include <utility>

#include "sv/string.h"
#include "zbasic/zexport.h"

// What each scheme protects from, and what it does not, is told in docs/encryption.md:
// none of them notices that a cipher text was changed.
//
// Threads: everything may run on any thread at a time, but for the type that
// `ZelEncryption` keeps, which is one for the process and has no lock.
// Errors: nothing throws (but for `std::bad_alloc` where an `SV::String` is returned).
// Keys, key schedules and working buffers are wiped before their memory is released;
// results are the caller's to wipe.

// Building blocks. Each answers a buffer and the length of what is in it, in bytes:
//
//     const auto [text, length] = ZelCryptoUtils::HexEncode(data, 3);  // "00ABFF", 6
//     ZelCryptoUtils::Free(text);
//
// The buffer belongs to the caller, who releases it by `Free`. A failure is a null
// buffer with
//   -1  no memory, a text that cannot be decoded, or a result of more than 2,147,483,647 bytes;
//   -2  an invalid argument: a null pointer, a negative length, a hexadecimal text of odd
//       length, a key size that AES does not have.
class ZBASIC_API ZelCryptoUtils {
public:
    static void Free(void* buffer);  // null is fine

    // Two hexadecimal digits a byte, letters upper-case, with a NUL behind them.
    static std::pair<char*, int> HexEncode(const unsigned char* data, int length);

    // The bytes of such a text, whose letters may be of either case.
    static std::pair<unsigned char*, int> HexDecode(const char* text);

    // Base64 (RFC 4648 section 4) in lines: a line feed behind every 64 characters and
    // behind the last one, all of them counted, then a NUL. No data gives an empty text.
    static std::pair<char*, int> Base64Encode(const unsigned char* data, int length);

    // The bytes of such a text, without a NUL behind them. Of what is not exactly of that
    // form this reads what libcrypto's base64 filter does.
    // Relied on by callers: a text without a line feed gives 0 bytes and no error.
    static std::pair<unsigned char*, int> Base64Decode(const char* text);

    // AES (FIPS 197) in CBC mode (NIST SP 800-38A section 6.2). `keyBits` is 128, 192 or
    // 256; 16 bytes are read at `iv`. Nothing tells where the data ends: a last block that
    // is not full is filled up with NUL bytes, and the length of the result is the input's
    // rounded up to a multiple of 16, so that no input gives an empty result.
    // One NUL byte stands behind the result.
    static std::pair<unsigned char*, int> AESEncrypt(const unsigned char* in, int inLength,
                                                     const unsigned char* key, int keyBits,
                                                     const unsigned char* iv);

    // The reverse; what filled up the last block stays. Of a cipher text that is not whole
    // blocks the last part is filled up with NUL bytes and deciphered as well.
    // Relied on by callers: of that block only as many bytes come out as went in, and NUL
    // bytes behind them.
    static std::pair<unsigned char*, int> AESDecrypt(const unsigned char* in, int inLength,
                                                     const unsigned char* key, int keyBits,
                                                     const unsigned char* iv);

    // One block of AES for a secret of up to 16 bytes; `keyBytes` is 16, 24 or 32. Shorter
    // ones are filled up with NUL bytes. The length of the result is `inLength` rounded up
    // to a multiple of 16, one NUL byte stands behind it.
    // Relied on by callers: only the first block is enciphered (deciphered); all that
    // follows is NUL bytes, whatever the input has there.
    static std::pair<unsigned char*, int> AESEncrypt(const unsigned char* in, int inLength,
                                                     const unsigned char* key, int keyBytes);
    static std::pair<unsigned char*, int> AESDecrypt(const unsigned char* in, int inLength,
                                                     const unsigned char* key, int keyBytes);

    // AES-256-CBC with the key that is built into the library: anybody who has the library
    // can decipher the result. Upper-case hexadecimal digits, 32 for each begun 16 bytes.
    static std::pair<char*, int> AESEncrypt(const char* text);

    // The text of such digits, filled up with NUL bytes: the length is a multiple of 16, and
    // a NUL stands behind it in any case. Fails as `HexDecode` does.
    static std::pair<char*, int> AESDecrypt(const char* hexText);
};

// Encrypts texts by a number that says how: 0 and 1 by `Zel_Encrypt`, 2 and above by
// `ZelCryptoUtils::AESEncrypt` with the built-in key.
//
// Results are the length of the text in `out`, a buffer that the caller releases by
// `ZelCryptoUtils::Free`. Where that failed, `out` is null and the result -1 or -2 as above.
class ZBASIC_API ZelEncryption {
public:
    // The one of the process: made on first use (by any thread), released at exit.
    static ZelEncryption& Instance();

    virtual ~ZelEncryption();

    // What the calls without a type use; 0 until it is set. One setting for all users.
    void SetEncryptionType(long type);

    // A `maxLength` of 0 or more cuts the text of types below 2.
    // Relied on by callers: the text of types 2 and above is never cut.
    long Encrypt(char* in, char*& out, long maxLength);
    long Encrypt(long type, char* in, char*& out, long maxLength);

    // For types below 2 the length up to the first NUL; for others a multiple of 16.
    long Decrypt(char* in, char*& out);
    long Decrypt(long type, char* in, char*& out);

protected:
    ZelEncryption();

private:
    std::int32_t m_nType = 0;
};

// The scheme of old files: DES (FIPS 46-3) block by block with a key that is built into the
// library, as lower-case hexadecimal digits. A last block that is not full is filled up
// with characters of the text: "abc" is enciphered as "abcacbac".
// `out` has room for ((strlen(in) + 7) / 8) * 16 + 1 bytes; a null text counts as empty.
ZBASIC_API void Zel_Encrypt(const char* in, char* out);

// Deciphers such digits into `out`, which the caller releases by `ZelCryptoUtils::Free`;
// null when there is no memory. A digit without a second one is left out, bytes that are not a
// whole block stay as they are, and a NUL stands behind them. A null text counts as empty.
// Relied on by callers: what filled up the last block stays ("abc" comes back as
// "abcacbac"), and a pair of characters is read as `sscanf` reads "%2x" ("1g" is 1), or as 0.
ZBASIC_API void Zel_Decrypt(char* hexIn, unsigned char*& out);

// A password of up to 15 bytes: base64 with padding (see zbase64.h) of one AES block in
// the padding of PKCS #7 (RFC 5652 section 6.3). The 16, 24 or 32 characters of `key` are
// the key. Empty when the text cannot be decoded, the key has another length, or the
// padding claims to be longer than the cipher text.
// Relied on by callers: nothing else of the padding is looked at. A cipher text of several
// blocks has no padding in what is deciphered: the first block comes back with NUL bytes.
ZBASIC_API SV::String Zel_DecryptPasswordForAPP(const SV::String& base64CipherText,
                                                const SV::String& key);
