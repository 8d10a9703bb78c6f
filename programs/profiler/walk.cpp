#include "programs/profiler/walk.h"

#include <algorithm>
#include <tuple>

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

/// The first reports of a station in a file, up to so many, which is closed again.
std::vector<tyr::TimedReport> find_reports(const char *name, const char *id, size_t most)
{
    std::vector<tyr::TimedReport> found;
    int code = kLayoutNone;
    const int handle = PROF_open(name, 0, &code);
    if (handle == -1) {
        return found;
    }
    PROF_read_header(handle, &state.info);
    ProfilerRecord record;
    for (int i = PROF_find(handle, id);
         i != -1 && found.size() < most && read_record(handle, &record, &i) != -1; ++i) {
        if (STR_casecmp(id, record.id) == 0) {
            found.push_back({record, state.info.date});
        }
    }
    PROF_close(handle);
    return found;
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
    const std::vector<tyr::TimedReport> found = find_reports(name, id, 1);
    if (found.empty()) {
        return 0;
    }
    *record = found.front().record;
    PRF_print_record(kDetail, record);
    return 1;
}

std::vector<tyr::TimedReport> tyr::find_times(const char *name, const char *id)
{
    std::vector<TimedReport> found = find_reports(name, id, kMostTimes);
    const auto key = [](const TimedReport &r) {
        const DateRec &d = r.date;
        return std::tuple(d.year, d.month, d.day, d.hour, d.minute);
    };
    std::stable_sort(found.begin(), found.end(),
                     [key](const TimedReport &a, const TimedReport &b) { return key(a) < key(b); });
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
