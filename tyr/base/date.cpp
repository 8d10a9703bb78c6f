#include "tyr/base/date.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

#include "tyr/base/str.h"

namespace {

constexpr int kMonths = 12;
constexpr int kFirstLetters = 3;
constexpr double kMaxZoneHours = 1000.0;

struct Month {
    const char *upper;
    const char *lower;
    const char *name;
};

constexpr std::array<Month, kMonths> kMonthNames = {
    {{"JAN", "jan", "January"},
     {"FEB", "feb", "February"},
     {"MAR", "mar", "March"},
     {"APR", "apr", "April"},
     {"MAY", "may", "May"},
     {"JUN", "jun", "June"},
     {"JUL", "jul", "July"},
     {"AUG", "aug", "August"},
     {"SEP", "sep", "September"},
     {"OCT", "oct", "October"},
     {"NOV", "nov", "November"},
     {"DEC", "dec", "December"}}
};

constexpr const char *const kDays[] = {"SUN", "MON", "TUE", "WED", "THU", "FRI", "SAT"};

/// Days before each month, and of the whole year; common and leap year.
constexpr std::array<int, kMonths + 1> kDaysBefore[] = {
    {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365},
    {0, 31, 60, 91, 121, 152, 182, 213, 244, 274, 305, 335, 366}
};

enum Clock { kBracketClock = -1, kDayClock = 0, kHalfDayClock = 1 };

struct State {
    long zone_offset = 0; ///< seconds added to UTC for printing
    std::string zone_label = "Z";
    int clock = kDayClock;
    DateRec user_hour;
} state;

bool in_range(int value, int low, int high)
{
    return value >= low && value <= high;
}

int full_year(int year)
{
    if (year < 50) {
        year += 2000;
    }
    return year < 200 ? year + 1900 : year;
}

/// Brings every field of a copy for printing into its range.
DateRec repaired(DateRec date)
{
    date.year = date.year < 0 ? 1980 : date.year;
    date.month = in_range(date.month, 1, kMonths) ? date.month : 1;
    date.day = in_range(date.day, 1, 31) ? date.day : 1;
    date.hour = in_range(date.hour, 0, 23) ? date.hour : 0;
    date.minute = in_range(date.minute, 0, 59) ? date.minute : 0;
    date.second = in_range(date.second, 0, 59) ? date.second : 0;
    return date;
}

DateRec shifted(DateRec date, long seconds)
{
    const long time = TIME_to_seconds(&date) + seconds;
    TIME_from_seconds(&time, &date);
    return date;
}

/// "12Z", "1230Z", "12:30 PM EST [1730Z]" of a local time and the UTC time it stands for.
std::string hour_text(const DateRec &local, const DateRec &utc, bool with_minute)
{
    const char *label = state.zone_label.c_str();
    const int hour = local.hour;
    if (state.clock == kDayClock) {
        return with_minute ? STR_print("%2.2d%2.2d%s", hour, local.minute, label)
                           : STR_print("%2.2d%s", hour, label);
    }
    const char *half = hour < 12 ? "AM" : "PM";
    const int shown = hour % 12 == 0 ? 12 : hour % 12;
    std::string text = with_minute ? STR_print("%d:%2.2d %s%s", shown, local.minute, half, label)
                                   : STR_print("%d %s%s", shown, half, label);
    if (state.clock == kBracketClock) {
        text += with_minute ? STR_print(" [%2.2d%2.2dZ]", utc.hour, utc.minute)
                            : STR_print(" [%2.2dZ]", utc.hour);
    }
    return text;
}

/// One form of TIME_parse: where it stands and whether the hour has a minute and a second.
struct Form {
    int from_end; ///< characters before the end; 0: at the start
    bool has_minute;
    bool has_second;
};

constexpr Form kForms[] = {
    {0,  false, false},
    {15, true,  false},
    {19, true,  true },
    {13, false, false}
};

bool read_form(const char *text, const Form &form, DateRec &date)
{
    const size_t length = std::strlen(text);
    const auto back = static_cast<size_t>(form.from_end);
    if (length < back) {
        return false;
    }
    const char *place = back ? text + length - back : text;
    std::array<char, kFirstLetters + 1> month{};
    DateRec d;
    bool read = false;
    if (form.has_second) {
        read = std::sscanf(place, "%2d:%2d:%2dZ %2d %3s %2d", &d.hour, &d.minute, &d.second, &d.day,
                           month.data(), &d.year) == 6;
    } else if (form.has_minute) {
        read = std::sscanf(place, "%2d%2dZ %2d %3s %2d", &d.hour, &d.minute, &d.day, month.data(),
                           &d.year) == 5;
        if (read && *place == ' ') {
            std::sscanf(place, "%1d%2d", &d.hour, &d.minute);
        }
    } else {
        read = std::sscanf(place, "%2dZ %2d %3s %2d", &d.hour, &d.day, month.data(), &d.year) == 4;
    }
    if (!read) {
        return false;
    }
    d.year = full_year(d.year);
    d.month = TIME_month_number(month.data());
    date = d;
    return true;
}

/// The last form, four numbers that are the whole text: hour, day, month, year.
bool read_numbers(const char *text, DateRec &date)
{
    DateRec d;
    int end = 0;
    const int read =
        std::sscanf(text, "%2d %2d %2d %2d %n", &d.hour, &d.day, &d.month, &d.year, &end);
    if (read != 4 || end == 0 || text[end] != '\0' || !in_range(d.hour, 0, 23) ||
        !in_range(d.day, 1, 31) || !in_range(d.month, 1, kMonths) || d.year < 0) {
        return false;
    }
    d.year = full_year(d.year);
    date = d;
    return true;
}

} // namespace

