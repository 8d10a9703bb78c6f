#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

#include <sys/stat.h>

#include "tyr/base/missing.h"
#include "tyr/grid/byte_reader_private.h"

namespace tyr {

namespace {

constexpr size_t kLongestLine = 4096;
constexpr size_t kNumberRoom = 64; ///< characters of a number at most

bool is_blank(int c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

} // namespace

ByteReader::ByteReader(std::FILE *stream) : stream_(stream)
{
    struct stat info = {};
    if (stream != stdin && fstat(fileno(stream), &info) == 0 && S_ISREG(info.st_mode)) {
        size_ = info.st_size;
    }
}

bool ByteReader::fill()
{
    start_ += static_cast<int64_t>(end_);
    next_ = 0;
    end_ = std::fread(buffer_.data(), 1, buffer_.size(), stream_);
    return end_ > 0;
}

bool ByteReader::seek(int64_t place)
{
    if (place >= start_ && place <= start_ + static_cast<int64_t>(end_)) {
        next_ = static_cast<size_t>(place - start_);
        return true;
    }
    if (!can_seek() || place < 0 || std::fseek(stream_, static_cast<long>(place), SEEK_SET) != 0) {
        return false;
    }
    start_ = place;
    next_ = end_ = 0;
    return true;
}

int ByteReader::peek()
{
    return next_ < end_ || fill() ? static_cast<unsigned char>(buffer_[next_]) : EOF;
}

int ByteReader::get()
{
    const int c = peek();
    next_ += c == EOF ? 0 : 1;
    return c;
}

bool ByteReader::line(std::string *out)
{
    out->clear();
    if (peek() == EOF) {
        return false;
    }
    for (int c = get(); c != EOF && c != '\n'; c = get()) {
        if (out->size() < kLongestLine) {
            out->push_back(static_cast<char>(c));
        }
    }
    if (!out->empty() && out->back() == '\r') {
        out->pop_back();
    }
    return true;
}

void ByteReader::finish_line()
{
    while (peek() != '\n' && is_blank(peek())) {
        get();
    }
    if (peek() == '\n') {
        get();
    }
}

bool ByteReader::skip_blanks()
{
    do {
        while (next_ < end_ && is_blank(buffer_[next_])) {
            ++next_;
        }
    } while (next_ == end_ && fill());
    return next_ < end_;
}

bool ByteReader::word(std::string *out)
{
    out->clear();
    if (!skip_blanks()) {
        return false;
    }
    for (int c = peek(); c != EOF && !is_blank(c); c = peek()) {
        if (out->size() < kLongestLine) {
            out->push_back(static_cast<char>(c));
        }
        get();
    }
    return true;
}

bool ByteReader::number(float *out)
{
    if (!skip_blanks()) {
        return false;
    }
    if (end_ - next_ < kNumberRoom) { // a number may go on in the next buffer
        std::memmove(buffer_.data(), buffer_.data() + next_, end_ - next_);
        start_ += static_cast<int64_t>(next_);
        end_ -= next_;
        next_ = 0;
        end_ += std::fread(buffer_.data() + end_, 1, buffer_.size() - end_, stream_);
    }
    const char *from = buffer_.data() + next_;
    const char *last = buffer_.data() + end_;
    const auto [stop, error] = std::from_chars(*from == '+' ? from + 1 : from, last, *out);
    if (error == std::errc::invalid_argument || (stop != last && !is_blank(*stop))) {
        return false;
    }
    if (error != std::errc() || !std::isfinite(*out)) {
        *out = error == std::errc::result_out_of_range ? 0.0F : kMissing;
        if (error == std::errc::result_out_of_range) {
            const double exact = std::strtod(std::string(from, stop).c_str(), nullptr);
            *out = std::fabs(exact) > 1.0 ? kMissing : 0.0F;
        }
    }
    next_ = static_cast<size_t>(stop - buffer_.data());
    return true;
}

bool ByteReader::bytes(void *out, size_t count)
{
    char *to = static_cast<char *>(out);
    while (count > 0) {
        if (next_ == end_ && !fill()) {
            return false;
        }
        const size_t part = std::min(count, end_ - next_);
        std::memcpy(to, buffer_.data() + next_, part);
        next_ += part;
        to += part;
        count -= part;
    }
    return true;
}

bool ByteReader::skip(int64_t count)
{
    if (can_seek()) {
        return count <= remaining() && seek(place() + count);
    }
    for (; count > 0; --count) {
        if (get() == EOF) {
            return false;
        }
    }
    return true;
}

} // namespace tyr
