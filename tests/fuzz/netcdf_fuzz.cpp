// Any bytes as a profiler file, every record of it evaluated; read directly and by the library
// alone, both have to tell the same.

#include <cstdlib>

#include "fuzz/input.h"
#include "programs/profiler/evaluate.h"
#include "programs/profiler/reader.h"
#include "programs/profiler/walk.h"
#include "tyr/base/netcdf_roads_private.h"
#include "tyr/base/str.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace {

constexpr int kRecordsCompared = 200;

void evaluate(const ProfilerRecord &record)
{
    for (const char *name : {"wbrb", "hel", "dewd"}) {
        VarRec variable;
        VAR_init(&variable);
        STR_copy(variable.name, sizeof variable.name, name);
        variable.level_kind = 105;
        variable.level_value = 1500;
        PlotValue value = {};
        PRF_evaluate(&record, &variable, &value);
    }
}

/// All that a record tells, in a form that compares.
std::string told(const ProfilerRecord &r)
{
    std::string text = r.id;
    for (const float v :
         {r.lat, r.lon, r.elev, r.sfc_p, r.sfc_t, r.sfc_td, r.sfc_dir, r.sfc_spd, r.sfc_rain}) {
        text += STR_print(" %a", static_cast<double>(v));
    }
    for (int i = 0; i < r.num_level; ++i) {
        const ProfilerLevel &l = r.level[i];
        text += STR_print("\n%d", l.qual);
        for (const float v : {l.z, l.u, l.v, l.w, l.hdev, l.vdev}) {
            text += STR_print(" %a", static_cast<double>(v));
        }
    }
    return text;
}

/// Whether both roads tell the same. The library opens no file in memory that ends within its first
/// 96 bytes, whole as it may be: such a one has no station.
bool agree(const std::string &direct, const std::string &by_library)
{
    return direct == by_library || (by_library == "refused" && direct.ends_with(" 0"));
}

std::string read_all(const std::string &path, bool by_library)
{
    tyr::netcdf_by_library_alone(by_library);
    if (PRF_open_file(path.c_str()) == 0) {
        return "refused";
    }
    const PrfFileInfo &info = PRF_file_info();
    std::string text = STR_print("%s %d", info.date_label, info.num_station);
    ProfilerRecord record;
    for (int i = 0; PRF_next_station(&record) == 1; ++i) {
        if (i < kRecordsCompared) {
            text += "\n" + told(record);
        }
        if (!by_library) {
            evaluate(record);
        }
    }
    PRF_close_file();
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    const std::string bytes = fuzz_text(data, size);
    const std::string path = fuzz_file(bytes);
    const std::string direct = read_all(path, false);
    if (bytes.starts_with("CDF") && !agree(direct, read_all(path, true))) {
        std::fprintf(stderr, "the two roads tell different things of %s\n", path.c_str());
        std::abort();
    }
    return 0;
}
