#include "tyr/start/convert.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tyr/base/date.h"
#include "tyr/base/device_kind.h"
#include "tyr/base/msg.h"
#include "tyr/base/nearest.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/place/domain_text.h"

using namespace tyr;

namespace {

constexpr unsigned kBatchMask = 0xFF; ///< print, error and warn

struct Word {
    const char *word;
    int value;
};

constexpr Word kFlagWords[] = {
    {"true",  1},
    {"on",    1},
    {"yes",   1},
    {"false", 0},
    {"off",   0},
    {"no",    0}
};

constexpr Word kFileParamWords[] = {
    {"use",    3},
    {"reuse",  3},
    {"over",   1},
    {"calc",   1},
    {"recalc", 1},
    {"app",    2}
};

constexpr Word kPlotTypeWords[] = {
    {"raw",    0 },
    {"ln",     12},
    {"dln",    13},
    {"ndln",   14},
    {"cf",     15},
    {"lcf",    16},
    {"value",  17},
    {"gvalue", 17},
    {"vect",   21},
    {"none",   99},
    {"barb",   22},
    {"strm",   23},
    {"stream", 23},
    {"an",     54},
    {"number", 54},
    {"pm",     55},
    {"stuve",  61},
    {"skewt",  62},
    {"ema",    63},
    {"teph",   64},
    {"rteph",  65},
    {"hodo",   69}
};

constexpr Word kDrawWords[] = {
    {"text_ul", kDrawTextUl},
    {"text_uc", kDrawTextUc},
    {"text_ur", kDrawTextUr},
    {"text_ll", kDrawTextLl},
    {"text_lc", kDrawTextLc},
    {"text_lr", kDrawTextLr},
    {"data",    kDrawData  },
    {"map",     kDrawMap   },
    {"grid",    kDrawGrid  },
    {"sum",     kDrawSum   },
    {"bord",    kDrawBorder}
};

const Word *find_word(std::span<const Word> words, const char *text)
{
    const auto place = std::find_if(words.begin(), words.end(), [text](const Word &w) {
        return STR_casecmp(w.word, text) == 0;
    });
    return place == words.end() ? nullptr : &*place;
}

/// Tells of a word of an option that has words of its own.
void warn_word(const char *option, const char *text, std::span<const Word> words,
               std::vector<std::string_view> known = {})
{
    std::transform(words.begin(), words.end(), std::back_inserter(known),
                   [](const Word &w) { return std::string_view(w.word); });
    warn_unknown(option, text, known);
}

bool is_number_type(int type)
{
    return type == kResInt || type == kResShort || type == kResLong || type == kResLongByInt ||
           type == kResReal;
}

/// Whether a text begins with a number behind which nothing stands that belongs to it.
bool is_number(const char *text)
{
    char *end = nullptr;
    std::strtod(text, &end);
    return end != text && std::isalnum(static_cast<unsigned char>(*end)) == 0;
}

long bounded(const char *value, int base, long low, long high)
{
    return std::clamp(std::strtol(value, nullptr, base), low, high);
}

void convert_flag(const char *value, int *destination)
{
    if (const Word *word = find_word(kFlagWords, value)) {
        *destination = word->value;
    }
}

void convert_int(const char *value, int *destination)
{
    if (!is_digit(value[0]) && value[0] != '-' && value[0] != '+') {
        return;
    }
    const bool is_hexadecimal = value[1] == 'x' || value[1] == 'X';
    if (is_hexadecimal) {
        *destination = static_cast<int>(
            static_cast<unsigned>(bounded(value + 2, 16, 0, static_cast<long>(UINT_MAX))));
    } else {
        *destination = static_cast<int>(bounded(value, 10, INT_MIN, INT_MAX));
    }
}

void convert_path(const char *value, char **destination)
{
    std::string path = STR_casecmp(value, "none") == 0 ? "" : value;
    if (!path.empty() && path.back() != '/') {
        path += '/';
    }
    *destination = strdup(path.c_str());
}

void set_draw(const char *value)
{
    bool first = true;
    for (const std::string &item : STR_fields(value, ',')) {
        const bool has_sign = !item.empty() && (item[0] == '+' || item[0] == '-');
        const int on = has_sign && item[0] == '-' ? 0 : 1;
        const char *word = item.c_str() + (has_sign ? 1 : 0);
        if (first && !has_sign) {
            PRM_clear_draw();
        }
        first = false;
        if (STR_casecmp(word, "none") == 0) {
            PRM_set_draw(kDrawAll, 0);
        } else if (STR_casecmp(word, "all") == 0) {
            PRM_set_draw(kDrawAll, 1);
        } else if (STR_casecmp(word, "text") == 0) {
            PRM_set_draw(kDrawText, on);
            PRM_set_draw(kDrawBorder, on);
        } else if (const Word *known = find_word(kDrawWords, word)) {
            PRM_set_draw(known->value, on);
        } else if (word[0] != '\0') {
            warn_word("draw", word, kDrawWords, {"all", "none", "text"});
        }
    }
}

/// Reads an hour and minute; "-0:30" and "-:30" ask for minutes alone.
void read_hour_and_minute(const char *value, DateRec &date)
{
    std::sscanf(value, "%9d:%9d", &date.hour, &date.minute);
    if (value[0] == '-' && date.hour == 0) {
        date.hour = kMissingInt;
        date.minute = date.minute == kMissingInt ? kMissingInt : -date.minute;
    }
}

DateRec read_hour(const char *value)
{
    DateRec d;
    const size_t length = std::strlen(value);
    const bool has_colon = std::strchr(value, ':') != nullptr;
    if (value[0] == '#') {
        std::sscanf(value + 1, "%4d%2d%2d%2d%2d", &d.year, &d.month, &d.day, &d.hour, &d.minute);
    } else if (length == 6 && !has_colon) {
        std::sscanf(value, "%2d%2d%2d", &d.month, &d.day, &d.hour);
    } else if (length == 4 && is_digit(value[0]) && !has_colon) {
        std::sscanf(value, "%2d%2d", &d.day, &d.hour);
    } else if (length == 3 && is_digit(value[0]) && !has_colon) {
        std::sscanf(value, "%1d%2d", &d.day, &d.hour);
    } else if (std::strchr(value, 'd')) {
        std::sscanf(value, "%9dd%9d:%9d", &d.day, &d.hour, &d.minute);
    } else if (value[0] == ':') {
        std::sscanf(value, ":%9d", &d.minute);
    } else if (value[0] == '-' && value[1] == ':') {
        std::sscanf(value, "-:%9d", &d.minute);
        d.minute = d.minute == kMissingInt ? kMissingInt : -d.minute;
    } else {
        read_hour_and_minute(value, d);
    }
    return d;
}

void set_hour(const char *value)
{
    const DateRec hour = read_hour(value);
    const auto fields = {hour.month, hour.day, hour.hour, hour.minute};
    if (std::all_of(fields.begin(), fields.end(), [](int f) { return f == kMissingInt; })) {
        warn_unknown("hour", value, {});
    }
    TIME_set_hour(&hour);
}

void set_file_param(const char *value)
{
    if (const Word *word = find_word(kFileParamWords, value)) {
        PRM_set(kPrmFileParam, word->value);
    } else {
        warn_word("file_param", value, kFileParamWords);
    }
}

void set_plot_type(const char *value)
{
    if (const Word *word = find_word(kPlotTypeWords, value)) {
        PRM_set(kPrmPlotType, word->value);
    } else {
        warn_word("plot_type", value, kPlotTypeWords);
    }
}

void set_messages(const char *value)
{
    const std::vector<std::string_view> known = message_words();
    for (const std::string &item : STR_fields(value, ',')) {
        const bool has_sign = !item.empty() && (item[0] == '+' || item[0] == '-');
        const auto begins = [&](size_t from) {
            return std::any_of(known.begin(), known.end(), [&](std::string_view k) {
                return STR_has_prefix(std::string_view(item).substr(from), k);
            });
        };
        if (!item.empty() && !begins(0) && !begins(has_sign ? 1 : 0)) {
            warn_unknown("message", item, known);
        }
    }
    MSG_options(value);
}

void set_batch(const char *value)
{
    const bool is_waited = value != nullptr && STR_casecmp(value, "wait") == 0;
    PRM_set(kPrmBatch, is_waited ? kBatchWaited : kBatchDetached);
    if (MSG_explicit() == 0) {
        MSG_set_mask(0, kBatchMask);
    }
}

/// The types that act by themselves; true if the type is one of them.
bool act(const char *value, int type)
{
    switch (type) {
    case kResMessage:
        set_messages(value);
        return true;
    case kResDraw:
        set_draw(value);
        return true;
    case kResHour:
        set_hour(value);
        return true;
    case kResFileParam:
        set_file_param(value);
        return true;
    case kResPlotType:
        set_plot_type(value);
        return true;
    default:
        return false;
    }
}

/// The types that fill a destination; 1 if the type is one of them.
int fill(const char *value, void *destination, int type)
{
    switch (type) {
    case kResFlag:
        convert_flag(value, static_cast<int *>(destination));
        return 1;
    case kResInt:
        convert_int(value, static_cast<int *>(destination));
        return 1;
    case kResShort:
        if (is_digit(value[0])) {
            *static_cast<short *>(destination) =
                static_cast<short>(bounded(value, 10, SHRT_MIN, SHRT_MAX));
        }
        return 1;
    case kResLong:
        if (is_digit(value[0])) {
            *static_cast<long *>(destination) = bounded(value, 10, LONG_MIN, LONG_MAX);
        }
        return 1;
    case kResLongByInt:
        *static_cast<long *>(destination) = bounded(value, 10, INT_MIN, INT_MAX);
        return 1;
    case kResReal:
        *static_cast<float *>(destination) = std::strtof(value, nullptr);
        return 1;
    case kResText:
        *static_cast<const char **>(destination) = value;
        return 1;
    case kResTextCopy:
        STR_copy(static_cast<char *>(destination), kTextCopyRoom, value);
        return 1;
    case kResPath:
        convert_path(value, static_cast<char **>(destination));
        return 1;
    case kResRegion:
    case kResDomain:
        DOM_decode(value, static_cast<DomainRec *>(destination));
        return 1;
    default:
        return 0;
    }
}

} // namespace

int RES_convert(const char *value, void *destination, int type)
{
    if (type == kResBatch) {
        set_batch(value);
        return 1;
    }
    if (type == kResHelp) {
        PRM_set(kPrmHelp, 1);
        return 1;
    }
    if (!value) {
        if (type == kResFlag && destination) {
            *static_cast<int *>(destination) = 1;
            return 1;
        }
        return 0;
    }
    if (act(value, type)) {
        return 1;
    }
    if (type == kResDevice) {
        if (!is_device_letter(value[0])) {
            warn_unknown("device", value, {});
        }
        PRM_set(kPrmDevice, device_of_letter(value[0]));
        const char *comma = std::strchr(value, ',');
        if (destination && comma) {
            *static_cast<const char **>(destination) = comma + 1;
        }
        return 1;
    }
    return destination ? fill(value, destination, type) : 0;
}

int RES_get_value(const char *name, void *destination, int type)
{
    const char *value = RES_get(name);
    if (!value || !destination) {
        return 0;
    }
    if (RES_has_value(name) && is_number_type(type) && !is_number(value)) {
        warn_unknown(name, value, {});
    }
    return RES_convert(RES_has_value(name) ? value : nullptr, destination, type);
}
