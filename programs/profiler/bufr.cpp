#include "programs/profiler/bufr.h"

#include <algorithm>
#include <limits>

#include "programs/profiler/bufr_message.h"
#include "programs/profiler/bufr_table.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"

namespace {

using tyr::bufr_drop;
using tyr::bufr_next_message;
using tyr::bufr_refuse;
using tyr::BufrDescriptor;

constexpr unsigned kTrace = 0x40000000;
constexpr int kMessageTail = 12; ///< bytes behind the last report: end mark and padding
constexpr int kClearedLevels = 72;
constexpr int kMaxWidth = 32;
constexpr float kWindLimit = 200.0F; ///< all ones in a wind element lie above it

tyr::BufrMessage &state = tyr::bufr_message();

/// Where a report is written to while its elements come.
struct Report {
    ProfilerRecord *record;
    float z = 0.0F;
    float increment = 0.0F;
    int level = 0;
    int round = 0;
};

int whole(float value)
{
    constexpr double kLeast = std::numeric_limits<int32_t>::min();
    constexpr double kMost = std::numeric_limits<int32_t>::max();
    return static_cast<int>(std::clamp(static_cast<double>(value), kLeast, kMost));
}

/// Writes a part of the station's id, in `digits` digits at least.
void put_id(ProfilerRecord *record, size_t at, int digits, float value)
{
    STR_copy(record->id + at, sizeof record->id - at, STR_print("%.*d", digits, whole(value)));
}

void put_element(Report &r, const BufrElement &e, float value)
{
    ProfilerLevel &level = r.record->level[r.level];
    const auto put = [value](float &field) {
        if (value < kWindLimit) {
            field = value;
        }
    };
    switch (e.x * 1000 + e.y) {
    case 1001:
        put_id(r.record, 0, 2, value);
        break;
    case 1002:
        put_id(r.record, 2, 3, value);
        break;
    case 5002:
        r.record->lat = value;
        break;
    case 6002:
        r.record->lon = value;
        break;
    case 7001:
        r.record->elev = value;
        break;
    case 7005:
        r.increment = value;
        r.z += value;
        break;
    case 11003:
        level.z = r.z;
        put(level.u);
        break;
    case 11004:
        put(level.v);
        break;
    case 11006:
        put(level.w);
        break;
    case 11050:
        put(level.hdev);
        break;
    case 11051:
        put(level.vdev);
        break;
    case 25034:
        level.qual = whole(value);
        break;
    default:
        break;
    }
}

int width_of(int row)
{
    if (state.next_width != kMissingInt) {
        return state.next_width;
    }
    const int change = state.width_change == kMissingInt ? 0 : state.width_change;
    return kBufrTable[row].bits + change;
}

/// Ends a round of a replication. @return the index to go on from
int end_round(Report &r, int index)
{
    ++r.round;
    ++r.level;
    MSG_out(kTrace, "Repeat: %d\n", r.round);
    index = state.repeat_first - 1;
    if (r.round == state.repeat_count - 1) {
        state.repeat_count = kMissingInt;
    } else {
        r.z += r.increment;
    }
    return index;
}

void begin_report(Report &r)
{
    PRF_init_record(r.record);
    for (int i = 0; i < kClearedLevels; ++i) {
        r.record->level[i].qual = 0;
    }
    state.width_change = kMissingInt;
    state.next_width = kMissingInt;
    state.repeat_count = kMissingInt;
    state.overrun = false;
}

void apply(Report &r, const BufrDescriptor &d, int index)
{
    switch (d.f) {
    case 0:
        put_element(r, kBufrTable[d.row], BUFR_get_value(d.row));
        break;
    case 1:
        state.repeat_first = index + 1;
        state.repeat_last = index + d.x;
        state.repeat_count = d.y > 1 ? d.y : kMissingInt; // once is no repetition
        r.round = 0;
        MSG_out(kTrace, "Repeat: %d times\n", d.y);
        break;
    default:
        if (d.x == 1) {
            state.width_change = d.y != 0 ? d.y - 128 : kMissingInt;
        } else {
            state.next_width = d.y;
        }
        break;
    }
}

} // namespace

unsigned BUFR_get_bits(unsigned n)
{
    while (n > state.bit_count) {
        if (state.pointer >= state.end) {
            state.overrun = true;
            return 0;
        }
        state.bits = state.bits << 8 | state.message[static_cast<size_t>(state.pointer++)];
        state.bit_count += 8;
    }
    state.bit_count -= n;
    const uint64_t value = state.bits >> state.bit_count;
    state.bits &= (uint64_t{1} << state.bit_count) - 1;
    return static_cast<unsigned>(value & ((uint64_t{1} << n) - 1));
}

float BUFR_get_value(int row)
{
    const BufrElement &e = kBufrTable[row];
    const int64_t raw = BUFR_get_bits(static_cast<unsigned>(width_of(row)));
    const float value = static_cast<float>(raw + e.reference) * e.scale;
    state.next_width = kMissingInt;
    MSG_out(kTrace, "%-15s %f\n", e.name, value);
    return value;
}

int bufr_read_record(std::FILE *stream, const char *name, ProfilerRecord *record)
{
    if (state.size - kMessageTail <= state.position && bufr_next_message(stream, name) != 0) {
        return -1;
    }
    Report r = {record};
    begin_report(r);
    const int start = state.pointer;
    const unsigned start_bits = state.bit_count;
    for (int i = 0; i < state.descriptor_count; ++i) {
        const BufrDescriptor &d = state.descriptors[static_cast<size_t>(i)];
        if (d.f == 0 && (width_of(d.row) < 1 || width_of(d.row) > kMaxWidth)) {
            return bufr_refuse(name, "bits of an element", width_of(d.row));
        }
        apply(r, d, i);
        if (state.repeat_count != kMissingInt && i == state.repeat_last) {
            i = end_round(r, i);
        }
        if (r.level >= kMaxProfilerLevels) {
            return bufr_refuse(name, "levels", r.level);
        }
        if (state.overrun && state.reports_due < 1) { // padding behind the last one
            bufr_drop();
            return bufr_read_record(stream, name, record);
        }
        if (state.overrun) {
            return bufr_refuse(name, "the data end early, at byte", state.pointer);
        }
    }
    if (state.pointer == start && state.bit_count == start_bits) {
        return bufr_refuse(name, "a report without data, at byte", start); // it would never end
    }
    record->num_level = r.level;
    --state.reports_due;
    state.position = state.pointer;
    MSG_out(kTrace, "Where: %d\n", state.position);
    return 1;
}

bool bufr_message_date(DateRec *date)
{
    const DateRec &d = state.date;
    if (d.month < 1 || d.month > 12 || d.day < 1 || d.day > 31 || d.hour > 23 || d.minute > 59) {
        return false;
    }
    *date = d;
    return true;
}
