#include "paths.h"

#include <algorithm>

#include <windows.h>

namespace zelhost {

namespace {

bool isSeparator(char c) { return c == '\\' || c == '/'; }

std::string systemMessage(DWORD error) {
    char text[256] = "";
    const DWORD length = ::FormatMessageA(
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
        nullptr, error, MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), text, sizeof text, nullptr);
    std::string message(text, length);
    while (!message.empty() && (message.back() == ' ' || message.back() == '.')) message.pop_back();
    return message.empty() ? "system error " + std::to_string(error) : message;
}

bool isDirectory(const std::string& path) {
    const DWORD attributes = ::GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

}  // namespace

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
    while (full.size() > kRootLength && isSeparator(full.back())) full.pop_back();
    return full;
}

std::string fileNameOf(const std::string& path) {
    return path.substr(path.find_last_of("\\/:") + 1);
}

std::string baseNameOf(const std::string& path) {
    const std::string name = fileNameOf(path);
    return name.substr(0, name.rfind('.'));
}

bool makeDirectory(const std::string& path, std::string& problem) {
    if (isDirectory(path)) return true;
    const std::size_t separator = path.find_last_of("\\/");
    const bool hasParent = separator != std::string::npos && separator > 2;
    if (hasParent && !makeDirectory(path.substr(0, separator), problem)) return false;
    if (::CreateDirectoryA(path.c_str(), nullptr) || isDirectory(path)) return true;
    problem = path + ": cannot be created: " + systemMessage(::GetLastError());
    return false;
}

PendingFile::PendingFile(std::string path)
    : m_path(std::move(path)),
      m_temporary(m_path + ".tmp" + std::to_string(::GetCurrentProcessId())),
      m_handle(::CreateFileA(m_temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                             FILE_ATTRIBUTE_NORMAL, nullptr)) {
    if (m_handle == INVALID_HANDLE_VALUE) fail();
}

PendingFile::~PendingFile() {
    if (m_handle == INVALID_HANDLE_VALUE) return;
    ::CloseHandle(m_handle);
    ::DeleteFileA(m_temporary.c_str());
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

bool PendingFile::commit() {
    if (!m_problem.empty()) return false;
    // Flushed first: a file whose name is there before its bytes would be empty after a crash.
    if (!::FlushFileBuffers(m_handle)) return fail();
    ::CloseHandle(m_handle);
    m_handle = INVALID_HANDLE_VALUE;
    if (::MoveFileExA(m_temporary.c_str(), m_path.c_str(), MOVEFILE_REPLACE_EXISTING)) return true;
    fail();
    ::DeleteFileA(m_temporary.c_str());
    return false;
}

bool PendingFile::fail() {
    if (m_problem.empty()) {
        m_problem = m_path + ": cannot be written: " + systemMessage(::GetLastError());
    }
    return false;
}

}  // namespace zelhost