long TIME_to_seconds(DateRec *date)
{
    DateRec &d = *date;
    const int day = in_range(d.day, 0, 31) ? d.day : 1;
    d = repaired(d);
    d.day = day;
    d.year = full_year(d.year);
    const long y = d.year - 1900;
    const long leap_days = y / 4 - 17 - (d.month <= 2 && y % 4 == 0 ? 1 : 0);
    return d.second + static_cast<long>(kSecondsPerMinute) * d.minute +
           static_cast<long>(kSecondsPerHour) * d.hour +
           kSecondsPerDay * (d.day - 1L + kDaysBefore[0][d.month - 1] + 365 * (y - 70) + leap_days);
}

void TIME_from_seconds(const long *seconds, DateRec *date)
{
    const time_t time = seconds ? *seconds : std::time(nullptr);
    tm parts{};
    *date = DateRec();
    if (!gmtime_r(&time, &parts)) {
        return;
    }
    date->year = parts.tm_year + 1900;
    date->month = parts.tm_mon + 1;
    date->day = parts.tm_mday;
    date->yday = parts.tm_yday + 1;
    date->wday = parts.tm_wday;
    date->hour = parts.tm_hour;
    date->minute = parts.tm_min;
    date->second = std::min(parts.tm_sec, 59);
}

void TIME_header_now(DateRec *date)
{
    const char *text = std::getenv("SOURCE_DATE_EPOCH");
    char *end = nullptr;
    const long seconds = text ? std::strtol(text, &end, 10) : 0;
    const bool given = text && end != text && *end == '\0' && seconds >= 0;
    TIME_from_seconds(given ? &seconds : nullptr, date);
}

