#include "programs/profiler/bufr_layout.h"

#include <cstdio>
#include <vector>

#include "programs/profiler/bufr.h"
#include "programs/profiler/bufr_library.h"
#include "tyr/base/file.h"
#include "tyr/base/str.h"

namespace {

using tyr::ProfilerInput;

constexpr int kHandle = 1;
constexpr char kStartOfHeading = 1; ///< first character of a bulletin as transmitted

struct State {
    FilePtr stream; ///< over the bytes in memory
    bool by_library = false;
    std::vector<tyr::LibraryReport> reports; ///< of the library
    size_t next = 0;
};

State state;

} // namespace

bool tyr::probe_bufr(const ProfilerInput &input)
{
    if (input.bytes.starts_with("BUFR")) {
        return true;
    }
    const char first = input.bytes.empty() ? '\0' : input.bytes.front();
    return first == '*' || first == '\n' || first == 'G' || first == kStartOfHeading;
}

int tyr::open_bufr(const ProfilerInput &input)
{
    if (bufr_needs_library(input.bytes)) {
        state.reports = bufr_library_read(input.bytes, input.name.c_str());
    }
    state.by_library = !state.reports.empty();
    if (state.by_library) {
        return kHandle;
    }
    // our own walk tells why it refuses what the library found no winds in
    // read only: the bytes aren't written to
    char *bytes = const_cast<char *>(input.bytes.data());
    state.stream.reset(fmemopen(bytes, input.bytes.size(), "rb"));
    return state.stream ? kHandle : -1;
}

void tyr::read_bufr_header(const ProfilerInput &, PrfFileInfo *) {}

int tyr::read_bufr_record(const ProfilerInput &input, int64_t, ProfilerRecord *record)
{
    if (state.by_library) {
        if (state.next >= state.reports.size()) {
            return -1;
        }
        *record = state.reports[state.next++].record;
        return 1;
    }
    return bufr_read_record(state.stream.get(), input.name.c_str(), record);
}

bool tyr::bufr_record_date(DateRec *date)
{
    if (state.by_library) {
        const bool is_there = state.next > 0 && state.reports[state.next - 1].date.year > 0;
        *date = is_there ? state.reports[state.next - 1].date : *date;
        return is_there;
    }
    return bufr_message_date(date);
}

void tyr::rewind_bufr()
{
    state.next = 0;
    if (state.by_library) {
        return;
    }
    std::rewind(state.stream.get());
    STR_skip_line(state.stream.get());
}

void tyr::close_bufr()
{
    state = {};
}
