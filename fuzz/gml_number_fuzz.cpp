// Words as numbers of GML, against expressions and the C library.

#include <regex.h>

#include <cerrno>

#include "input.h"
#include "model/gml_number.h"

using zelhost::GmlNumber;

namespace {

class Expression {
public:
    explicit Expression(const char* text) {
        check(::regcomp(&m_compiled, text, REG_EXTENDED | REG_NOSUB) == 0);
    }
    bool matches(const std::string& text) const {
        return ::regexec(&m_compiled, text.c_str(), 0, nullptr, 0) == 0;
    }

private:
    regex_t m_compiled;
};

void checkSpelling(const std::string& word) {
    static const Expression strict("^[+-]?([0-9]+|[0-9]*[.][0-9]*([eE][+-][0-9]+)?)$");
    const std::string spelling = zelhost::strictSpelling(word);
    check(strict.matches(spelling));
    check(std::strtod(spelling.c_str(), nullptr) == std::strtod(word.c_str(), nullptr));
    check(zelhost::strictSpelling(spelling) == spelling);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Expression integer("^[+-]?[0-9]+$");
    static const Expression real("^[+-]?([0-9]+[.]?[0-9]*|[.][0-9]+)([eE][+-]?[0-9]+)?$");
    const std::string word(reinterpret_cast<const char*>(data), size);
    if (word.empty() || word.find_first_of(std::string_view("\0\n", 2)) != word.npos) return 0;

    const GmlNumber number = zelhost::readGmlNumber(word);
    errno = 0;
    const long long value = integer.matches(word) ? std::strtoll(word.c_str(), nullptr, 10) : 0;
    const bool isInteger = integer.matches(word) && errno == 0;
    check((number.kind == GmlNumber::Kind::integer) == isInteger);
    check((number.kind != GmlNumber::Kind::none) == real.matches(word));
    if (isInteger) check(number.integer == value);
    if (number.kind == GmlNumber::Kind::real) checkSpelling(word);
    return 0;
}
