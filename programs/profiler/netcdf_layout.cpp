#include "programs/profiler/netcdf_layout.h"

#include <string_view>

#include "programs/profiler/netcdf_reader.h"
#include "tyr/base/msg.h"
#include "tyr/base/netcdf.h"

using namespace tyr;

namespace {

using tyr::ProfilerInput;
using namespace std::string_view_literals;

constexpr std::string_view kClassicMagic = "CDF"sv;
constexpr std::string_view kHdfMagic = "\x89HDF\r\n\x1a\n"sv; ///< of netCDF-4

/// The file that is open: it is opened by the probe, and stays open for the reader.
struct State {
    const ProfilerInput *input = nullptr;
    int id = -1;
    int64_t whole_records = 0;
};

State state;

bool is_netcdf(const ProfilerInput &input)
{
    return input.bytes.starts_with(kClassicMagic) || input.bytes.starts_with(kHdfMagic);
}

/// Opens the file, once.
bool is_current(const ProfilerInput &input)
{
    if (state.input == &input && state.id != -1) {
        CDF_set_current(state.id);
        return true;
    }
    tyr::close_netcdf();
    if (!is_netcdf(input)) {
        return false;
    }
    state.id = CDF_open_memory(input.bytes, &state.whole_records);
    state.input = &input;
    return state.id != -1;
}

bool has_station(const ProfilerInput &input)
{
    CDF_set_quiet(0);
    const bool is_there = is_current(input) && CDF_dim_id("station") != -1;
    CDF_set_quiet(1);
    return is_there;
}

} // namespace

bool tyr::probe_station(const ProfilerInput &input)
{
    return is_netcdf(input) && has_station(input);
}

bool tyr::probe_recnum(const ProfilerInput &input)
{
    return is_netcdf(input);
}

int tyr::open_netcdf(const ProfilerInput &input)
{
    if (!is_current(input)) {
        MSG_out(kMsgWarn, "PROF_open: %s: %s\n", input.name.c_str(),
                is_netcdf(input) ? "the file is cut short or damaged" : "not a netCDF file");
        return -1;
    }
    return state.id;
}

void tyr::read_station_header(const ProfilerInput &input, PrfFileInfo *info)
{
    CDF_set_current(state.id);
    netcdf_read_header(kLayoutStation, input.name.c_str(), state.whole_records, info);
}

void tyr::read_recnum_header(const ProfilerInput &input, PrfFileInfo *info)
{
    CDF_set_current(state.id);
    netcdf_read_header(kLayoutRecNum, input.name.c_str(), state.whole_records, info);
}

int tyr::read_station_record(const ProfilerInput &, int64_t index, ProfilerRecord *record)
{
    CDF_set_current(state.id);
    return netcdf_read_record(kLayoutStation, index, record);
}

int tyr::read_recnum_record(const ProfilerInput &, int64_t index, ProfilerRecord *record)
{
    CDF_set_current(state.id);
    return netcdf_read_record(kLayoutRecNum, index, record);
}

void tyr::close_netcdf()
{
    if (state.id != -1) {
        CDF_set_current(state.id);
        CDF_close();
    }
    state = {};
}
