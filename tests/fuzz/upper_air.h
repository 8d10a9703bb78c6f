#pragma once

#include <string>

#include "fuzz/input.h"
#include "tyr/upper_air/assembly.h"
#include "tyr/upper_air/upa_file.h"

/// Reads bytes as a file of upper-air reports of one form (0: found out), every report whole and by
/// level, and assembles the soundings.
inline void fuzz_upper_air(const std::string &bytes, int form)
{
    const std::string path = fuzz_file(bytes, "upper_air");
    int type = form;
    const int handle = UPA_open(path.c_str(), 0, &type);
    UpaFileHeader header;
    UPA_read_header(handle, &header);
    UpaReport report;
    constexpr int kMostReports = 50;
    for (int i = 0; i < kMostReports && UPA_read(handle, &report, kUpaWhole, &i) == 0; ++i) {
        report.elev = 0;
        THERM_process_report(&report);
        for (const int what : {0, 2, 16, 22, 31, 32}) {
            UPA_read(handle, &report, what, &i);
        }
    }
    UPA_close(handle);
}
