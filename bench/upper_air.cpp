// How fast files of upper-air reports are read, assembled and analysed, in each form: by processor
// time, so that other work on the machine doesn't count.

#include <cstdio>
#include <ctime>
#include <functional>
#include <string>

#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/upper_air/analysis.h"
#include "tyr/upper_air/assembly.h"
#include "tyr/upper_air/upa_file.h"

using namespace tyr;

namespace {

constexpr int kReports = 1000;
constexpr int kSigLevels = 40; // of each report
constexpr int kWinds = 25;

double seconds_of(const std::function<void()> &run)
{
    const std::clock_t start = std::clock();
    run();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
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

/// Reads all reports, analyses some of them: the road of a user's report.
/// @return how many had free convection
int read_reports(const char *path, int analysed)
{
    int type = 0;
    const int handle = UPA_open(path, 0, &type);
    UpaFileHeader header;
    UPA_read_header(handle, &header);
    int found = 0;
    UpaReport report;
    for (int i = 0; UPA_read(handle, &report, kUpaWhole, &i) == 0; ++i) {
        report.elev = 100;
        if (i < analysed && THERM_process_report(&report) == 1) {
            THERM_compute();
            found += THERM_results().parcel.lfc_p > 0.0F ? 1 : 0;
        }
    }
    UPA_close(handle);
    return found;
}

} // namespace

int main(int argc, char **argv)
{
    const std::string path = argc > 1 ? argv[1] : "/tmp/bench_upper_air";
    MSG_set_mask(0, kMsgError);
    std::printf("%d reports of %d levels, a second: %12s %22s\n", kReports,
                kSigLevels + kWinds + kUpa10 + 1, "read", "read and analysed");
    for (const int type : {1, 2, 3, 4, 5, 11, 12}) {
        write_reports(path.c_str(), type);
        int found = 0;
        const double read = seconds_of([&] { read_reports(path.c_str(), 0); });
        const double both = seconds_of([&] { found = read_reports(path.c_str(), kReports); });
        std::printf("type %2d %42.0f %22.0f  (%d with free convection)\n", type, kReports / read,
                    kReports / both, found);
    }
    std::remove(path.c_str());
    return 0;
}
