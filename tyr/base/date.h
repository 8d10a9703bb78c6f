#pragma once

#include <cstddef>
#include <cstdint>

#include "tyr/base/missing.h"

// Dates, all in UTC; the display zone applies to printing only.

/// A date; any field may be kMissingInt.
struct DateRec {
    std::int32_t year = kMissingInt;
    std::int32_t month = kMissingInt; ///< 1 to 12
    std::int32_t day = kMissingInt;   ///< 1 to 31
    std::int32_t yday = kMissingInt;  ///< 1 to 366, filled on conversion from seconds
    std::int32_t wday = kMissingInt;  ///< 0 Sunday to 6, filled on conversion from seconds
    std::int32_t hour = kMissingInt;
    std::int32_t minute = kMissingInt;
    std::int32_t second = kMissingInt;
};

inline constexpr int kSecondsPerMinute = 60;
inline constexpr int kSecondsPerHour = 3600;
inline constexpr int kSecondsPerDay = 86400;

/// Seconds since 1970-01-01 00:00:00 UTC, right from 1901 to 2099. Repairs the record in place: a
/// missing or bad field becomes the start of its unit, a year below 0 1980, below 50 20xx, below
/// 200 19xx.
long TIME_to_seconds(DateRec *date);
/// Fills all eight fields; null seconds stand for now.
void TIME_from_seconds(const long *seconds, DateRec *date);
/// The date that headers of written files carry: SOURCE_DATE_EPOCH of the environment if it holds
/// a number of seconds, else now.
void TIME_header_now(DateRec *date);

int TIME_is_leap(int year); ///< 1 or 0, Gregorian
/// Month and day of a day of the year; the day of the year is held within the year.
void TIME_yday_to_date(int year, int yday, int *month, int *day);
/// Day of the year; the month is held within 1 to 12.
void TIME_date_to_yday(int year, int month, int day, int *yday);

/// "JAN", "jan", "January"; the empty text outside 1 to 12.
const char *TIME_month_abbr(int month);
const char *TIME_month_lower(int month);
const char *TIME_month_name(int month);
/// "SUN" for 0; the empty text outside 0 to 6.
const char *TIME_day_abbr(int wday);
/// 1 to 12 from a name or its first three letters, 0 for no month.
int TIME_month_number(const char *text);

/// Reads "12Z 06 MAR 99" at the start, or "1230Z 06 MAR 99", "12:30:00Z 06 MAR 99" or
/// "12Z 6 MAR 99" at the end of a text, or a text of four numbers for hour, day, month and year,
/// "12 06 03 99". Without any of them month is 0 and the rest missing.
void TIME_parse(const char *text, DateRec *date);

/// Room of every text that the routines below write.
inline constexpr size_t kDateTextRoom = 72;
/// The standard date text, with as much as the date gives: "1230Z  6 MAR 99". Returns 0, -1 for a
/// null out.
int TIME_format(const DateRec *date, char *out);
/// The time for which a forecast is valid: "12Z SAT  6 MAR 99"; without the hour when the date has
/// none. `forecast` is a forecast code, kMissingInt for none.
int TIME_format_valid(int forecast, const DateRec *date, char *out);
/// "6 hour", "1.5 day", "3 month"; empty for 0 and kMissingInt.
void TIME_forecast_label(char *out, int hours, int use_days);
/// Hours of a forecast code, code = kind * 1000000 + first * 1000 + second.
int TIME_forecast_hours(int code);
/// Now: "99 MAR 06  12:30:00Z".
void TIME_stamp(char *out);

/// Display zone: optional sign (`+` twelve-hour clock, `-` the same with UTC in brackets), label of
/// up to four characters, `:`, hours: "-CST:-6". Returns 0, -1 with nothing changed if unreadable.
int TIME_set_zone(const char *text);

/// The hour that the user asked for; negative hours and minutes are rounding requests.
void TIME_set_hour(const DateRec *date);
void TIME_get_hour(DateRec *date);
void TIME_clear_hour();
