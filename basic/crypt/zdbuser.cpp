#include "zbasic/zdbuser.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>

#include "crypt/resultbuffer.h"
#include "crypt/wipe.h"
#include "zbasic/zcrypt.h"
#include "zbasic/ztools.h"
#include "zbasic/ztrace.h"

namespace {

constexpr char kDefaultFile[] = "zdbuser.txt";
constexpr std::size_t kLineBuffer = 4096;
constexpr long kAes = 2;

struct Lines {
    std::string_view first;
    std::string_view second;
    std::string_view third;
};

// The lines of a text that has exactly three.
std::optional<Lines> threeLines(std::string_view text) {
    if (std::ranges::count(text, '\n') != 2) return std::nullopt;
    const std::size_t first = text.find('\n');
    const std::size_t second = text.find('\n', first + 1);
    return Lines{text.substr(0, first), text.substr(first + 1, second - first - 1),
                 text.substr(second + 1)};
}

void reportMissing(const char* path) {
    const SV::String message =
        "File " + SV::String(path) + " for ZEL_BOOT information was not found!\n";
    ZelDebugOut(message.c_str());
}

}  // namespace

ZelDBUserUtils::ZelDBUserUtils() { _Init(nullptr); }

ZelDBUserUtils::ZelDBUserUtils(const char* path) { _Init(path); }

ZelDBUserUtils::ZelDBUserUtils(const ZelDBUserUtils&) = default;

ZelDBUserUtils& ZelDBUserUtils::operator=(const ZelDBUserUtils& other) {
    if (this == &other) return *this;
    wipe();
    m_file = other.m_file;
    m_firstLine = other.m_firstLine;
    m_userName = other.m_userName;
    m_password = other.m_password;
    return *this;
}

ZelDBUserUtils::~ZelDBUserUtils() { wipe(); }

void ZelDBUserUtils::wipe() {
    ::wipe(m_firstLine);
    ::wipe(m_userName);
    ::wipe(m_password);
}

void ZelDBUserUtils::_Init(const char* path) {
    wipe();
    const SV::String name = path ? SV::String(path) : Zel_GetProgramPathFilename(kDefaultFile);
    m_file.reset();
    if (std::FILE* const file = std::fopen(name.c_str(), "rN")) m_file.reset(file, std::fclose);
    if (!m_file) {
        if (path) reportMissing(path);
        return;
    }
    Wiped<char[kLineBuffer]> line;
    if (!std::fgets(line.value, kLineBuffer, m_file.get())) return;
    char* text = nullptr;
    const long size = ZelEncryption::Instance().Decrypt(kAes, line.value, text);
    if (!text) return;
    const ResultBuffer<char> owner(text);
    const WipeAtEnd wipeAtEnd{text, static_cast<std::size_t>(size)};
    if (const auto lines = threeLines(text)) {
        m_firstLine.assign(lines->first);
        m_userName.assign(lines->second);
        m_password.assign(lines->third);
    }
}

bool ZelDBUserUtils::IsExternalDefined() { return m_file != nullptr; }

// Relied on by callers: the fall-backs are never used.
SV::String ZelDBUserUtils::GetDBUserName(const SV::String&) { return m_userName; }
SV::String ZelDBUserUtils::GetDBUserPassword(const SV::String&) { return m_password; }
