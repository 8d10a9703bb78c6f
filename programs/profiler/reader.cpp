#include "programs/profiler/reader.h"

#include <array>
#include <cstdio>
#include <string>

#include "programs/profiler/bufr.h"
#include "programs/profiler/netcdf_reader.h"
#include "tyr/base/classic_extent.h"
#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/netcdf.h"
#include "tyr/base/str.h"

namespace {

constexpr int kBufrHandle = 1;
constexpr int kStartOfHeading = 1; ///< first character of a bulletin as transmitted

struct State {
    int layout = kLayoutNone;
    int mode = 0;
    FilePtr stream;
    int64_t next = 0;
    int64_t whole_records = 0;
    std::string name;
};

State state;

bool is_netcdf(int layout)
{
    return layout == kLayoutStation || layout == kLayoutRecNum;
}

/// Whether a file can be given to the library; tells of one that is cut short or damaged.
bool is_sound(const char *path)
{
    const ClassicExtent extent = classic_extent(path);
    if (extent.is_classic && !(extent.is_whole && extent.fixed_part)) {
        MSG_out(192, "PROF_open: %s: the file is cut short or damaged\n", path);
    }
    state.whole_records = extent.whole_records;
    return extent.is_whole && extent.fixed_part;
}

int netcdf_layout(const char *path)
{
    if (!is_sound(path)) {
        return -1;
    }
    CDF_set_quiet(0);
    if (CDF_open(path, 0) == -1) {
        return -1;
    }
    const int dimension = CDF_dim_id("station");
    CDF_close();
    CDF_set_quiet(1);
    return dimension != -1 ? kLayoutStation : kLayoutRecNum;
}

int open_bufr(const char *name, int mode)
{
    if (mode != 0) {
        return -1;
    }
    state.stream.reset(FILE_open(name, "rb"));
    if (!state.stream) {
        return -1;
    }
    state.layout = kLayoutBufr;
    state.mode = mode;
    return kBufrHandle;
}

int open_netcdf(const char *path, int mode, int layout)
{
    CDF_set_quiet(0);
    const int id = CDF_open(path, mode);
    if (id == -1) {
        return -1;
    }
    CDF_set_quiet(1);
    state.layout = layout;
    state.mode = mode;
    return id;
}

} // namespace

int PROF_file_type(const char *name)
{
    int first = EOF;
    {
        const FilePtr stream(FILE_open(name, "r"));
        first = stream ? std::fgetc(stream.get()) : EOF;
    }
    if (first == '*' || first == '\n' || first == 'G' || first == kStartOfHeading) {
        return kLayoutBufr;
    }
    if (first != 'C') {
        return -1;
    }
    std::array<char, kFileNameRoom> path;
    FILE_expand(name, path.data());
    return netcdf_layout(path.data());
}

int PROF_open(const char *name, int mode, int *code)
{
    const bool is_given = *code != kLayoutNone;
    if (!is_given) {
        if (mode != 0) {
            return -1;
        }
        *code = PROF_file_type(name);
    }
    state.name = name;
    if (*code == kLayoutBufr) {
        return open_bufr(name, mode);
    }
    if (!is_netcdf(*code)) {
        return -1;
    }
    std::array<char, kFileNameRoom> path;
    FILE_expand(name, path.data());
    if (is_given && mode == 0 && !is_sound(path.data())) {
        return -1;
    }
    return open_netcdf(path.data(), mode, *code);
}

int PROF_read_header(int handle, PrfFileInfo *info)
{
    if (is_netcdf(state.layout)) {
        CDF_set_current(handle);
        netcdf_read_header(static_cast<ProfilerLayout>(state.layout), state.name.c_str(),
                           state.whole_records, info);
    }
    return 0;
}

int PROF_read(int handle, ProfilerRecord *record, int /*flags*/, const int *index)
{
    if (*index != -1) {
        state.next = *index;
    }
    if (state.layout == kLayoutBufr) {
        return bufr_read_record(state.stream.get(), state.name.c_str(), record);
    }
    if (!is_netcdf(state.layout)) {
        return -1;
    }
    CDF_set_current(handle);
    return netcdf_read_record(static_cast<ProfilerLayout>(state.layout), state.next, record);
}

bool PROF_record_date(DateRec *date)
{
    return state.layout == kLayoutBufr && bufr_message_date(date);
}

int PROF_rewind(int /*handle*/)
{
    if (state.layout == kLayoutNone) {
        return -1;
    }
    if (state.layout == kLayoutBufr) {
        std::rewind(state.stream.get());
        STR_skip_line(state.stream.get());
    }
    state.next = 0;
    return 0;
}

int PROF_close(int handle)
{
    if (state.layout == kLayoutNone) {
        return -1;
    }
    if (state.layout == kLayoutBufr) {
        state.stream.reset();
    } else {
        CDF_set_current(handle);
        CDF_close();
    }
    state.layout = kLayoutNone;
    return 0;
}
