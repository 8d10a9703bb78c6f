// Listing a GRIB file of many messages: by an index beside it, by the messages themselves, and the
// index's text alone as the mark to reach.
//
//     build/bin/bench_grid_file [messages]      (from the checkout, for its data)

#include "tyr/grid_files/grid_file.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <sys/resource.h>

#include "tests/support/grib_message.h"
#include "tyr/base/file.h"
#include "tyr/base/res.h"
#include "tyr/grib/grib.h"

using namespace tyr;

namespace {

constexpr const char *kFolder = "/tmp/tyr_bench_grid_file";
constexpr int kMessages = 100000;

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

void make_files(const std::string &path, const std::string &index_path, int messages)
{
    const FilePtr file(FILE_open(path.c_str(), "w"));
    const FilePtr index(FILE_open(index_path.c_str(), "w"));
    Grib1Wish wish;
    size_t place = 0;
    for (int i = 0; i < messages; ++i) {
        wish.level = 100 + i % 900;
        const std::string message = grib1_message(wish);
        std::fwrite(message.data(), 1, message.size(), file.get());
        std::fprintf(index.get(), "%zu x / GRIB1 S7 M96 G255 T6 L100 H%d V11\n", place, wish.level);
        place += message.size();
    }
}

/// Seconds of reading a text line by line.
double read_text(const std::string &path, int *lines)
{
    const double start = now();
    const FilePtr file(FILE_open(path.c_str(), "r"));
    std::array<char, 200> line{};
    for (*lines = 0; std::fgets(line.data(), static_cast<int>(line.size()), file.get()); ++*lines) {
    }
    return now() - start;
}

/// Seconds of reading all descriptions.
double list(const std::string &path, const std::string &index_path, int mode, int *count)
{
    const double start = now();
    int kind = kGridGrib;
    const int handle = GRD_open(path.c_str(), 0, &kind);
    GridFileInfo info;
    GRD_read_header(handle, &info);
    GRD_attach_index(handle, index_path.c_str());
    GridRec grid;
    GRD_init(&grid);
    *count = 0;
    while (GRD_read(handle, &grid, mode, count) == 0) {
        ++*count;
    }
    GRD_close(handle);
    return now() - start;
}

} // namespace

int main(int count, char **words)
{
    RES_put("file_path", "data");
    const int messages = count > 1 ? std::atoi(words[1]) : kMessages;
    const std::string path = std::string(kFolder) + "/many.grb";
    const std::string index_path = std::string(kFolder) + "/many.idx";
    make_files(path, index_path, messages);
    const struct {
        const char *name;
        std::string index;
        int mode;
    } cases[] = {
        {"index, numbers alone",     index_path, 1},
        {"index, labels and dates",  index_path, 2},
        {"messages, numbers alone",  "",         1},
        {"messages, with all texts", "",         2},
    };
    int lines = 0;
    const double text = read_text(index_path, &lines);
    std::printf("%-26s %8s %9s %12s\n", "listing", "grids", "seconds", "peak, kB");
    std::printf("%-26s %8d %9.3f %12ld\n", "the index's text", lines, text, peak_kilobytes());
    for (const auto &c : cases) {
        int grids = 0;
        const double seconds = list(path, c.index, c.mode, &grids);
        std::printf("%-26s %8d %9.3f %12ld\n", c.name, grids, seconds, peak_kilobytes());
    }
    std::filesystem::remove_all(kFolder);
    return 0;
}
