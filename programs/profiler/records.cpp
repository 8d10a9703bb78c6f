#include "programs/profiler/records.h"

#include <algorithm>
#include <iterator>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"

void PRF_init_record(ProfilerRecord *record)
{
    const ProfilerLevel empty = {kMissing, kMissing, kMissing,   kMissing,
                                 kMissing, kMissing, kMissingInt};
    std::fill(std::begin(record->id), std::end(record->id), '\0');
    for (float *field : {&record->lat, &record->lon, &record->elev, &record->sfc_p, &record->sfc_t,
                         &record->sfc_td, &record->sfc_dir, &record->sfc_spd, &record->sfc_rain}) {
        *field = kMissing;
    }
    std::fill(std::begin(record->level), std::end(record->level), empty);
    record->num_level = 0;
}

void PRF_print_record(unsigned level, const ProfilerRecord *record)
{
    MSG_out(level, "ID: %s\n", record->id);
    MSG_out(level, "LAT: %7.2f\n", record->lat);
    MSG_out(level, "LON: %7.2f\n", record->lon);
    MSG_out(level, "ELEV: %6.0f\n", record->elev);
    for (int i = 0; i < record->num_level; ++i) {
        const ProfilerLevel &l = record->level[i];
        MSG_out(level, "Z: %6.0f  U: %7.2f V: %7.2f W: %7.2f ", l.z, l.u, l.v, l.w);
        MSG_out(level, "HDev: %7.2f VDev: %7.2f %3d\n", l.hdev, l.vdev, l.qual);
    }
}
