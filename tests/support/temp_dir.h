// A fresh directory for one test.

#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// Made empty by the constructor, removed with all that lies in it by the destructor.
class TempDir {
public:
    TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    ~TempDir();

    // Absolute path of a name in the directory.
    std::string path(std::string_view name) const;
    // Writes a file of these bytes and returns its path; missing folders are made.
    std::string write(std::string_view name, std::string_view content) const;

    const std::filesystem::path& root() const { return m_root; }

private:
    std::filesystem::path m_root;
};

// All bytes of a file; fails the test when it cannot be read.
std::string readFile(const std::filesystem::path& file);
