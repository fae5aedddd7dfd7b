#include "model/gml_number.h"

#include <charconv>

#include "sv/ascii.h"

namespace zelhost {

namespace {

std::size_t skipDigits(std::string_view text, std::size_t from) {
    while (from < text.size() && SV::IsAsciiDigit(text[from])) ++from;
    return from;
}

std::size_t skipSign(std::string_view text, std::size_t from) {
    return from < text.size() && (text[from] == '-' || text[from] == '+') ? from + 1 : from;
}

// Whether the rest of a real from `from` on is an exponent.
bool isExponent(std::string_view word, std::size_t from) {
    if (word[from] != 'e' && word[from] != 'E') return false;
    const std::size_t digits = skipSign(word, from + 1);
    return digits < word.size() && skipDigits(word, digits) == word.size();
}

}  // namespace

GmlNumber readGmlNumber(std::string_view word) {
    const std::size_t start = skipSign(word, 0);
    std::size_t i = skipDigits(word, start);
    std::size_t digits = i - start;
    if (i == word.size() && digits > 0) {
        GmlNumber number{GmlNumber::Kind::integer};
        const char* const first = word.data() + (word[0] == '+' ? 1 : 0);
        const auto [stop, error] = std::from_chars(first, word.data() + i, number.integer);
        if (error != std::errc()) number.kind = GmlNumber::Kind::real;  // beyond 64 bits
        return number;
    }
    if (i < word.size() && word[i] == '.') {
        const std::size_t end = skipDigits(word, i + 1);
        digits += end - (i + 1);
        i = end;
    }
    const bool isReal = digits > 0 && (i == word.size() || isExponent(word, i));
    return {isReal ? GmlNumber::Kind::real : GmlNumber::Kind::none};
}

std::string strictSpelling(std::string_view real) {
    const std::size_t exponent = real.find_first_of("eE");
    std::string spelling(real.substr(0, exponent));
    if (exponent == real.npos) return spelling;
    if (spelling.find('.') == spelling.npos) spelling += ".0";
    spelling += real[exponent];
    if (skipSign(real, exponent + 1) == exponent + 1) spelling += '+';
    spelling += real.substr(exponent + 1);
    return spelling;
}

}  // namespace zelhost
