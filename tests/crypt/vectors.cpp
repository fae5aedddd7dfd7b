#include "crypt/vectors.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <random>
#include <sstream>

std::vector<std::vector<std::string>> readVectors(const char* file) {
    std::ifstream stream(std::string(ZBASIC_FIXTURES "/") + file);
    std::vector<std::vector<std::string>> vectors;
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with('#')) continue;
        std::istringstream fields(line);
        vectors.emplace_back();
        for (std::string field; fields >> field;) vectors.back().push_back(field);
    }
    EXPECT_FALSE(vectors.empty()) << file;
    return vectors;
}

std::string fromHex(std::string_view digits) {
    std::string result;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        result += static_cast<char>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16));
    }
    return result;
}

std::string toHex(std::string_view bytes) {
    std::string result;
    for (const char byte : bytes) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned>(byte) & 0xFF);
        result += digits;
    }
    return result;
}

std::string randomBytes(std::size_t size, unsigned seed) {
    std::mt19937 random(seed);
    std::string result(size, '\0');
    for (char& byte : result) byte = static_cast<char>(random());
    return result;
}
