#include "tyr/base/scan.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string_view>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"

using namespace tyr;

namespace {

constexpr int kAnyWidth = 999;
constexpr int kLongestField = kScanFieldRoom - 1;
constexpr std::string_view kWhite = " \n\r\t";
constexpr std::string_view kBlankInLine = " \r\t";

bool is_in(std::string_view set, char c)
{
    return c != '\0' && set.find(c) != std::string_view::npos;
}

bool is_letter(char c)
{
    return std::isalpha(static_cast<unsigned char>(c)) != 0;
}

/// A parsed field of a format: everything between the `%` and the conversion's end.
struct Field {
    bool discards = false; ///< `*`
    bool at_most = false;  ///< `<`
    bool has_width = false;
    int width = kAnyWidth;
    bool has_marker = false;
    std::string_view marker;
    char conversion = '\0';
    std::string_view body; ///< inside of `[]` or `()`
};

/// Reads a field behind its `%`; `format` stands behind the field afterwards, or at the letter that
/// is no conversion (the conversion is then 0).
Field parse_field(std::string_view &format)
{
    Field field;
    const auto take = [&](char c) {
        const bool there = !format.empty() && format.front() == c;
        format.remove_prefix(there ? 1 : 0);
        return there;
    };
    field.discards = take('*');
    field.at_most = take('<');
    while (!format.empty() && is_digit(format.front())) {
        const int so_far = field.has_width ? field.width : 0;
        field.width = std::min(so_far * 10 + (format.front() - '0'), kAnyWidth);
        field.has_width = true;
        format.remove_prefix(1);
    }
    if (take('!')) {
        const size_t end = std::min(format.find('!'), format.size());
        field.has_marker = true;
        field.marker = format.substr(0, end);
        format.remove_prefix(std::min(end + 1, format.size()));
    }
    if (format.empty() || !is_in("dDfFsScNAwW[(n", format.front())) {
        return field;
    }
    field.conversion = format.front();
    format.remove_prefix(1);
    if (field.conversion == '[' || field.conversion == '(') {
        const char close = field.conversion == '[' ? ']' : ')';
        const size_t end = std::min(format.find(close), format.size());
        field.body = format.substr(0, end);
        format.remove_prefix(std::min(end + 1, format.size()));
    }
    if (field.conversion == 'c' && !field.has_width) {
        field.has_width = true;
        field.width = 1;
    }
    if (field.has_width) {
        field.width = std::min(field.width, kLongestField);
    }
    return field;
}

template <typename Test> size_t run_length(std::string_view text, Test test)
{
    return static_cast<size_t>(std::find_if_not(text.begin(), text.end(), test) - text.begin());
}

size_t digits(std::string_view text)
{
    return run_length(text, is_digit);
}

size_t sign(std::string_view text)
{
    return !text.empty() && text[0] == '-' ? 1 : 0;
}

/// Length of an integer; 0 without a digit.
size_t integer_length(std::string_view text)
{
    const size_t s = sign(text);
    const size_t n = digits(text.substr(s));
    return n > 0 ? s + n : 0;
}

/// Length of a real; 0 without a digit.
size_t real_length(std::string_view text)
{
    size_t at = sign(text);
    const size_t whole = digits(text.substr(at));
    at += whole;
    size_t fraction = 0;
    if (at < text.size() && text[at] == '.') {
        fraction = digits(text.substr(at + 1));
        at += 1 + fraction;
    }
    if (whole + fraction == 0) {
        return 0;
    }
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        size_t mark = at + 1;
        mark += mark < text.size() && (text[mark] == '-' || text[mark] == '+') ? 1 : 0;
        const size_t power = digits(text.substr(mark));
        at = power > 0 ? mark + power : at;
    }
    return at;
}

/// Length of a number with the blanks around it; 0 without a number.
size_t blanked_length(std::string_view text, size_t (*number)(std::string_view))
{
    const auto is_blank = [](char c) { return c == ' '; };
    const size_t front = run_length(text, is_blank);
    const size_t n = number(text.substr(front));
    return n == 0 ? 0 : front + n + run_length(text.substr(front + n), is_blank);
}

