#include <algorithm>
#include <cctype>

#include "tyr/base/file.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/names/name_template_private.h"

using namespace tyr;

namespace {

constexpr int kMaxNumber = 9999;

struct PathLetter {
    char letter;
    const char *resource;
};

constexpr PathLetter kPaths[] = {
    {'C', "con_path"  },
    {'D', "data_path" },
    {'F', "file_path" },
    {'R', "raw_path"  },
    {'G', "grid_path" },
    {'W', "watch_path"},
    {'I', "image_path"},
    {'T', "text_path" },
    {'M', "model_path"},
    {'S', "sat_path"  }
};

/// The texts of a date element: composed without a value, and in a mask.
struct DateLetter {
    char letter;
    int unit; ///< seconds; 0 where the element doesn't count for the file step
    const char *placeholder;
    const char *mask;
};

constexpr DateLetter kDates[] = {
    {'Y', 0,                 "0000", "?[0-9]??"},
    {'y', 0,                 "00",   "[0-9]?"  },
    {'m', 0,                 "00",   "[0-9]?"  },
    {'b', 0,                 "xxx",  "?[a-z]?" },
    {'d', kSecondsPerDay,    "00",   "[0-9]?"  },
    {'j', kSecondsPerDay,    "000",  "?[0-9]?" },
    {'h', kSecondsPerHour,   "00",   "[0-9]?"  },
    {'n', kSecondsPerMinute, "00",   "[0-9]?"  }
};

const DateLetter *find_date(char letter)
{
    const auto found = std::find_if(std::begin(kDates), std::end(kDates),
                                    [letter](const DateLetter &d) { return d.letter == letter; });
    return found == std::end(kDates) ? nullptr : &*found;
}

const char *find_path(char letter)
{
    const auto found = std::find_if(std::begin(kPaths), std::end(kPaths),
                                    [letter](const PathLetter &p) { return p.letter == letter; });
    return found == std::end(kPaths) ? nullptr : found->resource;
}

/// Reads the element behind a `%` at `at`, which is moved behind it; none at the template's end.
std::optional<TemplateElement> percent_element(std::string_view text, size_t &at)
{
    TemplateElement element{TemplateKind::key, '\0', 0, "", 0};
    for (; at < text.size() && std::isdigit(static_cast<unsigned char>(text[at])); ++at) {
        element.number = std::min(element.number * 10 + (text[at] - '0'), kMaxNumber);
    }
    if (at == text.size()) {
        return std::nullopt;
    }
    const char letter = text[at++];
    element.letter = letter;
    if (letter == '%') {
        element.kind = TemplateKind::percent;
    } else if (letter == 'e') {
        element.kind = TemplateKind::extension;
    } else if (letter == '{') {
        const size_t end = std::min(text.find('}', at), text.size());
        element.kind = TemplateKind::resource;
        element.name = text.substr(at, end - at);
        at = std::min(end + 1, text.size());
    } else if (find_date(letter)) {
        element.kind = TemplateKind::date;
    } else if (const char *resource = find_path(letter)) {
        element.kind = TemplateKind::path;
        element.name = resource;
    }
    return element;
}

int rounded(int value, int step)
{
    return step > 0 ? value - value % step : value;
}

/// A negative request -N: steps of N % 100, N / 100 behind the multiple.
int request_step(int wanted)
{
    return std::max(-(wanted % 100), 1);
}

int round_to_request(int value, int wanted)
{
    return rounded(value, request_step(wanted)) + -(wanted / 100);
}

bool is_given(int field)
{
    return field >= 0;
}

bool is_request(int field)
{
    return field < 0 && field != kMissingInt;
}

/// Day of the year that a date, with the user's fields over it, stands for.
int day_of_year(const DateRec &date, const DateRec &user)
{
    const int year = is_given(user.year) ? user.year : date.year;
    const int month = is_given(user.month) ? user.month : date.month;
    const int day = is_given(user.day) ? user.day : date.day;
    if (month < 1 || day < 1) {
        return date.yday;
    }
    int yday = kMissingInt;
    TIME_date_to_yday(year, month, day, &yday);
    return yday;
}

class Composer {
  public:
    Composer(const TemplateValues &values, const DateRec &date, DateRec &file_date, int &step)
        : values_(values), user_(values.user), date_(date), file_date_(file_date), step_(step)
    {
    }
    std::string text(const TemplateElement &element);

  private:
    std::string date_text(const TemplateElement &element);
    std::string year(char letter, int step);
    std::string month(char letter, int step);
    std::string day(int step);
    std::string day_number(int step);
    std::string clock(int field, int wanted, int step, std::int32_t &out);
    void count_step(char letter, int step);

