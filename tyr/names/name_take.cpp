#include <algorithm>
#include <cctype>

#include "tyr/base/str.h"
#include "tyr/names/name_take_private.h"

using namespace tyr;

namespace {

/// How far the walk has come.
enum Stage {
    kAtStart = 0,
    kBehindPath = 1,
    kBehindDate = 2,
    kInputOut = 3 ///< the input has run out
};

size_t date_width(char letter)
{
    return letter == 'Y' ? 4 : letter == 'j' || letter == 'b' ? 3 : 2;
}

/// A month from its three letters in any case; 0 for none.
int month_of(std::string_view text)
{
    for (int month = 1; month <= 12; ++month) {
        if (STR_has_prefix(text, TIME_month_lower(month))) {
            return month;
        }
    }
    return 0;
}

class Taker {
  public:
    Taker(std::string_view text, std::string_view input, const TemplateValues &values,
          const DateRec &date)
        : template_(text), input_(input), values_(values),
          has_slash_(input.find('/') != std::string_view::npos)
    {
        taken_.date = date;
        taken_.step = kMissingInt;
        taken_.extension = values.extension;
    }
    TakenName run();

  private:
    bool has_input() const { return at_ < input_.size(); }
    std::string_view rest() const { return input_.substr(at_); }
    bool copy_rest()
    {
        taken_.name += rest();
        return false;
    }
    // Each takes one element and returns false where the walk ends.
    bool take(const TemplateElement &element);
    bool literal(char c);
    bool date(const TemplateElement &element);
    bool extension(const TemplateElement &element);
    bool path(const TemplateElement &element);
    bool key(const TemplateElement &element);
    bool word(const TemplateElement &element);
    void store(char letter, int value);
    void count_step(const TemplateElement &element);

