#include "tyr/names/date_label.h"

#include <array>
#include <string>

#include "tyr/base/msg.h"
#include "tyr/base/str.h"

namespace {

struct State {
    DateRec date;
    int forecast = kMissingInt;
} state;

std::string forecast_label(bool use_days)
{
    std::array<char, kDateTextRoom> text;
    TIME_forecast_label(text.data(), TIME_forecast_hours(state.forecast), use_days);
    return text.data();
}

std::string valid_label(DateRec date)
{
    std::array<char, kDateTextRoom> text;
    TIME_format_valid(state.forecast, &date, text.data());
    return text.data();
}

std::string valid_day()
{
    DateRec date = state.date;
    date.hour = kMissingInt;
    return valid_label(date);
}

std::string two_digits(int value)
{
    return STR_print("%2.2d", value < 0 ? 0 : value % 100);
}

std::string expand(char letter)
{
    const DateRec &date = state.date;
    switch (letter) {
    case 'D': {
        std::array<char, kDateTextRoom> text;
        TIME_format(&date, text.data());
        return text.data();
    }
    case 'V':
        return valid_label(date);
    case 'W':
        return valid_day();
    case 'y':
        return two_digits(date.year);
    case 'm':
        return two_digits(date.month);
    case 'b':
        return TIME_month_abbr(date.month);
    case 'd':
        return two_digits(date.day);
    case 'h':
        return two_digits(date.hour);
    case 'n':
        return two_digits(date.minute);
    case 'f':
        return forecast_label(false);
    case 'F':
        return forecast_label(true);
    case '%':
        return "%";
    default:
        return "";
    }
}

} // namespace

void TIME_set_plot(const DateRec *date, int forecast)
{
    state.date = *date;
    state.forecast = forecast;
}

void TIME_expand_label(const char *format, char *out)
{
    std::string text;
    for (const char *c = format; *c; ++c) {
        if (*c == '_') {
            text += ' ';
        } else if (*c != '%') {
            text += *c;
        } else if (c[1]) {
            text += expand(*++c);
        }
    }
    STR_copy(out, kLabelRoom, text);
}

void TIME_print(unsigned mask, const DateRec *date)
{
    MSG_out(mask, "%d/%d/%d %2.2d:%2.2d:%2.2d\n", date->year, date->month, date->day, date->hour,
            date->minute, date->second);
}
