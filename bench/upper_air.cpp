// How fast files of upper-air reports are read and assembled, in each form.

#include <chrono>
#include <cstdio>
#include <functional>
#include <string>

#include "base/msg.h"
#include "base/str.h"
#include "tyr/upper_air/assembly.h"
#include "tyr/upper_air/upa_file.h"

namespace {

constexpr int kReports = 1000;
constexpr int kSigLevels = 40; // of each report
constexpr int kWinds = 25;

double seconds_of(const std::function<void()> &run)
{
    const auto start = std::chrono::steady_clock::now();
    run();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    return taken.count();
}

/// A full report: all mandatory levels to 10 hPa, with lists between them.
UpaReport full_report(int which)
{
    UpaReport r;
    UPA_clear_report(&r);
    STR_copy(r.id, sizeof r.id, STR_print("S%03d", which));
    r.wmo = 72000 + which;
    r.lat = 40;
    r.lon = -100;
    r.elev = 100;
    r.num_mand = 25;
    float z = 110;
    for (int slot = kUpa1000; slot <= kUpa10; ++slot) {
        const auto i = static_cast<float>(slot);
        r.mand[slot] = {UPA_mand_pressure(slot), z, 20 - 4 * i, 15 - 4 * i, 10 * i, 5 * i};
        z += 700 + 120 * i;
    }
    for (int i = 0; i < kSigLevels; ++i) {
        const auto k = static_cast<float>(i);
        r.sig[r.num_sig++] = {1010 - 24 * k, 22 - 1.5F * k, 17 - 1.5F * k};
    }
    for (int i = 0; i < kWinds; ++i) {
        const auto k = static_cast<float>(i);
        r.wnd[r.num_wnd++] = {2000 * k, 180 + 5 * k, 10 + 3 * k};
    }
    r.mand[kUpaSurface] = {1010, kMissing, 22, 17, 180, 10};
    return r;
}

void write_reports(const char *path, int type)
{
    UpaFileHeader header = {};
    STR_copy(header.date_text, sizeof header.date_text, "12Z 06 MAR 99");
    int code = type;
    const int handle = UPA_open(path, 1, &code);
    UPA_write_header(handle, &header);
    for (int i = 0; i < kReports;) {
        UpaReport report = full_report(i);
        UPA_write(handle, &report, nullptr, &i);
    }
    UPA_close(handle);
}

/// Reads all reports. @return levels of their soundings, or of their lists without assembly
long read_reports(const char *path, bool assembled)
{
    int type = 0;
    const int handle = UPA_open(path, 0, &type);
    UpaFileHeader header;
    UPA_read_header(handle, &header);
    long levels = 0;
    UpaReport report;
    for (int i = 0; UPA_read(handle, &report, kUpaWhole, &i) == 0; ++i) {
        report.elev = 100;
        if (assembled) {
            SoundLevel temps[300];
            SoundLevel winds[300];
            int map[kSlotMap];
            const int n = THERM_make_temps(&report, temps, map);
            MET_fill_heights(temps, n);
            const int m = THERM_make_winds(&report, winds, map);
            MET_fill_pressures(winds, m);
            THERM_fill_winds(temps, n, winds, m);
            levels += n + m;
        } else {
            levels += report.num_sig + report.num_wnd;
        }
    }
    UPA_close(handle);
    return levels;
}

} // namespace

int main(int argc, char **argv)
{
    const std::string path = argc > 1 ? argv[1] : "/tmp/bench_upper_air";
    MSG_set_mask(0, kMsgError);
    std::printf("%d reports, a second: %16s %14s\n", kReports, "read", "and assembled");
    for (const int type : {1, 2, 3, 4, 5, 11, 12}) {
        const double written = seconds_of([&] { write_reports(path.c_str(), type); });
        long lists = 0;
        long levels = 0;
        const double read = seconds_of([&] { lists = read_reports(path.c_str(), false); });
        const double both = seconds_of([&] { levels = read_reports(path.c_str(), true); });
        std::printf("type %2d  written in %5.0f ms  %9.0f %14.0f  (%ld and %ld levels)\n", type,
                    1e3 * written, kReports / read, kReports / both, lists, levels);
    }
    std::remove(path.c_str());
    return 0;
}