    std::string_view template_;
    std::string_view input_;
    const TemplateValues &values_;
    bool has_slash_;
    size_t at_ = 0; ///< place in the input
    int stage_ = kAtStart;
    bool in_braces_ = false;
    bool placed_path_ = false; ///< a `/` that follows in the template belongs to the path
    TakenName taken_;
};

bool Taker::literal(char c)
{
    if (in_braces_) {
        taken_.name += c;
        return true;
    }
    const bool same = has_input() && input_[at_] == c;
    if (stage_ > kAtStart && same) {
        taken_.name += c;
        ++at_;
        stage_ = has_input() ? stage_ : kInputOut;
        return true;
    }
    if (has_input() && (stage_ > kBehindPath || (stage_ == kAtStart && !same))) {
        return copy_rest();
    }
    taken_.name += c;
    if (has_input() && !has_slash_) {
        ++at_;
    }
    return true;
}

void Taker::store(char letter, int value)
{
    DateRec &date = taken_.date;
    switch (letter) {
    case 'Y':
        date.year = value;
        break;
    case 'y':
        date.year = value + (value < 50 ? 2000 : 1900);
        break;
    case 'm':
    case 'b':
        date.month = value;
        break;
    case 'd':
        date.day = value;
        break;
    case 'j':
        date.yday = value;
        break;
    case 'h':
        date.hour = value;
        break;
    default:
        date.minute = value;
    }
}

void Taker::count_step(const TemplateElement &element)
{
    const int unit = date_element_unit(element.letter);
    const int wanted = unit == kSecondsPerDay    ? values_.user.day
                       : unit == kSecondsPerHour ? values_.user.hour
                                                 : values_.user.minute;
    if (unit == 0) {
        return;
    }
    if (wanted < 0 && wanted != kMissingInt) {
        constexpr int kMost = 9999;
        taken_.step = unit * std::min(-wanted, kMost);
    } else {
        taken_.step = finer_step(taken_.step, unit * std::max(element.number, 1));
    }
}

bool Taker::date(const TemplateElement &element)
{
    const std::string_view field = rest().substr(0, date_width(element.letter));
    int value = 0;
    if (element.letter == 'b') {
        value = month_of(field);
        if (value == 0) {
            return copy_rest();
        }
    } else {
        const bool reads = field.size() == date_width(element.letter) &&
                           std::all_of(field.begin(), field.end(), [](char c) {
                               return std::isdigit(static_cast<unsigned char>(c)) != 0;
                           });
        if (!reads) {
            return copy_rest();
        }
        for (const char c : field) {
            value = value * 10 + (c - '0');
        }
    }
    taken_.name += field;
    at_ += field.size();
    store(element.letter, value);
    count_step(element);
    stage_ = kBehindDate;
    return true;
}

bool Taker::extension(const TemplateElement &element)
{
    const std::string_view behind = template_.substr(element.end);
    const size_t place = behind.empty() ? input_.size() : input_.find(behind, at_);
    const bool found = place != std::string_view::npos;
    if (values_.extension.empty()) {
        if (!found) {
            return copy_rest();
        }
        taken_.extension = input_.substr(at_, place - at_);
    }
    taken_.name += taken_.extension;
    at_ = found ? place : at_;
    return true;
}

bool Taker::path(const TemplateElement &element)
{
    const bool names_path =
        has_input() && (input_[at_] == '/' || input_[at_] == '.' || input_[at_] == '~');
    if (!names_path) {
        taken_.name += template_path(element);
        stage_ = kBehindPath;
        placed_path_ = true;
        return true;
    }
    const std::string_view behind = template_.substr(element.end);
    auto levels = 1 + std::count_if(behind.begin(), behind.end(),
                                    [](char c) { return c == '/' || c == '\\' || c == ':'; });
    size_t cut = std::string_view::npos;
    for (size_t i = input_.size(); i > at_ && levels > 0; --i) {
        const size_t place = i - 1;
        if (input_[place] == '/' || (place == at_ + 1 && input_[place] == ':')) {
            cut = place;
            --levels;
        }
    }
    if (cut == std::string_view::npos) {
        return copy_rest();
    }
    taken_.name += input_.substr(at_, cut - at_);
    at_ = cut;
    stage_ = kBehindPath;
    return true;
}

bool Taker::key(const TemplateElement &element)
{
    const std::string &value = values_.keys[static_cast<unsigned char>(element.letter)];
    if (value.empty()) {
        return copy_rest();
    }
    const std::string text =
        element.number > 0 ? value.substr(0, static_cast<size_t>(element.number)) : value;
    taken_.name += text;
    at_ = std::min(at_ + text.size(), input_.size());
    return true;
}

bool Taker::word(const TemplateElement &element)
{
    const std::string value = template_path(element);
    if (value.empty() || !STR_has_prefix(rest(), value)) {
        return copy_rest();
    }
    taken_.name += rest().substr(0, value.size());
    at_ += value.size();
    return true;
}

bool Taker::take(const TemplateElement &element)
{
    switch (element.kind) {
    case TemplateKind::literal:
        return literal(element.letter);
    case TemplateKind::star:
        return copy_rest();
    case TemplateKind::open:
        in_braces_ = true;
        return true;
    case TemplateKind::close:
        in_braces_ = false;
        stage_ = kBehindPath;
        return true;
    case TemplateKind::percent:
        taken_.name += '%';
        at_ += has_input() && input_[at_] == '%' ? 1 : 0;
        return true;
    case TemplateKind::date:
        return date(element);
    case TemplateKind::extension:
        return extension(element);
    case TemplateKind::path:
    case TemplateKind::resource:
        return path(element);
    case TemplateKind::word:
        return word(element);
    case TemplateKind::key:
        return key(element);
    }
    return false;
}

TakenName Taker::run()
{
    for (const TemplateElement &element : template_elements(template_)) {
        const bool belongs_to_path =
            placed_path_ && element.kind == TemplateKind::literal && element.letter == '/';
        placed_path_ = false;
        if (belongs_to_path) {
            taken_.name += '/';
        } else if (!take(element)) {
            break;
        }
    }
    DateRec &date = taken_.date;
    if (date.yday > 0 && date.year >= 0) {
        TIME_yday_to_date(date.year, date.yday, &date.month, &date.day);
    }
    return std::move(taken_);
}

} // namespace

TakenName tyr::take_name(std::string_view text, std::string_view input,
                         const TemplateValues &values, const DateRec &date)
{
    return Taker(text, input, values, date).run();
}
