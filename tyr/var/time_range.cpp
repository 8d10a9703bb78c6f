#include "tyr/var/time_range.h"

#include <array>
#include <cctype>
#include <optional>
#include <string>
#include <string_view>

#include "tyr/base/missing.h"
#include "tyr/base/number.h"
#include "tyr/base/prm.h"
#include "tyr/base/str.h"
#include "tyr/var/base_stack.h"

namespace {

constexpr int kDefaultClass = 1;
constexpr int kGivenClass = 2;
constexpr int kDay = 24;             // hours
constexpr int kMaxHours = 100000000; // beyond it a text is no time

struct RangeWord {
    const char *text;
    TimeRange code;
};
constexpr RangeWord kRangeWords[] = {
    {"rng",  kRangePlain           },
    {"avg",  kRangeAverage         },
    {"acc",  kRangeAccumulation    },
    {"dif",  kRangeDifference      },
    {"max",  kRangeMaximum         },
    {"min",  kRangeMinimum         },
    {"iavg", kRangeInitialAverage  },
    {"uavg", kRangeUninitialAverage},
    {"var",  kRangeVariance        }
};

/// The pieces of "word-number suffix".
struct Pieces {
    std::string word;
    std::optional<int> number;
    std::string suffix;
};

Pieces split(std::string_view text)
{
    Pieces pieces;
    const size_t dash = text.find('-');
    pieces.word = text.substr(0, dash);
    if (dash == std::string_view::npos) {
        return pieces;
    }
    text.remove_prefix(dash + 1);
    pieces.number = VAR_take_int(&text);
    if (pieces.number.has_value()) {
        pieces.suffix = VAR_trim(text);
    }
    return pieces;
}

bool is_word(const std::string &word, const char *known)
{
    return STR_casecmp(word.c_str(), known) == 0;
}

bool is_letter_and_digit(const std::string &word, char letter)
{
    return word.size() > 1 && std::tolower(static_cast<unsigned char>(word[0])) == letter &&
           std::isdigit(static_cast<unsigned char>(word[1])) != 0;
}

/// A number of hours, or nothing where it makes no sense.
std::optional<int> hours(long long value)
{
    if (value < -kMaxHours || value > kMaxHours) {
        return std::nullopt;
    }
    return static_cast<int>(value);
}

/// The range that ends at `last` and began `length` hours before.
std::optional<int> range(int last, int length, const std::string &suffix)
{
    int code = kRangePlain;
    for (const RangeWord &known : kRangeWords) {
        if (is_word(suffix, known.text)) {
            code = known.code;
        }
    }
    const long long first = static_cast<long long>(last) - length;
    const long long packed = static_cast<long long>(code) * kRangeUnit + first * 1000 + last;
    return hours(packed);
}

/// A time with its suffix, if it has one.
std::optional<int> with_suffix(std::optional<int> time, const Pieces &pieces)
{
    if (!time.has_value() || pieces.suffix.empty()) {
        return time;
    }
    return range(*time, *pieces.number, pieces.suffix);
}

/// The default for an empty text, with its class.
int default_time(int *time)
{
    if (const VarBase *base = VAR_base_top()) {
        *time = base->time;
        return base->time_class;
    }
    const int requested = static_cast<int>(PRM_get(kPrmTime));
    *time = requested == kMissingInt ? 0 : requested;
    return requested == kMissingInt ? kGivenClass : kDefaultClass;
}

std::optional<int> relative_time(const Pieces &pieces)
{
    int base = 0;
    default_time(&base);
    if (base == kMissingInt) {
        base = 0;
    }
    if (!pieces.number.has_value()) {
        return base;
    }
    const int last = base % 1000;
    if (pieces.suffix.empty()) {
        return hours(static_cast<long long>(last) - *pieces.number);
    }
    return range(last, *pieces.number, pieces.suffix);
}

std::optional<int> analysis_time(const Pieces &pieces)
{
    if (pieces.suffix.empty()) {
        return 0;
    }
    const std::optional<int> code = range(0, 0, pieces.suffix);
    return hours(static_cast<long long>(*code) + *pieces.number * 1000LL);
}

/// A number of days or hours at the front of the word, behind a letter or with a unit.
std::optional<int> counted_time(const Pieces &pieces)
{
    std::string_view rest = pieces.word;
    const bool has_letter = std::isdigit(static_cast<unsigned char>(rest[0])) == 0;
    if (has_letter) {
        rest.remove_prefix(1);
    }
    const long long number = VAR_take_int(&rest).value_or(0);
    const std::string unit(has_letter ? pieces.word.substr(0, 1) : std::string(VAR_trim(rest)));
    if (is_word(unit, "day") || is_word(unit, "d")) {
        return hours(number * kDay);
    }
    if (is_word(unit, ".5day") || is_word(unit, "e")) {
        return hours(number * kDay + kDay / 2);
    }
    return hours(number);
}

std::optional<int> given_time(const Pieces &pieces)
{
    const std::string &word = pieces.word;
    if (is_word(word, "anal")) {
        return analysis_time(pieces);
    }
    if (is_word(word, "miss")) {
        return kMissingInt;
    }
    if (is_word(word, "init") || is_word(word, "in")) {
        return 0;
    }
    if (is_letter_and_digit(word, 'd') || is_letter_and_digit(word, 'e')) {
        return counted_time(pieces);
    }
    const bool is_number = !word.empty() && std::isdigit(static_cast<unsigned char>(word[0])) != 0;
    if (is_number || is_letter_and_digit(word, 'h')) {
        return with_suffix(counted_time(pieces), pieces);
    }
    return std::nullopt;
}

} // namespace

int VAR_time(const char *text, int *time)
{
    const std::string_view given = VAR_trim(text == nullptr ? "" : text);
    if (given.empty()) {
        return default_time(time);
    }
    const Pieces pieces = split(given);
    const bool is_relative = is_word(pieces.word, "time");
    const std::optional<int> value = is_relative ? relative_time(pieces) : given_time(pieces);
    if (!value.has_value()) {
        return 0;
    }
    *time = *value;
    return is_relative ? kDefaultClass : kGivenClass;
}
