#include "tyr/names/search.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

#include "tyr/base/ask.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/base/sys.h"

using namespace tyr;

namespace {

constexpr int kPromptTries = 4;
constexpr int kPromptRoom = 79;
constexpr int kSearchTries = 500;
constexpr long kMostTries = 100000;
constexpr long kLargestOffset = 1000000; ///< of days, hours or minutes
constexpr const char *kLatest = "la";

using Name = std::array<char, kFileNameRoom>;

/// Reads YYYYMMDDHHMM as far as the digits go; `text` is left behind them.
DateRec read_digits(const char *&text)
{
    DateRec date;
    const auto field = [&text](int width, std::int32_t &out) {
        int value = 0;
        int n = 0;
        for (; n < width && is_digit(*text); ++n) {
            value = value * 10 + (*text++ - '0');
        }
        out = n > 0 ? value : kMissingInt;
    };
    field(4, date.year);
    for (std::int32_t *out : {&date.month, &date.day, &date.hour, &date.minute}) {
        field(2, *out);
    }
    return date;
}

long read_number(const char *&text, long most)
{
    char *end = nullptr;
    const long value = std::strtol(text, &end, 10);
    text = end;
    return std::clamp(value, 0L, most);
}

struct Offset {
    long days = 0;
    long hours = 0;
    long minutes = 0;
    long seconds() const
    {
        return days * kSecondsPerDay + hours * kSecondsPerHour + minutes * kSecondsPerMinute;
    }
};

/// Reads "6", "6:30", "2d", "2d6:30"; false with nothing taken where no digit stands.
bool read_offset(const char *&text, Offset &offset)
{
    if (!is_digit(*text)) {
        return false;
    }
    offset = Offset();
    offset.hours = read_number(text, kLargestOffset);
    if (*text == 'd') {
        offset.days = offset.hours;
        offset.hours = 0;
        ++text;
        if (is_digit(*text)) {
            offset.hours = read_number(text, kLargestOffset);
        }
    }
    if (*text == ':' && is_digit(text[1])) {
        offset.minutes = read_number(++text, kLargestOffset);
    }
    return true;
}

/// A sign if one stands there; backward otherwise.
int read_sign(const char *&text)
{
    const bool is_there = *text == '+' || *text == '-';
    const int sign = *text == '+' ? 1 : -1;
    text += is_there ? 1 : 0;
    return sign;
}

/// Where the search starts: the date in the word, the environment's, or the clock's.
long starting_time(const char *&text)
{
    if (*text == '#') {
        ++text;
        DateRec date = read_digits(text);
        if (date.year != kMissingInt) {
            return TIME_to_seconds(&date);
        }
    }
    if (const char *current = std::getenv("tyrcurtime")) {
        current += *current == '#' ? 1 : 0;
        DateRec date = read_digits(current);
        if (date.year != kMissingInt) {
            return TIME_to_seconds(&date);
        }
    }
    return static_cast<long>(std::time(nullptr));
}

/// Moves a time back to the last one that has the fields of the user's hour.
long fit_to_user_hour(long time)
{
    DateRec user;
    TIME_get_hour(&user);
    DateRec date;
    const auto refresh = [&] { TIME_from_seconds(&time, &date); };
    refresh();
    if (user.month > date.month) {
        --date.year;
        date.month = user.month;
        time = TIME_to_seconds(&date);
        refresh();
    }
    if (user.day > date.day) {
        date.year -= date.month == 1 ? 1 : 0;
        date.month = date.month == 1 ? 12 : date.month - 1;
        date.day = user.day;
        time = TIME_to_seconds(&date);
        refresh();
    }
    if (user.hour >= 0) {
        time -= user.hour > date.hour ? kSecondsPerDay : 0;
        refresh();
        date.hour = user.hour;
        time = TIME_to_seconds(&date);
        refresh();
    }
    if (user.minute >= 0) {
        time -= user.minute > date.minute ? kSecondsPerHour : 0;
        refresh();
        date.minute = user.minute;
        time = TIME_to_seconds(&date);
    }
    return time;
}

bool is_large_enough(const char *name)
{
    const long size = FILE_size(name);
    return size > FILE_get_min_size() || size > FILE_get_conv_min_size();
}

/// Walks by file steps from a time until a file is there; the time of the last name tried.
long search(long time, int sign, long tries, char *out)
{
    for (long i = 0; i < tries; ++i) {
        DateRec date;
        TIME_from_seconds(&time, &date);
        MSG_out(kMsgDebug, "LATE:%d %d %d %d %d\n", date.year, date.month, date.day, date.hour,
                date.minute);
        FILE_compose(&date, out);
        MSG_out(kMsgDebug, "LATE: %s\n", out);
        const int step = FILE_get_raw_step();
        if (is_large_enough(out) || step < 1 || i + 1 == tries) {
            break;
        }
        time += static_cast<long>(sign) * step;
    }
    return time;
}

bool is_current_word(const char *text)
{
    return *text == '#' || STR_has_prefix(text, "cu") || STR_has_prefix(text, kLatest);
}

const char *without_cu(const char *text)
{
    return STR_has_prefix(text, "cu") ? text + 2 : text;
}

void tell_current(const char *name)
{
    MSG_out(kMsgMess, "Current filename: %s\n", name);
}

/// Evaluates a word and hands out the file; ends the program if it isn't there.
int current_or_exit(const char *word, char *out)
{
    FILE_current(word, out);
    FILE_set_last(out);
    if (FILE_exists(out)) {
        tell_current(out);
        return 1;
    }
    MSG_out(kMsgWarn, "File not found: %s\n", out);
    SYS_exit(kExitNoFile);
}

/// Tells of a file whose name is taken for a word of the user that asks for the current file.
void warn_of_namesake(const char *word)
{
    if (STR_has_prefix(word, "cu") && FILE_is_regular(word)) {
        MSG_out(kMsgWarn, "%s: taken for the word current; the file of that name is ./%s\n", word,
                word);
    }
}

/// The name for what was typed at the prompt.
void name_from_answer(const char *word, char *out)
{
    FILE_set_literal(1);
    if (is_current_word(word)) {
        warn_of_namesake(word);
        FILE_current(word, out);
        tell_current(out);
    } else {
        FILE_parse_name(word, out);
    }
    FILE_set_last(out);
}

int ask_for_name(const char *prompt, char *out)
{
    MSG_out(kMsgPrint, "List of available files:\n");
    FILE_list();
    MSG_out(kMsgPrint, "\n");
    for (int tries = 0; tries < kPromptTries;) {
        std::array<char, kPromptRoom> word;
        ASK_text(prompt, word.data(), kPromptRoom);
        if (STR_casecmp(word.data(), "list") == 0) {
            FILE_list();
            continue;
        }
        name_from_answer(word.data(), out);
        if (FILE_exists(out)) {
            return 1;
        }
        MSG_out(kMsgWarn, "File not found: %s\n", out);
        ++tries;
    }
    SYS_exit(kExitNoFile);
}

/// Cuts a `#` date off a name and puts it into the user's hour.
std::string take_date(const std::string &input)
{
    const size_t mark = input.find('#', 1);
    if (input.empty() || mark == std::string::npos) {
        return input;
    }
    const char *digits = input.c_str() + mark + 1;
    DateRec user;
    TIME_get_hour(&user);
    const DateRec given = read_digits(digits);
    const auto take = [](std::int32_t &field, int value) {
        field = value == kMissingInt ? field : value;
    };
    take(user.year, given.year);
    take(user.month, given.month);
    take(user.day, given.day);
    take(user.hour, given.hour);
    take(user.minute, given.minute);
    TIME_set_hour(&user);
    return input.substr(0, mark);
}

/// The file date that a name starts from: what the user's hour gives of it.
DateRec date_of_user()
{
    DateRec user;
    TIME_get_hour(&user);
    DateRec date;
    const auto given = [](int field) { return field >= 0 ? field : kMissingInt; };
    date.year = given(user.year);
    date.month = given(user.month);
    date.day = given(user.day);
    date.hour = given(user.hour);
    date.minute = given(user.minute);
    return date;
}

} // namespace