bool set_holds(std::string_view set, char c)
{
    for (size_t i = 0; i < set.size(); ++i) {
        if (set[i] != '/' || i + 1 == set.size()) {
            if (set[i] == c) {
                return true;
            }
            continue;
        }
        const char kind = set[++i];
        if ((kind == 'A' && is_letter(c)) || (kind == 'N' && is_digit(c)) ||
            (kind == '/' && c == '/')) {
            return true;
        }
    }
    return false;
}

size_t set_length(std::string_view text, std::string_view set)
{
    const bool negated = !set.empty() && set.front() == '^';
    set.remove_prefix(negated ? 1 : 0);
    return run_length(text, [&](char c) { return set_holds(set, c) != negated; });
}

size_t alternative_length(std::string_view text, std::string_view alternatives)
{
    while (!alternatives.empty()) {
        const size_t bar = std::min(alternatives.find('|'), alternatives.size());
        const std::string_view word = alternatives.substr(0, bar);
        if (!word.empty() && text.starts_with(word)) {
            return word.size();
        }
        alternatives.remove_prefix(std::min(bar + 1, alternatives.size()));
    }
    return 0;
}

/// How many characters of the text the field takes.
size_t field_length(std::string_view text, const Field &field)
{
    text = text.substr(0, static_cast<size_t>(std::min(field.width, kLongestField)));
    switch (field.conversion) {
    case 'd':
        return integer_length(text);
    case 'D':
        return blanked_length(text, integer_length);
    case 'f':
        return real_length(text);
    case 'F':
        return blanked_length(text, real_length);
    case 's':
        return run_length(text, [](char c) { return !is_in(kWhite, c); });
    case 'S':
    case 'c':
        return text.size();
    case 'N':
        return digits(text);
    case 'A':
        return run_length(text, is_letter);
    case 'w':
        return run_length(text, [](char c) { return is_in(kWhite, c); });
    case 'W':
        return run_length(text, [](char c) { return is_in(kBlankInLine, c); });
    case '[':
        return set_length(text, field.body);
    case '(':
        return alternative_length(text, field.body);
    default:
        return 0;
    }
}

bool is_integer(char conversion)
{
    return conversion == 'd' || conversion == 'D' || conversion == 'n';
}

bool is_real(char conversion)
{
    return conversion == 'f' || conversion == 'F';
}

/// One run of scanp over a line.
class Walk {
  public:
    Walk(ScanRec &scan, std::string_view format) : scan_(scan), format_(format) {}

    void run(va_list *arguments);

  private:
    std::string_view rest() const
    {
        const size_t at = static_cast<size_t>(scan_.position + scan_.consumed);
        return std::string_view(scan_.text, static_cast<size_t>(scan_.length)).substr(at);
    }
    bool literal(char c);
    bool field(va_list *arguments);
    bool count(const Field &field, size_t length, void *destination);
    static void store(const Field &field, std::string_view text, void *destination);
    static void store_missing(const Field &field, void *destination);

    ScanRec &scan_;
    std::string_view format_;
};

bool Walk::literal(char c)
{
    const std::string_view text = rest();
    size_t taken = 0;
    if (c == ' ') {
        taken = run_length(text, [](char t) { return is_in(kWhite, t); });
    } else {
        taken = !text.empty() && text.front() == c ? 1 : 0;
    }
    scan_.consumed += static_cast<int>(taken);
    return taken > 0;
}

void Walk::store(const Field &field, std::string_view text, void *destination)
{
    std::array<char, kScanFieldRoom> buffer;
    std::memcpy(buffer.data(), text.data(), text.size());
    buffer[text.size()] = '\0';
    if (is_integer(field.conversion)) {
        constexpr long kLow = std::numeric_limits<int>::min();
        constexpr long kHigh = std::numeric_limits<int>::max();
        const long value = std::strtol(buffer.data(), nullptr, 10);
        *static_cast<int *>(destination) = static_cast<int>(std::clamp(value, kLow, kHigh));
    } else if (is_real(field.conversion)) {
        *static_cast<float *>(destination) = std::strtof(buffer.data(), nullptr);
    } else {
        std::memcpy(destination, buffer.data(), text.size() + (field.conversion == 'c' ? 0 : 1));
    }
}

void Walk::store_missing(const Field &field, void *destination)
{
    if (is_integer(field.conversion)) {
        *static_cast<int *>(destination) = kMissingInt;
    } else if (is_real(field.conversion)) {
        *static_cast<float *>(destination) = kMissing;
    } else {
        *static_cast<char *>(destination) = '\0';
    }
}

