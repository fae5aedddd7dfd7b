#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <random>

TempDir::TempDir() {
    // Test programs run side by side: a number of the process would not do everywhere.
    std::random_device random;
    m_root = std::filesystem::temp_directory_path() /
             ("zbasic_test_" + std::to_string(random()) + "_" + std::to_string(random()));
    std::filesystem::create_directories(m_root);
}

TempDir::~TempDir() {
    std::error_code ignored;  // a file that the test left open is no reason to end the program
    std::filesystem::remove_all(m_root, ignored);
}

std::string TempDir::path(std::string_view name) const { return (m_root / name).string(); }

std::string TempDir::write(std::string_view name, std::string_view content) const {
    const std::filesystem::path file = m_root / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary)
        .write(content.data(), static_cast<std::streamsize>(content.size()));
    return file.string();
}

std::string readFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream) << file;
    return {std::istreambuf_iterator<char>(stream), {}};
}
