#pragma once

#include "tyr/base/date.h"
#include "tyr/base/missing.h"

// The records of raw text data files.

inline constexpr int kRawFiles = 5; ///< open at once
inline constexpr int kRawFields = 75;
inline constexpr int kRawNameRoom = 20;
inline constexpr int kRawLabelRoom = 60;
inline constexpr int kRawFormatRoom = 40;
inline constexpr int kRawWordRoom = 80;
inline constexpr int kRawTextRoom = 30;
inline constexpr int kRawTitleRoom = 161;
inline constexpr int kRawLine = 400; ///< characters of a line that are read

enum RawMode { kRawRead = 0, kRawWrite = 1, kRawAppend = 2 };
enum RawType { kRawHeadered = 1, kRawHeaderless = 99 };

/// Columns of RAW_read_value. From kRawFirstValue on the values in order, up to 75; anything above
/// is a field name: what RAW_name_column gives, or a const char* as a long.
enum RawColumn { kRawNoColumn = kMissingInt, kRawAllWords = 1, kRawId = 2, kRawFirstValue = 10 };

/// What a value is written as; other plot types as the variable expressions have them.
enum RawKind { kRawWord = 1, kRawNumber = 2 };

struct RawHeader {
    char title[kRawTitleRoom]; ///< the second line
    DateRec date;
    char format[kRawTitleRoom]; ///< plot format
};

struct RawValue {
    char id[kRawWordRoom];
    int field;            ///< of the word; of a value column the place in the line behind it
    int station;          ///< number of an id of five or more characters
    float lat, lon;       ///< place, or the pressure in lat
    float x, y;           ///< the same, of a file that gives plot coordinates ("x"), else Missing
    float value1, value2; ///< Missing where the word is no number
    char text[kRawTextRoom];
    char format[kRawWordRoom];
    int kind; ///< RawKind or a plot type, for writing; kRawWord of a value that was read
};
