#include <algorithm>
#include <string>

#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/raw_math/raw_math.h"
#include "tyr/raw_math/raw_math_private.h"
#include "tyr/raw_math/raw_write.h"

using namespace tyr;

namespace {

constexpr int kTableSize = 800;
constexpr int kEachLine = 1;
constexpr unsigned kTrace = kMsgOut3;

struct TableOp {
    const char *word;
    float (*work)(float table, float file);
};
constexpr TableOp kOps[] = {
    {"sum",   [](float t, float f) { return f + t; }         },
    {"add",   [](float t, float f) { return f + t; }         },
    {"sub",   [](float t, float f) { return t - f; }         },
    {"mul",   [](float t, float f) { return f * t; }         },
    {"scale", [](float t, float f) { return f * t; }         },
    {"div",   [](float t, float f) { return t / f; }         },
    {"max",   [](float t, float f) { return std::max(f, t); }},
    {"min",   [](float t, float f) { return std::min(f, t); }},
};

float combine(const char *op, float table, float file)
{
    const auto *row = std::find_if(std::begin(kOps), std::end(kOps), [op](const TableOp &known) {
        return STR_casecmp(known.word, op) == 0;
    });
    return row == std::end(kOps) ? file : row->work(table, file);
}

bool enter(TableRec *table, const RawValue &value, float number, int pass)
{
    RawTableRec entry = {};
    STR_copy(entry.id, sizeof entry.id, value.id);
    entry.lat = value.lat;
    entry.lon = value.lon;
    entry.value = number;
    entry.pass = pass;
    return TBL_add(table, &entry, value.id) != nullptr;
}

} // namespace

int RAW_make_table(TableRec *table, const char *file)
{
    if (TBL_init(table, kTableSize, sizeof(RawTableRec), 1) != 0) {
        MSG_out(kMsgWarn, "RAW_make_table: Unable to create search table\n");
        return 0;
    }
    raw_math().pass = 0;
    const MathFile in(file, kRawRead);
    if (!in) {
        return 0;
    }
    RAW_read_header(in.handle(), &raw_math().header);
    for (RawValue value = {}; in.next(&value);) {
        if (TBL_find(table, 1, value.id) != nullptr) {
            continue;
        }
        if (!enter(table, value, value.value1, 0)) {
            break;
        }
        MSG_out(kTrace, "Entered: %s %f\n", value.id, static_cast<double>(value.value1));
    }
    return 1;
}

int RAW_table_apply(TableRec *table, const char *op, const char *file)
{
    const MathFile in(file, kRawRead);
    if (!in) {
        return 0;
    }
    RawHeader header = {};
    RAW_read_header(in.handle(), &header);
    RawMath &math = raw_math();
    for (RawValue value = {}; in.next(&value);) {
        auto *entry = static_cast<RawTableRec *>(TBL_find(table, 1, value.id));
        if (entry != nullptr && entry->pass > math.pass) {
            continue; // updated by this file already
        }
        const float old = entry != nullptr ? entry->value : math.fill;
        const float number = is_missing(old) ? value.value1 : combine(op, old, value.value1);
        if (entry != nullptr) {
            entry->value = number;
            entry->pass = math.pass + 1;
            MSG_out(kTrace, "Updated: %s %f\n", value.id, static_cast<double>(number));
        } else if (!is_missing(math.fill)) {
            if (!enter(table, value, number, math.pass + 1)) {
                break;
            }
            MSG_out(kTrace, "Added: %s %f\n", value.id, static_cast<double>(number));
        }
    }
    ++math.pass;
    return 1;
}

int RAW_table_save(TableRec *table, const char *file, int least)
{
    const RawMath &math = raw_math();
    MathFile out(file, kRawWrite);
    if (!out) {
        return 0;
    }
    RAW_write_header(out.handle(), &math.header);
    const bool has_fill = !is_missing(math.fill);
    TBL_rewind(table);
    while (const auto *entry = static_cast<const RawTableRec *>(TBL_next(table))) {
        const bool is_left_out = (!has_fill && entry->pass < least) || is_missing(entry->value) ||
                                 (!math.is_fill_written && has_fill && entry->value == math.fill);
        if (is_left_out) {
            continue;
        }
        RawValue value = {};
        STR_copy(value.id, sizeof value.id, entry->id);
        value.lat = entry->lat;
        value.lon = entry->lon;
        value.value1 = entry->value;
        value.kind = kRawNumber;
        RAW_write_value(out.handle(), &value, kEachLine, nullptr);
        MSG_out(kTrace, "Saved: %s %d %f\n", entry->id, entry->pass,
                static_cast<double>(entry->value));
    }
    return out.keep();
}
