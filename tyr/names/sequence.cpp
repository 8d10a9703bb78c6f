#include "tyr/names/sequence.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "tyr/base/msg.h"
#include "tyr/base/nearest.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/names/date_label.h"
#include "tyr/names/name_conv.h"
#include "tyr/names/search.h"

namespace {

constexpr int kNoStep = 100000;
constexpr int kMostHours = 250000; ///< keeps sums of seconds within an int

struct State {
    std::vector<std::string> words; ///< names given by the user
    size_t index = 0;               ///< the next of them
    DateRec base;                   ///< date that the run is counted from
    int range = 0;                  ///< seconds, negative for the time before the base date
    int requested_step = 0;         ///< seconds between files asked for
    int file_step = 0;              ///< seconds between files taken
    int offset = 0;                 ///< seconds from the base date, next
    int default_range = 0;          ///< used without `num_hour`
    bool is_in_series = false;      ///< the one name given is one of the convention's
} state;

int seconds(int hours, int minutes)
{
    return std::clamp(hours, -kMostHours, kMostHours) * kSecondsPerHour +
           std::clamp(minutes, -kMostHours, kMostHours) * kSecondsPerMinute;
}

/// Hours and minutes as "%d:%d" or ":%d"; what isn't given is 0.
void read_hours(const char *text, int &hours, int &minutes)
{
    hours = 0;
    minutes = 0;
    const int found = *text == ':' ? std::sscanf(text, ":%9d", &minutes)
                                   : std::sscanf(text, "%9d:%9d", &hours, &minutes);
    if (found < 1) {
        tyr::warn_unknown("num_hour", text, {});
    }
}

/// Whether the convention makes the name that stands from a date: then files before and after it
/// have names as well. A file by another name stands alone.
bool is_made_from(const DateRec &date)
{
    char last[kFileNameRoom] = "";
    char made[kFileNameRoom] = "";
    FILE_get_last(last);
    FILE_save();
    const bool is_made = FILE_compose(&date, made) == 0 && std::strcmp(last, made) == 0;
    FILE_restore();
    return is_made;
}

bool walks_list()
{
    const bool walks_time = state.words.size() == 1 && state.range != 0 && state.is_in_series;
    return !state.words.empty() && !walks_time;
}

bool is_past_end()
{
    return state.range < 0 ? state.offset > 0 : state.offset > state.range;
}

} // namespace

void FILE_set_default_hours(int hours)
{
    state.default_range = seconds(hours, 0);
}

int FILE_num_hours()
{
    const char *text = RES_get("num_hour");
    if (!text) {
        return state.default_range;
    }
    int hours = 0;
    int minutes = 0;
    read_hours(text, hours, minutes);
    const bool is_back = hours < 0 || (hours == 0 && text[0] == '-');
    return seconds(hours, is_back ? -std::abs(minutes) : minutes);
}

int FILE_num_step()
{
    const char *text = RES_get("num_hour");
    const char *comma = text ? std::strchr(text, ',') : nullptr;
    if (!comma) {
        return FILE_get_step();
    }
    int hours = 0;
    int minutes = 0;
    read_hours(comma + 1, hours, minutes);
    return seconds(hours, minutes);
}

void FILE_seq_init(const DateRec *date)
{
    state.words = RES_list("filename");
    if (!state.words.empty() &&
        (STR_has_prefix(state.words[0], "la") || STR_has_prefix(state.words[0], "cu"))) {
        state.words.clear();
    }
    state.index = 0;
    state.base = *date;
    state.is_in_series = is_made_from(*date);
    state.range = FILE_num_hours();
    state.requested_step = FILE_num_step();
    state.file_step = FILE_get_step();
    if (state.requested_step > 0 && state.requested_step / state.file_step > 0) {
        state.file_step *= state.requested_step / state.file_step;
    }
    state.offset = 0;
    if (state.range < 0) {
        const long first = static_cast<long>(state.range) - state.file_step + 1;
        state.offset = static_cast<int>(first / state.file_step) * state.file_step;
    }
}

int FILE_next(char *out)
{
    if (walks_list()) {
        if (state.index >= state.words.size()) {
            return 0;
        }
        FILE_parse_name(state.words[state.index++].c_str(), out);
        return 1;
    }
    if (is_past_end()) {
        return 0;
    }
    if (state.range == 0) {
        FILE_get_last(out);
    } else {
        MSG_out(kMsgDebug, " in: ");
        TIME_print(kMsgDebug, &state.base);
        const int steps = FILE_name_at(&state.base, state.offset, out);
        DateRec date;
        FILE_get_date(&date);
        MSG_out(kMsgDebug, "out: ");
        TIME_print(kMsgDebug, &date);
        MSG_out(kMsgDebugC, "NEXT: %d %d %d %d %d %s\n", state.offset, state.file_step,
                state.requested_step, state.range, steps, out);
    }
    state.offset += state.file_step;
    return 1;
}

int FILE_seq_offset()
{
    return state.offset;
}

void FILE_seq_set_offset(int offset)
{
    state.offset = offset;
}

int FILE_name_at(const DateRec *base, int offset, char *out)
{
    DateRec date = *base;
    const long time = TIME_to_seconds(&date) + offset;
    TIME_from_seconds(&time, &date);
    FILE_compose(&date, out);
    MSG_out(kMsgDebug, "%d %d = %d %d %d %d\n", offset, state.file_step, date.year, date.month,
            date.day, date.hour);
    return offset / (state.file_step > 0 ? state.file_step : kNoStep);
}