int FILE_parse_name(const char *input, char *out)
{
    const bool is_search_word = is_current_word(input) && FILE_has_template();
    const std::string name = is_search_word ? input : take_date(input);
    const DateRec date = date_of_user();
    FILE_set_date(&date);
    if (STR_casecmp(name.c_str(), "exit") == 0) {
        SYS_exit(kExitNormal);
    }
    if (is_search_word) {
        warn_of_namesake(name.c_str());
        FILE_current(without_cu(name.c_str()), out);
        tell_current(out);
    } else {
        FILE_take_name(name.c_str(), out);
    }
    return 0;
}

long FILE_current(const char *spec, char *out)
{
    const char *text = without_cu(spec ? spec : kLatest);
    FILE_set_literal(0);
    long time = fit_to_user_hour(starting_time(text));
    Offset offset;
    int sign = read_sign(text);
    if (read_offset(text, offset)) {
        time += sign * offset.seconds();
        MSG_out(kMsgDebug, "CUR1:%d %d %d %d\n", sign, static_cast<int>(offset.days),
                static_cast<int>(offset.hours), static_cast<int>(offset.minutes));
        MSG_out(kMsgDebug, "CUR1:%s %d\n", text, static_cast<int>(time));
        sign = read_sign(text);
    }
    if (*text == 'l' || *text == 'L') {
        text += text[1] == 'a' || text[1] == 'A' ? 2 : 1;
        long tries = kSearchTries;
        if (*text == '#' && is_digit(text[1])) {
            tries = read_number(++text, kMostTries);
        }
        time = search(time, sign, tries, out);
        MSG_out(kMsgDebug, "LATEST: %s %s %d\n", spec ? spec : kLatest, out,
                static_cast<int>(time));
        sign = read_sign(text);
    }
    if (read_offset(text, offset)) {
        time += sign * offset.seconds();
        MSG_out(kMsgDebug, "CUR2:%d %d %d %d\n", sign, static_cast<int>(offset.days),
                static_cast<int>(offset.hours), static_cast<int>(offset.minutes));
        MSG_out(kMsgDebug, "CUR2:%d\n", static_cast<int>(time));
    }
    DateRec date;
    TIME_from_seconds(&time, &date);
    FILE_compose(&date, out);
    const long step = FILE_get_step();
    return time - ((time % step) + step) % step;
}

int FILE_get_name(const char *prompt, char *out)
{
    const std::vector<std::string> words = RES_list("filename");
    if (!words.empty()) {
        if (STR_casecmp(words[0].c_str(), "list") == 0) {
            FILE_list();
            SYS_exit(kExitNormal);
        }
        FILE_set_literal(1);
        FILE_parse_name(words[0].c_str(), out);
        FILE_set_last(out);
        return FILE_exists(out);
    }
    if (const char *current = RES_get("current")) {
        return current_or_exit(current, out);
    }
    if (PRM_is_batch()) {
        return current_or_exit(kLatest, out);
    }
    return ask_for_name(prompt, out);
}
