// Time and memory of whole runs of the program: a section of 13 and of 168 hourly files, one
// station's walk through 2,000, and level maps of 35 stations, to PostScript and to PNG; with
// DISPLAY set also windows, from the start to the PNG of what they show. Each is run several times;
// the table shows the median wall time.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr double kMega = 1024.0;

struct Usage {
    double wall = 0.0;   ///< s
    double user = 0.0;   ///< s
    double system = 0.0; ///< s
    double peak = 0.0;   ///< MB
};

double seconds(const timeval &t)
{
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6;
}

Usage run_once(std::vector<std::string> words)
{
    std::vector<char *> argv;
    for (std::string &w : words) {
        argv.push_back(w.data());
    }
    argv.push_back(nullptr);
    const auto start = std::chrono::steady_clock::now();
    const pid_t pid = fork();
    if (pid == 0) {
        const int null = open("/dev/null", O_RDWR);
        dup2(null, STDOUT_FILENO);
        execv(argv[0], argv.data());
        _exit(127);
    }
    int status = 0;
    rusage used = {};
    wait4(pid, &status, 0, &used);
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::fprintf(stderr, "%s failed\n", words[0].c_str());
        std::exit(1);
    }
    return {wall.count(), seconds(used.ru_utime), seconds(used.ru_stime),
            static_cast<double>(used.ru_maxrss) / kMega};
}

void report(const char *name, const std::vector<std::string> &words, int runs)
{
    std::vector<Usage> all;
    run_once(words);
    for (int i = 0; i < runs; ++i) {
        all.push_back(run_once(words));
    }
    std::sort(all.begin(), all.end(),
              [](const Usage &a, const Usage &b) { return a.wall < b.wall; });
    const Usage &median = all[all.size() / 2];
    std::printf("%-28s %8.1f %8.1f %8.1f %8.1f %8.1f %8.1f\n", name, median.wall * 1e3,
                all.front().wall * 1e3, all.back().wall * 1e3, median.user * 1e3,
                median.system * 1e3, median.peak);
}

constexpr int kSegments = 20000;
constexpr int kPoints = 500; ///< of a segment

void put_big_endian(std::string &bytes, uint32_t value, int count)
{
    for (int i = count - 1; i >= 0; --i) {
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    }
}

void put_float(std::string &bytes, float value)
{
    uint32_t word = 0;
    std::memcpy(&word, &value, sizeof word);
    put_big_endian(bytes, word, 4);
}

/// A binary map file of ten million points: short wriggling lines all over the earth.
void write_big_map(const std::string &path)
{
    std::FILE *file = std::fopen(path.c_str(), "wb");
    for (int s = 0; s < kSegments; ++s) {
        std::string bytes;
        put_big_endian(bytes, kPoints, 2);
        for (int i = 0; i < 4; ++i) {
            put_float(bytes, 0.0F);
        }
        put_big_endian(bytes, 0, 4);
        const float lat = -85.0F + 170.0F * static_cast<float>(s % 200) / 200.0F;
        const float lon = -180.0F + 359.0F * static_cast<float>(s / 200) / 100.0F;
        for (int i = 0; i < kPoints; ++i) {
            const float t = static_cast<float>(i) * 0.01F;
            put_float(bytes, lat + 0.2F * std::sin(7.0F * t));
            put_float(bytes, lon + 0.3F * t);
        }
        std::fwrite(bytes.data(), 1, bytes.size(), file);
    }
    std::fclose(file);
}

} // namespace

int main(int argc, char **argv)
{
    namespace fs = std::filesystem;
    const fs::path bin = fs::canonical(argv[0]).parent_path();
    const fs::path data = argc > 1 ? fs::path(argv[1]) : fs::path("data");
    std::string folder = (fs::temp_directory_path() / "tyr_bench_XXXXXX").string();
    if (!mkdtemp(folder.data())) {
        return 1;
    }
    std::printf("%-28s %8s %8s %8s %8s %8s %8s\n", "run", "wall ms", "min", "max", "user", "system",
                "peak MB");
    run_once({(bin / "make_samples").string(), folder, "--hours", "2000"});
    const std::string newest = "#20270212";
    const std::string station = "PLTC2";
    const auto section = [&](const std::string &hours) {
        return std::vector<std::string>{(bin / "profiler").string(),
                                        "-df",
                                        "/nonexistent",
                                        "-me",
                                        "error",
                                        "-fp",
                                        data.string(),
                                        "-dp",
                                        folder,
                                        "-va",
                                        "wbrb",
                                        "-id",
                                        station,
                                        "-nh",
                                        hours,
                                        "-cu",
                                        newest + "la",
                                        "-de",
                                        "p," + folder + "/bench.ps"};
    };
    report("help (loading libraries)", {(bin / "profiler").string(), "-h"}, 9);
    report("13 files, 34 heights", section("-12"), 9);
    report("168 files, 34 heights", section("-167"), 9);
    report("2000 files, 34 heights", section("-1999"), 3);
    const auto map = [&](const std::string &region) {
        return std::vector<std::string>{(bin / "profiler").string(),
                                        "-df",
                                        "/nonexistent",
                                        "-me",
                                        "error",
                                        "-fp",
                                        data.string(),
                                        "-va",
                                        "wbrb",
                                        "-le",
                                        "3000m",
                                        "-re",
                                        region,
                                        "-de",
                                        "p," + folder + "/bench.ps",
                                        folder + "/20261122_0000_prf.nc"};
    };
    report("level map, contiguous US", map("us"), 9);
    report("level map, New England", map("ne"), 9);
    report("level map, the world", map("world"), 9);
    const auto picture = [&](std::vector<std::string> words) {
        *std::find(words.begin(), words.end(), "p," + folder + "/bench.ps") =
            "i," + folder + "/bench.png";
        return words;
    };
    report("PNG, 13 files", picture(section("-12")), 9);
    report("PNG, level map", picture(map("us")), 9);
    if (std::getenv("DISPLAY") != nullptr) {
        const auto window = [&](std::vector<std::string> words) {
            words.insert(words.begin() + 1, {"-pp", "png", "-ip", folder});
            *std::find(words.begin(), words.end(), "p," + folder + "/bench.ps") = "d";
            return words;
        };
        report("window, 13 files", window(section("-12")), 9);
        report("window, 168 files", window(section("-167")), 9);
        report("window, level map", window(map("us")), 9);
    }
    write_big_map(folder + "/big.map");
    for (const char *domain : {"ps,60,-97,3", "ll,0,0,10", "me,0,0,10", "lc,50,-97,5",
                               "or,35,-95,6", "mo,0,0,15", "la,40,130,10", "sat:0:-75,0,-75,6"}) {
        std::vector<std::string> words = map(domain);
        words.insert(words.end(), {"-mf", folder + "/big.map"});
        report((std::string("10 M points, ") + domain).c_str(), words, 1);
    }
    fs::remove_all(folder);
    return 0;
}
