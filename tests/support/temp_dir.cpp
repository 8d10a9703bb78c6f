#include "support/temp_dir.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

TempDir::TempDir()
{
    std::string name = (std::filesystem::temp_directory_path() / "tyr_test_XXXXXX").string();
    if (!mkdtemp(name.data())) {
        throw std::runtime_error("no temporary folder: " + name);
    }
    path_ = name;
}

TempDir::~TempDir()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TempDir::write(const std::string &name, const std::string &bytes) const
{
    const std::string path = file(name);
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

std::string read_file(const std::string &path)
{
    std::string bytes;
    if (std::FILE *file = std::fopen(path.c_str(), "rb")) {
        std::array<char, 65536> block;
        for (size_t n = 0; (n = std::fread(block.data(), 1, block.size(), file)) > 0;) {
            bytes.append(block.data(), n);
        }
        std::fclose(file);
    }
    return bytes;
}
