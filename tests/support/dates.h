#pragma once

#include <vector>

#include "tyr/base/date.h"
#include "tyr/base/missing.h"

/// A date; what isn't given is missing.
inline DateRec make_date(int year, int month = kMissingInt, int day = kMissingInt,
                         int hour = kMissingInt, int minute = kMissingInt, int second = kMissingInt)
{
    DateRec d;
    d.year = year;
    d.month = month;
    d.day = day;
    d.hour = hour;
    d.minute = minute;
    d.second = second;
    return d;
}

/// Year, month, day, hour, minute and second, to compare dates by.
inline std::vector<int> fields(const DateRec &d)
{
    return {d.year, d.month, d.day, d.hour, d.minute, d.second};
}
