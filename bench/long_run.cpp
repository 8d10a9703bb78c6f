// Whether a long run in one process keeps anything: open descriptors and resident memory after
// 100, 1000 and 10000 plots, sections and maps in turn, on each file device.
//
// usage: bench_long_run FOLDER-OF-SAMPLES DATA-FOLDER [PLOTS]

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <unistd.h>

#include "programs/profiler/driver.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/geo/domain.h"
#include "tyr/names/name_conv.h"
#include "tyr/names/search.h"
#include "tyr/names/sequence.h"
#include "tyr/place/domain_text.h"
#include "tyr/start/options.h"
#include "tyr/var/level.h"

using namespace tyr;

namespace {

constexpr int kOptions[] = {57, 3, 73, 48, 41, 39, 94, 55, 63, 106, 112, 113, 0};
constexpr int kPositional[] = {50, 0};
constexpr const char *kDevices[] = {"p,/dev/null", "h,/dev/null", "m,/dev/null"};
constexpr int kMapLevel = 3000; ///< m
constexpr long kKilo = 1024;

long open_descriptors()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}) - 1;
}

long resident_kilobytes()
{
    long total = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * sysconf(_SC_PAGESIZE) / kKilo;
}

/// A section of six hours of one station.
void plot_section(const DateRec &date)
{
    DomainRec domain;
    DOM_init(&domain);
    domain.proj = kProjTimeHeight;
    domain.clat = -1.0F;
    domain.clon = -1000.0F;
    domain.dx = 8.0F;
    domain.dy = 18000.0F;
    domain.nx = 25;
    domain.ny = 21;
    DriverSetup setup;
    setup.mode = kSection;
    setup.stations = {"PLTC2"};
    setup.date = date;
    PRF_setup(setup);
    PRF_plot(&domain);
}

/// All stations at a level.
void plot_map(const DateRec &date)
{
    DomainRec domain;
    DOM_init(&domain);
    DOM_decode("us", &domain);
    DriverSetup setup;
    setup.mode = kLevelMap;
    setup.date = date;
    PRF_setup(setup);
    PRF_plot(&domain);
}

void start(const std::string &folder, const std::string &data)
{
    const std::string pattern = "@" + folder + "/%Y%m%d_%h%n_prf.nc";
    std::vector<std::string> words = {"profiler", "-df",       "/nonexistent", "-file_path",
                                      data,       "-variable", "wbrb:knt"};
    std::vector<char *> arguments;
    arguments.reserve(words.size());
    for (std::string &word : words) {
        arguments.push_back(word.data());
    }
    OPT_init(static_cast<int>(arguments.size()), arguments.data(), kOptions, kPositional);
    MSG_set_mask(0, kMsgError);
    std::string type = pattern;
    FILE_set_name(type.data());
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: bench_long_run FOLDER-OF-SAMPLES DATA-FOLDER [PLOTS]\n");
        return 1;
    }
    start(argv[1], argv[2]);
    const int plots = argc > 3 ? std::atoi(argv[3]) : 10000;
    std::array<char, kFileNameRoom> name = {};
    FILE_current("#20261122la", name.data());
    DateRec date;
    FILE_get_date(&date);
    FILE_set_default_hours(-6);
    PRM_set(kPrmLevelKind, kLevelHeight);
    PRM_set(kPrmLevelValue, kMapLevel);
    PRF_select_variable();
    std::printf("%s\n%8s %12s %12s %10s\n", name.data(), "plots", "descriptors", "resident KB",
                "seconds");
    const auto begun = std::chrono::steady_clock::now();
    for (int i = 0; i <= plots; ++i) {
        const bool is_round = i == 10 || i == 100 || i == 1000 || i == 3000 || i == plots;
        if (is_round) {
            const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begun;
            std::printf("%8d %12ld %12ld %10.1f\n", i, open_descriptors(), resident_kilobytes(),
                        taken.count());
            std::fflush(stdout);
        }
        RES_put("device", kDevices[i / 2 % std::size(kDevices)]);
        DateRec of_file = date;
        FILE_set_date(&of_file);
        i % 2 == 0 ? plot_section(date) : plot_map(date);
    }
    return 0;
}
