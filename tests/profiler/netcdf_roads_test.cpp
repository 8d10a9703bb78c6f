#include <cstdio>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "support/netcdf_file.h"
#include "support/shared_data.h"
#include "support/temp_dir.h"

// The target aborts where the direct road and the library's differ.
#define LLVMFuzzerTestOneInput both_roads
#include "fuzz/netcdf_fuzz.cpp"
#undef LLVMFuzzerTestOneInput

namespace {

void compare(const std::string &bytes)
{
    both_roads(reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size());
}

std::string direct_of(const std::string &bytes)
{
    return read_all(fuzz_file(bytes), false);
}

/// A file of both layouts and of stranger types, small enough to damage everywhere.
std::vector<std::string> samples()
{
    const TempDir folder;
    const std::string path = folder.file("sample.nc");
    std::vector<std::string> all;
    write_recnum_file(path, {.names = {"AAAA1", "BBBB2"}, .u = {1.5F, -2.25F}});
    all.push_back(read_file(path));
    write_recnum_file(path, {.double_u = true});
    all.push_back(read_file(path));
    write_recnum_file(path, {.text_u = true, .no_v = true});
    all.push_back(read_file(path));
    write_station_file(path, 97.5F, 10, 3.0F, 4.0F);
    all.push_back(read_file(path));
    return all;
}

} // namespace

TEST(NetcdfRoads, SamplesReadAlike)
{
    for (const std::string &sample : samples()) {
        ASSERT_NE(direct_of(sample), "refused");
        compare(sample);
    }
}

TEST(NetcdfRoads, FilesCutAnywhereReadAlike)
{
    for (const std::string &sample : samples()) {
        for (size_t n = 4; n < sample.size(); n += n < 2000 ? 3 : 97) {
            SCOPED_TRACE(n);
            compare(sample.substr(0, n));
        }
    }
}

TEST(NetcdfRoads, FilesWithAFlippedByteReadAlike)
{
    for (const std::string &sample : samples()) {
        for (size_t n = 3; n < sample.size(); n += n < 4000 ? 2 : 101) {
            SCOPED_TRACE(n);
            for (const int flip : {0x01, 0x80, 0xff}) {
                std::string damaged = sample;
                damaged[n] = static_cast<char>(damaged[n] ^ flip);
                compare(damaged);
            }
        }
    }
}

TEST(NetcdfRoads, ValuesBeyondTheFloatsReadAlike)
{
    const TempDir folder;
    const std::string path = folder.file("double.nc");
    write_recnum_file(path, {.double_u = true});
    const std::string sample = read_file(path);
    const std::string ten("\x40\x24\0\0\0\0\0\0", 8); // of u, as it stands in the file
    const size_t place = sample.find(ten);
    ASSERT_NE(place, std::string::npos);
    for (const char *bytes : {"\x7e\x37\xe4\x3c\x88\x01\x59\x01", "\xff\xf0\1\1\1\1\1\1",
                              "\x7f\xf8\1\1\1\1\1\1", "\x36\x01\1\1\1\1\1\1"}) {
        std::string damaged = sample;
        damaged.replace(place, 8, bytes, 8);
        compare(damaged);
    }
}

TEST(NetcdfRoads, FilesFromElsewhereReadAlike)
{
    const std::string folder = shared_data("profiler");
    if (folder.empty()) {
        GTEST_SKIP() << "no shared data";
    }
    for (const auto &entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file() && entry.file_size() < (4U << 20)) {
            SCOPED_TRACE(entry.path().string());
            compare(read_file(entry.path().string()));
        }
    }
}
