// Writes sample observations: hourly profiler files in the two netCDF layouts or as BUFR messages.
//
// usage: make_samples FOLDER [--layout 12|11|bufr] [--hours N] [--start YYYYMMDDHH]

#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "tools/make_samples/bufr_samples.h"
#include "tools/make_samples/netcdf_samples.h"

namespace {

constexpr int kHourSeconds = 3600;

struct Options {
    std::string folder;
    std::string layout = "12";
    int hours = 13;
    std::string start = "2026112112";
};

Options parse(int argc, char **argv)
{
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word.rfind("--", 0) != 0) {
            options.folder = word;
        } else if (i + 1 == argc) {
            throw std::runtime_error("no value for " + word);
        } else if (word == "--layout") {
            options.layout = argv[++i];
        } else if (word == "--hours") {
            options.hours = std::atoi(argv[++i]);
        } else if (word == "--start") {
            options.start = argv[++i];
        } else {
            throw std::runtime_error("unknown option " + word);
        }
    }
    if (options.folder.empty()) {
        throw std::runtime_error(
            "usage: make_samples FOLDER [--layout 12|11|bufr] [--hours N] [--start YYYYMMDDHH]");
    }
    return options;
}

void write_samples(const Options &options)
{
    tm start = {};
    if (std::sscanf(options.start.c_str(), "%4d%2d%2d%2d", &start.tm_year, &start.tm_mon,
                    &start.tm_mday, &start.tm_hour) != 4) {
        throw std::runtime_error("not a date: " + options.start);
    }
    start.tm_year -= 1900;
    start.tm_mon -= 1;
    const long first = timegm(&start);
    std::filesystem::create_directories(options.folder);
    for (int hour = 0; hour < options.hours; ++hour) {
        const time_t seconds = first + static_cast<long>(hour) * kHourSeconds;
        const tm *date = gmtime(&seconds);
        const bool is_bufr = options.layout == "bufr";
        std::array<char, 64> name;
        std::strftime(name.data(), name.size(),
                      is_bufr ? "%Y%m%d_%H%M_prf.bufr" : "%Y%m%d_%H%M_prf.nc", date);
        const std::string path = options.folder + "/" + name.data();
        if (is_bufr) {
            write_bufr(path, seconds, hour);
        } else if (options.layout == "11") {
            write_station(path, seconds, hour);
        } else if (options.layout == "12") {
            write_recnum(path, seconds, hour);
        } else {
            throw std::runtime_error("unknown layout " + options.layout);
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    try {
        write_samples(parse(argc, argv));
    } catch (const std::exception &e) {
        std::fprintf(stderr, "make_samples: %s\n", e.what());
        return 1;
    }
    return 0;
}
