#include "tyr/upper_air/words.h"

#include <algorithm>

namespace tyr {

namespace {

bool is_blank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r') || c == '\0';
}

} // namespace

std::string_view WordCursor::word(size_t most)
{
    while (at_ < text_.size() && is_blank(text_[at_])) {
        ++at_;
    }
    const size_t start = at_;
    const size_t end = std::min(text_.size(), start + most);
    while (at_ < end && !is_blank(text_[at_])) {
        ++at_;
    }
    return text_.substr(start, at_ - start);
}

std::string_view WordCursor::peek() const
{
    WordCursor ahead = *this;
    return ahead.word();
}

void WordCursor::skip_words(int count)
{
    for (int i = 0; i < count; ++i) {
        word(text_.size());
    }
}

std::string_view WordCursor::line()
{
    const size_t start = std::min(at_, text_.size());
    const size_t end = std::min(text_.find('\n', start), text_.size());
    at_ = std::min(end + 1, text_.size());
    std::string_view found = text_.substr(start, end - start);
    while (!found.empty() && found.back() == '\r') {
        found.remove_suffix(1);
    }
    return found;
}

bool WordCursor::skip_to_dollar()
{
    while (!at_end()) {
        const std::string_view text = line();
        if (!text.empty() && text.back() == '$') {
            return true;
        }
    }
    return false;
}

void WordWriter::word(std::string_view text)
{
    if (!fresh_) {
        text_ += ' ';
    }
    text_ += text;
    fresh_ = false;
}

void WordWriter::end_line()
{
    text_ += '\n';
    fresh_ = true;
}

void WordWriter::end_open_line()
{
    if (!fresh_) {
        end_line();
    }
}

} // namespace tyr
