#include "programs/profiler/reader.h"

#include <array>
#include <string>

#include "programs/profiler/bufr_layout.h"
#include "programs/profiler/input.h"
#include "programs/profiler/layout.h"
#include "programs/profiler/netcdf_layout.h"
#include "programs/profiler/text_layout.h"
#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/netcdf.h"

using namespace tyr;

namespace {

using tyr::LayoutRow;
using tyr::ProfilerInput;

/// The first row whose probe says yes is the file's: the narrower tests stand above.
constexpr LayoutRow kLayouts[] = {
    tyr::kConsensusLayout,
    tyr::kBufrLayout,
    tyr::kStationLayout,
    tyr::kRecNumLayout,
};

struct State {
    const LayoutRow *row = nullptr; ///< of the open file; null while none is open
    int handle = -1;
    int64_t next = 0;
    ProfilerInput input;
};

State state;

const LayoutRow *row_of(int code)
{
    for (const LayoutRow &row : kLayouts) {
        if (row.layout == code) {
            return &row;
        }
    }
    return nullptr;
}

const LayoutRow *row_of(const ProfilerInput &input)
{
    for (const LayoutRow &row : kLayouts) {
        if (row.probe(input)) {
            return &row;
        }
    }
    return nullptr;
}

bool is_open(int handle)
{
    return state.row != nullptr && handle == state.handle;
}

void close_current()
{
    if (state.row != nullptr) {
        state.row->close();
    }
    state = {};
}

int refuse(const char *name, const std::string &why)
{
    MSG_out(kMsgWarn, "PROF_open: %s: %s\n", name, why.c_str());
    return -1;
}

int create(const char *name, int code)
{
    if (code != kLayoutStation && code != kLayoutRecNum) {
        return -1;
    }
    std::array<char, kFileNameRoom> path;
    FILE_expand(name, path.data());
    CDF_set_quiet(0);
    const int id = CDF_open(path.data(), 1);
    if (id == -1) {
        return -1;
    }
    CDF_set_quiet(1);
    state.row = row_of(code);
    state.handle = id;
    return id;
}

} // namespace

int PROF_file_type(const char *name)
{
    close_current();
    ProfilerInput input;
    if (!tyr::read_input(name, &input).empty()) {
        return -1;
    }
    const LayoutRow *row = row_of(input);
    if (row == nullptr || row->open(input) == -1) {
        return -1;
    }
    row->close();
    return row->layout;
}

int PROF_open(const char *name, int mode, int *code)
{
    close_current();
    if (mode != 0) {
        return create(name, *code);
    }
    const bool is_given = *code != kLayoutNone;
    std::string why = tyr::read_input(name, &state.input);
    if (why.empty() && state.input.bytes.empty()) {
        why = "the file is empty";
    }
    if (!why.empty()) {
        *code = is_given ? *code : -1;
        return refuse(name, why);
    }
    const LayoutRow *row = is_given ? row_of(*code) : row_of(state.input);
    if (row == nullptr) {
        *code = is_given ? *code : -1;
        return is_given ? -1 : refuse(name, "not a profiler file");
    }
    *code = row->layout;
    const int handle = row->open(state.input);
    if (handle == -1) {
        state = {};
        return -1; // told by the layout
    }
    state.row = row;
    state.handle = handle;
    return handle;
}

int PROF_read_header(int handle, PrfFileInfo *info)
{
    if (is_open(handle)) {
        state.row->header(state.input, info);
    }
    return 0;
}

int PROF_read(int handle, ProfilerRecord *record, int /*flags*/, const int *index)
{
    if (!is_open(handle)) {
        return -1;
    }
    if (*index != -1) {
        state.next = *index;
    }
    return state.row->read(state.input, state.next, record);
}

int PROF_find(int handle, const char *id)
{
    if (!is_open(handle) || state.row->find == nullptr) {
        return 0;
    }
    return static_cast<int>(state.row->find(id));
}

bool PROF_record_date(DateRec *date)
{
    return state.row != nullptr && state.row->date != nullptr && state.row->date(date);
}

int PROF_rewind(int handle)
{
    if (!is_open(handle)) {
        return -1;
    }
    if (state.row->rewind != nullptr) {
        state.row->rewind();
    }
    state.next = 0;
    return 0;
}

int PROF_close(int handle)
{
    if (!is_open(handle)) {
        return -1;
    }
    close_current();
    return 0;
}
