// Test vectors, bytes, and results with an owner.

#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "zbasic/zcrypt.h"

// The fields of each line of a fixture file that is no comment.
std::vector<std::vector<std::string>> readVectors(const char* file);

std::string fromHex(std::string_view digits);
std::string toHex(std::string_view bytes);

// The same bytes at every run.
std::string randomBytes(std::size_t size, unsigned seed);

inline const unsigned char* bytes(const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

// A result of `ZelCryptoUtils`, released: "<-1>" and "<-2>" for the two failures.
template <class Byte>
std::string taken(std::pair<Byte*, int> result) {
    if (!result.first) return "<" + std::to_string(result.second) + ">";
    std::string text(reinterpret_cast<char*>(result.first),
                     static_cast<std::size_t>(result.second));
    ZelCryptoUtils::Free(result.first);
    return text;
}
