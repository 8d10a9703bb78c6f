// GRIB to float grids, beside ecCodes where its library is installed: one file a packing, ten
// messages of 1440 by 721 values, made with ecCodes at the first run.
//
//     build/bin/bench_grib [folder of files [ours]]
//
// With a second word ecCodes stays out of it, so that the peak of memory is ours.

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/resource.h>

#include "tyr/base/file.h"
#include "tyr/grib/grib_stream_private.h"

#ifdef TYR_HAVE_ECCODES
#include <eccodes.h>

using namespace tyr;
#endif

namespace {

constexpr int kColumns = 1440;
constexpr int kRows = 721;
constexpr int kMessages = 10;
constexpr int kRepeats = 5;

double now()
{
    const auto since = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(since).count();
}

long peak_kilobytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

/// Million values a second of our own reader; 0 for a file that it doesn't read.
double read_by_us(const std::string &path, int mode)
{
    double values = 0.0;
    const double start = now();
    for (int repeat = 0; repeat < kRepeats; ++repeat) {
        const FilePtr file(FILE_open(path.c_str(), "r"));
        tyr::GribStream stream(file.get(), path);
        GridRec grid;
        GRD_init(&grid);
        for (int index = 0; stream.read_grid(&grid, mode, &index) == 0; ++index) {
            values += static_cast<double>(grid.domain.nx) * grid.domain.ny;
            GRD_free(&grid);
        }
    }
    return values / (now() - start) / 1e6;
}

#ifdef TYR_HAVE_ECCODES

struct Kind {
    const char *name;
    const char *sample;
    const char *packing;
    bool has_bitmap;
};
constexpr Kind kKinds[] = {
    {"g1_simple",        "regular_ll_pl_grib1", "grid_simple",  false},
    {"g2_simple",        "regular_ll_pl_grib2", "grid_simple",  false},
    {"g2_simple_bitmap", "regular_ll_pl_grib2", "grid_simple",  true },
    {"g2_complex",       "regular_ll_pl_grib2", "grid_complex", false},
    {"g2_jpeg",          "regular_ll_pl_grib2", "grid_jpeg",    false},
};

/// A field like a temperature's at 500 hPa with noise on a small scale.
std::vector<double> make_field(int k, bool has_bitmap)
{
    constexpr double kRadians = 3.14159265358979 / 180.0;
    std::vector<double> field;
    std::uint32_t seed = 3U + static_cast<unsigned>(k);
    const auto noise = [&seed] {
        seed = seed * 1664525U + 1013904223U;
        return static_cast<double>(seed >> 8) / 16777216.0 - 0.5;
    };
    for (int j = 0; j < kRows; ++j) {
        const double lat = (90.0 - j * 0.25) * kRadians;
        for (int i = 0; i < kColumns; ++i) {
            const double lon = i * 0.25 * kRadians;
            const double wave = 4.0 * std::cos(lat) * std::sin(5.0 * lon + k / 3.0) +
                                1.5 * std::sin(11.0 * lat) * std::cos(9.0 * lon);
            const double value = 268.0 - 30.0 * std::pow(std::sin(lat), 2.0) + wave + 0.1 * noise();
            field.push_back(has_bitmap && noise() > 0.4 ? 9999.0 : value);
        }
    }
    return field;
}

void set(codes_handle *handle, const char *key, double value)
{
    codes_set_double(handle, key, value);
}

bool make_file(const Kind &kind, const std::string &path)
{
    const FilePtr file(FILE_open(path.c_str(), "w"));
    for (int k = 0; file != nullptr && k < kMessages; ++k) {
        codes_handle *handle = codes_grib_handle_new_from_samples(nullptr, kind.sample);
        codes_set_long(handle, "Ni", kColumns);
        codes_set_long(handle, "Nj", kRows);
        set(handle, "latitudeOfFirstGridPointInDegrees", 90.0);
        set(handle, "latitudeOfLastGridPointInDegrees", -90.0);
        set(handle, "longitudeOfFirstGridPointInDegrees", 0.0);
        set(handle, "longitudeOfLastGridPointInDegrees", 359.75);
        set(handle, "iDirectionIncrementInDegrees", 0.25);
        set(handle, "jDirectionIncrementInDegrees", 0.25);
        set(handle, "missingValue", 9999.0);
        codes_set_long(handle, "bitmapPresent", kind.has_bitmap ? 1 : 0);
        codes_set_long(handle, "bitsPerValue", 16);
        const std::vector<double> field = make_field(k, kind.has_bitmap);
        codes_set_double_array(handle, "values", field.data(), field.size());
        size_t size = std::char_traits<char>::length(kind.packing);
        bool is_good = codes_set_string(handle, "packingType", kind.packing, &size) == 0;
        const void *bytes = nullptr;
        size_t count = 0;
        is_good = is_good && codes_get_message(handle, &bytes, &count) == 0 &&
                  std::fwrite(bytes, 1, count, file.get()) == count;
        codes_handle_delete(handle);
        if (!is_good) {
            return false;
        }
    }
    return file != nullptr;
}

double read_by_eccodes(const std::string &path)
{
    std::vector<double> doubles;
    std::vector<float> floats;
    double values = 0.0;
    const double start = now();
    for (int repeat = 0; repeat < kRepeats; ++repeat) {
        const FilePtr file(FILE_open(path.c_str(), "r"));
        int error = 0;
        while (codes_handle *handle =
                   codes_handle_new_from_file(nullptr, file.get(), PRODUCT_GRIB, &error)) {
            size_t n = 0;
            codes_get_size(handle, "values", &n);
            doubles.resize(n);
            floats.resize(n);
            codes_get_double_array(handle, "values", doubles.data(), &n);
            for (size_t i = 0; i < n; ++i) {
                floats[i] = static_cast<float>(doubles[i]);
            }
            values += static_cast<double>(n);
            codes_handle_delete(handle);
        }
    }
    return values / (now() - start) / 1e6;
}

#endif

} // namespace

int main(int count, char **words)
{
    const std::string folder = count > 1 ? words[1] : "/tmp/tyr_bench_grib";
    [[maybe_unused]] const bool is_beside = count < 3;
    std::filesystem::create_directories(folder);
#ifdef TYR_HAVE_ECCODES
    for (const Kind &kind : kKinds) {
        const std::string path = folder + "/" + kind.name + ".grb";
        const bool is_wanted = is_beside && !std::filesystem::exists(path);
        if (is_wanted && !make_file(kind, path)) {
            std::filesystem::remove(path);
        }
    }
#endif
    std::printf("%-28s %10s %10s  million values/s; peak memory, kB\n", "file", "ours", "ecCodes");
    for (const auto &entry : std::filesystem::directory_iterator(folder)) {
        const std::string path = entry.path().string();
        const double ours = read_by_us(path, 0);
        const long peak = peak_kilobytes();
        double theirs = 0.0;
#ifdef TYR_HAVE_ECCODES
        if (is_beside) {
            theirs = read_by_eccodes(path);
        }
#endif
        std::printf("%-28s %10.1f %10.1f  %ld\n", entry.path().filename().c_str(), ours, theirs,
                    peak);
    }
    return 0;
}
