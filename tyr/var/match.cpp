#include "tyr/var/match.h"

#include <string_view>

namespace {

/// One element of a pattern: a character, "any character", or a set between brackets.
struct Element {
    std::string_view text;

    bool fits(char c) const
    {
        if (text[0] == '?' || text[0] == '.') {
            return true;
        }
        if (text[0] != '[') {
            return text[0] == c;
        }
        const std::string_view set = text.substr(1, text.find(']') - 1);
        for (size_t i = 0; i < set.size(); ++i) {
            const bool is_range = i + 2 < set.size() && set[i + 1] == '-';
            const char last = is_range ? set[i + 2] : set[i];
            if (c >= set[i] && c <= last) {
                return true;
            }
            if (is_range) {
                i += 2;
            }
        }
        return false;
    }
};

/// The element at the front of a pattern that isn't empty.
Element front(std::string_view pattern)
{
    const size_t end = pattern[0] == '[' ? pattern.find(']') : 0;
    return {pattern.substr(0, end == std::string_view::npos ? end : end + 1)};
}

bool holds(std::string_view pattern, std::string_view text)
{
    bool is_good = true;
    while (!pattern.empty()) {
        const Element element = front(pattern);
        pattern.remove_prefix(element.text.size());
        if (element.text == "*") {
            while (!text.empty() && (pattern.empty() || !front(pattern).fits(text[0]))) {
                text.remove_prefix(1);
            }
            continue;
        }
        is_good = is_good && !text.empty() && element.fits(text[0]);
        if (!text.empty()) {
            text.remove_prefix(1);
        }
    }
    return is_good && text.empty();
}

/// Length of the alternative at the front of a pattern; a '|' inside a set doesn't end it.
size_t alternative_length(std::string_view pattern)
{
    size_t length = 0;
    while (length < pattern.size() && pattern[length] != '|') {
        length += front(pattern.substr(length)).text.size();
    }
    return length;
}

} // namespace

int VAR_match(const char *pattern, const char *text)
{
    if (pattern == nullptr || text == nullptr || *pattern == '\0' || *text == '\0') {
        return 0;
    }
    std::string_view rest = pattern;
    while (true) {
        const size_t length = alternative_length(rest);
        std::string_view alternative = rest.substr(0, length);
        const bool is_turned = !alternative.empty() && alternative[0] == '~';
        if (is_turned) {
            alternative.remove_prefix(1);
        }
        if (holds(alternative, text) != is_turned) {
            return 1;
        }
        if (length == rest.size()) {
            return 0;
        }
        rest.remove_prefix(length + 1);
    }
}
