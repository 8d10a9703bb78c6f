#include "programs/profiler/bufr_layout.h"

#include <cstdio>

#include "programs/profiler/bufr.h"
#include "tyr/base/file.h"
#include "tyr/base/str.h"

namespace {

using tyr::ProfilerInput;

constexpr int kHandle = 1;
constexpr char kStartOfHeading = 1; ///< first character of a bulletin as transmitted

struct State {
    FilePtr stream; ///< over the bytes in memory
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
    // read only: the bytes aren't written to
    char *bytes = const_cast<char *>(input.bytes.data());
    state.stream.reset(fmemopen(bytes, input.bytes.size(), "rb"));
    return state.stream ? kHandle : -1;
}

void tyr::read_bufr_header(const ProfilerInput &, PrfFileInfo *) {}

int tyr::read_bufr_record(const ProfilerInput &input, int64_t, ProfilerRecord *record)
{
    return bufr_read_record(state.stream.get(), input.name.c_str(), record);
}

bool tyr::bufr_record_date(DateRec *date)
{
    return bufr_message_date(date);
}

void tyr::rewind_bufr()
{
    std::rewind(state.stream.get());
    STR_skip_line(state.stream.get());
}

void tyr::close_bufr()
{
    state.stream.reset();
}
