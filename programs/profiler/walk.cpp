#include "programs/profiler/walk.h"

#include "programs/profiler/reader.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"

namespace {

constexpr unsigned kDetail = 0x0F000000; ///< message level out4

struct State {
    int handle = -1;
    int next = 0;
    PrfFileInfo info = {};
};

State state;

/// PROF_read, with the date that a record tells.
int read_record(int handle, ProfilerRecord *record, const int *index)
{
    const int result = PROF_read(handle, record, 0, index);
    if (result != -1 && PROF_record_date(&state.info.date)) {
        TIME_format(&state.info.date, state.info.date_label);
    }
    return result;
}

} // namespace

int PRF_open_file(const char *name)
{
    int code = kLayoutNone;
    state.handle = PROF_open(name, 0, &code);
    if (state.handle == -1) {
        return 0;
    }
    PROF_read_header(state.handle, &state.info);
    state.next = 0;
    return 1;
}

int PRF_next_station(ProfilerRecord *record)
{
    const int result = read_record(state.handle, record, &state.next);
    ++state.next;
    return result;
}

int PRF_rewind()
{
    return PROF_rewind(state.handle);
}

int PRF_close_file()
{
    return PROF_close(state.handle);
}

int PRF_find_station(const char *name, const char *id, ProfilerRecord *record)
{
    int code = kLayoutNone;
    const int handle = PROF_open(name, 0, &code);
    if (handle == -1) {
        return 0;
    }
    PROF_read_header(handle, &state.info);
    int found = 0;
    for (int i = PROF_find(handle, id);
         i != -1 && found == 0 && read_record(handle, record, &i) != -1; ++i) {
        found = STR_casecmp(id, record->id) == 0 ? 1 : 0;
    }
    if (found == 1) {
        PRF_print_record(kDetail, record);
    }
    PROF_close(handle);
    return found;
}

const PrfFileInfo &PRF_file_info()
{
    return state.info;
}

void PRF_set_date_label(const DateRec *date)
{
    TIME_format(date, state.info.date_label);
}
