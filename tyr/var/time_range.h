#pragma once

/// How a range of time is used: time = code * 1000000 + first * 1000 + second, in hours.
enum TimeRange : int {
    kRangePlain = 2,
    kRangeAverage = 3,
    kRangeAccumulation = 4,
    kRangeDifference = 5,
    kRangeMaximum = 6,
    kRangeMinimum = 7,
    kRangeInitialAverage = 13,
    kRangeVariance = 18,
    kRangeUninitialAverage = 23
};

inline constexpr int kRangeUnit = 1000000; ///< weight of the code in a time

/// Parses the text of a forecast time: "12", "2d", "e1", "h12-6avg", "time-6", "anal", ...
///
/// @param[in,out] time  hours, or a range as above; left as it stands by a text that is no time
/// @return 2 for a time that the text gave, 1 for one made relative to the default, 0 if the text
///         is no time; for an empty text inside a parse the class of its base
int VAR_time(const char *text, int *time);
