#include "tyr/names/decode_window.h"

#include <algorithm>
#include <cstdio>

#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"

namespace {

constexpr int kMinutesBefore = -15;
constexpr int kMinutesAfter = 10;
constexpr int kHoursOfDay = 24;
constexpr int kMinutesOfHour = 60;

struct State {
    DateRec date;
    int before = kMinutesBefore; ///< minutes, negative
    int after = kMinutesAfter;
} state;

/// A value, or for a request -N the last multiple of N % 100, plus N / 100, at or before `now`.
int resolve(int wanted, int now)
{
    if (wanted == kMissingInt) {
        return now;
    }
    if (wanted >= 0) {
        return wanted;
    }
    const int step = -wanted % 100 > 0 ? -wanted % 100 : 1;
    return now - now % step + -wanted / 100;
}

void apply_user_hour()
{
    DateRec user;
    TIME_get_hour(&user);
    const auto take = [](std::int32_t &field, int given) { field = given >= 0 ? given : field; };
    take(state.date.year, user.year);
    take(state.date.month, user.month);
    take(state.date.day, user.day);
    state.date.hour = resolve(user.hour, state.date.hour);
    state.date.minute = resolve(user.minute, state.date.minute);
}

/// Reads "hour:minute-before+after" and its shorter forms; the numbers that aren't given stay.
void read_decode_hour(const char *text)
{
    DateRec &date = state.date;
    int hour = 0;
    int minute = 0;
    int before = 0;
    int after = 0;
    const auto window = [&] {
        state.before = -before;
        state.after = after;
    };
    if (STR_has_prefix(text, "cu:cu")) {
        if (std::sscanf(text + 5, "-%4d+%4d", &before, &after) == 2) {
            window();
        }
    } else if (STR_has_prefix(text, "cu")) {
        const char *rest = text + 2;
        if (std::sscanf(rest, "-%4d-%4d+%4d", &hour, &before, &after) == 3) {
            date.hour = ((date.hour - hour) % kHoursOfDay + kHoursOfDay) % kHoursOfDay;
            window();
        } else if (std::sscanf(rest, ":%4d-%4d+%4d", &minute, &before, &after) == 3) {
            date.minute = resolve(minute, date.minute);
            window();
        }
    } else if (std::sscanf(text, ":-%4d+%4d", &before, &after) == 2) {
        window();
    } else {
        int read = std::sscanf(text, "%5d:%5d-%4d+%4d", &hour, &minute, &before, &after);
        if (read < 2) {
            minute = 0;
            const int short_read = std::sscanf(text, "%5d-%4d+%4d", &hour, &before, &after);
            read = short_read == 3 ? 4 : short_read;
        }
        if (read >= 1) {
            date.hour = resolve(hour, date.hour);
            date.minute = resolve(minute, date.minute);
        }
        if (read == 4) {
            window();
        }
    }
}

} // namespace

void TIME_set_decode(const DateRec *date)
{
    state = State();
    state.date = *date;
    TIME_to_seconds(&state.date);
    apply_user_hour();
    if (const char *text = RES_get("decode_hour")) {
        read_decode_hour(text);
    }
    state.date.hour = std::clamp<int>(state.date.hour, 0, kHoursOfDay - 1);
    state.date.minute = std::clamp<int>(state.date.minute, 0, kMinutesOfHour - 1);
    MSG_out(kMsgMess, "Decoding for: %2.2d:%2.2dZ\n", state.date.hour, state.date.minute);
    MSG_out(kMsgMess, "Decoding range: %d +%d mins\n", state.before, state.after);
}

void TIME_get_decode(DateRec *date)
{
    *date = state.date;
}

int TIME_in_window(int hhmm)
{
    constexpr int kHalfDay = 11;
    int hour = hhmm / 100;
    if (hour - state.date.hour > kHalfDay) {
        hour -= kHoursOfDay;
    } else if (state.date.hour - hour > kHalfDay) {
        hour += kHoursOfDay;
    }
    const int minutes = (hour - state.date.hour) * kMinutesOfHour + hhmm % 100 - state.date.minute;
    return minutes >= state.before && minutes <= state.after;
}
