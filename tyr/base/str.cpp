#include "tyr/base/str.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int kLongLine = 160;
constexpr float kSmallestReal = 1e-5F;
constexpr int kMaxWidth = 9;
constexpr int kMaxDecimals = 20;

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

void strip_trailing(char *text, char c)
{
    size_t n = std::strlen(text);
    while (n > 0 && text[n - 1] == c) {
        text[--n] = '\0';
    }
}

/// Takes at most n characters up to a newline, which stays; the count, -1 if the file ends first.
int take_line(FILE *stream, char *buffer, int n)
{
    int count = 0;
    int c = std::getc(stream);
    if (c == EOF) {
        return -1;
    }
    for (; c != EOF && c != '\n' && count < n; c = std::getc(stream)) {
        buffer[count++] = static_cast<char>(c);
    }
    if (c != EOF) {
        std::ungetc(c, stream);
    }
    buffer[count] = '\0';
    return count;
}

} // namespace

bool STR_copy(char *out, size_t room, std::string_view text)
{
    if (!out || room == 0) {
        return false;
    }
    const size_t n = std::min(text.size(), room - 1);
    if (n > 0) { // an empty text may have no place in memory
        std::memmove(out, text.data(), n);
    }
    out[n] = '\0';
    return n == text.size();
}

std::string STR_print(const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    std::string text(static_cast<size_t>(std::max(length, 0)), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    return text;
}

int STR_split(const char *text, char separator, int *count, char ***array)
{
    *count = 0;
    *array = nullptr;
    if (!text || !*text) {
        return -1;
    }
    size_t length = std::strlen(text);
    while (length > 0 && text[length - 1] == separator) {
        --length;
    }
    const auto pieces = 1 + std::count(text, text + length, separator);
    auto *copy = static_cast<char *>(std::malloc(length + 1));
    auto **list = static_cast<char **>(std::calloc(static_cast<size_t>(pieces), sizeof(char *)));
    if (!copy || !list) {
        std::free(copy);
        std::free(list);
        return -1;
    }
    std::memcpy(copy, text, length);
    copy[length] = '\0';
    list[0] = copy;
    int n = 1;
    for (size_t i = 0; i < length; ++i) {
        if (copy[i] == separator) {
            copy[i] = '\0';
            list[n++] = copy + i + 1;
        }
    }
    *count = n;
    *array = list;
    return 0;
}

void STR_free_list(int count, char **array)
{
    if (count > 0 && array) {
        std::free(array[0]);
        std::free(array);
    }
}

std::vector<std::string> STR_fields(std::string_view text, char separator)
{
    std::vector<std::string> result;
    if (text.empty()) {
        return result;
    }
    while (!text.empty() && text.back() == separator) {
        text.remove_suffix(1);
    }
    for (size_t start = 0;;) {
        const size_t end = text.find(separator, start);
        result.emplace_back(text.substr(start, end - start));
        if (end == std::string_view::npos) {
            return result;
        }
        start = end + 1;
    }
}

int STR_casecmp(const char *a, const char *b)
{
    if (!a || !b) {
        return 1;
    }
    while (*a && lower(*a) == lower(*b)) {
        ++a;
        ++b;
    }
    return static_cast<unsigned char>(lower(*a)) - static_cast<unsigned char>(lower(*b));
}

int STR_ncasecmp(const char *a, const char *b, int n)
{
    if (!a || !b) {
        return 1;
    }
    for (int i = 0; i < n; ++i) {
        const int d =
            static_cast<unsigned char>(lower(a[i])) - static_cast<unsigned char>(lower(b[i]));
        if (d != 0 || a[i] == '\0') {
            return d;
        }
    }
    return 0;
}

bool STR_has_prefix(std::string_view text, std::string_view prefix)
{
    return text.size() >= prefix.size() &&
           std::equal(prefix.begin(), prefix.end(), text.begin(),
                      [](char a, char b) { return lower(a) == lower(b); });
}

void STR_replace_char(char *text, char from, char to)
{
    if (text) {
        std::replace(text, text + std::strlen(text), from, to);
    }
}

void STR_remove_char(char *text, char c)
{
    if (text && c) {
        *std::remove(text, text + std::strlen(text), c) = '\0';
    }
}

void STR_clean_line(char *text)
{
    STR_remove_char(text, '\n');
    STR_remove_char(text, '\r');
    STR_strip_trailing(text);
}

void STR_strip_trailing(char *text)
{
    if (text) {
        strip_trailing(text, ' ');
    }
}

void STR_strip_cr(char *text)
{
    if (text) {
        strip_trailing(text, '\r');
    }
}

void STR_unescape(char *text)
{
    if (!text) {
        return;
    }
    char *out = text;
    for (const char *in = text; *in; ++in) {
        if (*in == '\\' && !*++in) {
            break;
        }
        *out++ = *in;
    }
    *out = '\0';
}

int STR_lower(char *text)
{
    if (!text || !*text) {
        return 0;
    }
    std::transform(text, text + std::strlen(text), text, lower);
    return 1;
}

int STR_is_int(const char *text)
{
    if (!text) {
        return 0;
    }
    if (*text == '-') {
        ++text;
    }
    const size_t digits = std::strspn(text, "0123456789");
    return digits > 0 && text[digits] == '\0';
}

int STR_format_real(char *out, const char *spec, float value)
{
    int width = 0;
    int decimals = 0;
    int least = 0;
    std::sscanf(spec, "%3d.%3d.%3d", &width, &decimals, &least);
    if (std::fabs(value) < kSmallestReal) {
        value = 0.0F;
    }
    const bool has_size = std::isfinite(value) && value != 0.0F;
    const int exponent = has_size ? static_cast<int>(std::floor(std::log10(std::fabs(value)))) : 2;
    if (width < 1) {
        width = decimals + 1;
    }
    width = std::min(width, kMaxWidth);
    decimals =
        std::clamp(decimals - exponent - 1, std::clamp(least, 0, kMaxDecimals), kMaxDecimals);
    width = std::max(width, decimals);
    return std::min(
        std::snprintf(out, kRealTextRoom, "%*.*f", width, decimals, static_cast<double>(value)),
        static_cast<int>(kRealTextRoom) - 1);
}

int STR_read_line(FILE *stream, char *buffer, int n)
{
    const int length = STR_read_line_len(stream, buffer, n);
    return length > 0 ? 1 : length;
}

int STR_read_line_len(FILE *stream, char *buffer, int n)
{
    buffer[0] = '\0';
    int count = take_line(stream, buffer, n);
    if (count == 0) {
        std::getc(stream);
        count = take_line(stream, buffer, n);
    }
    return count;
}

int STR_read_line_160(FILE *stream, char *buffer)
{
    return STR_read_line_len(stream, buffer, kLongLine);
}

int STR_skip_line(FILE *stream)
{
    int c = std::getc(stream);
    while (c != EOF && c != '\n') {
        c = std::getc(stream);
    }
    return c == EOF ? -1 : 1;
}

int STR_read_cut_line(FILE *stream, char *buffer, int n)
{
    const int length = STR_read_line_len(stream, buffer, n);
    if (length == n) {
        int c = std::getc(stream);
        while (c != EOF && c != '\n') {
            c = std::getc(stream);
        }
        if (c == '\n') {
            std::ungetc(c, stream);
        }
    }
    return length > 0 ? 1 : length;
}

float NUM_interp(float x, float x0, float x1, float y0, float y1)
{
    return (x - x0) * (y1 - y0) / (x1 - x0) + y0;
}