/// Counts a field, and its store if there is a destination.
bool Walk::count(const Field &field, size_t length, void *destination)
{
    ++scan_.fields;
    if (destination) {
        store(field, rest().substr(0, length), destination);
        ++scan_.stored;
    }
    scan_.consumed += static_cast<int>(length);
    return true;
}

/// Matches one field; false where the scan stops.
bool Walk::field(va_list *arguments)
{
    const Field field = parse_field(format_);
    if (field.conversion == '\0') {
        return true;
    }
    void *destination = field.discards ? nullptr : va_arg(*arguments, void *);
    if (field.conversion == 'n') {
        ++scan_.fields;
        if (destination) {
            *static_cast<int *>(destination) = scan_.consumed;
            ++scan_.stored;
        }
        return true;
    }
    const std::string_view text = rest();
    size_t length = field_length(text, field);
    if (length == 1 && text.front() == '-') {
        length = 0;
    }
    if (length == 0 && field.has_marker) {
        if (text.starts_with(field.marker)) {
            ++scan_.fields;
            if (destination) {
                store_missing(field, destination);
                ++scan_.stored;
            }
            scan_.consumed += static_cast<int>(field.marker.size());
        }
        return true;
    }
    if (field.conversion == '(' && length == 0 && field.at_most && !field.has_width) {
        ++scan_.fields;
        return true;
    }
    const bool is_exact = field.has_width && !field.at_most;
    if (length == 0 || (is_exact && length != static_cast<size_t>(field.width))) {
        return false;
    }
    return count(field, length, destination);
}

void Walk::run(va_list *arguments)
{
    const bool traces = MSG_test(kMsgDebugD) != 0;
    while (!format_.empty()) {
        if (traces) {
            MSG_out(kMsgDebugD, "     :%s:%.50s:\n", format_.data(), rest().data());
        }
        const char c = format_.front();
        format_.remove_prefix(1);
        if (c == '%' ? !field(arguments) : !literal(c)) {
            return;
        }
    }
    scan_.complete = 1;
}

} // namespace

void SCAN_init(ScanRec *scan, const char *text)
{
    *scan = ScanRec();
    scan->text = const_cast<char *>(text);
    scan->length = text ? static_cast<int>(std::strlen(text)) : 0;
}

int SCAN_get_pos(const ScanRec *scan)
{
    return scan->position;
}

void SCAN_set_pos(ScanRec *scan, int position)
{
    scan->position = std::clamp(position, 0, scan->length);
}

void SCAN_skip(ScanRec *scan, int n)
{
    const long position = static_cast<long>(scan->position) + n;
    scan->position = static_cast<int>(std::clamp(position, 0L, static_cast<long>(scan->length)));
}

void SCAN_advance(ScanRec *scan)
{
    SCAN_skip(scan, scan->consumed);
}

const char *SCAN_here(const ScanRec *scan)
{
    return scan->text ? scan->text + scan->position : "";
}

char SCAN_peek(const ScanRec *scan, int i)
{
    const long at = static_cast<long>(scan->position) + i;
    return at >= 0 && at < scan->length ? scan->text[at] : '\0';
}

void SCAN_poke(ScanRec *scan, int i, char c)
{
    const long at = static_cast<long>(scan->position) + i;
    if (at >= 0 && at < scan->length) {
        scan->text[at] = c;
    }
}

int SCAN_find(ScanRec *scan, const char *text)
{
    const char *found = scan->text ? std::strstr(scan->text + scan->position, text) : nullptr;
    if (!found) {
        return 0;
    }
    scan->position = static_cast<int>(found - scan->text);
    return 1;
}

int scanp(ScanRec *scan, const char *format, ...)
{
    scan->consumed = 0;
    scan->stored = 0;
    scan->fields = 0;
    scan->complete = 0;
    if (!format || !*format || scan->position < 0 || scan->position >= scan->length) {
        return -1;
    }
    va_list arguments;
    va_start(arguments, format);
    Walk(*scan, format).run(&arguments);
    va_end(arguments);
    if (MSG_test(kMsgDebugD)) {
        MSG_out(kMsgDebugD, "SCANP:%.50s:%s:%d:%d:%d:%d:%d\n", SCAN_here(scan), format,
                scan->position, scan->consumed, scan->stored, scan->fields, scan->complete);
    }
    return scan->fields;
}
