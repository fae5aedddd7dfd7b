#include "paths.h"

#include <algorithm>
#include <cstdint>
#include <memory>

#include "sv/ascii.h"
#include "zbasic/zcleanup.h"
#include "zbasic/zfileman.h"

#include "zbasic/zextension.h"

#include <windows.h>

namespace zelhost {

namespace {

constexpr std::uint16_t kEnglish = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);

// `text` has a "%s" for what the system says to its last error.
Message lastError(const std::string& path, const char* text) {
    Message message = systemProblem(text, {}, ::GetLastError());
    message.place = path;
    return message;
}

// Names like these are nobody else's.
constexpr char kTemporaryStart[] = "zelhost-";
constexpr char kTemporaryEnd[] = ".tmp";
constexpr std::size_t kUuidSize = 36;

bool isTemporaryName(std::string_view name) {
    const std::string_view start = kTemporaryStart;
    const std::string_view end = kTemporaryEnd;
    if (name.size() != start.size() + kUuidSize + end.size()) return false;
    const std::string_view uuid = name.substr(start.size(), kUuidSize);
    return name.starts_with(start) && name.ends_with(end) &&
           uuid.find_first_not_of("0123456789abcdef-") == std::string_view::npos;
}

bool isOlderThanADay(const FILETIME& time) {
    constexpr std::uint64_t kDay = std::uint64_t{24} * 60 * 60 * 10'000'000;  // in 100 ns
    FILETIME now = {};
    ::GetSystemTimeAsFileTime(&now);
    const auto ticks = [](const FILETIME& of) {
        return std::uint64_t{of.dwHighDateTime} << 32 | of.dwLowDateTime;
    };
    return ticks(now) > ticks(time) + kDay;
}

struct SearchCloser {
    void operator()(HANDLE search) const { ::FindClose(search); }
};

bool isDirectory(const std::string& path) {
    const DWORD attributes = ::GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

const ZelExtensionManager& modelExtensions() {
    static const ZelExtensionManager extensions("gml");
    return extensions;
}

}  // namespace

std::string systemMessage(std::uint32_t error, std::uint16_t language) {
    char text[256] = "";
    DWORD length = 0;
    for (const DWORD wanted : {DWORD{language}, DWORD{0}}) {  // the latter is the user's
        if (length > 0) break;
        length = ::FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS |
                                      FORMAT_MESSAGE_MAX_WIDTH_MASK,
                                  nullptr, error, wanted, text, sizeof text, nullptr);
    }
    std::string message(text, length);
    while (!message.empty() && (message.back() == ' ' || message.back() == '.')) message.pop_back();
    return message.empty() ? "system error " + std::to_string(error) : message;
}

Message systemProblem(const char* english, std::vector<std::string> details, std::uint32_t error) {
    details.push_back(systemMessage(error, kEnglish));
    Message message(english, std::move(details));
    message.systemError = error;
    return message;
}

std::string absolutePath(const std::string& path) {
    std::string full(MAX_PATH, '\0');
    DWORD length = ::GetFullPathNameA(path.c_str(), MAX_PATH, full.data(), nullptr);
    if (length > full.size()) {  // the size needed, with the closing NUL
        full.resize(length);
        length = ::GetFullPathNameA(path.c_str(), length, full.data(), nullptr);
    }
    if (length == 0) return path;  // too long, say: whoever uses it will be told
    full.resize(length);
    constexpr std::size_t kRootLength = 3;  // "C:\"
    while (full.size() > kRootLength && SV::IsPathSeparator(full.back())) full.pop_back();
    return full;
}

std::string fileNameOf(const std::string& path) {
    return path.substr(path.find_last_of("\\/:") + 1);
}

std::string baseNameOf(const std::string& path) {
    const SV::String known = modelExtensions().getPath(SV::String(path));
    const std::string name = fileNameOf(known.c_str());
    // A model may lie in a file of another extension, which then goes as well.
    return known.size() < path.size() ? name : name.substr(0, name.rfind('.'));
}

std::string modelExtension() { return modelExtensions().getExtension().c_str(); }

std::string withExtension(const std::string& path) {
    if (::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES) return path;
    SV::String complete(path);
    modelExtensions().setExtension(complete);
    return complete.c_str();
}

std::string directoryOf(const std::string& path) {
    return path.substr(0, std::min(path.find_last_of("\\/"), path.size()));
}

bool makeDirectory(const std::string& path, Message& problem) {
    if (isDirectory(path)) return true;
    const std::size_t separator = path.find_last_of("\\/");
    const bool hasParent = separator != std::string::npos && separator > 2;
    if (hasParent && !makeDirectory(path.substr(0, separator), problem)) return false;
    if (::CreateDirectoryA(path.c_str(), nullptr) || isDirectory(path)) return true;
    problem = lastError(path, "cannot be created: %s");
    return false;
}

TemporaryName::TemporaryName(const std::string& directory)
    : m_path(directory + "\\" + kTemporaryStart + std::string(std::string_view(Zel_GetNewUUID())) +
             kTemporaryEnd) {
    ZelCleanUp::Instance().AddFileCleanUpAction(SV::String(m_path));
}

TemporaryName::~TemporaryName() {
    ::DeleteFileA(m_path.c_str());
    ZelCleanUp::Instance().RemoveFileCleanUpAction(SV::String(m_path));
}

bool TemporaryName::moveTo(const std::string& path) const {
    return ::MoveFileExA(m_path.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE;
}

void removeLeftovers(const std::string& directory) {
    const std::string start = directory + "\\";
    WIN32_FIND_DATAA found = {};
    const HANDLE first =
        ::FindFirstFileA((start + kTemporaryStart + "*" + kTemporaryEnd).c_str(), &found);
    if (first == INVALID_HANDLE_VALUE) return;
    const std::unique_ptr<void, SearchCloser> search(first);
    do {
        if (isTemporaryName(found.cFileName) && isOlderThanADay(found.ftLastWriteTime)) {
            ::DeleteFileA((start + found.cFileName).c_str());
        }
    } while (::FindNextFileA(search.get(), &found));
}

// Shared for deletion: the clean-up at exit may come while the file is open.
PendingFile::PendingFile(std::string path)
    : m_path(std::move(path)),
      m_temporary(directoryOf(m_path)),
      m_handle(::CreateFileA(m_temporary.path().c_str(), GENERIC_WRITE, FILE_SHARE_DELETE, nullptr,
                             CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr)) {
    if (m_handle == INVALID_HANDLE_VALUE) fail();
}

PendingFile::~PendingFile() { close(); }

void PendingFile::close() {
    if (m_handle != INVALID_HANDLE_VALUE) ::CloseHandle(m_handle);
    m_handle = INVALID_HANDLE_VALUE;
}

bool PendingFile::write(std::string_view bytes) {
    while (m_problem.empty() && !bytes.empty()) {
        constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;
        const auto size = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
        DWORD written = 0;
        if (!::WriteFile(m_handle, bytes.data(), size, &written, nullptr)) return fail();
        bytes.remove_prefix(written);
    }
    return m_problem.empty();
}

bool PendingFile::complete() {
    if (!m_problem.empty() || m_handle == INVALID_HANDLE_VALUE) return m_problem.empty();
    // A file whose name is there before its bytes would be empty after a crash.
    if (!::FlushFileBuffers(m_handle)) return fail();
    close();
    return true;
}

bool PendingFile::commit() { return complete() && (m_temporary.moveTo(m_path) || fail()); }

bool PendingFile::fail() {
    if (m_problem.empty()) m_problem = lastError(m_path, "cannot be written: %s");
    return false;
}

}  // namespace zelhost
