#include "zbasic/ztools.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "diag/comparetext.h"
#include "sv/ascii.h"
#include "text/ztools_sys.h"

namespace {

constexpr unsigned char kEuroByte = 0x80;
constexpr unsigned char kFirstOfControlRange = 0x7F;
constexpr unsigned char kLastOfControlRange = 0x9F;

// The bytes of the control range that are characters above U+00FF all the same.
using ControlRange = std::array<bool, kLastOfControlRange - kFirstOfControlRange + 1>;

ControlRange readControlRange() {
    ControlRange isCharacter{};
    for (std::size_t i = 0; i < isCharacter.size(); ++i) {
        isCharacter[i] = codePageCharacter(static_cast<char>(kFirstOfControlRange + i)) > 0xFF;
    }
    return isCharacter;
}

bool isForbiddenControl(unsigned char byte) {
    return byte != 0 && byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
}

bool isSign(char c) { return c == '+' || c == '-'; }

bool isControl(char c) { return static_cast<unsigned char>(c) < 32; }

// The size of a name that begins a UNC part and the separator that ends it; 0 when there is none.
std::size_t uncNameSize(std::string_view path, std::string_view separators) {
    const std::size_t end = path.find_first_of(separators);
    if (end == std::string_view::npos || end == 0) return 0;
    return std::ranges::any_of(path.substr(0, end), isControl) ? 0 : end + 1;
}

bool beginsWithDevice(std::string_view path) {
    static constexpr std::string_view kDevices[] = {
        "CON",  "PRN",  "AUX",  "CLOCK$", "NUL",  "COM1", "COM2", "COM3",
        "COM4", "COM5", "COM6", "COM7",   "COM8", "COM9", "LPT1", "LPT2",
        "LPT3", "LPT4", "LPT5", "LPT6",   "LPT7", "LPT8", "LPT9",
    };
    const std::string_view name = path.substr(0, path.find('.'));
    return std::ranges::any_of(kDevices, [name](std::string_view device) {
        return name.size() == device.size() && isEqualIgnoringCase(name, device);
    });
}

bool hasValidCharacters(std::string_view path, int colonsLeft) {
    char before = '\0';
    for (const char c : path) {
        if (std::string_view("|\"*<>?").find(c) != std::string_view::npos) return false;
        if (SV::IsPathSeparator(c) && SV::IsPathSeparator(before)) return false;
        if (c == ':' && (!SV::IsAsciiLetter(before) || --colonsLeft < 0)) return false;
        before = c;
    }
    return true;
}

bool isValidRest(std::string_view path, int colonsAllowed) {
    if (path.empty() || SV::IsPathSeparator(path.back()) || path.back() == ':') return false;
    return !beginsWithDevice(path) && hasValidCharacters(path, colonsAllowed);
}

}  // namespace

bool Zel_Valid_Integer(const char* text) {
    const std::string_view digits = text ? text : "";
    if (digits.empty() || !(SV::IsAsciiDigit(digits[0]) || isSign(digits[0]))) return false;
    // Relied on by callers: or none at all.
    return std::ranges::all_of(digits.substr(1), SV::IsAsciiDigit);
}

bool Zel_Valid_Double(const char* text) {
    std::string_view digits = text ? text : "";
    if (digits.empty()) return false;
    if (isSign(digits[0])) digits.remove_prefix(1);
    const auto digitCount = std::ranges::count_if(digits, SV::IsAsciiDigit);
    const auto restCount = static_cast<std::ptrdiff_t>(digits.size()) - digitCount;
    if (digitCount == 0 || restCount > 1) return false;
    if (restCount == 0) return true;
    const char separator = *std::ranges::find_if_not(digits, SV::IsAsciiDigit);
    return separator == '.' || separator == decimalSeparator();
}

bool Zel_IsValidXMLChar(char c, bool allowEuroByte, bool checkControlRange) {
    const auto byte = static_cast<unsigned char>(c);
    if (allowEuroByte && byte == kEuroByte) return true;
    // Relied on by callers: without the check NUL is valid, with it every control below 32.
    if (!checkControlRange) return !isForbiddenControl(byte);
    if (byte < kFirstOfControlRange || byte > kLastOfControlRange) return true;
    static const ControlRange isCharacter = readControlRange();
    return isCharacter[byte - kFirstOfControlRange];
}

bool Zel_Valid_Filename(const char* path) {
    std::string_view rest = path ? path : "";
    if (rest.find("://") != std::string_view::npos) return false;
    if (!rest.starts_with("\\\\")) return isValidRest(rest, 1);
    rest.remove_prefix(2);
    for (const std::string_view separators : {"\\", "\\/"}) {  // of the server, of the share
        const std::size_t size = uncNameSize(rest, separators);
        if (size == 0) return false;
        rest.remove_prefix(size);
    }
    return isValidRest(rest, 0);
}

bool Zel_Valid_DBFilename(const char* path) {
    constexpr std::string_view kPrefix = "DB:\\";
    const std::string_view text = path ? path : "";
    return isEqualIgnoringCase(text.substr(0, kPrefix.size()), kPrefix);
}
