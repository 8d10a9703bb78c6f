#pragma once

#include <cstdio>
#include <string>

#include "base/str.h"
#include "tyr/upper_air/upa_file.h"

/// A report with every kind of level, in values that the groups can tell: heights by the standard
/// atmosphere, temperatures falling with height.
inline UpaReport sample_report(int which = 0)
{
    constexpr float kHeights[] = {0,     111,   762,   1457,  3012,  5570,  7180,  9160,
                                  10360, 11780, 13610, 16180, 18440, 20580, 23850, 26480,
                                  31050, 33450, 35780, 39300, 42450, 47820};
    UpaReport r;
    UPA_clear_report(&r);
    STR_copy(r.id, sizeof r.id, "ST" + std::to_string(which % 1000));
    STR_copy(r.region, sizeof r.region, "US");
    r.wmo = 72000 + which % 1000;
    r.lat = 35.18F;
    r.lon = -97.44F;
    r.num_mand = 25;
    for (int slot = kUpa1000; slot <= kUpa1; ++slot) {
        const auto i = static_cast<float>(slot);
        r.mand[slot] = {UPA_mand_pressure(slot), kHeights[slot],    20.0F - 4.2F * i,
                        17.0F - 4.2F * i,        180.0F + 5.0F * i, 10.0F + 5.0F * i};
    }
    r.mand[kUpaSurface] = {1013, 20, 24.6F, 21.4F, 170, 8};
    r.mand[kUpaTropopause] = {186, kMissing, -58.3F, -64.3F, 250, 60};
    r.mand[kUpaMaxWind] = {212, kMissing, kMissing, kMissing, 245, 111};
    const float levels[] = {1013, 987, 765, 612, 388, 177, 45, 13, 8.5F};
    for (const float p : levels) {
        const float t = 24.6F - 8.0F * static_cast<float>(r.num_sig);
        r.sig[r.num_sig++] = {p, t, t - 3.2F};
    }
    for (const int thousands : {0, 1, 2, 5, 9, 14, 30, 60}) {
        const auto i = static_cast<float>(r.num_wnd);
        r.wnd[r.num_wnd++] = {1000.0F * static_cast<float>(thousands), i == 0 ? 170 : 175 + 5 * i,
                              8 + 12 * i};
    }
    return r;
}

inline UpaFileHeader sample_header()
{
    UpaFileHeader header = {};
    STR_copy(header.date_text, sizeof header.date_text, "12Z 06 MAR 99");
    STR_copy(header.short_date, sizeof header.short_date, "99030612");
    TIME_parse(header.date_text, &header.date);
    return header;
}

/// Writes a file of so many sample reports, or of the one given. @return 0 when it was closed well
inline int write_sample(const std::string &path, int type, int count, UpaReport *only = nullptr)
{
    UpaFileHeader header = sample_header();
    int code = type;
    const int handle = UPA_open(path.c_str(), 1, &code);
    UPA_write_header(handle, &header);
    for (int i = 0; i < count;) {
        UpaReport report = only != nullptr ? *only : sample_report(i);
        UPA_write(handle, &report, nullptr, &i);
    }
    return UPA_close(handle);
}
