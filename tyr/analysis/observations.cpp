#include "tyr/analysis/observations.h"

#include <algorithm>
#include <array>
#include <vector>

#include "tyr/analysis/barnes.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/geo/projection.h"
#include "tyr/raw/raw.h"

namespace {

constexpr int kFirstCapacity = 800;
constexpr int kGrowth = 400;
constexpr int kMostStations = 4000000;
constexpr float kRawFilter = 1.0F;
constexpr float kRawRadius = 3.0F;

struct State {
    int capacity = 0;
    int fields = 0;
    int stations = 0;
    std::vector<float> x, y;
    std::array<std::vector<float>, kObservationFields> values; ///< empty: no room made
};

State state;

bool is_field(int field)
{
    return field >= 0 && field < kObservationFields;
}

/// Room for a station. False for a number that can't be.
bool make_room(int station)
{
    if (station < 0 || station >= kMostStations || state.capacity == 0) {
        return false;
    }
    while (station >= state.capacity) {
        state.capacity += kGrowth;
        MSG_out(kMsgMess, "Increasing arrays to %d\n", state.capacity);
    }
    const auto size = static_cast<size_t>(state.capacity);
    if (state.x.size() < size) {
        state.x.resize(size, kMissing);
        state.y.resize(size, kMissing);
        for (std::vector<float> &values : state.values) {
            values.resize(values.empty() ? 0 : size, kMissing);
        }
    }
    state.stations = std::max(state.stations, station + 1);
    return true;
}

} // namespace

void OBJ_store_init()
{
    OBJ_reset();
    state = {};
    state.capacity = kFirstCapacity;
    state.x.assign(kFirstCapacity, kMissing);
    state.y.assign(kFirstCapacity, kMissing);
}

void OBJ_store_add_field(int field)
{
    if (is_field(field) && state.capacity > 0) {
        state.values[static_cast<size_t>(field)].assign(static_cast<size_t>(state.capacity),
                                                        kMissing);
        state.fields = std::max(state.fields, field + 1);
    }
}

void OBJ_store_position(int station, float x, float y)
{
    if (make_room(station)) {
        state.x[static_cast<size_t>(station)] = x;
        state.y[static_cast<size_t>(station)] = y;
    }
}

int OBJ_store_has_field(int field)
{
    return is_field(field) && !state.values[static_cast<size_t>(field)].empty() ? 1 : 0;
}

void OBJ_store_value(int field, int station, float value)
{
    if (OBJ_store_has_field(field) == 1 && make_room(station)) {
        state.values[static_cast<size_t>(field)][static_cast<size_t>(station)] = value;
    }
}

void OBJ_store_free()
{
    state = {};
}

int OBJ_store_analyze(GridRec *grids)
{
    std::array<float *, kObservationFields> arrays{};
    for (size_t f = 0; f < arrays.size(); f++) {
        arrays[f] = state.values[f].empty() ? nullptr : state.values[f].data();
    }
    return OBJ_analyze(state.x.data(), state.y.data(), arrays.data(), state.stations, state.fields,
                       grids);
}

int OBJ_analyze_raw(const char *path, long column, const DomainRec *domain, GridRec *grid)
{
    const int handle = RAW_open(path, kRawRead, nullptr);
    if (handle == -1) {
        MSG_out(kMsgWarn, "OBJ_analyze_raw: Unable to open file: %s\n", path);
        return -1;
    }
    OBJ_store_init();
    OBJ_store_add_field(0);
    OBJ_set_filter(kRawFilter);
    OBJ_set_radius(kRawRadius);
    RawHeader header{};
    RAW_read_header(handle, &header);
    DomainRec before;
    DOM_get(&before);
    DOM_set(domain);
    RawValue value{};
    int count = 0;
    for (int result = 0; (result = RAW_read_value(handle, &value, column, nullptr)) != -1;) {
        float x = kMissing;
        float y = kMissing;
        if (result == 1 && !is_missing(value.value1) && !is_missing(value.lat) &&
            MAP_ll_to_xy(&x, &y, value.lat, value.lon) == 1) {
            OBJ_store_position(count, x, y);
            OBJ_store_value(0, count++, value.value1);
        }
    }
    DOM_set(&before);
    GRD_init(grid);
    grid->domain = *domain;
    STR_copy(grid->date, sizeof grid->date, header.title);
    const char *label = RAW_field_label(handle, column);
    STR_copy(grid->info, sizeof grid->info, label != nullptr && *label ? label : header.format);
    RAW_close(handle);
    if (count == 0) {
        MSG_out(kMsgWarn, "OBJ_analyze_raw: %s: no values to analyse\n", path);
    }
    const bool is_done = count > 0 && GRD_alloc(grid) == 1 && OBJ_store_analyze(grid) == 0;
    OBJ_store_free();
    if (!is_done) {
        GRD_free(grid);
    }
    return is_done ? count : -1;
}