int TIME_is_leap(int year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

void TIME_yday_to_date(int year, int yday, int *month, int *day)
{
    const auto &before = kDaysBefore[TIME_is_leap(year)];
    yday = std::clamp(yday, 1, before[kMonths]);
    const auto after = std::lower_bound(before.begin(), before.end(), yday);
    *month = static_cast<int>(after - before.begin());
    *day = yday - before[*month - 1];
}

void TIME_date_to_yday(int year, int month, int day, int *yday)
{
    *yday = kDaysBefore[TIME_is_leap(year)][std::clamp(month, 1, kMonths) - 1] + day;
}

const char *TIME_month_abbr(int month)
{
    return in_range(month, 1, kMonths) ? kMonthNames[month - 1].upper : "";
}

const char *TIME_month_lower(int month)
{
    return in_range(month, 1, kMonths) ? kMonthNames[month - 1].lower : "";
}

const char *TIME_month_name(int month)
{
    return in_range(month, 1, kMonths) ? kMonthNames[month - 1].name : "";
}

const char *TIME_day_abbr(int wday)
{
    return in_range(wday, 0, 6) ? kDays[wday] : "";
}

int TIME_month_number(const char *text)
{
    if (!text || !*text) {
        return 0;
    }
    const bool is_upper = std::isupper(static_cast<unsigned char>(text[0])) != 0;
    const auto letter = [&](int i) -> int {
        for (int k = 1; k <= i; ++k) {
            if (!text[k]) {
                return 0;
            }
        }
        const int c = static_cast<unsigned char>(text[i]);
        const bool same_case = (std::isupper(c) != 0) == is_upper;
        return same_case ? std::toupper(c) : 0;
    };
    switch (std::toupper(static_cast<unsigned char>(text[0]))) {
    case 'F':
        return 2;
    case 'S':
        return 9;
    case 'O':
        return 10;
    case 'N':
        return 11;
    case 'D':
        return 12;
    case 'J':
        if (letter(1) == 'A') {
            return 1;
        }
        return letter(2) == 'N' ? 6 : letter(2) == 'L' ? 7 : 0;
    case 'M':
        return letter(2) == 'R' ? 3 : letter(2) == 'Y' ? 5 : 0;
    case 'A':
        return letter(2) == 'R' ? 4 : letter(2) == 'G' ? 8 : 0;
    default:
        return 0;
    }
}

void TIME_parse(const char *text, DateRec *date)
{
    *date = DateRec();
    date->month = 0;
    if (!text) {
        return;
    }
    const bool found = std::any_of(std::begin(kForms), std::end(kForms),
                                   [&](const Form &form) { return read_form(text, form, *date); });
    if (!found) {
        read_numbers(text, *date);
    }
}

int TIME_format(const DateRec *date, char *out)
{
    if (!out) {
        return -1;
    }
    const DateRec utc = repaired(*date);
    const bool has_hour =
        date->month != kMissingInt && date->day != kMissingInt && date->hour != kMissingInt;
    const DateRec local =
        has_hour && state.zone_offset != 0 ? shifted(utc, state.zone_offset) : utc;
    const int year = local.year % 100;
    const char *month = TIME_month_abbr(local.month);
    std::string text;
    if (date->month == kMissingInt) {
        text = STR_print("%2.2d", year);
    } else if (date->day == kMissingInt) {
        text = STR_print("%3s %2.2d", month, year);
    } else if (date->hour == kMissingInt) {
        text = STR_print("%2d %3s %2.2d", local.day, month, year);
    } else {
        text = hour_text(local, utc, date->minute != kMissingInt) +
               STR_print(" %2d %3s %2.2d", local.day, month, year);
    }
    STR_copy(out, kDateTextRoom, text);
    return 0;
}

int TIME_format_valid(int forecast, const DateRec *date, char *out)
{
    constexpr int kThousand = 1000;
    if (!out) {
        return -1;
    }
    int hours = forecast == kMissingInt ? 0 : forecast % kThousand;
    if (hours == 800 || hours == 900) {
        hours = 0;
    }
    const DateRec utc = shifted(repaired(*date), static_cast<long>(kSecondsPerHour) * hours);
    const DateRec local = shifted(utc, state.zone_offset);
    std::string text;
    if (date->hour != kMissingInt) {
        text = state.clock == kDayClock ? STR_print("%d%s", local.hour, state.zone_label.c_str())
                                        : hour_text(local, utc, false);
        text += ' ';
    }
    text += STR_print("%3s %2d %3s %2.2d", TIME_day_abbr(local.wday), local.day,
                      TIME_month_abbr(local.month), local.year % 100);
    STR_copy(out, kDateTextRoom, text);
    return 0;
}

void TIME_forecast_label(char *out, int hours, int use_days)
{
    constexpr int kMonthCodes = 900;
    constexpr int kDayCodes = 800;
    constexpr int kDaysFrom = 60; ///< hours above which whole and half days are always told as days
    const bool told_in_days = use_days ? hours >= 12 : hours > kDaysFrom;
    std::string text;
    if (hours > kMonthCodes) {
        text = STR_print("%d month", hours - kMonthCodes);
    } else if (hours > kDayCodes) {
        text = STR_print("%d day", hours - kDayCodes);
    } else if (told_in_days && hours % 24 == 0) {
        text = STR_print("%d day", hours / 24);
    } else if (told_in_days && hours % 24 == 12) {
        text = STR_print("%d.5 day", hours / 24);
    } else if (hours != 0 && hours != kMissingInt) {
        text = STR_print("%d hour", hours);
    }
    STR_copy(out, kDateTextRoom, text);
}

int TIME_forecast_hours(int code)
{
    constexpr int kMillion = 1000000;
    constexpr int kThousand = 1000;
    constexpr int kFirstPartFrom = 6; ///< kinds from here on count the first number
    if (code == kMissingInt) {
        return kMissingInt;
    }
    const int hours =
        code / kMillion < kFirstPartFrom ? code % kThousand : code % kMillion / kThousand;
    return hours == 800 || hours == 900 ? 0 : hours;
}

void TIME_stamp(char *out)
{
    DateRec now;
    TIME_from_seconds(nullptr, &now);
    std::snprintf(out, kDateTextRoom, "%2.2d %s %2.2d  %2.2d:%2.2d:%2.2dZ", now.year % 100,
                  TIME_month_abbr(now.month), now.day, now.hour, now.minute, now.second);
}

int TIME_set_zone(const char *text)
{
    constexpr size_t kLabelLength = 4;
    if (!text) {
        return -1;
    }
    const int clock = *text == '-' ? kBracketClock : *text == '+' ? kHalfDayClock : kDayClock;
    const char *label = clock == kDayClock ? text : text + 1;
    const char *colon = std::strchr(label, ':');
    if (!colon || colon == label) {
        return -1;
    }
    char *end = nullptr;
    const double hours = std::strtod(colon + 1, &end);
    if (end == colon + 1 || !(std::fabs(hours) <= kMaxZoneHours)) {
        return -1;
    }
    state.clock = clock;
    const auto length = std::min(static_cast<size_t>(colon - label), kLabelLength);
    state.zone_label.assign(1, ' ').append(label, length);
    state.zone_offset = std::lround(hours * kSecondsPerHour);
    return 0;
}

void TIME_set_hour(const DateRec *date)
{
    state.user_hour = *date;
}

void TIME_get_hour(DateRec *date)
{
    *date = state.user_hour;
}

void TIME_clear_hour()
{
    state.user_hour = DateRec();
}
