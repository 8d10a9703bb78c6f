#include "tyr/base/number.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "tyr/base/str.h"

using namespace tyr;

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

// Where the digits behind blanks and a sign begin; npos if no number can stand there.
size_t number_start(std::string_view text, bool with_point)
{
    size_t i = text.find_first_not_of(kBlanks);
    if (i == std::string_view::npos)
        return i;
    const size_t sign = i;
    if (text[i] == '+' || text[i] == '-')
        ++i;
    const bool has_point = with_point && i < text.size() && text[i] == '.';
    const size_t digit = has_point ? i + 1 : i;
    if (digit >= text.size() || !is_digit(text[digit]))
        return std::string_view::npos;
    return text[sign] == '+' ? sign + 1 : sign;
}

} // namespace

std::optional<float> VAR_take_real(std::string_view *text)
{
    const size_t start = number_start(*text, true);
    if (start == std::string_view::npos)
        return std::nullopt;
    float value = 0.0F;
    const char *end = text->data() + text->size();
    const auto [next, error] = std::from_chars(text->data() + start, end, value);
    if (error == std::errc::invalid_argument)
        return std::nullopt;
    if (error == std::errc::result_out_of_range)
        value = std::numeric_limits<float>::max();
    text->remove_prefix(static_cast<size_t>(next - text->data()));
    return value;
}

std::optional<int> VAR_take_int(std::string_view *text)
{
    const size_t start = number_start(*text, false);
    if (start == std::string_view::npos)
        return std::nullopt;
    int value = 0;
    const char *end = text->data() + text->size();
    const auto [next, error] = std::from_chars(text->data() + start, end, value);
    if (error == std::errc::result_out_of_range)
        value = (*text)[start] == '-' ? std::numeric_limits<int>::min()
                                      : std::numeric_limits<int>::max();
    text->remove_prefix(static_cast<size_t>(next - text->data()));
    return value;
}

int VAR_whole(double x)
{
    constexpr double kLimit = 2147483647.0;
    if (std::isnan(x))
        return 0;
    if (std::abs(x) >= kLimit)
        return x > 0.0 ? std::numeric_limits<int>::max() : std::numeric_limits<int>::min();
    return static_cast<int>(x);
}

std::string_view VAR_trim(std::string_view text)
{
    const size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}