    const TemplateValues &values_;
    const DateRec &user_;
    const DateRec date_;
    DateRec &file_date_;
    int &step_;
};

/// A field by the rule of years, months and days: the user's, the rounded one, or missing.
int plain_field(int field, int wanted, int step, bool rounds_to_request)
{
    if (is_given(wanted)) {
        return wanted;
    }
    if (field < 0) {
        return kMissingInt;
    }
    if (is_request(wanted)) {
        return rounds_to_request ? rounded(field, -wanted) : field;
    }
    return rounded(field, step);
}

std::string two_digits(int value)
{
    return value < 0 ? "00" : STR_print("%2.2d", value);
}

std::string Composer::year(char letter, int step)
{
    constexpr int kCentury = 100;
    int value = plain_field(date_.year, user_.year, 1, false);
    if (value < 0) {
        file_date_.year = kMissingInt;
        return find_date(letter)->placeholder;
    }
    const bool rounds = user_.year == kMissingInt;
    if (letter == 'Y') {
        value = rounds ? rounded(value, step) : value;
    } else if (rounds) {
        value = value - value % kCentury + rounded(value % kCentury, step);
    }
    file_date_.year = value;
    return letter == 'Y' ? STR_print("%4.4d", value) : two_digits(value % kCentury);
}

std::string Composer::month(char letter, int step)
{
    const int value = plain_field(date_.month, user_.month, step, false);
    file_date_.month = value;
    if (letter == 'm') {
        return two_digits(value);
    }
    const char *name = TIME_month_lower(value);
    const DateLetter *known = find_date(letter);
    return *name || !known ? name : known->placeholder;
}

std::string Composer::day(int step)
{
    file_date_.day = plain_field(date_.day, user_.day, step, true);
    return two_digits(file_date_.day);
}

std::string Composer::day_number(int step)
{
    int value = day_of_year(date_, user_);
    if (value < 0) {
        file_date_.yday = kMissingInt;
        return find_date('j')->placeholder;
    }
    if (!is_given(user_.day)) {
        value = rounded(value, is_request(user_.day) ? -user_.day : step);
    }
    file_date_.yday = value;
    const int year = is_given(user_.year) ? user_.year : date_.year;
    TIME_yday_to_date(year, value, &file_date_.month, &file_date_.day);
    return STR_print("%3.3d", value);
}

std::string Composer::clock(int field, int wanted, int step, std::int32_t &out)
{
    out = kMissingInt;
    if (is_given(wanted)) {
        out = rounded(wanted, step);
    } else if (field >= 0) {
        out = is_request(wanted) ? round_to_request(field, wanted) : rounded(field, step);
    }
    return two_digits(out);
}

void Composer::count_step(char letter, int step)
{
    const int wanted = letter == 'h'                    ? user_.hour
                       : letter == 'n'                  ? user_.minute
                       : letter == 'd' || letter == 'j' ? user_.day
                                                        : kMissingInt;
    const int unit = date_element_unit(letter);
    if (is_request(wanted)) {
        const bool is_day = unit == kSecondsPerDay;
        step_ = unit * (is_day ? std::min(-wanted, kMaxNumber) : request_step(wanted));
    } else if (unit > 0) {
        step_ = finer_step(step_, unit * step);
    }
}

std::string Composer::date_text(const TemplateElement &element)
{
    const int step = std::max(element.number, 1);
    count_step(element.letter, step);
    switch (element.letter) {
    case 'Y':
    case 'y':
        return year(element.letter, step);
    case 'm':
    case 'b':
        return month(element.letter, step);
    case 'd':
        return day(step);
    case 'j':
        return day_number(step);
    case 'h':
        return clock(date_.hour, user_.hour, step, file_date_.hour);
    default:
        return clock(date_.minute, user_.minute, step, file_date_.minute);
    }
}

std::string Composer::text(const TemplateElement &element)
{
    switch (element.kind) {
    case TemplateKind::literal:
        return std::string(1, element.letter == ' ' ? '_' : element.letter);
    case TemplateKind::star:
        return "*";
    case TemplateKind::open:
    case TemplateKind::close:
        return "";
    case TemplateKind::percent:
        return "%";
    case TemplateKind::date:
        return date_text(element);
    case TemplateKind::extension:
        return values_.extension;
    case TemplateKind::path:
    case TemplateKind::resource:
        return values_.extracted ? *values_.extracted : template_path(element);
    case TemplateKind::word:
        return template_path(element);
    case TemplateKind::key: {
        const std::string &value = values_.keys[static_cast<unsigned char>(element.letter)];
        return value.empty()        ? "0"
               : element.number > 0 ? value.substr(0, static_cast<size_t>(element.number))
                                    : value;
    }
    }
    return "";
}

} // namespace

std::vector<TemplateElement> tyr::template_elements(std::string_view text)
{
    std::vector<TemplateElement> elements;
    for (size_t at = 0; at < text.size();) {
        const char c = text[at++];
        if (c == '%') {
            if (std::optional<TemplateElement> element = percent_element(text, at)) {
                element->end = at;
                const bool is_inside = !elements.empty() && (at >= text.size() || text[at] != '/');
                if (element->kind == TemplateKind::resource && is_inside) {
                    element->kind = TemplateKind::word;
                }
                elements.push_back(std::move(*element));
            }
            continue;
        }
        const TemplateKind kind = c == '*'   ? TemplateKind::star
                                  : c == '{' ? TemplateKind::open
                                  : c == '}' ? TemplateKind::close
                                             : TemplateKind::literal;
        elements.push_back({kind, c, 0, "", at});
    }
    return elements;
}

int tyr::finer_step(int so_far, int step)
{
    return so_far < 1 ? step : std::min(so_far, step);
}

int tyr::date_element_unit(char letter)
{
    const DateLetter *date = find_date(letter);
    return date ? date->unit : 0;
}

const char *tyr::date_element_mask(char letter)
{
    const DateLetter *date = find_date(letter);
    return date ? date->mask : "*";
}

std::string tyr::template_path(const TemplateElement &element)
{
    const char *value = RES_get(element.name.c_str());
    return value ? value : element.kind == TemplateKind::path ? "." : "";
}

std::string tyr::compose_name(std::string_view text, const TemplateValues &values,
                              const DateRec &date, DateRec &file_date, int &step)
{
    Composer composer(values, date, file_date, step);
    std::string name;
    for (const TemplateElement &element : template_elements(text)) {
        name += composer.text(element);
    }
    return name;
}
