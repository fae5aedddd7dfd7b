// Base64 of bytes in memory, in the two forms that the platform's data comes in.

#pragma once

#include "zbasic/zexport.h"

// Both write the alphabet of RFC 4648 section 4 without line breaks, and take neither line breaks
// nor blanks. The old form has no padding, the new one is padded to whole groups of four by "=".
//
//     bytes   old    new
//     Man     TWFu   TWFu
//     Ma      TWE    TWE=
//     M       TQ     TQ==
//
// Lengths are in bytes. `out` becomes a buffer made with `new char[]`, which is the caller's to
// `delete[]` whatever the answer is; after success a NUL follows its `outLen` bytes. What a
// decoder leaves in it when it answers false is not to be read. `in` may be null when `inLen` is 0.
// Errors: allocation failure throws `std::bad_alloc`, with `out` as it was.
// Threads: any.

// False only for input whose text would be longer than 32 bits can say (3 GiB and more); nothing
// but a NUL is in the buffer then, and `outLen` is 0.
ZBASIC_API bool Zel_OldBase64Encode(char* in, unsigned long inLen, char*& out,
                                    unsigned long& outLen);
ZBASIC_API bool Zel_NewBase64Encode(const char* in, unsigned long inLen, char*& out,
                                    unsigned long& outLen);

// False at the first character outside the alphabet, "=" among them; `outLen` is then what it would
// be without that. A single character behind the groups of four says nothing.
// Relied on by callers: that character is not looked at, so "TWFu=" is taken as "TWFu".
ZBASIC_API bool Zel_OldBase64Decode(char* in, unsigned long inLen, char*& out,
                                    unsigned long& outLen);

// As the old one, behind whose end "=" may stand. The length must be a multiple of four: `outLen`
// is counted by whole groups less one for each "=", and the answer is false when the characters
// before the "=" hold more bytes than that, as when the padding is missing or too long.
// Relied on by callers: three "=" behind a single character are taken for nothing.
ZBASIC_API bool Zel_NewBase64Decode(const char* in, unsigned long inLen, char*& out,
                                    unsigned long& outLen);
